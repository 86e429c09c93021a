// SPDX-License-Identifier: Apache-2.0
#pragma once

// The differences between Qt 5 and Qt 6. Classes use this header instead of testing the version.

#include <QtCore/QLibraryInfo>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>

namespace Hovlets {

/// The mouse position in global coordinates.
inline QPoint globalPosition(const QMouseEvent &event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.globalPosition().toPoint();
#else
    return event.globalPos();
#endif
}

/// A copy of the event, for a widget that has the item's size.
inline QMouseEvent mouseEventLike(const QMouseEvent &event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return { event.type(),   event.position(), event.scenePosition(), event.globalPosition(),
             event.button(), event.buttons(),  event.modifiers() };
#else
    return { event.type(),   event.localPos(), event.windowPos(), event.screenPos(),
             event.button(), event.buttons(),  event.modifiers() };
#endif
}

/// The same for hover events.
inline QHoverEvent hoverEventLike(QEvent::Type type, const QHoverEvent &event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return { type, event.position(), event.globalPosition(), event.oldPosF(), event.modifiers() };
#else
    return { type, event.posF(), event.oldPosF(), event.modifiers() };
#endif
}

/// The folder of Qt's own programs, such as lrelease.
inline QString qtProgramFolder()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return QLibraryInfo::path(QLibraryInfo::BinariesPath);
#else
    return QLibraryInfo::location(QLibraryInfo::BinariesPath);
#endif
}

} // namespace Hovlets
