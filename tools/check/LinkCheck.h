// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

namespace HovletsTool {

class FindingList;

/// Finds broken links in an element and in the markup of its text.
void checkLinks(const QString &path, const XmlDocument &document,
                const XmlDocument::Element &element, FindingList &findings);

} // namespace HovletsTool
