// SPDX-License-Identifier: Apache-2.0
#include "HVWindowSystem.h"

#include <QtGui/QGuiApplication>

namespace Hovlets {

namespace {

/// The name may be followed by that of a graphics interface, as in "wayland-egl".
bool isWayland()
{
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
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

} // namespace Hovlets
