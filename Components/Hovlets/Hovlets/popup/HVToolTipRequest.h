// SPDX-License-Identifier: Apache-2.0
#pragma once

class QPoint;
class QWidget;

namespace Hovlets {

/*!
 * \brief Makes \a widget show its popup or tooltip for the mouse at \a position now.
 *
 * Sends the same event as Qt for a tooltip, to the widget and then its parents, on the same
 * condition: the window is active or always shows tooltips. \a position is global. Returns whether
 * one shows.
 */
bool requestToolTip(QWidget &widget, const QPoint &position);

} // namespace Hovlets
