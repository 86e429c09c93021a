// SPDX-License-Identifier: Apache-2.0
#pragma once

class QPoint;
class QWidget;

namespace Hovlets {

/*!
 * \brief Has \a widget show what it has for the mouse at \a position, now.
 *
 * Sends the event that Qt sends for a tooltip, to the widget and on to its parents, under the same
 * condition: its window is active, or shows tooltips always. \a position is global.
 */
void requestToolTip(QWidget &widget, const QPoint &position);

} // namespace Hovlets
