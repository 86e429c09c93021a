// SPDX-License-Identifier: Apache-2.0
#include "EntryTexts.h"

#include <HVEntryContent.h>
#include <HVLimits.h>
#include <HVXmlElement.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <algorithm>
#include <utility>

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
    explicit NumberingPopup(FindResource find)
        : m_find(std::move(find))
    {
    }

    QString translate(const QString &text, const QString &context) override
    {
        m_texts.push_back({ context, text, {} });
        return Mark + QString::number(m_texts.size() - 1);
    }

    QString interpolate(const QString &text) override { return text; }
    QString resource(const QString &relativePath) override { return relativePath; }
    bool canShowPicture(const QString &) override { return true; }

    QString optionalResource(const QString &relativePath, const QString &neighbour) override
    {
        const QFileInfo found(m_find(relativePath));
        const QString actual = neighbour.isEmpty() ? QString() : m_find(neighbour);
        const bool isHere =
                actual.isEmpty() || QFileInfo(QFileInfo(actual).dir(), found.fileName()).isFile();
        return isHere ? found.filePath() : QString();
    }

    QByteArray captionFile(const QString &path) override { return readCaptionFile(path); }

    /// Describes the texts in \a shown that were translated.
    void describe(const QString &shown, const QString &comment)
    {
        static const QRegularExpression number(QStringLiteral("\\x{e000}(\\d+)"));
        auto numbers = number.globalMatch(shown);
        while (numbers.hasNext()) {
            const size_t index = numbers.next().captured(1).toUInt();
            if (index < m_texts.size())
                m_texts[index].comment = comment;
        }
    }

    std::vector<TranslatableText> take() { return std::move(m_texts); }

private:
    FindResource m_find;
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

/// Such as "1:05".
QString clockTime(double seconds)
{
    const int whole = static_cast<int>(seconds);
    const auto twoDigits = [](int number) {
        return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
    };
    const QString minutesAndSeconds =
            twoDigits(whole / 60 % 60) + QLatin1Char(':') + twoDigits(whole % 60);
    return whole < 3600 ? minutesAndSeconds.mid(whole < 600 ? 1 : 0)
                        : QStringLiteral("%1:%2").arg(whole / 3600).arg(minutesAndSeconds);
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

std::vector<TranslatableText> textsOf(const HVXmlElement &entry, const FindResource &find)
{
    NumberingPopup popup(find);
    constexpr bool HasTopics = true;
    const HVEntryContent content = readEntry(entry, popup, HasTopics, HVLimits::current());
    popup.describe(content.title.text, QStringLiteral("Title"));
    popup.describe(content.shortcut.text, QStringLiteral("Shortcut"));
    for (const HVEntryBlock &block : content.blocks) {
        popup.describe(block.text.text, commentOf(block));
        popup.describe(block.caption.text,
                       QStringLiteral("Caption of the picture %1").arg(block.resource));
        for (const HVCaption &caption : block.captions)
            popup.describe(caption.text,
                           QStringLiteral("Caption of the clip %1 at %2")
                                   .arg(block.resource, clockTime(caption.begin)));
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
            { "Keep open (%1)", "Button that pins the popup; %1 is a key that does the same" },
            { "%1 for more", "Last line of a short popup; %1 is the key that shows the rest" },
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
