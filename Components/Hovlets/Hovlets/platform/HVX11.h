// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/qwindowdefs.h>

// What Qt tells and does on X11 only for programs that use its private headers. Each function asks
// the server over a connection of its own, which takes well below a millisecond.

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

} // namespace Hovlets
