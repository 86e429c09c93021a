// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

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

#ifdef Q_OS_UNIX
/// Opens \a path for reading, whatever it is, without waiting for a writer of a fifo. Returns the
/// descriptor, which the caller closes, or a negative number.
[[nodiscard]] int openWithoutWaiting(const QString &path);
#endif

} // namespace Hovlets
