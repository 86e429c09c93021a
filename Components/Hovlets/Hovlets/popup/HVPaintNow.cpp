// SPDX-License-Identifier: Apache-2.0
#include "HVPaintNow.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtWidgets/QWidget>

namespace Hovlets {

void paintNow(QWidget &widget)
{
    widget.update();
    QEvent request(QEvent::UpdateRequest);
    QCoreApplication::sendEvent(widget.window(), &request);
}

} // namespace Hovlets
