// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "TextPositions.h"

#include <HVEntryCut.h>

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

/// What the library parses of a file in a look-up for \a key, within its limit.
[[nodiscard]] Hovlets::HVEntryCut partToParse(const XmlDocument &document, const QString &key);

/*!
 * Finds where every look-up in a file of \a size bytes would parse more than the library allows.
 *
 * \param around receives the number of bytes that every look-up parses, or 0 if the file is so
 * small that it cannot meet the limit
 */
[[nodiscard]] std::optional<MetLimit> findParseLimit(const XmlDocument &document, qint64 size,
                                                     qint64 &around);

/// The limit, as the library reports it.
[[nodiscard]] QString parseLimitText();

} // namespace HovletsTool
