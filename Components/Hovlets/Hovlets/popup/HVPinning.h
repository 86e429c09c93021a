// SPDX-License-Identifier: Apache-2.0
#pragma once

class QPoint;
class QWidget;

// Turns a popup that the user pins into one of the host's windows. GUI thread only.

namespace Hovlets {

class HVWidget;

/// Puts \a popup into \a container, whose title, window flags and, if it has none, layout it sets.
/// A container that is a window of its own moves to \a position.
void dockPopup(HVWidget &popup, QWidget &container, const QPoint &position);

/// Makes \a popup a titled tool window at \a position, above the window of its reference widget.
void makeToolWindow(HVWidget &popup, const QPoint &position);

} // namespace Hovlets
