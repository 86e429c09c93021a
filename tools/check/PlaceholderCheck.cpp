// SPDX-License-Identifier: Apache-2.0
#include "PlaceholderCheck.h"

#include "Findings.h"
#include "StartTag.h"

#include <QtCore/QHash>

#include <algorithm>
#include <iterator>

namespace HovletsTool {

namespace {

using Range = XmlDocument::Range;

struct Occurrence
{
    QString text;
    int offset;
};

bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-'
            || c == '_';
}

char toAscii(char c)
{
    return c;
}

char toAscii(QChar c)
{
    return c.unicode() < 128 ? static_cast<char>(c.unicode()) : '\0';
}

/// Finds "%(name" without ")s" after it, in bytes or characters.
template <typename Iterator>
void findUnterminated(Iterator begin, Iterator end, int offset, std::vector<Occurrence> &found)
{
    const auto at = [&](Iterator i) { return i < end ? toAscii(*i) : '\0'; };
    for (Iterator i = begin; i < end; ++i) {
        if (at(i) != '%' || at(i + 1) != '(')
            continue;
        Iterator last = i + 2;
        while (isNameCharacter(at(last)))
            ++last;
        if (at(last) == ')' && at(last + 1) == 's')
            continue;
        QString text;
        std::transform(i, last, std::back_inserter(text),
                       [](auto c) { return QLatin1Char(toAscii(c)); });
        found.push_back({ text, offset + static_cast<int>(i - begin) });
        i = last - 1;
    }
}

/// The unterminated placeholders as they are written in the file.
std::vector<Occurrence> written(const QByteArray &bytes, const std::vector<Range> &ranges)
{
    std::vector<Occurrence> found;
    for (const Range &range : ranges)
        findUnterminated(bytes.begin() + range.begin,
                         bytes.begin() + std::max(range.begin, range.end), range.begin, found);
    return found;
}

/// \param otherwise the place to report if an entity contains the placeholder
void check(const QString &path, const XmlDocument &document, const QString &text,
           const std::vector<Range> &ranges, int otherwise, FindingList &findings)
{
    std::vector<Occurrence> meant;
    findUnterminated(text.begin(), text.end(), 0, meant);
    if (meant.empty())
        return;
    const std::vector<Occurrence> places = written(document.bytes(), ranges);
    for (size_t i = 0; i < meant.size(); ++i) {
        const QString &placeholder = meant[i].text;
        const bool isWritten = i < places.size() && places[i].text == placeholder;
        findings.add(
                "HV401", path, document.position(isWritten ? places[i].offset : otherwise),
                QStringLiteral("the placeholder \"%1\" does not end with \")s\"").arg(placeholder));
    }
}

} // namespace

void checkPlaceholders(const QString &path, const XmlDocument &document,
                       const XmlDocument::Element &element, FindingList &findings)
{
    check(path, document, element.text, element.textRanges, element.offset, findings);
    const auto mayHavePlaceholder = [](const XmlDocument::Attribute &attribute) {
        return attribute.value.contains(QLatin1String("%("));
    };
    if (std::none_of(element.attributes.begin(), element.attributes.end(), mayHavePlaceholder))
        return;
    const QByteArray &bytes = document.bytes();
    QHash<QString, AttributePlace> places;
    for (const AttributePlace &place : attributesAt(bytes, element.offset)) {
        const QByteArray name = bytes.mid(place.name, place.nameEnd - place.name);
        places.insert(QString::fromUtf8(name), place);
    }
    for (const auto &[name, value] : element.attributes) {
        const auto place = places.constFind(name);
        if (place == places.cend())
            check(path, document, value, {}, element.offset, findings);
        else
            check(path, document, value, { { place->valueBegin, place->valueEnd } }, place->name,
                  findings);
    }
}

} // namespace HovletsTool
