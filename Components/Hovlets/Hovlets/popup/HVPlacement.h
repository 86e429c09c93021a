// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QVector>
#include <QtCore/Qt>

#include <optional>

// Computes the place of a popup beside its control, without access to windows and screens.
// Coordinates are global, in pixels.

namespace Hovlets {

/// The side of the control or of the cursor on which the popup is.
enum class HVSide { Below, Above, Right, Left };

struct HVPlace
{
    QRect geometry;
    HVSide side = HVSide::Below;
};

struct HVPlacementRequest
{
    /// The control, or its part with content: a row, a tab, a section, a menu item.
    QRect control;
    /// The popup's size including its frame.
    QSize popup;
    /// The available area of the control's screen.
    QRect area;
    /// The cursor's hot spot.
    QPoint cursor;
    /// The control's layout direction. Right-to-left mirrors all rules.
    Qt::LayoutDirection direction = Qt::LeftToRight;
    /// Regions that the popup avoids covering.
    QVector<QRect> keepClear;
    /// The current place of a popup whose size changes while its control stays in place.
    std::optional<HVPlace> current;
};

/*!
 * \brief The place for a popup beside its control.
 *
 * Tries the sides in the order below, above, right, left, and takes the first with room for the
 * whole popup. There, the popup aligns with the start of the control. It slides along the control
 * as far as the screen's edges, the regions to keep clear and the cursor require. A popup that has
 * a place stays on its side while it fits: its edge towards the control does not move.
 *
 * If no side has room, the popup relaxes the rules one by one, until it has a place:
 * - it ignores the distance of 8 pixels to the screen's edges,
 * - it covers the regions to keep clear,
 * - it covers the control and goes beside the cursor by the same rules,
 * - it extends past the screen, on the side of the cursor where most of it is visible.
 *
 * It never covers the cursor unless the cursor is already over the popup.
 */
HVPlace placeBeside(const HVPlacementRequest &request);

} // namespace Hovlets
