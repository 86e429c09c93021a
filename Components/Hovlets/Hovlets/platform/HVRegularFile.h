// SPDX-License-Identifier: Apache-2.0
#pragma once

class QFile;
class QString;

namespace Hovlets {

/*!
 * Opens \a path for reading, unbuffered, if it is a regular file; false otherwise.
 *
 * QFile waits when it opens a fifo that nobody writes to, and reads a device without end. Here what
 * is opened is checked after the opening, which never waits: a path that is replaced between a
 * check and the opening fools nobody.
 */
[[nodiscard]] bool openRegularFile(QFile &file, const QString &path);

} // namespace Hovlets
