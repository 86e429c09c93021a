// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

namespace HovletsTool {

class ControlFile;
class FindingList;

/// Reports an entry that has more elements than the library reads, or more content than a popup
/// shows.
void checkSize(const ControlFile &file, const XmlDocument::Branch &entry, FindingList &findings);

} // namespace HovletsTool
