// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLookUp.h"

class QPoint;
class QWidget;

namespace Hovlets {

/*!
 * \brief An entry with the own tooltip, status tip and What's This of \a widget or of its part at
 * the global \a position; empty if they have none.
 *
 * Its key identifies the control, the part and the texts, and is that of no entry in the content.
 * The user interface of the package "Default" draws it. Asks the host's model if there is one,
 * whose code may delete the widget.
 */
HVFoundContent ownTipContent(const QWidget &widget, const QPoint &position);

} // namespace Hovlets
