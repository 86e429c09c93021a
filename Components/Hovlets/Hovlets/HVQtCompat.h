// SPDX-License-Identifier: Apache-2.0
#pragma once

// The only place that knows which Qt it is built with.

#include <QtCore/QPoint>
#include <QtGui/QMouseEvent>

namespace Hovlets {

/// Where the mouse is, in global pixels.
inline QPoint globalPosition(const QMouseEvent &event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.globalPosition().toPoint();
#else
    return event.globalPos();
#endif
}

} // namespace Hovlets
