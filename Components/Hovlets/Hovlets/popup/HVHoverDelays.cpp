// SPDX-License-Identifier: Apache-2.0
#include "HVHoverDelays.h"

namespace Hovlets {

void HVHoverDelays::setDelays(int show, int expand)
{
    m_show = show;
    m_expand = expand;
}

HVHoverDelays::Action HVHoverDelays::toolTipDue(qint64 now, qint64 restSince)
{
    m_next = Action::Show;
    m_deadline = restSince + qMax(0, m_show);
    return timeReached(now);
}

void HVHoverDelays::pointerMoved()
{
    if (m_next == Action::Show)
        popupHidden();
}

void HVHoverDelays::popupShown(qint64 now, bool isSimple)
{
    popupHidden();
    if (!isSimple || m_expand <= 0)
        return;
    m_next = Action::Expand;
    m_deadline = now + m_expand;
}

void HVHoverDelays::popupHidden()
{
    m_next = Action::Nothing;
    m_deadline.reset();
}

void HVHoverDelays::pointerLeft()
{
    m_deadline.reset();
}

void HVHoverDelays::pointerReturned(qint64 now)
{
    if (m_next == Action::Expand && !m_deadline)
        m_deadline = now + m_expand;
}

std::optional<qint64> HVHoverDelays::deadline() const
{
    return m_deadline;
}

HVHoverDelays::Action HVHoverDelays::timeReached(qint64 now)
{
    if (!m_deadline || now < *m_deadline)
        return Action::Nothing;
    const Action due = m_next;
    popupHidden();
    return due;
}

} // namespace Hovlets
