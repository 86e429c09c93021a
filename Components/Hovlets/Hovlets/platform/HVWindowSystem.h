// SPDX-License-Identifier: Apache-2.0
#pragma once

// What the window system lets a program do with its windows. Qt has this information only in
// private headers, so these functions use the documented name of the platform. Call them once the
// application exists. GUI thread only.

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

} // namespace Hovlets
