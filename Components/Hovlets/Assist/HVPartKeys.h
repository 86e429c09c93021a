// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVControlKeys.h"

namespace Hovlets {

struct HVStandardKeysSettings;

/// The keys of \a object, or of its part at the global \a position: a tab, a menu entry, a header
/// section or an item.
HVControlKeys keysAt(QObject *object, const QPoint &position,
                     const HVStandardKeysSettings &settings);

} // namespace Hovlets
