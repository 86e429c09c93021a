// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "XmlDocument.h"

namespace HovletsTool {

class FindingList;

// Checks that control files and key-data files have in common.

/// Reports a file that is not well-formed or that is nested too deeply.
void checkForm(const QString &path, const XmlDocument &document, FindingList &findings);

/// Reports attributes that the library sets itself.
void checkReservedAttributes(const QString &path, const XmlDocument &document,
                             const XmlDocument::Element &element, FindingList &findings);

} // namespace HovletsTool
