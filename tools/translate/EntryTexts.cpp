// SPDX-License-Identifier: Apache-2.0
#include "EntryTexts.h"

#include <HVEntryContent.h>
#include <HVLimits.h>
#include <HVXmlElement.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>

namespace HovletsTool {

using namespace Hovlets;

namespace {

constexpr QChar Mark(0xe000); // a private character

/*!
 * Stands for a popup. As the translation of each text, it returns the text's number after the mark,
 * which leads from what the popup shows back to the text.
 */
class NumberingPopup : public HVEntryServices
{
public:
    QString translate(const QString &text, const QString &context) override
    {
        m_texts.push_back({ context, text, {} });
        return Mark + QString::number(m_texts.size() - 1);
    }

    QString interpolate(const QString &text) override { return text; }
    QString resource(const QString &relativePath) override { return relativePath; }
    bool canShowPicture(const QString &) override { return true; }

    /// Describes the texts in \a shown that were translated.
    void describe(const HVShownText &shown, const QString &comment)
    {
        static const QRegularExpression number(QStringLiteral("\\x{e000}(\\d+)"));
        auto numbers = number.globalMatch(shown.text);
        while (numbers.hasNext()) {
            const size_t index = numbers.next().captured(1).toUInt();
            if (index < m_texts.size())
                m_texts[index].comment = comment;
        }
    }

    std::vector<TranslatableText> take() { return std::move(m_texts); }

private:
    std::vector<TranslatableText> m_texts;
};

QString commentOf(const HVEntryBlock &block)
{
    switch (block.kind) {
    case HVEntryBlock::Kind::Link:
        return QStringLiteral("Label of the link to %1").arg(block.locator);
    case HVEntryBlock::Kind::Button:
        return QStringLiteral("Label of the button for %1").arg(block.locator);
    case HVEntryBlock::Kind::Image:
        return QStringLiteral("Description of the picture %1").arg(block.resource);
    case HVEntryBlock::Kind::Heading:
        return QStringLiteral("Heading");
    case HVEntryBlock::Kind::Part:
        return QStringLiteral("Part of a list or a table");
    case HVEntryBlock::Kind::Note:
        return QStringLiteral("Note");
    case HVEntryBlock::Kind::Warning:
        return QStringLiteral("Warning");
    case HVEntryBlock::Kind::Paragraph:
    case HVEntryBlock::Kind::Code:
    case HVEntryBlock::Kind::Clip:
        break;
    }
    return QStringLiteral("Paragraph");
}

/// The placeholders in a text, such as "%(application)s".
QStringList placeholdersIn(const QString &text)
{
    static const QRegularExpression placeholder(QStringLiteral("%\\([-\\w]+\\)s"));
    QStringList found;
    auto matches = placeholder.globalMatch(text);
    while (matches.hasNext())
        found += matches.next().captured();
    found.removeDuplicates();
    return found;
}

/// Keeps the first of equal texts, and adds to the comments what must not be translated.
void tidy(std::vector<TranslatableText> &texts)
{
    std::vector<TranslatableText> kept;
    for (TranslatableText &text : texts) {
        const bool isKnown = std::any_of(kept.begin(), kept.end(), [&](const auto &other) {
            return other.source == text.source;
        });
        if (isKnown)
            continue;
        const QStringList placeholders = placeholdersIn(text.source);
        if (!placeholders.isEmpty())
            text.comment += QStringLiteral(". Keep %1 unchanged")
                                    .arg(placeholders.join(QStringLiteral(", ")));
        kept.push_back(text);
    }
    texts = std::move(kept);
}

} // namespace

std::vector<TranslatableText> textsOf(const HVXmlElement &entry)
{
    NumberingPopup popup;
    constexpr bool HasTopics = true;
    const HVEntryContent content = readEntry(entry, popup, HasTopics, HVLimits::current());
    popup.describe(content.title, QStringLiteral("Title"));
    popup.describe(content.shortcut, QStringLiteral("Shortcut"));
    for (const HVEntryBlock &block : content.blocks) {
        popup.describe(block.text, commentOf(block));
        popup.describe(block.caption,
                       QStringLiteral("Caption of the picture %1").arg(block.resource));
    }
    std::vector<TranslatableText> texts = popup.take();
    tidy(texts);
    return texts;
}

const std::vector<TranslatableText> &userInterfaceTexts()
{
    static const std::vector<TranslatableText> texts = [] {
        const struct
        {
            const char *source, *comment;
        } all[] = {
            { "Keep open", "Button that pins the popup" },
            { "Close", "Button that closes a pinned popup" },
            { "Play", "Button of a clip" },
            { "Pause", "Button of a clip" },
            { "Play again", "Button of a clip that has ended" },
            { "Position in the clip", "Name of the progress bar, for screen readers" },
            { "Scroll", "Name of the scroll bar, for screen readers" },
            { "Pinned", "Description of a pinned popup's title bar, for screen readers" },
            { "Note", "Label of a note" },
            { "Warning", "Label of a warning" },
        };
        std::vector<TranslatableText> made;
        for (const auto &[source, comment] : all)
            made.push_back(
                    { QStringLiteral("HovletsUI"), QLatin1String(source), QLatin1String(comment) });
        return made;
    }();
    return texts;
}

} // namespace HovletsTool
