// SPDX-License-Identifier: Apache-2.0
#include "HVWindowSystem.h"

#include "HVX11.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>

namespace Hovlets {

namespace {

/// The name may be followed by that of a graphics interface, as in "wayland-egl".
bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

bool isX11()
{
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

} // namespace

bool programsPlaceWindows()
{
    return !isWayland();
}

bool windowsHaveOpacity()
{
    return !isWayland();
}

bool windowsAreBlended()
{
    return !isX11() || isX11Composited();
}

bool windowsCanPassInputThrough()
{
    const QString name = QGuiApplication::platformName();
    return isX11() || isWayland() || name == QLatin1String("windows")
            || name == QLatin1String("cocoa");
}

QPoint positionOf(QWindow &window)
{
    const QScreen *const screen = window.screen();
    if (!isX11() || !window.position().isNull() || !screen)
        return window.position();
    const QPoint origin = screen->geometry().topLeft(); // which Qt does not scale
    const QPoint corner = x11Position(window.winId()).value_or(origin);
    return origin + (corner - origin) / screen->devicePixelRatio();
}

void keepPictureInPlace(QWindow &window)
{
    if (isX11())
        keepX11PictureInPlace(window.winId());
}

bool passInputThrough(QWindow &window)
{
    window.setFlag(Qt::WindowTransparentForInput);
    if (!isX11())
        return true;
    QCursor::pos(); // waits until the server has the window
    return passX11InputThrough(window.winId());
}

} // namespace Hovlets
