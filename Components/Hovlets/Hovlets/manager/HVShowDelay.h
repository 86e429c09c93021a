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

    /// Notes when the mouse rests, and gives up what is held back for an event after which Qt shows
    /// no tooltip either.
    void see(const QEvent &event);

    /// Whether a tooltip event for \a widget, which has content, comes too early. It is sent again
    /// when the time has come.
    bool holdsBack(QWidget &widget, const QHelpEvent &event);

private:
    void release();

    HVManager &m_manager;
    HVHoverDelays m_delays;
    QElapsedTimer m_clock;
    QTimer m_timer;
    std::optional<qint64> m_restSince;
    QPointer<QWidget> m_widget; // waits
    QPoint m_position; // of the mouse: global
    bool m_releases = false;
};

} // namespace Hovlets
