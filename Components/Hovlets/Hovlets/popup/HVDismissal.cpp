// SPDX-License-Identifier: Apache-2.0
#include "HVDismissal.h"

namespace Hovlets {

bool isModifier(int key)
{
    switch (key) {
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Meta:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_ScrollLock:
    case Qt::Key_Super_L:
    case Qt::Key_Super_R:
    case Qt::Key_Hyper_L:
    case Qt::Key_Hyper_R:
    case Qt::Key_Direction_L:
    case Qt::Key_Direction_R:
    case Qt::Key_Mode_switch:
        return true;
    default:
        return false;
    }
}

bool keyDismisses(int dismissals, int key)
{
    if (key == Qt::Key_Escape)
        return (dismissals & (HVDismissOnEscape | HVDismissOnAnyKey)) != 0;
    return (dismissals & HVDismissOnAnyKey) != 0 && !isModifier(key);
}

bool wheelDismisses(int dismissals)
{
    return (dismissals & HVDismissOnWheel) != 0;
}

} // namespace Hovlets
