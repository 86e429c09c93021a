// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

namespace Hovlets {

/*!
 * The position of a popup of \a size that does not hide \a control: below, above, to the right or
 * to the left of it, in this order of preference, inside \a screen.
 *
 * If no side has room, the popup covers the bottom right corner of the visible part of the control.
 * All coordinates are global, in pixels.
 */
QPoint placeBeside(const QRect &control, const QSize &size, const QRect &screen);

} // namespace Hovlets
