// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVHoverDelays.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QTimer>

#include <optional>

class QEvent;
class QHelpEvent;
class QWidget;

namespace Hovlets {

class HVManager;

/*!
 * \brief Holds back the first popup until the mouse has rested for HVKeyShowDelay.
 *
 * Its timer runs only while a popup is held back. GUI thread only.
 */
class HVShowDelay
{
    Q_DISABLE_COPY_MOVE(HVShowDelay)

public:
    explicit HVShowDelay(HVManager &manager);

    /// Call for every event of the application. Notes when the mouse comes to rest, and drops the
    /// popup that is held back if the event would also cancel Qt's tooltip.
    void see(const QEvent &event);

    /// Whether a tooltip event for \a widget, which has content, comes too early. If so, it is sent
    /// again after the delay.
    bool holdsBack(QWidget &widget, const QHelpEvent &event);

private:
    void release();

    HVManager &m_manager;
    HVHoverDelays m_delays;
    QElapsedTimer m_clock;
    QTimer m_timer;
    std::optional<qint64> m_restSince;
    QPointer<QWidget> m_widget; // the control whose popup is held back
    QPoint m_position; // of the mouse: global
    bool m_releases = false;
};

} // namespace Hovlets
