// SPDX-License-Identifier: Apache-2.0
#pragma once

class QPoint;
class QWidget;

// Turns a popup that the user pins into a window of the host. GUI thread only.

namespace Hovlets {

class HVWidget;

/// Puts \a popup into \a container, and sets the container's title, window flags and, if it has
/// none, its layout. A container that is a window moves to \a position.
void dockPopup(HVWidget &popup, QWidget &container, const QPoint &position);

/// Makes \a popup a titled tool window at \a position, above the window of its reference widget.
void makeToolWindow(HVWidget &popup, const QPoint &position);

} // namespace Hovlets
