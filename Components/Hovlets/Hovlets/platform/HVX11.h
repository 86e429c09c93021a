// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtGui/qwindowdefs.h>

#include <optional>

// What Qt offers on X11 only in private headers. The functions ask the application's server, as far
// as it is known with Qt 5, over a connection of their own. GUI thread only.

namespace Hovlets {

/// Whether a compositor runs on the X display of the program. False without an X server.
bool isX11Composited();

/*!
 * Lets clicks and the pointer through \a window, which must exist on the server.
 *
 * In Qt 6.4, Qt::WindowTransparentForInput has no effect on windows that are shown afterwards.
 * Returns false on failure.
 */
bool passX11InputThrough(WId window);

/*!
 * Leaves the picture of \a window where it is on the screen when the window is moved and resized in
 * one step. Qt has it move along with the top-left corner.
 *
 * The window must exist on the server. Returns false on failure.
 */
bool keepX11PictureInPlace(WId window);

/// The top-left corner of \a window on the server's screen, in physical pixels. No value on
/// failure.
std::optional<QPoint> x11Position(WId window);

} // namespace Hovlets
