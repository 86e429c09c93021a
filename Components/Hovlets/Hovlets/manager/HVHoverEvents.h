// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVShowDelay.h"

#include <QtCore/QPoint>
#include <QtCore/QPointer>

class QEvent;
class QHelpEvent;

namespace Hovlets {

class HVHoverPopup;
class HVHoverShow;
class HVManager;

/*!
 * \brief Shows and hides the popup in response to the application's events. GUI thread only.
 */
class HVHoverEvents
{
public:
    HVHoverEvents(HVManager &manager, HVHoverPopup &popup, HVHoverShow &show);

    /// Handles an event of \a object; returns true if the event must not go any further.
    bool filter(QObject *object, QEvent *event);

    /// Call when the pointer is at \a position: global, in pixels.
    void pointerMoved(const QPoint &position);

    /// Call when a mouse button was pressed or released on \a object, which may be null, at the
    /// global \a position.
    void buttonUsed(QObject *object, const QPoint &position);

private:
    bool showToolTip(QObject *object, const QHelpEvent &event);
    bool isTooEarly(QObject *object, const QString &key, const QHelpEvent &event);

    HVManager &m_manager;
    HVHoverPopup &m_popup;
    HVHoverShow &m_show;
    HVShowDelay m_delay;

    quint64 m_latest = 0; // counts the tooltip events

    // The tooltip that Qt is passing from a control to its parents.
    quint64 m_pass = 0;
    QPointer<QObject> m_passed; // the last object that got it; null after any other event
    QPoint m_passedAt;
};

} // namespace Hovlets
