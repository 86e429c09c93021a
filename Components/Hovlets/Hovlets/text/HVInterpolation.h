// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>

namespace Hovlets {

/*!
 * \brief \a text with each placeholder "%(name)s" replaced by the value of that name.
 *
 * What a value brings in is scanned again. A placeholder stays visible when its name is unknown,
 * when its value converts to a null string (an empty one removes it), or when it comes out of its
 * own expansion, which would never end. A name is of letters, digits, "-" and "_".
 */
QString interpolated(const QString &text, const QMap<QString, QVariant> &values);

} // namespace Hovlets
