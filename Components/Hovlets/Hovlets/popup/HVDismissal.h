// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"

namespace Hovlets {

/// Whether \a key, one of Qt::Key, is a modifier or a lock key.
bool isModifier(int key);

/*!
 * \brief Whether pressing \a key dismisses the popup.
 *
 * \a dismissals is a combination of HVDismissal; other bits are ignored. \a key is one of Qt::Key.
 * Modifiers and lock keys never dismiss it, because users hold modifiers while they read.
 */
bool keyDismisses(int dismissals, int key);

/// Whether turning the wheel over the control dismisses the popup.
bool wheelDismisses(int dismissals);

} // namespace Hovlets
