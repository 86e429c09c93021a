// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/// Registers the types of the QML module under \a uri, which is "Hovlets".
void registerQuickTypes(const char *uri);

} // namespace Hovlets
