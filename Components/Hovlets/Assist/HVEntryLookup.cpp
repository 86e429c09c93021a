// SPDX-License-Identifier: Apache-2.0
#include "HVEntryLookup.h"

#include <Hovlets/HVContext.h>
#include <Hovlets/HVInterface.h>

namespace Hovlets {

bool hasEntry(HVInterface &host, const QString &key)
{
    return !key.isEmpty() && host.hovletAttribute(key, QStringLiteral("key"), {}) == key;
}

QString fallbackKey(HVInterface &host)
{
    const QString key = host.context().get(HVKeyFallbackKey, QString()).toString();
    return hasEntry(host, key) ? key : QString();
}

} // namespace Hovlets
