// SPDX-License-Identifier: Apache-2.0
#pragma once

// The differences between Qt 5 and Qt 6. Classes use this header instead of testing the version.

#include <QtCore/QLibraryInfo>
#include <QtCore/QPoint>
#include <QtCore/QString>
#include <QtGui/QGuiApplication>
#include <QtGui/QHoverEvent>
#include <QtGui/QKeySequence>
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

/// The first key of \a sequence, which is not empty, without its modifiers: one of Qt::Key.
inline int keyOf(const QKeySequence &sequence)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return sequence[0].key();
#else
    return sequence[0] & ~int(Qt::KeyboardModifierMask);
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

/// The application's connection to an X server, as a `Display *`. Null if there is none, and with
/// Qt 5, which keeps it in private headers.
inline void *x11Display()
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0) && QT_CONFIG(xcb)
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->display() : nullptr;
#else
    return nullptr;
#endif
}

} // namespace Hovlets
