// SPDX-License-Identifier: Apache-2.0
#include "HVToolTipRequest.h"

#include "HVStandIn.h"

#include <QtCore/QCoreApplication>
#include <QtGui/QHelpEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

bool showsToolTips(const QWidget &widget)
{
    const QWidget *window = widget.window();
    if (window->testAttribute(Qt::WA_AlwaysShowToolTips))
        return true;
    if (const auto *standIn = qobject_cast<const HVStandIn *>(&widget))
        return standIn->sceneWindow()->isActive();
    while (window && !window->isActiveWindow())
        window = window->parentWidget() ? window->parentWidget()->window() : nullptr;
    return window;
}

} // namespace

bool requestToolTip(QWidget &widget, const QPoint &position)
{
    if (!showsToolTips(widget))
        return false;
    QHelpEvent event(QEvent::ToolTip, widget.mapFromGlobal(position), position);
    return QCoreApplication::sendEvent(&widget, &event) && event.isAccepted();
}

} // namespace Hovlets
