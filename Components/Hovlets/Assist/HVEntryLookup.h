// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace Hovlets {

class HVInterface;

/*!
 * Whether \a key has an entry in the current locale or in the fallback locale.
 *
 * The entries of an index supplied by the host must have the attribute "key", as in control files.
 */
bool hasEntry(HVInterface &host, const QString &key);

/// The current fallback key if it has an entry, otherwise empty.
QString fallbackKey(HVInterface &host);

} // namespace Hovlets
