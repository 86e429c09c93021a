// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>

#include <array>

class QPoint;
class QWidget;

namespace Hovlets {

/*!
 * \brief A part of a widget that acts as a control.
 *
 * A tab, a header section, an item of a view or an entry of a menu or menu bar may each have its
 * own content, although one widget draws them all.
 */
struct HVControlPart
{
    /// All zero for a widget without parts, otherwise unique to the part of the widget.
    using Id = std::array<quintptr, 3>;

    Id id {};
    /// Global, in pixels.
    QRect geometry;
};

/// The part of \a widget at the global \a position, or the whole widget if there is none.
HVControlPart controlPartAt(const QWidget &widget, const QPoint &position);

/// Whether the part of \a widget at the global \a position has its own tooltip. Asks the host's
/// model if there is one.
bool hasPartToolTip(const QWidget &widget, const QPoint &position);

} // namespace Hovlets
