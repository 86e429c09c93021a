// SPDX-License-Identifier: Apache-2.0
#include "SizeCheck.h"

#include "ControlFile.h"
#include "EntryTree.h"
#include "Findings.h"
#include "LibraryParse.h"

#include <HVEntryContent.h>
#include <HVXmlElement.h>

#include <utility>

namespace HovletsTool {

using namespace Hovlets;

namespace {

/// Stands for any popup: leaves texts unchanged and has every picture.
class AnyPopup : public HVEntryServices
{
public:
    explicit AnyPopup(QString captions)
        : m_captions(std::move(captions))
    {
    }

    QString translate(const QString &, const QString &) override { return {}; }
    QString interpolate(const QString &text) override { return text; }
    QString resource(const QString &relativePath) override { return relativePath; }
    bool canShowPicture(const QString &) override { return true; }

    /// The clip's captions, whatever their name. Nobody reads a variant of a picture here.
    QString optionalResource(const QString &, const QString &) override { return m_captions; }
    QByteArray captionFile(const QString &path) override { return readCaptionFile(path); }

private:
    QString m_captions;
};

/// Whether a popup might cut the entry. Tags in texts count as elements.
bool isLarge(const XmlDocument::Branch &entry, const HVLimits &limits)
{
    constexpr int ShortestTag = 3; // characters
    return entry.size + entry.characters / ShortestTag > limits.shownElements
            || entry.size > limits.shownPictures || entry.characters > limits.shownCharacters;
}

} // namespace

void checkSize(const ControlFile &file, const XmlDocument::Branch &entry, FindingList &findings)
{
    const auto add = [&](const char *code, const QString &message) {
        findings.add(code, file.path(), file.document().position(entry.top().offset), message);
    };
    if (isTooLarge(entry))
        return add("HV119",
                   QStringLiteral("the entry has %1 elements, but the library reads only entries "
                                  "with fewer than %2")
                           .arg(entry.size)
                           .arg(HVLimits::current().builtElements));
    if (file.isTooLargeToParse(entry))
        add("HV119", parseLimitText());
}

void checkShownSize(const ControlFile &file, const XmlDocument::Branch &entry,
                    const QString &captions, FindingList &findings)
{
    const HVLimits limits = HVLimits::current();
    if (isTooLarge(entry) || file.isTooLargeToParse(entry)
        || (captions.isEmpty() && !isLarge(entry, limits)))
        return;
    AnyPopup popup(captions);
    constexpr bool HasTopics = true;
    const HVEntryContent content = readEntry(*buildTree(entry), popup, HasTopics, limits);
    if (!content.limitMet.isEmpty())
        findings.add("HV403", file.path(), file.document().position(entry.top().offset),
                     QStringLiteral("a popup shows only %1 of the entry").arg(content.limitMet));
}

} // namespace HovletsTool
