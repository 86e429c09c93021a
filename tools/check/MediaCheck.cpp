// SPDX-License-Identifier: Apache-2.0
#include "MediaCheck.h"

#include "ContentIndex.h"
#include "ControlFile.h"
#include "EntryTree.h"
#include "Findings.h"
#include "FormatCheck.h"
#include "MediaFiles.h"
#include "Progress.h"
#include "SizeCheck.h"

#include <HVEntryMedia.h>
#include <HVView.h>
#include <HVXmlElement.h>

#include <QtCore/QSet>

#include <utility>

namespace HovletsTool {

using namespace Hovlets;

namespace {

/// The names in "search" that can lead to a file, without duplicates: the library tries all names
/// for each file.
QString usefulNames(const QString &search, const QSet<QString> &packages)
{
    QStringList names;
    const QStringList all = searchedPackages(search);
    for (const QString &name : all) {
        if (packages.contains(name) && !names.contains(name))
            names += name;
    }
    return names.join(QLatin1Char(','));
}

} // namespace

class MediaCheck::Private
{
public:
    Private(ContentIndex &content, const MediaLimits &limits, const QStringList &hostAttributes,
            FindingList &findings)
        : m_manager(content.manager())
        , m_limits(limits)
        , m_hostAttributes(hostAttributes)
        , m_findings(findings)
        , m_files(limits.seconds)
        , m_view(&m_manager, nullptr)
    {
    }

    void check(const ControlFile &file, const QSet<QString> &packages, Progress &progress);

private:
    using CheckFile = const MediaProblem &(MediaFiles::*)(const QString &path);

    void check(const XmlDocument::Branch &entry);
    [[nodiscard]] bool usesDefaultInterface() const;
    void checkUserInterface(const XmlDocument::Element &entry, const QString &attribute);
    void checkPicture(const XmlDocument::Element &element);
    QString checkClip(const XmlDocument::Element &entry);
    QString checkResource(const XmlDocument::Element &element, const QString &attribute,
                          CheckFile check);
    void checkFileSize(const XmlDocument::Element &element, const QString &attribute,
                       const QString &name, const QFileInfo &file);
    void report(const XmlDocument::Element &element, const QString &attribute,
                const MediaProblem &problem);

