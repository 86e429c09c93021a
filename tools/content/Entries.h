// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

class ContentIndex;

/// An entry as it is written, whether it is served or not.
struct Entry
{
    QString package, locale, file, key; // the locale is empty for all of them
    int line = 0;
    int endLine = 0; // that of the next entry in the file; of the last, beyond all lines
};

/// By package, locale, file and line.
std::vector<Entry> entriesOf(const ContentIndex &content);

} // namespace HovletsTool
