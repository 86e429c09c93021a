// SPDX-License-Identifier: Apache-2.0
#include "HVShownText.h"

#include <QtCore/QChar>

namespace Hovlets {

namespace {

/// Number of letters without a line break opportunity; several lines of them in any popup.
constexpr int LongWord = 200;

/// Number of characters that may be drawn as one. Emoji sequences have up to ten.
constexpr int LongestJoined = 40;

/// Number of marks on one letter. Fonts need more than linear time to order and place them. No
/// writing system comes close; Unicode's stream-safe text has the same limit.
constexpr int MostMarks = 30;

constexpr QChar Ellipsis(0x2026);
constexpr QChar ZeroWidthSpace(0x200b);
constexpr QChar ZeroWidthJoiner(0x200d);

bool isWhiteSpace(QChar c)
{
    return c == QLatin1Char(' ')
            || (c >= QLatin1Char('\t') && c <= QLatin1Char('\r') && c != QLatin1Char('\v'));
}

/// Characters that a text document uses for its own objects, frames and blocks, or as the end.
bool isReserved(QChar c)
{
    const ushort code = c.unicode();
    return (code < 0x20 && !isWhiteSpace(c)) || code == 0x2029 || code == 0xfffc
            || (code >= 0xfdd0 && code <= 0xfdef) || code >= 0xfffe;
}

bool isNoBreakSpace(QChar c)
{
    return c == QChar::Nbsp || c.unicode() == 0x2007 || c.unicode() == 0x202f;
}

/// Letters that belong to the syllable before, in whose scripts no line begins with one.
bool isSmallKana(ushort code)
{
    const ushort hiragana = code >= 0x30a1 && code <= 0x30f6 ? code - 0x60 : code;
    return hiragana == 0x3041 || hiragana == 0x3043 || hiragana == 0x3045 || hiragana == 0x3047
            || hiragana == 0x3049 || hiragana == 0x3063 || hiragana == 0x3083 || hiragana == 0x3085
            || hiragana == 0x3087 || hiragana == 0x308e || hiragana == 0x3095 || hiragana == 0x3096;
}

/// Letters of scripts in which lines may break between any two of them.
bool breaksAnywhere(QChar c)
{
    const ushort code = c.unicode();
    if (c.category() != QChar::Letter_Other || isSmallKana(code))
        return false;
    return (code >= 0x2e80 && code < 0xa000) || (code >= 0xac00 && code < 0xd7b0)
            || (code >= 0xf900 && code < 0xfb00);
}

uint codePoint(QStringView character)
{
    return character.size() > 1 ? QChar::surrogateToUcs4(character[0], character[1])
                                : character[0].unicode();
}

/// The number of code units that a character takes from the budget.
int costOf(QStringView character, bool beginsRun)
{
    constexpr int Run = 7; // in addition; see HVTextRuns
    constexpr int Control = 10; // Qt lays out the text up to the next one on its own
    constexpr int Hangul = 2; // without a font, time grows with the square of their number
    const ushort code = character.front().unicode();
    if ((code >= 0x202a && code <= 0x202e) || (code >= 0x2066 && code <= 0x2069))
        return Control;
    const int size = code >= 0xac00 && code < 0xd7b0 ? Hangul : int(character.size());
    return size + (beginsRun ? Run : 0);
}

} // namespace

HVShownTextWriter::HVShownTextWriter(HVDisplayBudget &budget, bool escapes)
    : m_budget(budget)
    , m_escapes(escapes)
{
}

bool HVShownTextWriter::write(QStringView text)
{
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair =
                text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        if (!writeCharacter(text.mid(i, isPair ? 2 : 1)))
            return false;
        i += isPair ? 1 : 0;
    }
    return !isCut();
}

bool HVShownTextWriter::writeCharacter(QStringView character)
{
    if (isCut())
        return false;
    if (!m_budget.takeCharacters(m_cost
                                 * costOf(character, m_runs.beginsAt(codePoint(character))))) {
        cut();
        return false;
    }
    if (isMarkTooMany(character))
        return true;
    const QChar first = character.front();
    breakLongWord(first);
    const bool isShown = character.size() > 1 || !(isReserved(first) || first.isSurrogate());
    for (const QChar c : character)
        append(isShown ? c : QChar(QChar::ReplacementCharacter));
    return true;
}

bool HVShownTextWriter::isMarkTooMany(QStringView character)
{
    const uint code = codePoint(character);
    if (QChar::isMark(code))
        return ++m_marks > MostMarks;
    if (QChar::category(code) != QChar::Other_Format) // joiners, for example
        m_marks = 0;
    return false;
}

void HVShownTextWriter::append(QChar c)
{
    m_shown.spoken += c;
    if (m_escapes && c == QLatin1Char('<'))
        m_shown.text += QLatin1String("&lt;");
    else if (m_escapes && c == QLatin1Char('&'))
        m_shown.text += QLatin1String("&amp;");
    else if (m_escapes && c == QChar::Nbsp) // StyledText treats the character as white space
        m_shown.text += QLatin1String("&nbsp;");
    else
        m_shown.text += c;
}

void HVShownTextWriter::breakLongWord(QChar next)
{
    const QChar last = m_shown.spoken.isEmpty() ? QChar() : m_shown.spoken.back();
    if ((next.isSpace() && !isNoBreakSpace(next))
        || (breaksAnywhere(next) && breaksAnywhere(last))) {
        m_wordLength = 0;
        return;
    }
    // Does not split what is drawn as one character.
    const bool isJoined = next.isMark() || next == ZeroWidthJoiner || last == ZeroWidthJoiner;
    if (++m_wordLength <= (isJoined ? LongWord + LongestJoined : LongWord))
        return;
    m_shown.text += ZeroWidthSpace;
    m_wordLength = 1;
}

void HVShownTextWriter::writeEntity(QStringView name)
{
    const QString entity = QLatin1Char('&') + name.toString() + QLatin1Char(';');
    if (!m_budget.takeCharacters(m_cost * int(entity.size())))
        return cut();
    m_shown.text += entity;
    m_shown.spoken += entity;
}

void HVShownTextWriter::endWord()
{
    m_wordLength = 0;
    m_runs.endParagraph();
    m_shown.spoken += QLatin1Char(' ');
}

void HVShownTextWriter::endText()
{
    if (!m_budget.endText())
        cut();
}

void HVShownTextWriter::cut()
{
    if (isCut())
        return;
    m_shown.isCut = true;
    m_shown.text += Ellipsis;
    m_shown.spoken += Ellipsis;
}

HVShownText HVShownTextWriter::take(HVShownText::Format format)
{
    m_shown.format = format;
    return std::move(m_shown);
}

HVShownText shownPlainText(const QString &text, HVDisplayBudget &budget)
{
    HVShownTextWriter writer(budget, false);
    writer.write(text);
    writer.endText();
    return writer.take(HVShownText::Format::Plain);
}

void appendSimplified(QString &text, QStringView more, int most)
{
    for (const QChar c : more) {
        if (text.size() > most)
            return;
        if (!isWhiteSpace(c))
            text += c;
        else if (!text.isEmpty() && !text.endsWith(QLatin1Char(' ')))
            text += QLatin1Char(' ');
    }
}

QString simplifiedText(QStringView text, int most)
{
    QString result;
    appendSimplified(result, text, most);
    if (result.endsWith(QLatin1Char(' ')))
        result.chop(1);
    return result;
}

} // namespace Hovlets
