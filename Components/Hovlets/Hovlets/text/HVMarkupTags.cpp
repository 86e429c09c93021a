// SPDX-License-Identifier: Apache-2.0
#include "HVMarkupTags.h"

#include <QtCore/QStringList>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace Hovlets {

namespace {

using Tag = HVMarkupTag;

/// In the order of the enumeration.
constexpr std::array<const char *, MarkupTagCount> Names {
    "a", "b", "big",  "br",    "code", "em",     "font", "i",   "kbd", "li", "ol",
    "p", "s", "samp", "small", "span", "strong", "sub",  "sup", "tt",  "u",  "ul"
};

bool isLetter(QChar c)
{
    return (c >= QLatin1Char('a') && c <= QLatin1Char('z'))
            || (c >= QLatin1Char('A') && c <= QLatin1Char('Z'));
}

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

bool isNameCharacter(QChar c)
{
    return isLetter(c) || isDigit(c) || c == QLatin1Char('-') || c == QLatin1Char('_')
            || c == QLatin1Char(':');
}

bool isOneOf(const QString &value, std::initializer_list<const char *> words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const char *word) { return value == QLatin1String(word); });
}

/// "red", "#f00", "#ff0000" or "rgb(255, 0, 0)".
bool isColour(const QString &value)
{
    constexpr int Longest = 40;
    if (value.isEmpty() || value.size() > Longest)
        return false;
    if (value.startsWith(QLatin1String("rgb("))) {
        return value.endsWith(QLatin1Char(')'))
                && std::all_of(value.cbegin() + 4, value.cend() - 1, [](QChar c) {
                       return isDigit(c) || c == QLatin1Char(',') || c == QLatin1Char(' ')
                               || c == QLatin1Char('%');
                   });
    }
    if (value.front() != QLatin1Char('#'))
        return std::all_of(value.cbegin(), value.cend(), isLetter);
    return (value.size() == 4 || value.size() == 7)
            && std::all_of(value.cbegin() + 1, value.cend(), [](QChar c) {
                   return isDigit(c) || (c >= QLatin1Char('a') && c <= QLatin1Char('f'));
               });
}

/// "9pt" or "12px", up to a limit: the memory for letters grows with the square of their size.
bool isTextSize(const QString &value)
{
    constexpr int Largest = 72;
    bool isNumber = false;
    const int size = value.left(value.size() - 2).toInt(&isNumber);
    return isNumber && size > 0 && size <= Largest
            && (value.endsWith(QLatin1String("pt")) || value.endsWith(QLatin1String("px")));
}

bool isHarmlessStyle(const QString &property, const QString &value)
{
    if (isOneOf(property, { "color", "background-color" }))
        return isColour(value);
    if (property == QLatin1String("font-size"))
        return isTextSize(value);
    if (property == QLatin1String("font-weight"))
        return isOneOf(value,
                       { "normal", "bold", "100", "200", "300", "400", "500", "600", "700", "800",
                         "900" });
    if (property == QLatin1String("font-style"))
        return isOneOf(value, { "normal", "italic", "oblique" });
    if (property == QLatin1String("text-decoration"))
        return isOneOf(value, { "none", "underline", "overline", "line-through" });
    if (property == QLatin1String("text-align"))
        return isOneOf(value, { "left", "right", "center", "justify" });
    return false;
}

/// The harmless declarations. Of several for one property, only the last, because Qt needs time and
/// memory for each of them.
QString harmlessStyles(const QString &style)
{
    std::vector<std::pair<QString, QString>> styles; // properties and values
    const QStringList declarations = style.split(QLatin1Char(';'));
    for (const QString &declaration : declarations) {
        const auto colon = declaration.indexOf(QLatin1Char(':'));
        if (colon < 0)
            continue;
        const QString property = declaration.left(colon).trimmed();
        const QString value = declaration.mid(colon + 1).trimmed();
        if (!isHarmlessStyle(property, value))
            continue;
        const auto known = std::find_if(styles.begin(), styles.end(),
                                        [&](const auto &other) { return other.first == property; });
        if (known != styles.end())
            known->second = value;
        else
            styles.emplace_back(property, value);
    }
    QString result;
    for (const auto &[property, value] : styles)
        result += property + QLatin1Char(':') + value + QLatin1Char(';');
    return result;
}

