// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the window system lets a program do with its windows. Qt has this information only in
// private headers, so these functions use the documented name of the platform. Call them once the
// application exists. GUI thread only.

class QWindow;

namespace Hovlets {

/*!
 * \brief Whether programs place their windows, in coordinates that all windows share.
 *
 * Not on Wayland. There, the coordinates of each main window begin at its own corner, the
 * compositor places popups relative to that, once, when they appear, and keeps them on the screen.
 */
bool programsPlaceWindows();

/// Whether a window as a whole can be translucent. If not, Qt prints a message for each attempt.
bool windowsHaveOpacity();

/// Whether translucent pixels of a window show what is behind it. On X11, this changes when a
/// compositor starts or ends; without one, such pixels are black.
bool windowsAreBlended();

/// Lets clicks and the pointer through a window that has a native one. Returns false if that fails.
bool passInputThrough(QWindow &window);

} // namespace Hovlets
