// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QLoggingCategory>

// Categories of the library's messages in Qt's debug output. All of them have debug level and are
// enabled by default. Hosts and users filter them with QLoggingCategory or QT_LOGGING_RULES.

namespace Hovlets {

/// "hovlets.content": control files that are not well-formed.
Q_DECLARE_LOGGING_CATEGORY(contentLog)

/// "hovlets.video": clips that cannot be played, and threads that do not end. Any thread.
Q_DECLARE_LOGGING_CATEGORY(videoLog)

} // namespace Hovlets
