// SPDX-License-Identifier: Apache-2.0
#include "HVLevelKeyWatch.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QKeyEvent>

#include <utility>

namespace Hovlets {

HVLevelKeyWatch::HVLevelKeyWatch(std::function<bool()> isWanted, QObject *parent)
    : QObject(parent)
    , m_isWanted(std::move(isWanted))
{
}

void HVLevelKeyWatch::start(const HVLevelKey &key)
{
    const bool wasStopped = m_key.isEmpty();
    stop();
    m_key = key;
    if (key.isEmpty())
        return;
    QCoreApplication::instance()->installEventFilter(this);
    if (!wasStopped)
        return;
    m_isNew = true;
    QMetaObject::invokeMethod(
            this, [this] { m_isNew = false; }, Qt::QueuedConnection);
}

void HVLevelKeyWatch::stop()
{
    m_key = HVLevelKey();
    if (m_held == 0)
        QCoreApplication::instance()->removeEventFilter(this);
}

/// Whether a press, or the question that precedes it, is the popup's.
bool HVLevelKeyWatch::takes(const QKeyEvent &event)
{
    if (event.isAutoRepeat())
        return m_held != 0 && event.key() == m_held; // Qt reports keys that it does not name as 0
    if (event.key() == m_held)
        m_held = 0; // its release went elsewhere
    if (m_key.isEmpty())
        stop();
    if (!m_key.matches(event))
        return false;
    const quint64 time = event.timestamp(); // 0 for most events that programs make
    const bool isOlder = time != 0 && (m_isNew || time == m_leftAt);
    if (!isOlder && m_isWanted())
        return true;
    m_leftAt = time;
    return false;
}

bool HVLevelKeyWatch::takesRelease(const QKeyEvent &event)
{
    if (m_held == 0 || event.key() != m_held)
        return false;
    if (event.isAutoRepeat())
        return true;
    m_held = 0;
    if (m_key.isEmpty())
        stop();
    return true;
}

/// Consumes an event by accepting it as well: an accepted ShortcutOverride keeps the press from
/// shortcuts, and the other events, if ignored, would continue to the parents of the widget.
bool HVLevelKeyWatch::eventFilter(QObject *object, QEvent *event)
{
    Q_UNUSED(object)
    bool isTaken = false;
    switch (event->type()) {
    case QEvent::ShortcutOverride:
        isTaken = takes(static_cast<const QKeyEvent &>(*event));
        break;
    case QEvent::KeyPress: {
        const auto &key = static_cast<const QKeyEvent &>(*event);
        isTaken = takes(key);
        if (isTaken && !key.isAutoRepeat()) {
            m_held = key.key();
            Q_EMIT pressed();
        }
        break;
    }
    case QEvent::KeyRelease:
        isTaken = takesRelease(static_cast<const QKeyEvent &>(*event));
        break;
    default:
        break;
    }
    if (isTaken)
        event->accept();
    return isTaken;
}

} // namespace Hovlets
