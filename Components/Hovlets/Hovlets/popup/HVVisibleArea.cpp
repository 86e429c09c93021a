// SPDX-License-Identifier: Apache-2.0
#include "HVVisibleArea.h"

namespace Hovlets {

QRect shiftedInto(QRect geometry, const QRect &area, bool *shifted)
{
    bool any = false;
    const auto shift = [&](bool needed, void (QRect::*edgeTo)(int), int edge) {
        if (needed)
            (geometry.*edgeTo)(edge);
        any |= needed;
    };
    shift(geometry.top() < area.top(), &QRect::moveTop, area.top());
    shift(geometry.left() < area.left(), &QRect::moveLeft, area.left());
    shift(geometry.bottom() > area.bottom(), &QRect::moveBottom, area.bottom());
    shift(geometry.right() > area.right(), &QRect::moveRight, area.right());
    if (shifted)
        *shifted = any;
    return geometry;
}

} // namespace Hovlets
