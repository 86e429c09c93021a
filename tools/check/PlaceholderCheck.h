// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

namespace HovletsTool {

class FindingList;

/// Finds unterminated placeholders in the attributes and the text of an element.
void checkPlaceholders(const QString &path, const XmlDocument &document,
                       const XmlDocument::Element &element, FindingList &findings);

} // namespace HovletsTool