/// The value of an attribute if it is harmless; otherwise empty.
QString harmlessValue(Tag tag, const QString &name, const QString &written)
{
    constexpr int Longest = 1024;
    if (written.size() > Longest)
        return {};
    const QString value = written.toLower();
    if (name == QLatin1String("style"))
        return harmlessStyles(value);
    bool isHarmless = false;
    if (tag == Tag::Font && name == QLatin1String("color"))
        isHarmless = isColour(value);
    else if (tag == Tag::Font && name == QLatin1String("size"))
        isHarmless = isOneOf(value, { "1", "2", "3", "4", "5", "6", "7", "+1", "+2", "-1", "-2" });
    else if (tag == Tag::P && name == QLatin1String("align"))
        isHarmless = isOneOf(value, { "left", "right", "center", "justify" });
    else if (tag == Tag::P && name == QLatin1String("dir"))
        isHarmless = isOneOf(value, { "ltr", "rtl" });
    else if ((tag == Tag::Ol || tag == Tag::Ul) && name == QLatin1String("type"))
        isHarmless = isOneOf(value, { "1", "a", "i", "disc", "circle", "square" });
    return isHarmless ? written : QString(); // in lists, "a" and "A" differ
}

bool mayHaveAttributes(Tag tag)
{
    switch (tag) {
    case Tag::Font:
    case Tag::Li:
    case Tag::Ol:
    case Tag::P:
    case Tag::Span:
    case Tag::Ul:
        return true;
    default:
        return false;
    }
}

/// Reads the attributes of a start tag one by one, even malformed ones.
class AttributeReader
{
public:
    explicit AttributeReader(QStringView raw)
        : m_raw(raw)
    {
    }

    bool next()
    {
        skip([](QChar c) { return !isNameCharacter(c); });
        m_name = take(isNameCharacter);
        m_value = {};
        skip([](QChar c) { return c.isSpace(); });
        if (m_at == m_raw.size() || m_raw[m_at] != QLatin1Char('='))
            return !m_name.isEmpty();
        ++m_at;
        skip([](QChar c) { return c.isSpace(); });
        const QChar quote = m_at < m_raw.size() ? m_raw[m_at] : QChar();
        if (quote == QLatin1Char('"') || quote == QLatin1Char('\'')) {
            ++m_at;
            m_value = take([quote](QChar c) { return c != quote; });
        } else {
            m_value = take([](QChar c) { return !c.isSpace(); });
        }
        return true;
    }

    QString name() const { return m_name.toString().toLower(); }
    QString value() const { return m_value.toString(); }

private:
    template <typename Wanted> QStringView take(Wanted wanted)
    {
        const qsizetype start = m_at;
        skip(wanted);
        return m_raw.mid(start, m_at - start);
    }

    template <typename Wanted> void skip(Wanted wanted)
    {
        while (m_at < m_raw.size() && wanted(m_raw[m_at]))
            ++m_at;
    }

    QStringView m_raw;
    qsizetype m_at = 0;
    QStringView m_name;
    QStringView m_value;
};

} // namespace

std::optional<HVMarkupTag> markupTagNamed(QStringView name)
{
    for (int i = 0; i < MarkupTagCount; ++i) {
        if (name.compare(QLatin1String(Names[size_t(i)]), Qt::CaseInsensitive) == 0)
            return Tag(i);
    }
    return {};
}

QLatin1String markupTagName(HVMarkupTag tag)
{
    return QLatin1String(Names[size_t(tag)]);
}

bool marksWords(HVMarkupTag tag)
{
    switch (tag) {
    case Tag::Br:
    case Tag::Li:
    case Tag::Ol:
    case Tag::P:
    case Tag::Ul:
        return false;
    default:
        return true;
    }
}

bool isStyledTextTag(HVMarkupTag tag)
{
    switch (tag) {
    case Tag::A:
    case Tag::B:
    case Tag::Br:
    case Tag::I:
    case Tag::Strong:
    case Tag::U:
        return true;
    default:
        return false;
    }
}

QString harmlessAttributes(HVMarkupTag tag, QStringView raw)
{
    QString result;
    if (!mayHaveAttributes(tag))
        return result;
    QStringList names;
    for (AttributeReader attribute(raw); attribute.next();) {
        const QString value = harmlessValue(tag, attribute.name(), attribute.value());
        if (value.isEmpty() || names.contains(attribute.name()))
            continue;
        names += attribute.name();
        result += QLatin1Char(' ') + attribute.name() + QLatin1String("=\"") + value
                + QLatin1Char('"');
    }
    return result;
}

int styledTextSize(const QString &attributes)
{
    const QLatin1String property("font-size:");
    const auto found = attributes.indexOf(property);
    if (found < 0)
        return 0;
    const auto start = attributes.cbegin() + found + property.size();
    const auto end = std::find_if_not(start, attributes.cend(), isDigit);
    return QString(start, int(end - start)).toInt();
}

QString markupAttribute(QStringView raw, QLatin1String name)
{
    for (AttributeReader attribute(raw); attribute.next();) {
        if (attribute.name() == name)
            return attribute.value().isNull() ? QLatin1String("") : attribute.value();
    }
    return {};
}

} // namespace Hovlets
