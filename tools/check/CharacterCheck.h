// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

namespace HovletsTool {

class FindingList;

/// Finds references such as "&#x1F600;", which Qt 5 itself reads as other characters. Does nothing
/// if the program is built with Qt 6.
void checkCharacters(const QString &path, const XmlDocument &document, FindingList &findings);

} // namespace HovletsTool
