// SPDX-License-Identifier: Apache-2.0
#include "HVMarkupTokens.h"

#include <QtCore/QChar>

namespace Hovlets {

namespace {

bool isAsciiLetter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

bool isLetterOrDigit(QChar c)
{
    return isAsciiLetter(c) || (c >= QLatin1Char('0') && c <= QLatin1Char('9'));
}

bool isPlaceholderCharacter(QChar c)
{
    return isLetterOrDigit(c) || c == QLatin1Char('-') || c == QLatin1Char('_');
}

/// The end of the characters from \a at on that are all \a wanted.
template <typename Wanted> qsizetype endOf(QStringView text, qsizetype at, Wanted wanted)
{
    while (at < text.size() && wanted(text[at]))
        ++at;
    return at;
}

bool isAt(QStringView text, qsizetype at, char character)
{
    return at < text.size() && text[at] == QLatin1Char(character);
}

/// The character of a number such as "#160" or "#xa0".
QString numberedCharacter(QStringView number)
{
    const bool isHex = number.startsWith(QLatin1Char('x'), Qt::CaseInsensitive);
    bool isNumber = false;
    const uint code = number.mid(isHex ? 1 : 0).toString().toUInt(&isNumber, isHex ? 16 : 10);
    const bool isCharacter = isNumber && code > 0 && code <= QChar::LastValidCodePoint
            && !(code < 0x10000 && QChar::isSurrogate(code));
    const char32_t shown = isCharacter ? code : uint(QChar::ReplacementCharacter);
    return QString::fromUcs4(&shown, 1);
}

} // namespace

std::optional<HVTagToken> readTag(QStringView text, qsizetype at)
{
    HVTagToken token;
    token.isEnd = isAt(text, at + 1, '/');
    const qsizetype name = at + (token.isEnd ? 2 : 1);
    const qsizetype nameEnd = endOf(text, name, isAsciiLetter);
    const std::optional<HVMarkupTag> tag = markupTagNamed(text.mid(name, nameEnd - name));
    if (!tag)
        return {};
    token.tag = *tag;
    const qsizetype close = endOf(
            text, nameEnd, [](QChar c) { return c != QLatin1Char('<') && c != QLatin1Char('>'); });
    if (!isAt(text, close, '>'))
        return {};
    token.isEmpty = close > nameEnd && text[close - 1] == QLatin1Char('/');
    token.attributes = text.mid(nameEnd, close - nameEnd - (token.isEmpty ? 1 : 0));
    if (!token.attributes.isEmpty() && !token.attributes.front().isSpace())
        return {};
    token.end = close + 1;
    return token;
}

std::optional<HVNamedToken> readEntity(QStringView text, qsizetype at)
{
    constexpr int Longest = 10;
    const qsizetype name = at + 1;
    const qsizetype start = isAt(text, name, '#') ? name + 1 : name;
    const qsizetype end = endOf(text.left(name + Longest), start, isLetterOrDigit);
    if (end == start || !isAt(text, end, ';'))
        return {};
    return HVNamedToken { text.mid(name, end - name), end + 1 };
}

std::optional<HVNamedToken> readPlaceholder(QStringView text, qsizetype at)
{
    if (!isAt(text, at + 1, '('))
        return {};
    const qsizetype name = at + 2;
    const qsizetype end = endOf(text, name, isPlaceholderCharacter);
    if (end == name || !isAt(text, end, ')') || !isAt(text, end + 1, 's'))
        return {};
    return HVNamedToken { text.mid(name, end - name), end + 2 };
}

QString entityText(QStringView name)
{
    if (name.startsWith(QLatin1Char('#')))
        return numberedCharacter(name.mid(1));
    const auto is = [name](const char *known) {
        return name.compare(QLatin1String(known), Qt::CaseInsensitive) == 0;
    };
    if (is("lt"))
        return QStringLiteral("<");
    if (is("gt"))
        return QStringLiteral(">");
    if (is("amp"))
        return QStringLiteral("&");
    if (is("quot"))
        return QStringLiteral("\"");
    if (is("apos"))
        return QStringLiteral("'");
    if (is("nbsp"))
        return QString(QChar(QChar::Nbsp));
    return {};
}

} // namespace Hovlets
