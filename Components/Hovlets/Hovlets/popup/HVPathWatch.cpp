// SPDX-License-Identifier: Apache-2.0
#include "HVPathWatch.h"

#include "HVBesideControl.h"
#include "HVQtCompat.h"
#include "HVStandIn.h"
#include "HVToolTipRequest.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <QtCore/QScopedValueRollback>
#include <QtGui/QCursor>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr int OutsideInterval = 100; // ms
constexpr qint64 LongestWait = 1000000000; // ms, 11 days; fits into an int

/// The widget under the pointer for an event at \a position that \a object receives. Unlike
/// QApplication::widgetAt(), does not query the display.
QWidget *widgetUnder(QObject *object, const QPoint &position)
{
    QWidget *receiver = qobject_cast<QWidget *>(object);
    if (const auto *window = qobject_cast<QWindow *>(object))
        receiver = window->handle() ? QWidget::find(window->winId()) : nullptr;
    if (!receiver)
        return controlReceiving(object, position);
    QWidget *window = receiver->window();
    const QPoint local = window->mapFromGlobal(position);
    if (!window->rect().contains(local))
        return nullptr;
    QWidget *child = window->childAt(local);
    return child ? child : window;
}

} // namespace

bool HVPathWatch::Target::operator==(const Target &other) const
{
    return widget == other.widget && part == other.part;
}

HVPathWatch::HVPathWatch(QWidget &popup)
    : QObject(&popup)
    , m_popup(popup)
    , m_dwell(this)
    , m_outside(this)
{
    m_clock.start();
    m_dwell.setSingleShot(true);
    m_dwell.setTimerType(Qt::PreciseTimer);
    m_outside.setInterval(OutsideInterval);
    connect(&m_dwell, &QTimer::timeout, this, &HVPathWatch::letTakeOver);
    connect(&m_outside, &QTimer::timeout, this, &HVPathWatch::lookForPointer);
}

void HVPathWatch::start(QWidget &control, const QPoint &position, int dwell)
{
    stop();
    m_dwell.stop();
    m_control = targetAt(&control, position);
    m_origin = visiblePartAt(control, position).geometry;
    m_target = m_control;
    m_nothing = {};
    m_position = position;
    m_dwellTime = dwell;
    m_runs = true;
    begin();
    QCoreApplication::instance()->installEventFilter(this);
}

void HVPathWatch::stop()
{
    m_dwell.stop();
    if (m_runs)
        finish();
}

void HVPathWatch::finish()
{
    m_runs = false;
    m_outside.stop();
    QCoreApplication::instance()->removeEventFilter(this);
}

void HVPathWatch::begin()
{
    m_path.begin(m_origin, m_popup.frameGeometry(), m_dwellTime);
}

bool HVPathWatch::isBetween(const QPoint &position) const
{
    return m_runs && m_path.isBetween(position);
}

HVPathWatch::Target HVPathWatch::targetAt(QWidget *widget, const QPoint &position)
{
    return { widget, widget ? controlPartAt(*widget, position).id : HVControlPart::Id() };
}

HVSafePath::Over HVPathWatch::over(const Target &target) const
{
    using Over = HVSafePath::Over;
    if (!target.widget)
        return Over::Nothing;
    if (target.widget->window() == &m_popup)
        return Over::Popup;
    if (target == m_control)
        return Over::Origin;
    if (!(target == m_nothing))
        return Over::Other;
    if (m_control.widget && m_control.widget != target.widget
        && m_control.widget->isAncestorOf(target.widget))
        return Over::Origin; // a part that Qt created, such as the line edit of a spin box
    return Over::Nothing;
}

HVSafePath::Verdict HVPathWatch::pointerMoved(QWidget *widget, const QPoint &position)
{
    m_position = position;
    m_target = targetAt(widget, position);
    const qint64 now = m_clock.elapsed();
    const auto id = quint64(qHashRange(m_target.part.begin(), m_target.part.end()))
            ^ quint64(reinterpret_cast<quintptr>(widget));
    const HVSafePath::Verdict verdict = m_path.pointerMoved(position, now, over(m_target), id);
    if (verdict == HVSafePath::Verdict::Keep)
        m_dwell.stop();
    else
        m_dwell.start(static_cast<int>(qBound<qint64>(0, m_path.deadline() - now, LongestWait)));
    return verdict;
}

/// Whether the tooltip event for \a widget must not go any further.
bool HVPathWatch::consumes(QWidget *widget, const QPoint &position)
{
    if (m_letsTakeOver || !m_popup.isVisible())
        return false;
    // Qt asks the widget under the pointer first, then its parents if that did not consume the
    // event.
    if (widget != m_target.widget && m_target.widget && widget->isAncestorOf(m_target.widget))
        return false;
    if (position != m_position || widget != m_target.widget)
        pointerMoved(widget, position);
    const HVSafePath::Over where = over(m_target);
    if (where == HVSafePath::Over::Origin || where == HVSafePath::Over::Popup)
        return false;
    return m_path.verdictAt(m_clock.elapsed()) != HVSafePath::Verdict::Change;
}

void HVPathWatch::letTakeOver()
{
    const QPointer<QWidget> widget = m_target.widget;
    const bool isThere = m_runs || QCursor::pos() == m_position;
    if (!widget || !isThere || m_target == m_nothing)
        return;
    m_nothing = m_target; // unless a popup for it restarts the watch
    const QPointer<HVPathWatch> self(this);
    m_letsTakeOver = true;
    requestToolTip(*widget, m_position);
    if (self)
        m_letsTakeOver = false;
}

void HVPathWatch::lookForPointer()
{
    const QPoint position = QCursor::pos();
    if (controlAt(position))
        m_outside.stop();
    Q_EMIT pointerIsAt(position);
}

bool HVPathWatch::eventFilter(QObject *object, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseMove: {
        const QPoint position = globalPosition(*static_cast<QMouseEvent *>(event));
        QWidget *widget = position == m_position ? nullptr : widgetUnder(object, position);
        if (widget)
            pointerMoved(widget, position);
        return false;
    }
    case QEvent::ToolTip:
        return object->isWidgetType()
                && consumes(static_cast<QWidget *>(object),
                            static_cast<QHelpEvent *>(event)->globalPos());
    case QEvent::Leave:
        if (object->isWidgetType() && static_cast<QWidget *>(object)->isWindow())
            m_outside.start();
        return false;
    case QEvent::Move:
    case QEvent::Resize:
        if (object == &m_popup)
            begin();
        return false;
    default:
        return false;
    }
}

} // namespace Hovlets
