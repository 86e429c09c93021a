// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/qglobal.h>

namespace Hovlets {

/// Bytes of main memory that the process uses now; 0 where the system does not say.
[[nodiscard]] qint64 residentMemory();

} // namespace Hovlets
