// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>
#include <QtCore/QVector>
#include <QtCore/Qt>

#include <optional>

// Where a popup goes that belongs beside its control. No windows, no screens: points in, place out.
// Everything is global, in pixels.

namespace Hovlets {

/// The side of the control, or of the cursor, on which a popup is.
enum class HVSide { Below, Above, Right, Left };

struct HVPlace
{
    QRect geometry;
    HVSide side = HVSide::Below;
};

struct HVPlacementRequest
{
    /// The control, or the part of it that has content: a row, a tab, a section, a menu item.
    QRect control;
    /// The popup's size with its frame.
    QSize popup;
    /// The available area of the control's screen.
    QRect area;
    /// The cursor's hot spot.
    QPoint cursor;
    /// That of the control: right-to-left mirrors all of what follows.
    Qt::LayoutDirection direction = Qt::LeftToRight;
    /// Regions that the popup leaves in view where it can.
    QVector<QRect> keepClear;
    /// Where the popup is, when its size changes and its control is the same and has not moved.
    std::optional<HVPlace> current;
};

/*!
 * \brief The place for a popup beside its control.
 *
 * The sides are tried in the order below, above, right, left, and the first that has room for the
 * whole popup wins. There the popup begins where the control does, and slides along the control as
 * far as the screen's edges, the regions to keep clear and the cursor require. A popup that has a
 * place stays on its side while it fits there: its edge towards the control keeps its position.
 *
 * Without room on any side, in this order:
 * - the distance of 8 pixels to the screen's edges is given up,
 * - the regions to keep clear are covered,
 * - the control is covered, and the popup goes beside the cursor by the same rules,
 * - the popup leaves the screen, on the side of the cursor where most of it is visible.
 *
 * It never covers the cursor, unless the cursor is over the popup already.
 */
HVPlace placeBeside(const HVPlacementRequest &request);

} // namespace Hovlets
