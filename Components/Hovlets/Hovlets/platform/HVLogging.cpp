// SPDX-License-Identifier: Apache-2.0
#include "HVLogging.h"

namespace Hovlets {

Q_LOGGING_CATEGORY(contentLog, "hovlets.content", QtDebugMsg)
Q_LOGGING_CATEGORY(videoLog, "hovlets.video", QtDebugMsg)

} // namespace Hovlets
