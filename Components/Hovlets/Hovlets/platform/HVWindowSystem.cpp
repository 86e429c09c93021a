// SPDX-License-Identifier: Apache-2.0
#include "HVWindowSystem.h"

#include "HVX11.h"

#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
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

bool passInputThrough(QWindow &window)
{
    window.setFlag(Qt::WindowTransparentForInput);
    if (!isX11())
        return true;
    QCursor::pos(); // waits until the server has the window
    return passX11InputThrough(window.winId());
}

} // namespace Hovlets
