// SPDX-License-Identifier: Apache-2.0
#include "HVManagerServices.h"

#include "HVManager.h"
#include "HVView.h"

#include <QtCore/QScopedValueRollback>

namespace Hovlets {

HVManagerServices::HVManagerServices(HVManager &manager)
    : m_manager(manager)
{
}

QObject *HVManagerServices::owner()
{
    return &m_manager;
}

const HVContext &HVManagerServices::settings() const
{
    return m_manager.context();
}

const HVIndex &HVManagerServices::contentIndex() const
{
    return *m_manager.index();
}

void HVManagerServices::sendMessage(HVMessageType type, const QString &message)
{
    m_manager.handleMessage(type, message);
}

QString HVManagerServices::interpolated(const QString &text) const
{
    return m_manager.interpolate(text);
}

QString HVManagerServices::translated(HVView &view, const QString &text, const QString &context)
{
    HVInterface *host = m_manager.interface();
    if (!host)
        return text;
    // The host's translation may run QML of another view, which calls this function again.
    const QScopedValueRollback<QPointer<HVView>> asking(m_translatingView, &view);
    return host->translateString(text, context);
}

bool HVManagerServices::openResource(const QString &resource)
{
    return m_manager.openExternalResource(resource);
}

HVManager *HVManagerServices::manager()
{
    return &m_manager;
}

QString HVManagerServices::keyFor(QWidget *control)
{
    return m_manager.keyForObject(control);
}

bool HVManagerServices::reservePopup(HVWidget *popup, QWidget *&container)
{
    return m_manager.reserve(popup, container);
}

HVView *HVManagerServices::translatingView() const
{
    return m_translatingView;
}

HVViewServices *viewServicesOf(HVManager *manager)
{
    return popupServicesOf(manager);
}

} // namespace Hovlets
