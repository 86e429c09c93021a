// SPDX-License-Identifier: Apache-2.0
#include "Entries.h"

#include "ContentIndex.h"
#include "XmlDocument.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace HovletsTool {

namespace {

std::vector<Entry> entriesIn(const ContentIndex &content, const QString &file)
{
    const XmlDocument document(file);
    std::vector<Entry> entries;
    QString locale;
    for (const XmlDocument::Element &element : document.elements()) {
        if (element.level == 0)
            locale = element.value(QStringLiteral("locale"));
        if (element.level != 1 || element.name != QLatin1String("hovlet"))
            continue;
        const int line = document.position(element.offset).line;
        if (!entries.empty())
            entries.back().endLine = line;
        if (element.has(QStringLiteral("key")))
            entries.push_back({ content.packageOf(file), locale, file,
                                element.value(QStringLiteral("key")), line,
                                std::numeric_limits<int>::max() });
    }
    return entries;
}

} // namespace

std::vector<Entry> entriesOf(const ContentIndex &content)
{
    std::vector<Entry> entries;
    const QStringList files = content.controlFiles();
    for (const QString &file : files) {
        const std::vector<Entry> more = entriesIn(content, file);
        entries.insert(entries.end(), more.begin(), more.end());
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry &left, const Entry &right) {
        return std::tie(left.package, left.locale, left.file, left.line)
                < std::tie(right.package, right.locale, right.file, right.line);
    });
    return entries;
}

} // namespace HovletsTool
