// SPDX-License-Identifier: Apache-2.0
#include "Entries.h"

#include "ContentIndex.h"
#include "ReadFile.h"
#include "XmlDocument.h"

#include <algorithm>
#include <limits>
#include <tuple>

namespace HovletsTool {

namespace {

std::vector<Entry> entriesIn(const ContentIndex &content, const QString &file)
{
    const XmlDocument document(readContentFile(file));
    std::vector<Entry> entries;
    if (!document.root())
        return entries;
    const QString package = content.packageOf(file);
    const QString locale = document.root()->value(QStringLiteral("locale"));
    document.forEachBranch([&](const XmlDocument::Branch &branch) {
        const XmlDocument::Element &top = branch.top();
        if (top.name != QLatin1String("hovlet"))
            return;
        const int line = document.position(top.offset).line;
        if (!entries.empty())
            entries.back().endLine = line;
        if (top.has(QStringLiteral("key")))
            entries.push_back({ package, locale, file, top.value(QStringLiteral("key")), line,
                                std::numeric_limits<int>::max() });
    });
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
