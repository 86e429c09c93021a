// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/// Makes all windows of the application show tooltips while they are inactive, or only while
/// active.
void setAlwaysToolTips(bool on);

} // namespace Hovlets
