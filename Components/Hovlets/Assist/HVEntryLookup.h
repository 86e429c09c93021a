// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace Hovlets {

class HVInterface;

/*!
 * Whether \a key has an entry in the locale in force or in the fallback locale.
 *
 * The interface looks up and frees what it finds. An index of the host's own must give its entries
 * the attribute "key", as the control files do.
 */
bool hasEntry(HVInterface &host, const QString &key);

/// The fallback key in force if it has an entry, else empty.
QString fallbackKey(HVInterface &host);

} // namespace Hovlets
