// SPDX-License-Identifier: Apache-2.0
#include "PlaceholderCheck.h"

#include "Findings.h"
#include "StartTag.h"

#include <QtCore/QRegularExpression>

#include <algorithm>

namespace HovletsTool {

namespace {

using Range = XmlDocument::Range;

struct Occurrence
{
    QString text;
    int offset;
};

const QRegularExpression &opened()
{
    static const QRegularExpression pattern(
            QStringLiteral("%\\([-_a-zA-Z0-9]*(?!\\)s)(?![-_a-zA-Z0-9])"));
    return pattern;
}

/// The placeholders as written in the file. They are ASCII, so bytes are characters.
std::vector<Occurrence> written(const QByteArray &bytes, const std::vector<Range> &ranges)
{
    std::vector<Occurrence> found;
    for (const Range &range : ranges) {
        const QString text =
                QString::fromLatin1(bytes.mid(range.begin, std::max(0, range.end - range.begin)));
        auto matches = opened().globalMatch(text);
        while (matches.hasNext()) {
            const auto match = matches.next();
            found.push_back(
                    { match.captured(), range.begin + static_cast<int>(match.capturedStart()) });
        }
    }
    return found;
}

/// \param otherwise the place to report for a placeholder that an entity holds
void check(const QString &path, const XmlDocument &document, const QString &text,
           const std::vector<Range> &ranges, int otherwise, FindingList &findings)
{
    auto matches = opened().globalMatch(text);
    if (!matches.hasNext())
        return;
    const std::vector<Occurrence> places = written(document.bytes(), ranges);
    for (size_t i = 0; matches.hasNext(); ++i) {
        const QString placeholder = matches.next().captured();
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
    for (const auto &[name, value] : element.attributes) {
        if (!value.contains(QLatin1String("%(")))
            continue;
        const auto place = findAttribute(document.bytes(), element.offset, name.toUtf8());
        std::vector<Range> ranges;
        if (place)
            ranges.push_back({ place->valueBegin, place->valueEnd });
        check(path, document, value, ranges, place ? place->name : element.offset, findings);
    }
    check(path, document, element.text, element.textRanges, element.offset, findings);
}

} // namespace HovletsTool
