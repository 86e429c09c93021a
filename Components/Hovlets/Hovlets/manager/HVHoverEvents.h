// SPDX-License-Identifier: Apache-2.0
#pragma once

class QEvent;
class QObject;
class QPoint;

namespace Hovlets {

class HVHoverPopup;
class HVManager;

/*!
 * \brief Turns the application's events into shows and hides.
 *
 * GUI thread only.
 */
class HVHoverEvents
{
public:
    HVHoverEvents(HVManager &manager, HVHoverPopup &popup);

    /// Acts on an event of \a object; true when nobody else should see it.
    bool filter(QObject *object, QEvent *event);

    /// The pointer is at \a position now: global, in pixels.
    void pointerMoved(const QPoint &position);

    /// A mouse button was pressed or released on \a object, which may be null.
    void buttonUsed(QObject *object);

private:
    HVManager &m_manager;
    HVHoverPopup &m_popup;
};

} // namespace Hovlets
