// SPDX-License-Identifier: Apache-2.0
#include "HVTipText.h"

#include "HVLimits.h"
#include "HVMarkup.h"
#include "HVMarkupTokens.h"

#include <algorithm>
#include <array>

namespace Hovlets {

namespace {

constexpr int LongestTitle = 80;

bool isNamed(QStringView name, std::initializer_list<const char *> words)
{
    return std::any_of(words.begin(), words.end(), [name](const char *word) {
        return name.compare(QLatin1String(word), Qt::CaseInsensitive) == 0;
    });
}

/// A tag that content may not use, such as that of a table.
struct OtherTag
{
    QStringView name;
    bool isEnd = false;
    qsizetype end = 0; // the position after the tag
};

bool isTagCharacter(QChar c)
{
    return c.unicode() < 0x80 && c.isLetterOrNumber();
}

/// The tag whose "<" is at \a at; without an end if there is none.
OtherTag readOtherTag(QStringView text, qsizetype at)
{
    OtherTag tag;
    qsizetype name = at + 1;
    tag.isEnd = name < text.size() && text[name] == QLatin1Char('/');
    name += tag.isEnd ? 1 : 0;
    qsizetype end = name;
    while (end < text.size() && isTagCharacter(text[end]))
        ++end;
    tag.name = text.mid(name, end - name);
    // Stops at the next "<": looking further for each of them would take quadratic time.
    qsizetype close = end;
    while (close < text.size() && text[close] != QLatin1Char('<')
           && text[close] != QLatin1Char('>'))
        ++close;
    const bool isClosed = close < text.size() && text[close] == QLatin1Char('>');
    tag.end = isClosed && end > name ? close + 1 : 0;
    return tag;
}

/// Reads rich text from start to end.
class TipReader
{
public:
    explicit TipReader(QStringView text)
        : m_text(text)
    {
    }

    QStringList read()
    {
        // One more than a popup shows, by which the popup notices that it cuts the tip.
        const qint64 most = qint64 { std::max(0, HVLimits::current().shownElements) } + 1;
        while (m_at < m_text.size() && m_paragraphs.size() < most)
            m_at = readNext();
        endParagraph();
        return m_paragraphs;
    }

private:
    /// Returns the position after what it has read.
    qsizetype readNext()
    {
        const QChar c = m_text[m_at];
        if (c == QLatin1Char('<'))
            return readMarkup();
        if (c == QLatin1Char('%'))
            m_paragraph += QLatin1String("&#37;"); // no placeholder of content
        else
            m_paragraph += c;
        m_hasText |= !c.isSpace();
        return m_at + 1;
    }

    qsizetype readMarkup()
    {
        const QStringView rest = m_text.mid(m_at);
        if (rest.startsWith(QLatin1String("<!--")))
            return after(QLatin1String("-->"));
        if (rest.startsWith(QLatin1String("<!")) || rest.startsWith(QLatin1String("<?")))
            return after(QLatin1String(">"));
        if (const auto tag = readTag(m_text, m_at))
            return handleTag(*tag);
        const OtherTag tag = readOtherTag(m_text, m_at);
        if (tag.end > 0)
            return handleOtherTag(tag);
        m_paragraph += QLatin1String("&lt;");
        m_hasText = true;
        return m_at + 1;
    }

    qsizetype handleTag(const HVTagToken &tag)
    {
        using Tag = HVMarkupTag;
        if (tag.tag == Tag::P) {
            endParagraph();
            return tag.end;
        }
        if (tag.tag == Tag::Ul || tag.tag == Tag::Ol)
            m_lists = std::max(0, m_lists + (tag.isEnd ? -1 : 1));
        m_paragraph += m_text.mid(m_at, tag.end - m_at).toString();
        return tag.end;
    }

    qsizetype handleOtherTag(const OtherTag &tag)
    {
        if (isNamed(tag.name, { "head", "script", "style", "title" }) && !tag.isEnd
            && m_text[tag.end - 2] != QLatin1Char('/')) {
            m_at = tag.end;
            return after(QStringLiteral("</%1>").arg(tag.name.toString()));
        }
        if (isNamed(tag.name,
                    { "address", "blockquote", "body", "center", "dd", "div", "dl", "dt", "h1",
                      "h2", "h3", "h4", "h5", "h6", "hr", "pre", "table", "tr" }))
            endParagraph();
        else if (isNamed(tag.name, { "td", "th" }))
            m_paragraph += QLatin1Char(' ');
        return tag.end;
    }

    /// The position after the next \a end, or the end of the text.
    [[nodiscard]] qsizetype after(const QString &end) const
    {
        const qsizetype found = m_text.indexOf(end, m_at, Qt::CaseInsensitive);
        return found < 0 ? m_text.size() : found + end.size();
    }

    /// A list stays in one paragraph.
    void endParagraph()
    {
        if (m_lists > 0 && m_at < m_text.size()) {
            const QChar last = m_paragraph.back();
            if (last != QLatin1Char('>') && !last.isSpace())
                m_paragraph += QLatin1Char(' ');
            return;
        }
        // Entities that only HTML knows are not yet a reason to read a text as markup.
        const bool isPlain = !isMarkup(m_paragraph) && m_paragraph.contains(QLatin1Char('&'));
        if (m_hasText)
            m_paragraphs += m_paragraph.trimmed() + QLatin1String(isPlain ? "<span></span>" : "");
        m_paragraph.clear();
        m_hasText = false;
    }

    QStringView m_text;
    qsizetype m_at = 0;
    QStringList m_paragraphs;
    QString m_paragraph;
    bool m_hasText = false; // in the paragraph
    int m_lists = 0; // that are open
};

QString escaped(const QString &line)
{
    return line.trimmed().toHtmlEscaped().replace(QLatin1Char('%'), QLatin1String("&#37;"));
}

} // namespace

QStringList tipParagraphs(const QString &tip, bool isRich)
{
    if (isRich)
        return TipReader(tip).read();
    if (tip.trimmed().isEmpty())
        return {};
    QStringList lines = tip.trimmed().split(QLatin1Char('\n'));
    std::transform(lines.cbegin(), lines.cend(), lines.begin(), escaped);
    return { lines.join(QLatin1String("<br>")) };
}

bool isTipTitle(const QString &tip)
{
    const QString title = tip.trimmed();
    return !title.isEmpty() && title.size() <= LongestTitle && !title.contains(QLatin1Char('\n'));
}

} // namespace Hovlets
