// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

namespace Hovlets {

/// Resident memory of the process in bytes; 0 if the system does not report it.
[[nodiscard]] qint64 residentMemory();

} // namespace Hovlets
