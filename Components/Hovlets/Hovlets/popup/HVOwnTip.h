// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVControlPart.h"

#include <QtCore/QString>

class QPoint;
class QWidget;

namespace Hovlets {

/// What a control says about itself, without content. Untrusted text, plain or rich as Qt decides.
struct HVOwnTip
{
    QString toolTip;
    QString statusTip;
    QString whatsThis;
    QString shortcut; ///< as the platform writes it
    HVControlPart::Id part {}; ///< of the control to which the tip belongs

    [[nodiscard]] bool isEmpty() const
    {
        return toolTip.isEmpty() && statusTip.isEmpty() && whatsThis.isEmpty();
    }
};

/*!
 * \brief The tip of a widget, or of its part at a global position.
 *
 * Of tabs, header sections, items and menu entries, the tip is empty unless Qt would show the
 * part's own tooltip: a menu must show its tooltips, and items must have a delegate that leaves
 * them to Qt. Then the status tip and What's This of the part follow. A window's tip is empty
 * without a tooltip. Asks the host's model if there is one, whose code may delete the widget.
 */
HVOwnTip ownTipAt(const QWidget &widget, const QPoint &position);

} // namespace Hovlets
