// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVArrow.h"
#include "HVControlPart.h"
#include "HVPlacement.h"

#include <QtGui/QRegion>

#include <optional>

class QWidget;

namespace Hovlets {

/// The visible part of \a control at \a position, clipped by the parents of the control.
HVControlPart visiblePartAt(const QWidget &control, const QPoint &position);

/*!
 * \brief The place of a popup beside the control for which it is shown.
 *
 * Coordinates are global, in pixels. GUI thread only.
 */
class HVBesideControl
{
public:
    /// The cursor is at \a position over \a control. The popup avoids \a keepClear and open menus.
    HVBesideControl(const QWidget &control, const QPoint &position, const QRegion &keepClear);

    /// The top-left corner for a popup of this size. If the popup already has a place, its edge
    /// that faces the control does not move.
    QPoint cornerFor(const QSize &popup);

    /// The arrow of the popup at its place, which keeps the distance \a corner to its corners.
    [[nodiscard]] std::optional<HVArrow> arrow(int corner) const;

private:
    HVPlacementRequest m_request;
};

} // namespace Hovlets
