// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Hovlets {

/*!
 * \brief \a text with each placeholder "%(name)s" replaced with the value of that name.
 *
 * Inserted values are scanned, too. A placeholder stays visible if its name is unknown, if its
 * value converts to a null string (an empty one removes it), or if it results from its own
 * expansion, which would never end. Names consist of letters, digits, "-" and "_".
 */
QString interpolated(const QString &text, const QMap<QString, QVariant> &values);

} // namespace Hovlets
