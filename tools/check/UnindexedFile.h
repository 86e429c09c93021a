// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFileInfo>

namespace HovletsTool {

class FindingList;

// Files that lie in a package and that the library does not index. They may be anything, and of any
// size: ordinary ones only are opened, and judged by how they begin.

/// Whether the root element is that of a control file.
bool isLikeControlFile(const QFileInfo &file);

/// Why an ordinary file with the right name in the control folder is not indexed.
void explainUnindexed(const QFileInfo &file, FindingList &findings);

} // namespace HovletsTool
