// SPDX-License-Identifier: Apache-2.0
#include "HVAlwaysToolTips.h"

#include <QtCore/QEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

void setInAllWindows(bool on)
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows)
        window->setAttribute(Qt::WA_AlwaysShowToolTips, on);
}

} // namespace

HVAlwaysToolTips::HVAlwaysToolTips()
{
    setInAllWindows(true);
    QCoreApplication::instance()->installEventFilter(this);
}

void HVAlwaysToolTips::reset()
{
    setInAllWindows(false);
}

bool HVAlwaysToolTips::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Polish && object->isWidgetType()) {
        auto *widget = static_cast<QWidget *>(object);
        if (widget->isWindow())
            widget->setAttribute(Qt::WA_AlwaysShowToolTips);
    }
    return false;
}

} // namespace Hovlets
