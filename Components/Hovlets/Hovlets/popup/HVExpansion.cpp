// SPDX-License-Identifier: Apache-2.0
#include "HVExpansion.h"

namespace Hovlets {

HVExpansion::HVExpansion(QObject *parent)
    : QObject(parent)
    , m_timer(this)
{
    m_clock.start();
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer); // a coarse one may fire before the deadline
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_delays.timeReached(m_clock.elapsed()) == HVHoverDelays::Action::Expand)
            Q_EMIT due();
        else
            schedule();
    });
}

void HVExpansion::start(int delay)
{
    m_delays.setDelays(0, delay);
    m_delays.popupShown(m_clock.elapsed(), true);
    schedule();
}

void HVExpansion::stop()
{
    m_delays.popupHidden();
    schedule();
}

void HVExpansion::setMouseIsNear(bool isNear)
{
    const auto before = m_delays.deadline();
    if (isNear)
        m_delays.pointerReturned(m_clock.elapsed());
    else
        m_delays.pointerLeft();
    if (m_delays.deadline() != before)
        schedule();
}

void HVExpansion::schedule()
{
    const auto deadline = m_delays.deadline();
    if (deadline)
        m_timer.start(static_cast<int>(qMax<qint64>(0, *deadline - m_clock.elapsed())));
    else
        m_timer.stop();
}

} // namespace Hovlets
