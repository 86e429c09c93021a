// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVPlacement.h"

#include <optional>

namespace Hovlets {

/// The arrow of a popup towards its control.
struct HVArrow
{
    /// The side of the control on which the popup is. The arrow is on the popup's opposite edge.
    HVSide side = HVSide::Below;
    /// Distance of the tip from the left or top end of that edge, in pixels.
    int position = 0;

    [[nodiscard]] bool operator==(const HVArrow &other) const
    {
        return side == other.side && position == other.position;
    }
};

/// Height of arrows, and half their width, in pixels. They fit between the control and the popup.
constexpr int ArrowHeight = 5;
constexpr int ArrowReach = 7;

/*!
 * The arrow of a popup at \a place towards \a control, which points at the middle of the stretch in
 * which their edges face each other.
 *
 * None if the popup is not right beside the control, or if the arrow would come closer to a corner
 * than \a corner, in pixels.
 */
[[nodiscard]] std::optional<HVArrow> arrowTowards(const QRect &control, const HVPlace &place,
                                                  int corner);

} // namespace Hovlets
