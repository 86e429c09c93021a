// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QFont>
#include <QtGui/QPalette>
#include <QtWidgets/QWidget>

namespace Hovlets {

/// The look of the application's tooltips.
struct HVToolTipSample
{
    QPalette palette; ///< ToolTipBase, ToolTipText and Link count.
    QFont font;
    bool hasStyledColors = false; ///< Whether the application's style sheet sets the colours.
};

/// What QToolTip and the application's style sheet say about tooltips. GUI thread only.
HVToolTipSample toolTipSample();

} // namespace Hovlets

/*!
 * \brief A widget to which style sheets apply their rules for QToolTip. It is never shown.
 *
 * Qt applies these rules to objects whose class has exactly this name, that of its own tooltip
 * window. A shared Qt does not export that class, so the two do not meet.
 */
class QTipLabel : public QWidget
{
    Q_OBJECT
};
