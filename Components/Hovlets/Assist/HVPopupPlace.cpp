// SPDX-License-Identifier: Apache-2.0
#include "HVPopupPlace.h"

namespace Hovlets {

namespace {

constexpr int Gap = 6; // pixels between the control and the popup

/// Shifts the popup along the control if it would otherwise leave the screen.
int within(int start, int length, int low, int high)
{
    return qMax(low, qMin(start, high - length + 1));
}

} // namespace

QPoint placeBeside(const QRect &control, const QSize &size, const QRect &screen)
{
    const int x = within(control.left(), size.width(), screen.left(), screen.right());
    const int y = within(control.top(), size.height(), screen.top(), screen.bottom());
    const QPoint places[] {
        { x, control.bottom() + 1 + Gap },
        { x, control.top() - Gap - size.height() },
        { control.right() + 1 + Gap, y },
        { control.left() - Gap - size.width(), y },
    };
    for (const QPoint &place : places) {
        if (screen.contains(QRect(place, size)))
            return place;
    }
    const QRect visible = control.intersected(screen);
    return {
        within(visible.right() + 1 - size.width(), size.width(), screen.left(), screen.right()),
        within(visible.bottom() + 1 - size.height(), size.height(), screen.top(), screen.bottom())
    };
}

} // namespace Hovlets
