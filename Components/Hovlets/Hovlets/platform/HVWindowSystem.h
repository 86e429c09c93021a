// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the window system lets a program do with its windows. Qt has this information only in
// private headers, so these functions use the documented name of the platform. Call them once the
// application exists. GUI thread only.

#include <QtCore/QPoint>

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

/// Whether a window can let clicks and the pointer through. On platforms without a desktop, such as
/// offscreen, QApplication::widgetAt() finds such a window instead of the one below it.
bool windowsCanPassInputThrough();

/// The global position of the content of a window that has a native one. Some window managers of
/// X11 do not tell Qt where they have put a new window without a frame, and Qt assumes 0, 0.
QPoint positionOf(QWindow &window);

/// Leaves what a window shows where it is on the screen, until the window is painted, when the
/// window is moved and resized in one step. Its native window must exist on the server. Without
/// effect where window systems keep nothing unpainted on the screen.
void keepPictureInPlace(QWindow &window);

/// Lets clicks and the pointer through a window that has a native one. Returns false if that fails.
bool passInputThrough(QWindow &window);

} // namespace Hovlets
