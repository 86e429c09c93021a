// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QXmlStreamReader;

namespace HovletsTool {

/// Throws a ToolError if an element of the file at \a path has so many attributes that comparing
/// them takes long.
void refuseLargeTags(const QByteArray &bytes, const QString &path);

/// The text of the current element and of all elements in it, however deeply they are nested.
[[nodiscard]] QString allTextOf(QXmlStreamReader &reader);

/// Throws a ToolError with the place if \a reader has met a mistake in the file at \a path.
void refuseMistakes(const QXmlStreamReader &reader, const QString &path);

} // namespace HovletsTool
