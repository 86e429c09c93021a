// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <limits>

namespace Hovlets {

/*!
 * The bytes of a file, at most \a limit of them from its start; nothing when it cannot be read.
 *
 * A look-up and a start open every control file that there is: this costs little more than what the
 * system needs for it. Paths of Qt's resources work too.
 */
QByteArray fileBytes(const QString &path, int limit = std::numeric_limits<int>::max() / 2);

} // namespace Hovlets
