// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/// Registers the module "com.zandor.hovlets.qml" 1.0, once in the process.
void registerQmlTypes();

} // namespace Hovlets
