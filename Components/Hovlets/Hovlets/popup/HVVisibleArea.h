// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>

namespace Hovlets {

/*!
 * \brief \a geometry, shifted into \a area and never resized.
 *
 * The shifts come in this order, each from where the one before left the rectangle: down from above
 * the top edge, right from beyond the left edge, up from below the bottom edge, left from beyond
 * the right edge. A rectangle larger than the area therefore ends with its bottom and right edges
 * on the area's: the later shifts win, and the end of a large popup is in view.
 *
 * The result depends on where the rectangle begins. A popup whose size changes is shifted from the
 * point that was asked for; from the place that an older size was given it would drift away from
 * its control.
 *
 * \a shifted, unless null, receives whether any shift applied, also when a later one undid it.
 */
QRect shiftedInto(QRect geometry, const QRect &area, bool *shifted = nullptr);

} // namespace Hovlets
