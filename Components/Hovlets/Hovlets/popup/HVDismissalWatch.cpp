// SPDX-License-Identifier: Apache-2.0
#include "HVDismissalWatch.h"

#include "HVDismissal.h"
#include "HVStandIn.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace Hovlets {

HVDismissalWatch::HVDismissalWatch(QWidget &popup)
    : QObject(&popup)
    , m_popup(popup)
{
}

void HVDismissalWatch::start(int dismissals, QWidget *control)
{
    stop();
    m_dismissals = dismissals;
    m_control = control;
    if (dismissals != HVDismissNever)
        QCoreApplication::instance()->installEventFilter(this);
}

void HVDismissalWatch::stop()
{
    QCoreApplication::instance()->removeEventFilter(this);
}

bool HVDismissalWatch::hasKeyboard() const
{
    const QWindow *window = m_popup.window()->windowHandle();
    return window && QGuiApplication::focusWindow() == window;
}

bool HVDismissalWatch::dismisses(QObject *object, const QEvent &event) const
{
    switch (event.type()) {
    // A key that triggers a shortcut causes only the first of these events.
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress: {
        const auto &key = static_cast<const QKeyEvent &>(event);
        // A repeating key was pressed earlier, perhaps to open the popup.
        if (key.isAutoRepeat())
            return false;
        return keyDismisses(hasKeyboard() ? m_dismissals & HVDismissOnEscape : m_dismissals,
                            key.key());
    }
    case QEvent::Wheel: {
        if (!m_control || !wheelDismisses(m_dismissals))
            return false;
        const QPointF position = static_cast<const QWheelEvent &>(event).globalPosition();
        const QWidget *widget = controlReceiving(object, position.toPoint());
        return widget && (widget == m_control || m_control->isAncestorOf(widget));
    }
    default:
        return false;
    }
}

bool HVDismissalWatch::eventFilter(QObject *object, QEvent *event)
{
    if (m_popup.isVisible() && dismisses(object, *event))
        Q_EMIT dismissed();
    return false;
}

} // namespace Hovlets
