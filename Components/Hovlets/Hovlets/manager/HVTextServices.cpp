// SPDX-License-Identifier: Apache-2.0
#include "HVTextServices.h"

#include "HVExternalResource.h"
#include "HVLookUp.h"
#include "HVManager.h"

namespace Hovlets {

HVTextServices::HVTextServices(HVManager &manager)
    : m_manager(manager)
{
}

const QMap<QString, QVariant> &HVTextServices::globalProperties() const
{
    return m_globalProperties;
}

void HVTextServices::setGlobalProperty(const QString &name, const QVariant &value)
{
    m_globalProperties.insert(name, value);
}

QString HVTextServices::hovletAttribute(const HVXmlElement *onScreen, const QString &key,
                                        const QString &attribute, const QString &defaultValue) const
{
    const auto answer = [&](const HVXmlElement &element) {
        return element.hasAttribute(attribute) ? element.attribute(attribute) : defaultValue;
    };
    if (onScreen)
        return answer(*onScreen);
    const HVFoundContent found = lookUp([&](QString &path, int &depth, HVXmlElement *&root) {
        return m_manager.retrieve(key, path, depth, root);
    });
    return found.tree.entry() ? answer(*found.tree.entry()) : defaultValue;
}

bool HVTextServices::openExternalResource(const QString &resource) const
{
    const HVExternalResourceType type = externalResourceType(resource);
    HVInterface *host = m_manager.interface();
    return m_manager.context().get(externalResourceGate(type), true).toBool() && host
            && host->openExternalResource(type, resource);
}

} // namespace Hovlets
