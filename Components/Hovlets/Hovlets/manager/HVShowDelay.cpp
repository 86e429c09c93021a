// SPDX-License-Identifier: Apache-2.0
#include "HVShowDelay.h"

#include "HVManager.h"
#include "HVQtCompat.h"
#include "HVToolTipRequest.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QWidget>

namespace Hovlets {

HVShowDelay::HVShowDelay(HVManager &manager)
    : m_manager(manager)
    , m_timer(&manager)
{
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] { release(); });
}

void HVShowDelay::see(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::MouseMove: {
        // A move reaches the window and then widgets in it.
        const QPoint position = globalPosition(static_cast<const QMouseEvent &>(event));
        if (position == m_position)
            return;
        m_position = position;
        m_restSince = m_clock.elapsed();
        break;
    }
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::Wheel:
    case QEvent::WindowDeactivate:
    case QEvent::Leave:
        break;
    default:
        return;
    }
    m_delays.pointerMoved();
    m_timer.stop();
}

bool HVShowDelay::holdsBack(QWidget &widget, const QHelpEvent &event)
{
    if (m_releases)
        return false;
    const qint64 now = m_clock.elapsed();
    m_delays.setDelays(m_manager.context().get(HVKeyShowDelay).toInt(), 0);
    if (m_delays.toolTipDue(now, m_restSince.value_or(now)) == HVHoverDelays::Action::Show)
        return false;
    m_widget = &widget;
    m_position = event.globalPos();
    m_timer.start(static_cast<int>(*m_delays.deadline() - now));
    return true;
}

void HVShowDelay::release()
{
    if (m_delays.timeReached(m_clock.elapsed()) != HVHoverDelays::Action::Show) {
        if (m_delays.deadline())
            m_timer.start(1); // timers may fire a fraction of a millisecond early
        return;
    }
    if (!m_widget)
        return;
    const QPointer<QTimer> self(&m_timer);
    m_releases = true;
    requestToolTip(*m_widget, m_position);
    if (self) // the host may have deleted the library
        m_releases = false;
}

} // namespace Hovlets
