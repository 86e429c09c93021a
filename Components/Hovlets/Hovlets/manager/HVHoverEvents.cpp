// SPDX-License-Identifier: Apache-2.0
#include "HVHoverEvents.h"

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
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        return m_manager.mouseButtonEventFilter(object, static_cast<QMouseEvent *>(event));
    case QEvent::MouseMove:
        m_manager.mouseMoveEventFilter(object, static_cast<QMouseEvent *>(event));
        return false;
    case QEvent::ToolTip:
        return m_manager.show(m_manager.keyForObject(object),
                              static_cast<QHelpEvent *>(event)->globalPos(), object);
    case QEvent::ApplicationDeactivate:
        if (m_popup.widget())
            m_popup.widget()->hide();
        return false;
    default:
        return false;
    }
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
