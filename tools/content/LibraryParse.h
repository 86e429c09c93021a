// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TextPositions.h"

#include <QtCore/QString>

#include <optional>

namespace HovletsTool {

class XmlDocument;

/// A limit that ends the library's parse of a file.
struct MetLimit
{
    QString text; // such as "elements nest deeper than 512 levels"
    Position position;
};

/// Parses a file with the library, without building anything. Only a file with a document type
/// declaration can meet limits other than those on its size and depth, so others are not parsed.
[[nodiscard]] std::optional<MetLimit> findMetLimit(const XmlDocument &document);

} // namespace HovletsTool
