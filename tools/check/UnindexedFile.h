// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVFileBytes.h>

#include <QtCore/QFileInfo>

namespace HovletsTool {

class FindingList;

// Files in a package that the library does not index. They may have any type and size, so only
// regular files are opened, and only their beginning is read.

/// Whether the root element is that of a control file.
[[nodiscard]] bool isLikeControlFile(const QFileInfo &file);

/// Reports a file that could not be read within the library's limit.
void addUnreadable(const QString &path, const Hovlets::HVFileBytes &file, FindingList &findings);

/// Reports why a regular file with a suitable name in the control folder is not indexed.
void explainUnindexed(const QFileInfo &file, FindingList &findings);

} // namespace HovletsTool
