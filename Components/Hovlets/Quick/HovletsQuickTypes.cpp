// SPDX-License-Identifier: Apache-2.0
#include "HovletsQuickTypes.h"

#include "HVHovlet.h"

namespace Hovlets {

void registerQuickTypes(const char *uri)
{
    qmlRegisterUncreatableType<HVHovlet>(
            uri, 1, 0, "Hovlet",
            QStringLiteral("Hovlet is not a type of item: attach it, as in Hovlet.key: \"save\""));
}

} // namespace Hovlets
