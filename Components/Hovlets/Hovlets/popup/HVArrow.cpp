// SPDX-License-Identifier: Apache-2.0
#include "HVArrow.h"

#include <algorithm>

namespace Hovlets {

namespace {

bool isOneBelowTheOther(HVSide side)
{
    return side == HVSide::Below || side == HVSide::Above;
}

/// The pixels between the control and the popup on its \a side.
int roomBetween(const QRect &control, const QRect &popup, HVSide side)
{
    switch (side) {
    case HVSide::Below:
        return popup.top() - control.bottom() - 1;
    case HVSide::Above:
        return control.top() - popup.bottom() - 1;
    case HVSide::Right:
        return popup.left() - control.right() - 1;
    case HVSide::Left:
        return control.left() - popup.right() - 1;
    }
    return -1;
}

} // namespace

std::optional<HVArrow> arrowTowards(const QRect &control, const HVPlace &place, int corner)
{
    const QRect &popup = place.geometry;
    const int room = roomBetween(control, popup, place.side);
    if (room < ArrowHeight || room > 2 * ArrowHeight)
        return std::nullopt;
    const bool vertical = isOneBelowTheOther(place.side);
    const int begin = vertical ? popup.left() : popup.top();
    const int length = vertical ? popup.width() : popup.height();
    const int first = std::max(begin, vertical ? control.left() : control.top());
    const int last = std::min(begin + length - 1, vertical ? control.right() : control.bottom());
    const int fromEnd = corner + ArrowReach;
    if (first > last || length <= 2 * fromEnd)
        return std::nullopt;
    const int position = qBound(fromEnd, (first + last + 1) / 2 - begin, length - fromEnd);
    const bool pointsAtControl = begin + position >= first && begin + position <= last + 1;
    return pointsAtControl ? std::make_optional(HVArrow { place.side, position }) : std::nullopt;
}

} // namespace Hovlets
