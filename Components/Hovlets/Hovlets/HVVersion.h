// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QVersionNumber>

/*!
 * \file
 * The version of the library. The macros are the version of the headers with which a host was
 * compiled; the function returns that of the loaded library. Versions follow semantic versioning:
 * within a major version, a newer library replaces an older one without recompiling the host.
 *
 * Only this file defines the three numbers; the build reads them from it.
 */

/// Increases when hosts must be adapted or recompiled.
#define HOVLETS_VERSION_MAJOR 1
/// Increases when something is added.
#define HOVLETS_VERSION_MINOR 0
/// Increases when only defects are fixed.
#define HOVLETS_VERSION_PATCH 0

/// A version as one number, for comparison with HOVLETS_VERSION. Each part is below 256.
#define HOVLETS_VERSION_CHECK(major, minor, patch) (((major) << 16) | ((minor) << 8) | (patch))

/*!
 * The version of these headers as one number.
 * \code
 * #if HOVLETS_VERSION >= HOVLETS_VERSION_CHECK(1, 2, 0)
 * \endcode
 */
#define HOVLETS_VERSION \
    HOVLETS_VERSION_CHECK(HOVLETS_VERSION_MAJOR, HOVLETS_VERSION_MINOR, HOVLETS_VERSION_PATCH)

namespace Hovlets {

/*!
 * The version of the loaded library, which may be newer than the headers. Any thread may call it.
 */
[[nodiscard]] HOVLETS_EXPORT QVersionNumber version();

} // namespace Hovlets
