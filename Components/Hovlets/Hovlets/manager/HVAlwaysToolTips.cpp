// SPDX-License-Identifier: Apache-2.0
#include "HVAlwaysToolTips.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Hovlets {

void setAlwaysToolTips(bool on)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        window->setAttribute(Qt::WA_AlwaysShowToolTips, on);
}

} // namespace Hovlets