    HVManager &m_manager;
    MediaLimits m_limits;
    QStringList m_hostAttributes;
    FindingList &m_findings;
    MediaFiles m_files;
    HVView m_view;
    const ControlFile *m_file = nullptr;
    QSet<QString> m_checked; // the user interfaces that apply to all entries of a file
};

void MediaCheck::Private::check(const ControlFile &file, const QSet<QString> &packages,
                                Progress &progress)
{
    m_file = &file;
    m_checked.clear();
    if (!file.root())
        return;
    const std::unique_ptr<HVXmlElement> root(buildElement(*file.root()));
    const QString search = QStringLiteral("search");
    root->setAttribute(search, usefulNames(root->attribute(search), packages));
    const QString package = m_manager.index()->packageNameForLocation(file.path());
    FormatCheck format(file.path(), file.document(), m_hostAttributes, m_findings);
    file.document().forEachBranch([&](const XmlDocument::Branch &branch) {
        if (!isEntry(branch))
            return;
        if (file.serves(branch)) {
            const std::unique_ptr<HVXmlElement> entry(buildElement(branch.top(), root.get()));
            entry->setAttribute(QStringLiteral("HVPackagName"), package);
            m_view.setContent(entry.get());
            check(branch);
            if (usesDefaultInterface())
                format.check(branch);
            m_view.setContent(nullptr);
        }
        progress.step();
    });
}

void MediaCheck::Private::check(const XmlDocument::Branch &entry)
{
    checkUserInterface(entry.top(), QStringLiteral("ui"));
    // Only hosts that show simple popups use this user interface.
    const QString simple = QStringLiteral("simple");
    if (entry.top().has(simple) || m_file->root()->has(simple)) {
        m_manager.context().set(HVKeySimpleMode, true);
        checkUserInterface(entry.top(), simple);
        m_manager.context().set(HVKeySimpleMode, false);
    }
    checkShownSize(*m_file, entry, checkClip(entry.top()), m_findings);
    for (auto element = entry.elements.begin() + 1; element != entry.elements.end(); ++element) {
        if (element->name == QLatin1String("img"))
            checkPicture(*element);
    }
}

void MediaCheck::Private::checkPicture(const XmlDocument::Element &element)
{
    const QString attribute = QStringLiteral("src");
    const QString path = checkResource(element, attribute, &MediaFiles::checkPicture);
    if (path.isEmpty())
        return;
    const std::pair<const char *, int> variants[] = { { DenseVariant, 2 },
                                                      { DarkVariant, 1 },
                                                      { DarkDenseVariant, 2 } };
    for (const auto &[suffix, factor] : variants) {
        const QString variant = variantName(path, suffix);
        if (!QFileInfo(variant).isFile())
            continue;
        checkFileSize(element, attribute, variant, QFileInfo(variant));
        report(element, attribute, m_files.checkPicture(variant));
        report(element, attribute, MediaFiles::checkVariant(path, variant, factor));
    }
}

/// Returns the file with the captions of the clip, or an empty string if there is none.
QString MediaCheck::Private::checkClip(const XmlDocument::Element &entry)
{
    const QString attribute = QStringLiteral("clip");
    const QString path = checkResource(entry, attribute, &MediaFiles::checkClip);
    if (path.isEmpty())
        return {};
    const QString dense = variantName(path, DenseVariant);
    if (QFileInfo(dense).isFile()) {
        checkFileSize(entry, attribute, dense, QFileInfo(dense));
        report(entry, attribute, m_files.checkClip(dense));
        report(entry, attribute, m_files.checkClipVariant(path, dense));
    }
    const QString captions = QStringLiteral("captions");
    if (!entry.value(captions).isEmpty())
        return checkResource(entry, captions, &MediaFiles::checkCaptions);
    if (!QFileInfo(captionsName(path)).isFile())
        return {};
    report(entry, attribute, m_files.checkCaptions(captionsName(path)));
    return captionsName(path);
}

bool MediaCheck::Private::usesDefaultInterface() const
{
    const QString package = m_manager.index()->packageNameForLocation(m_view.uiRootFilePath());
    return package == QLatin1String("Default");
}

/// Reports a path that the root element sets for all entries only once for each file.
void MediaCheck::Private::checkUserInterface(const XmlDocument::Element &entry,
                                             const QString &attribute)
{
    const QString path = m_view.uiRootFilePath();
    const bool isOwn = entry.has(attribute);
    if (!isOwn && m_checked.contains(path))
        return;
    if (!isOwn)
        m_checked.insert(path);
    const QFileInfo info(path);
    if (info.isAbsolute() && info.isFile() && info.isReadable())
        return;
    const XmlDocument::Element *owner = isOwn ? &entry : m_file->root();
    const Position position = owner ? m_file->document().position(*owner, attribute) : Position();
    if (!info.isAbsolute() || !info.exists())
        m_findings.add("HV306", m_file->path(), position,
                       QStringLiteral("%1 is neither in the package nor in one that it searches")
                               .arg(path));
    else
        m_findings.add("HV307", m_file->path(), position,
                       QStringLiteral("%1 cannot be read").arg(path));
}

/// Returns the path of the file, or an empty string if it is missing or cannot be read.
QString MediaCheck::Private::checkResource(const XmlDocument::Element &element,
                                           const QString &attribute, CheckFile check)
{
    const QString name = element.value(attribute);
    if (!element.has(attribute) || (name.isEmpty() && attribute == QLatin1String("clip")))
        return {};
    const auto refuse = [&](const char *code, const QString &message) {
        report(element, attribute, { code, message });
        return QString();
    };
    const QFileInfo info(name.isEmpty() ? QString() : m_view.findResource(name));
    if (!info.isAbsolute() || !info.exists() || info.isDir())
        return refuse("HV301", QStringLiteral("\"%1\" is not in the resources").arg(name));
    if (!info.isFile())
        return refuse("HV301", QStringLiteral("\"%1\" is not a regular file").arg(name));
    if (!info.isReadable())
        return refuse("HV116", QStringLiteral("%1 cannot be read").arg(info.filePath()));
    checkFileSize(element, attribute, name, info);
    report(element, attribute, (m_files.*check)(info.filePath()));
    return info.filePath();
}

void MediaCheck::Private::checkFileSize(const XmlDocument::Element &element,
                                        const QString &attribute, const QString &name,
                                        const QFileInfo &file)
{
    const double megabytes = static_cast<double>(file.size()) / 1e6;
    if (megabytes > m_limits.megabytes)
        report(element, attribute,
               { "HV305", QStringLiteral("\"%1\" is %2 MB large").arg(name).arg(megabytes) });
}

void MediaCheck::Private::report(const XmlDocument::Element &element, const QString &attribute,
                                 const MediaProblem &problem)
{
    if (*problem.code)
        m_findings.add(problem.code, m_file->path(),
                       m_file->document().position(element, attribute), problem.message);
}

MediaCheck::MediaCheck(ContentIndex &content, const MediaLimits &limits,
                       const QStringList &hostAttributes, FindingList &findings)
    : d(std::make_unique<Private>(content, limits, hostAttributes, findings))
{
}

MediaCheck::~MediaCheck() = default;

void MediaCheck::check(const ControlFile &file, const QSet<QString> &packages, Progress &progress)
{
    d->check(file, packages, progress);
}

} // namespace HovletsTool
