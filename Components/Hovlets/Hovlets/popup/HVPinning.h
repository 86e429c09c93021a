// SPDX-License-Identifier: Apache-2.0
#pragma once

class QWidget;

// Turns a popup that the user pins into a window of the host. If the popup's own QML pins it, this
// happens when that QML has ended. GUI thread only.

namespace Hovlets {

class HVWidget;

/// Puts \a popup into \a container, and sets the container's title, window flags and, if it has
/// none, its layout. A container that is a window moves to the popup's position.
void dockPopup(HVWidget &popup, QWidget &container);

/// Makes \a popup a titled tool window in its place, above the window of its reference widget.
void makeToolWindow(HVWidget &popup);

} // namespace Hovlets
