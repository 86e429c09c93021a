// SPDX-License-Identifier: Apache-2.0
#include "HVQmlTypes.h"

#include "HVXmlElement.h"

#include <QtQml/qqml.h>

namespace Hovlets {

void registerQmlTypes()
{
    static const int element =
            qmlRegisterType<HVXmlElement>("com.zandor.hovlets.qml", 1, 0, "HVXmlElement");
    Q_UNUSED(element)
}

} // namespace Hovlets
