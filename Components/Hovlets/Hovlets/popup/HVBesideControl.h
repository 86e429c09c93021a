// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVControlPart.h"
#include "HVPlacement.h"

#include <QtGui/QRegion>

class QScreen;
class QWidget;

namespace Hovlets {

/// The screen that holds the middle of \a widget; that of its window if none does.
QScreen *screenOf(const QWidget &widget);

/// The part of \a control at \a position that is visible, cut off by what the control lies in.
HVControlPart visiblePartAt(const QWidget &control, const QPoint &position);

/*!
 * \brief The place of one popup beside the control that it was shown for.
 *
 * Everything is global, in pixels. GUI thread only.
 */
class HVBesideControl
{
public:
    /// The cursor is at \a position over \a control; \a keepClear stays in view, as open menus do.
    HVBesideControl(const QWidget &control, const QPoint &position, const QRegion &keepClear);

    /// The top-left corner for a popup of this size. A popup that has a place keeps the edge that
    /// is next to the control.
    QPoint cornerFor(const QSize &popup);

private:
    HVPlacementRequest m_request;
};

} // namespace Hovlets
