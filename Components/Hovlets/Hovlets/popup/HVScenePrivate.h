// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVScene.h"
#include "HVStandIn.h"

#include <QtCore/QHash>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

namespace Hovlets {

/*!
 * \brief Requests tooltips for the controls of a scene, as QApplication does for widgets, and keeps
 * their stand-ins.
 */
class Q_DECL_HIDDEN HVScene::Private
{
    Q_DISABLE_COPY_MOVE(Private)

public:
    Private(HVScene &scene, QWindow &window);
    ~Private();

    void handle(const QEvent &event);

    /// The stand-in for what is at the global \a position, with its current place. Null outside of
    /// the window, and without a QApplication.
    HVStandIn *standInAt(const QPoint &position);

    /// The stand-in of the first control, each of which is in the next; that of the window if there
    /// are none.
    HVStandIn *innermost(const QList<QObject *> &controls);

    /// The stand-in of \a control; null if it had none so far.
    [[nodiscard]] HVStandIn *standInOf(const QObject *control) const;

    QWindow &window;

private:
    HVStandIn *standInFor(QObject *control, QWidget *around);
    void pointerMoved(const QPoint &position);
    void stopTimers();
    void requestToolTip();
    void takeWindowPlace();
    template <typename Event> void send(Event &&event);

    HVScene &m_scene;
    QPointer<HVStandIn> m_root; // for the window; null without a QApplication
    QHash<const QObject *, QPointer<HVStandIn>> m_standIns; // by control
    QPoint m_position; // of the pointer
    QTimer m_wakeUp; // until a tooltip is due
    QTimer m_fallAsleep; // while it runs, the next tooltip is due almost at once
};

} // namespace Hovlets
