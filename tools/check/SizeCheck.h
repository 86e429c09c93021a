// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

#include <QtCore/QString>

namespace HovletsTool {

class ControlFile;
class FindingList;

/// Reports an entry that has more elements than the library reads.
void checkSize(const ControlFile &file, const XmlDocument::Branch &entry, FindingList &findings);

/// Reports an entry that has more content than a popup shows.
/// \param captions the file with the captions of its clip; empty if there is none
void checkShownSize(const ControlFile &file, const XmlDocument::Branch &entry,
                    const QString &captions, FindingList &findings);

} // namespace HovletsTool
