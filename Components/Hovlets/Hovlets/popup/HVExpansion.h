// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVHoverDelays.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <QtCore/QTimer>

namespace Hovlets {

/// Decides when a simple popup becomes the full one. Its timer runs only until then. GUI thread
/// only.
class HVExpansion : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVExpansion)

public:
    explicit HVExpansion(QObject *parent);

    /// Call when a simple popup is shown. It expands once the mouse has stayed with it for \a
    /// delay, in ms; never if that is 0 or less.
    void start(int delay);
    void stop();

    /// Whether the mouse is near the popup or its control. Its return restarts the delay.
    void setMouseIsNear(bool isNear);

Q_SIGNALS:
    void due();

private:
    void schedule();

    HVHoverDelays m_delays;
    QElapsedTimer m_clock;
    QTimer m_timer;
};

} // namespace Hovlets
