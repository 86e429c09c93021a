// SPDX-License-Identifier: Apache-2.0
#include "HVHoverEvents.h"

#include "HVFileMemory.h"
#include "HVHoverPopup.h"
#include "HVManager.h"
#include "HVWidget.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>

namespace Hovlets {

HVHoverEvents::HVHoverEvents(HVManager &manager, HVHoverPopup &popup)
    : m_manager(manager)
    , m_popup(popup)
{
}

bool HVHoverEvents::filter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        return showToolTip(object, *static_cast<QHelpEvent *>(event));
    m_passed.clear();
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        return m_manager.mouseButtonEventFilter(object, static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        m_manager.mouseMoveEventFilter(object, static_cast<QMouseEvent *>(event));
        return false;
    case QEvent::ApplicationDeactivate:
        if (m_popup.widget())
            m_popup.widget()->hide();
        return false;
    default:
        return false;
    }
}

bool HVHoverEvents::showToolTip(QObject *object, const QHelpEvent &event)
{
    const bool isPassedOn =
            m_passed && m_passed->parent() == object && m_passedAt == event.globalPos();
    if (!isPassedOn)
        m_pass = HVToolTipPass::next();
    const HVToolTipPass pass(m_pass);
    const QPointer<QObject> control(object);
    const bool handled = m_manager.show(m_manager.keyForObject(object), event.globalPos(), object);
    m_passed = control; // last: code of the host may have sent events meanwhile
    m_passedAt = event.globalPos();
    return handled;
}

void HVHoverEvents::pointerMoved(const QPoint &position)
{
    if (m_popup.isVisible())
        m_popup.widget()->checkMousePosition(position);
}

void HVHoverEvents::buttonUsed(QObject *object)
{
    if (object && object->isWidgetType())
        m_popup.widgetWasClicked(static_cast<QWidget *>(object));
}

} // namespace Hovlets
