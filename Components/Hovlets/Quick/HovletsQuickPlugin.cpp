// SPDX-License-Identifier: Apache-2.0
#include "HovletsQuickTypes.h"

#include <QtQml/QQmlExtensionPlugin>

/// What the engine loads for `import Hovlets`.
class HovletsQuickPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    void registerTypes(const char *uri) override { Hovlets::registerQuickTypes(uri); }
};

#include "HovletsQuickPlugin.moc"
