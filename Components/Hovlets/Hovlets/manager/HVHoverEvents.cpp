// SPDX-License-Identifier: Apache-2.0
#include "HVHoverEvents.h"

#include "HVFileMemory.h"
#include "HVHoverPopup.h"
#include "HVHoverShow.h"
#include "HVManager.h"
#include "HVStandIn.h"
#include "HVWidget.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>

namespace Hovlets {

HVHoverEvents::HVHoverEvents(HVManager &manager, HVHoverPopup &popup, HVHoverShow &show)
    : m_manager(manager)
    , m_popup(popup)
    , m_show(show)
    , m_delay(manager)
{
}

bool HVHoverEvents::filter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::ToolTip)
        return showToolTip(object, *static_cast<QHelpEvent *>(event));
    m_passed.clear();
    m_delay.see(*event);
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
    const quint64 current = ++m_latest;
    const QPointer<QObject> control(object);
    const QString key = m_manager.keyForObject(object);
    const bool handled =
            isTooEarly(control, key, event) || m_manager.show(key, event.globalPos(), control);
    m_passed = control; // last: code of the host may have sent events meanwhile
    m_passedAt = event.globalPos();
    // Code of the host may have run an event loop, in which another control was hovered. The
    // parents of the earlier one must not hide the popup of the later one.
    const bool isOutdated = m_latest != current && m_popup.isVisible();
    return handled || isOutdated;
}

/// Only controls with content wait. An ordinary tooltip shows after the desktop's delay.
bool HVHoverEvents::isTooEarly(QObject *object, const QString &key, const QHelpEvent &event)
{
    if (m_manager.context().get(HVKeyShowDelay).toInt() <= 0 || m_popup.isVisible())
        return false;
    const QPointer<QWidget> widget(qobject_cast<QWidget *>(object));
    return widget && m_show.isAllowed() && m_show.hasContent(key, *widget, event.globalPos())
            && widget && m_delay.holdsBack(*widget, event);
}

void HVHoverEvents::pointerMoved(const QPoint &position)
{
    if (m_popup.isVisible())
        m_popup.widget()->checkMousePosition(position);
}

void HVHoverEvents::buttonUsed(QObject *object, const QPoint &position)
{
    const QWidget *widget = object ? controlReceiving(object, position) : nullptr;
    if (widget)
        m_popup.widgetWasClicked(widget);
}

} // namespace Hovlets
