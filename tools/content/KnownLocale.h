// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

namespace HovletsTool {

/// Whether the library takes the whole name for a locale. It ignores unknown parts of other names.
[[nodiscard]] bool isKnownLocale(const QString &name);

} // namespace HovletsTool
