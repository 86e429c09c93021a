// SPDX-License-Identifier: Apache-2.0
#include "TipText.h"

#include "HVMarkup.h"

#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtGui/QTextBlock>
#include <QtGui/QTextDocument>
#include <QtGui/QTextDocumentFragment>
#include <QtGui/QTextFragment>
#include <QtGui/QTextList>

#include <algorithm>

namespace HovletsTool {

namespace {

/// A document that reads no files. Rich text may name style sheets.
class ClosedDocument : public QTextDocument
{
protected:
    QVariant loadResource(int, const QUrl &) override { return {}; }
};

/// The start of rich text that is read, without the widths of table cells. Qt needs time that grows
/// with the square of the nested tags, and with the width of cells.
QString readPart(const QString &richText)
{
    constexpr int MostTags = 1000;
    constexpr int MostCharacters = 65536;
    QString part = richText.left(MostCharacters);
    int tags = 0;
    const auto end = std::find_if(part.cbegin(), part.cend(), [&tags](QChar c) {
        return c == QLatin1Char('<') && ++tags > MostTags;
    });
    part.truncate(static_cast<int>(end - part.cbegin()));
    static const QRegularExpression cell(QStringLiteral("<t[dh]\\b"),
                                         QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression span(QStringLiteral("\\b(col|row)(?=span\\s*=)"),
                                         QRegularExpression::CaseInsensitiveOption);
    return part.contains(cell) ? part.replace(span, QStringLiteral("no")) : part;
}

QString withoutPictures(QString text)
{
    return text.remove(QChar::ObjectReplacementCharacter);
}

/// The markup of a paragraph without any: empty, unless the library would take its text for markup.
QString asMarkup(const QString &plain)
{
    return Hovlets::isMarkup(plain) ? plain.toHtmlEscaped() : QString();
}

QString inTag(const QString &text, const QString &name)
{
    return QStringLiteral("<%2>%1</%2>").arg(text, name);
}

QString markupOf(const QTextFragment &fragment)
{
    const QTextCharFormat format = fragment.charFormat();
    QString text = withoutPictures(fragment.text()).toHtmlEscaped();
    text.replace(QChar::LineSeparator, QLatin1String("<br/>"));
    if (format.fontWeight() > QFont::Normal)
        text = inTag(text, QStringLiteral("b"));
    if (format.fontItalic())
        text = inTag(text, QStringLiteral("i"));
    const QString address = format.anchorHref();
    return address.startsWith(QLatin1String("http"))
            ? QStringLiteral("<a href=\"%1\">%2</a>").arg(address.toHtmlEscaped(), text)
            : text;
}

QString markupOf(const QTextBlock &block)
{
    QString markup;
    for (QTextBlock::iterator each = block.begin(); !each.atEnd(); ++each)
        markup += markupOf(each.fragment());
    return markup.simplified();
}

/// Collects the paragraphs of a document.
class Paragraphs
{
public:
    void add(const QTextBlock &block)
    {
        const QString plain = withoutPictures(block.text()).simplified();
        if (plain.isEmpty())
            return;
        const QTextList *list = block.textList();
        const bool continuesList = list && list == m_list;
        m_list = list;
        if (!list) {
            const QString markup = markupOf(block);
            const bool isPlain = markup == plain.toHtmlEscaped();
            m_all.push_back({ plain, isPlain ? asMarkup(plain) : markup });
        } else if (!continuesList) {
            m_all.push_back({ plain, inTag(item(block), nameOf(*list)) });
        } else {
            TipParagraph &last = m_all.back();
            last.plain += QLatin1Char(' ') + plain;
            last.markup.insert(last.markup.lastIndexOf(QLatin1String("</")), item(block));
        }
    }

    std::vector<TipParagraph> all() { return std::move(m_all); }

private:
    static QString item(const QTextBlock &block)
    {
        return inTag(markupOf(block), QStringLiteral("li"));
    }

    static QString nameOf(const QTextList &list)
    {
        const bool isNumbered = list.format().style() <= QTextListFormat::ListDecimal;
        return isNumbered ? QStringLiteral("ol") : QStringLiteral("ul");
    }

    std::vector<TipParagraph> m_all;
    const QTextList *m_list = nullptr; // of the last block
};

std::vector<TipParagraph> paragraphsOfPlainText(const QString &text)
{
    std::vector<TipParagraph> all;
    static const QRegularExpression empty(QStringLiteral("\\n\\s*\\n"));
    for (const QString &each : text.split(empty)) {
        const QString plain = each.simplified();
        if (plain.isEmpty())
            continue;
        all.push_back({ plain, asMarkup(plain) });
    }
    return all;
}

} // namespace

std::vector<TipParagraph> paragraphsOf(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return paragraphsOfPlainText(text);
    ClosedDocument document;
    document.setHtml(readPart(text));
    Paragraphs paragraphs;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next())
        paragraphs.add(block);
    return paragraphs.all();
}

QString plainText(const QString &text)
{
    if (!Qt::mightBeRichText(text))
        return withoutPictures(text).simplified();
    const ClosedDocument closed;
    return withoutPictures(QTextDocumentFragment::fromHtml(readPart(text), &closed).toPlainText())
            .simplified();
}

QString plainLabel(const QString &text)
{
    static const QRegularExpression mnemonic(QStringLiteral("\\(&.\\)|&(?=[^ &])"));
    static const QRegularExpression end(QStringLiteral("(\\.\\.\\.|…|:)$"));
    return plainText(text)
            .remove(mnemonic)
            .replace(QLatin1String("&&"), QLatin1String("&"))
            .remove(end)
            .trimmed();
}

bool isTitle(const QString &plain)
{
    constexpr int Longest = 60; // characters, about a line of the popup
    static const QRegularExpression sentences(QStringLiteral("[.!?。] +\\S"));
    return plain.size() <= Longest && !sentences.match(plain).hasMatch();
}

} // namespace HovletsTool
