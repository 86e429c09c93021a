// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/qwindowdefs.h>

// What Qt offers on X11 only in private headers. The functions ask the server that the environment
// names, over a connection of their own. GUI thread only.

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
