// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>

namespace Hovlets {

/*!
 * \brief \a geometry, shifted into \a area and never resized.
 *
 * The shifts come in this order, each applied to the result of the previous one: down from above
 * the top edge, right from beyond the left edge, up from below the bottom edge, left from beyond
 * the right edge. A rectangle larger than the area therefore ends at the area's bottom and right
 * edges: later shifts take precedence, and the end of a large popup is visible.
 *
 * The result depends on where the rectangle starts. A popup that changes its size is shifted from
 * the requested point; from the place of an older size, it would drift away from its control.
 *
 * \a shifted, unless null, is set to whether any shift was applied, even if a later one reversed
 * it.
 */
QRect shiftedInto(QRect geometry, const QRect &area, bool *shifted = nullptr);

} // namespace Hovlets
