// SPDX-License-Identifier: Apache-2.0
#pragma once

class QEvent;
class QObject;
class QPoint;

namespace Hovlets {

class HVHoverPopup;
class HVManager;

/*!
 * \brief Shows and hides the popup in response to the application's events. GUI thread only.
 */
class HVHoverEvents
{
public:
    HVHoverEvents(HVManager &manager, HVHoverPopup &popup);

    /// Handles an event of \a object; returns true if the event must not go any further.
    bool filter(QObject *object, QEvent *event);

    /// Call when the pointer is at \a position: global, in pixels.
    void pointerMoved(const QPoint &position);

    /// Call when a mouse button was pressed or released on \a object, which may be null.
    void buttonUsed(QObject *object);

private:
    HVManager &m_manager;
    HVHoverPopup &m_popup;
};

} // namespace Hovlets
