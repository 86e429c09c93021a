// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVExport.h"

#include <QtCore/QVersionNumber>

/*!
 * \file
 * The version of the library: as macros, that of the headers that a host was compiled with, and as
 * a function, that of the library that is loaded. Versions follow the rules of semantic versioning:
 * within a major version a newer library replaces an older one without recompiling the host.
 *
 * The three numbers are defined here only; the build reads them from this file.
 */

/// Changes when hosts have to be adapted or recompiled.
#define HOVLETS_VERSION_MAJOR 1
/// Changes when something is added.
#define HOVLETS_VERSION_MINOR 0
/// Changes with corrections only.
#define HOVLETS_VERSION_PATCH 0

/// A version as one number, to be compared with HOVLETS_VERSION. Each part is below 256.
#define HOVLETS_VERSION_CHECK(major, minor, patch) (((major) << 16) | ((minor) << 8) | (patch))

/// The version of these headers as one number: `#if HOVLETS_VERSION >= HOVLETS_VERSION_CHECK(1, 2,
/// 0)`.
#define HOVLETS_VERSION \
    HOVLETS_VERSION_CHECK(HOVLETS_VERSION_MAJOR, HOVLETS_VERSION_MINOR, HOVLETS_VERSION_PATCH)

namespace Hovlets {

/*!
 * The version of the library that is loaded, which may be newer than the headers. Any thread may
 * ask.
 */
[[nodiscard]] HOVLETS_EXPORT QVersionNumber version();

} // namespace Hovlets
