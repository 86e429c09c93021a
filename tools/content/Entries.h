// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

class ContentIndex;

/// An entry as written in a control file, whether or not the library serves it.
struct Entry
{
    QString package, locale, file, key; // an empty locale stands for all locales
    int line = 0;
    int endLine = 0; // the line of the file's next entry; past all lines for the last one
};

/// All entries, sorted by package, locale, file and line.
[[nodiscard]] std::vector<Entry> entriesOf(const ContentIndex &content);

} // namespace HovletsTool
