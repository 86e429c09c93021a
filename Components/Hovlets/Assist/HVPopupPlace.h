// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

namespace Hovlets {

/*!
 * Where a popup of \a size leaves \a control in view: below it, else above, to its right or to its
 * left, inside \a screen.
 *
 * Beside a control that leaves no room it covers the corner that is the farthest from its start.
 * Everything is global, in pixels.
 */
QPoint placeBeside(const QRect &control, const QSize &size, const QRect &screen);

} // namespace Hovlets
