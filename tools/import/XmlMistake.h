// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

class QXmlStreamReader;

namespace HovletsTool {

/// Throws a ToolError with the place if \a reader has met a mistake in the file at \a path.
void refuseMistakes(const QXmlStreamReader &reader, const QString &path);

} // namespace HovletsTool
