// SPDX-License-Identifier: Apache-2.0
#include "HVControlWatch.h"

#include "HVStandIn.h"

#include <QtCore/QEvent>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace Hovlets {

HVControlWatch::HVControlWatch(QWidget &popup)
    : QObject(&popup)
    , m_popup(popup)
{
    popup.installEventFilter(this);
}

void HVControlWatch::watch(QWidget *control)
{
    release();
    if (!control)
        return;
    m_control = control;
    connect(control, &QObject::destroyed, this, &HVControlWatch::controlGone);
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &HVControlWatch::windowActivated);
    for (QWidget *widget = control; widget; widget = widget->parentWidget()) {
        widget->installEventFilter(this);
        m_watched.append(widget);
        if (widget->isWindow())
            break;
    }
    m_handle = windowShowing(*m_watched.constLast());
    if (m_handle)
        m_handle->installEventFilter(this);
}

void HVControlWatch::release()
{
    if (m_control)
        disconnect(m_control, nullptr, this, nullptr);
    disconnect(qGuiApp, nullptr, this, nullptr);
    for (const QPointer<QWidget> &widget : std::as_const(m_watched)) {
        if (widget)
            widget->removeEventFilter(this);
    }
    if (m_handle)
        m_handle->removeEventFilter(this);
    m_watched.clear();
    m_handle.clear();
    m_control.clear();
}

bool HVControlWatch::takesControlAlong(const QObject *object, const QEvent &event) const
{
    if (m_watched.isEmpty() || object == &m_popup)
        return false;
    if (object == m_handle)
        return event.type() == QEvent::WindowBlocked;
    const QWidget *window = m_watched.constLast();
    switch (event.type()) {
    case QEvent::Hide:
        return !event.spontaneous();
    case QEvent::Move:
        return object == window;
    case QEvent::WindowStateChange:
        return object == window && window->isMinimized();
    default:
        return false;
    }
}

void HVControlWatch::windowActivated(QWindow *window)
{
    const QWidget *own = m_watched.constLast();
    const bool isAnother = window && window->type() != Qt::Popup && window != m_popup.windowHandle()
            && own && window != windowShowing(*own);
    if (!isAnother)
        return;
    if (m_popup.isVisible() && window->frameGeometry().intersects(m_popup.frameGeometry()))
        Q_EMIT activeWindowCovered();
}

bool HVControlWatch::eventFilter(QObject *object, QEvent *event)
{
    if (takesControlAlong(object, *event))
        Q_EMIT controlGone();
    else if (event->type() == QEvent::Leave
             && (object == &m_popup || (!m_watched.isEmpty() && object == m_watched.constLast())))
        Q_EMIT pointerLeft();
    return false;
}

} // namespace Hovlets
