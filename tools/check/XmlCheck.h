// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

namespace HovletsTool {

class FindingList;

// Checks for both control files and key-data files.

/// Reports a file that is not well-formed or nested too deeply.
void checkForm(const QString &path, const XmlDocument &document, FindingList &findings);

/// Reports attributes that the library sets itself.
void checkReservedAttributes(const QString &path, const XmlDocument &document,
                             const XmlDocument::Element &element, FindingList &findings);

} // namespace HovletsTool
