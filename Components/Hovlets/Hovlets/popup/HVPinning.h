// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/Qt>

class QWidget;

// Turns a popup that the user pins into a window of the host. If the popup's own QML pins it, this
// happens when that QML has ended. GUI thread only.

namespace Hovlets {

class HVWidget;

/*!
 * Puts \a popup into \a container, and sets the container's title, window flags and, if it has
 * none, its layout. A container that is a window moves to the popup's position.
 *
 * If the container is destroyed before the QML has ended, this is makeWindow() with the type
 * \a otherwise.
 */
void dockPopup(HVWidget &popup, QWidget &container, Qt::WindowType otherwise);

/// Makes \a popup a titled window in its place. A Qt::Tool stays above the window of its reference
/// widget. A Qt::Window has an entry of its own in the taskbar.
void makeWindow(HVWidget &popup, Qt::WindowType type);

} // namespace Hovlets
