// SPDX-License-Identifier: Apache-2.0
#include "HVViewEnd.h"

#include "HVView.h"

#include <QtWidgets/QApplication>

namespace Hovlets {

namespace {

bool endIsArranged = false; // with the current application

void deleteViews()
{
    endIsArranged = false;
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets) {
        if (auto *view = qobject_cast<HVView *>(widget))
            delete view;
    }
}

} // namespace

void deleteViewsAtEnd()
{
    if (!endIsArranged)
        qAddPostRoutine(&deleteViews);
    endIsArranged = true;
}

} // namespace Hovlets
