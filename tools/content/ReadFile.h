// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

namespace HovletsTool {

/// All bytes of a regular file. Throws a ToolError for a file that cannot be read or that has more
/// than \a most bytes.
[[nodiscard]] QByteArray readFile(const QString &path, qint64 most);

/// All bytes of a control file or a key-data file, at most as many as the library reads.
[[nodiscard]] QByteArray readContentFile(const QString &path);

} // namespace HovletsTool
