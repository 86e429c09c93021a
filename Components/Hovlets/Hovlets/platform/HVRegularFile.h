// SPDX-License-Identifier: Apache-2.0
#pragma once

class QFile;
class QString;

namespace Hovlets {

/*!
 * Opens \a path for reading, unbuffered, if it is a regular file; otherwise returns false.
 *
 * QFile would wait for a writer when it opens a fifo, and would read a device endlessly. This
 * function opens without waiting and checks what it has opened. Replacing the path between a check
 * and the opening therefore achieves nothing.
 */
[[nodiscard]] bool openRegularFile(QFile &file, const QString &path);

} // namespace Hovlets
