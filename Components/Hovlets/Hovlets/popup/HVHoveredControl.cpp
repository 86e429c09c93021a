// SPDX-License-Identifier: Apache-2.0
#include "HVHoveredControl.h"

#include "HVControlWatch.h"
#include "HVDisabledReason.h"
#include "HVDismissalWatch.h"
#include "HVExpansion.h"
#include "HVPathWatch.h"
#include "HVPopupServices.h"
#include "HVStandIn.h"

#include <QtGui/QCursor>
#include <QtWidgets/QWidget>

#include <utility>

namespace Hovlets {

HVHoveredControl::HVHoveredControl(QWidget &popup, HVPopupServices *services, QWidget *reference)
    : QObject(&popup)
    , m_popup(popup)
    , m_services(services)
    , m_widget(reference)
    , m_described(popup)
    , m_control(new HVControlWatch(popup))
    , m_reason(new HVDisabledReason(&popup))
    , m_dismissal(new HVDismissalWatch(popup))
    , m_path(new HVPathWatch(popup))
    , m_expansion(new HVExpansion(&popup))
{
    connect(m_control, &HVControlWatch::controlGone, this, &HVHoveredControl::ended);
    connect(m_control, &HVControlWatch::pointerLeft, this, [this] {
        if (m_popup.isVisible())
            Q_EMIT pointerIsAt(QCursor::pos());
    });
    connect(m_control, &HVControlWatch::activeWindowCovered, this, &HVHoveredControl::inTheWay);
    connect(m_dismissal, &HVDismissalWatch::dismissed, this, &HVHoveredControl::ended);
    connect(m_reason, &HVDisabledReason::changed, this, &HVHoveredControl::disabledReasonChanged);
    connect(m_path, &HVPathWatch::pointerIsAt, this, &HVHoveredControl::pointerIsAt);
    connect(m_expansion, &HVExpansion::due, this, &HVHoveredControl::expansionDue);
}

QWidget *HVHoveredControl::widget() const
{
    return m_widget;
}

void HVHoveredControl::setPointer(const QPoint &position)
{
    m_nextPointer = position;
}

void HVHoveredControl::set(QWidget *control)
{
    m_widget = control;
    m_pointer = std::exchange(m_nextPointer, {}).value_or(QCursor::pos());
    m_control->watch(control);
    m_reason->watch(control, m_pointer);
    m_described.reset();
}

QString HVHoveredControl::disabledReason() const
{
    return m_reason->text();
}

std::optional<HVBesideControl> HVHoveredControl::beside() const
{
    if (!m_widget || setting(HVKeyPlacement).toInt() != HVPlaceBesideControl)
        return {};
    return HVBesideControl(*m_widget, m_pointer, setting(HVKeyKeepClear).value<QRegion>());
}

void HVHoveredControl::release(QWidget *reference)
{
    if (m_widget != reference)
        m_reason->watch(nullptr, {});
    m_widget = reference;
    m_control->watch(nullptr);
    m_described.reset();
    stopWatching();
}

void HVHoveredControl::setKey(const QString &key, const QPoint &position)
{
    m_described.reset();
    if (m_widget)
        m_described.set(key, *m_widget, position);
}

void HVHoveredControl::startWatching()
{
    m_dismissal->start(setting(HVKeyDismissOnKey).toInt(), m_widget);
    if (m_widget && setting(HVKeySafePath).toBool())
        m_path->start(*m_widget, m_pointer, setting(HVKeySafePathDwell).toInt());
    else
        m_path->stop();
    if (setting(HVKeySimpleMode).toBool())
        m_expansion->start(setting(HVKeyExpandDelay).toInt());
    else
        m_expansion->stop();
}

void HVHoveredControl::stopExpansion()
{
    m_expansion->stop();
}

void HVHoveredControl::stopWatching()
{
    m_dismissal->stop();
    m_path->stop();
    m_expansion->stop();
}

void HVHoveredControl::finish()
{
    m_path->finish();
}

bool HVHoveredControl::isNear(const QPoint &position)
{
    const QPointer<HVHoveredControl> self(this);
    const bool isOverControl = m_widget && controlAt(position) == m_widget
            && m_described.contains(*m_widget, position, m_services);
    return isOverControl || (self && m_path->isBetween(position));
}

void HVHoveredControl::setMouseIsNear(bool isNear)
{
    m_expansion->setMouseIsNear(isNear);
}

QVariant HVHoveredControl::setting(contextKey key) const
{
    return settingOf(m_services, key);
}

} // namespace Hovlets
