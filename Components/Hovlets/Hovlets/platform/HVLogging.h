// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLoggingCategory>

// Categories of what the library writes to Qt's debug output. All of it is of the debug level, and
// enabled by default; hosts and users filter it with QLoggingCategory or QT_LOGGING_RULES.

namespace Hovlets {

/// "hovlets.content": control files that are not well-formed.
Q_DECLARE_LOGGING_CATEGORY(contentLog)

/// "hovlets.video": clips that cannot be played, threads that do not end. Any thread.
Q_DECLARE_LOGGING_CATEGORY(videoLog)

} // namespace Hovlets
