// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QRect>

#include <array>

class QPoint;
class QWidget;

namespace Hovlets {

/*!
 * \brief What of a widget is a control of its own.
 *
 * A tab, a header section, an item of a view or an entry of a menu or menu bar may each have
 * content of its own although one widget draws them all.
 */
struct HVControlPart
{
    /// All zero for a widget without parts; else equal for the same part of the same widget only.
    using Id = std::array<quintptr, 3>;

    Id id {};
    /// Global, in pixels.
    QRect geometry;
};

/// The part of \a widget at \a position, which is global, or the whole widget where there is none.
HVControlPart controlPartAt(const QWidget &widget, const QPoint &position);

} // namespace Hovlets
