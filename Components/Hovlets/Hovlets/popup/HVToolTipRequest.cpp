// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipRequest.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

bool showsToolTips(const QWidget &widget)
{
    const QWidget *window = widget.window();
    if (window->testAttribute(Qt::WA_AlwaysShowToolTips))
        return true;
    while (window && !window->isActiveWindow())
        window = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    return window;
}

} // namespace

void requestToolTip(QWidget &widget, const QPoint &position)
{
    if (!showsToolTips(widget))
        return;
    QHelpEvent event(QEvent::ToolTip, widget.mapFromGlobal(position), position);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace Hovlets
