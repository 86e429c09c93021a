// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

class FindingList;
class XmlDocument;

/// Validates a well-formed file against the schema "hovlets" or "hovletkeys".
void checkSchema(const QString &schema, const QString &path, const XmlDocument &document,
                 FindingList &findings);

} // namespace HovletsTool
