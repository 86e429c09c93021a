// SPDX-License-Identifier: Apache-2.0
#include "HVContentLocale.h"

#include "HVContext.h"

namespace Hovlets {

QLocale preferredContentLocale(const HVContext &context)
{
    return QLocale(context.get(HVKeyLocale).toString());
}

QLocale fallbackContentLocale(const HVContext &context)
{
    return QLocale(context.get(HVKeyFallbackLocale).toString());
}

QLocale translationLocale(const HVContext &context)
{
    // Unlike content, translations do not default to "en_US": without a setting, the system's
    // locale is next.
    for (const contextKey key : { HVKeyLocale, HVKeyFallbackLocale }) {
        const QString name = context.get(key, QString()).toString();
        if (!name.isEmpty())
            return QLocale(name);
    }
    return QLocale::system();
}

} // namespace Hovlets
