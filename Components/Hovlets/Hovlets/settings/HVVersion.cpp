// SPDX-License-Identifier: Apache-2.0
#include "HVVersion.h"

namespace Hovlets {

QVersionNumber version()
{
    return { HOVLETS_VERSION_MAJOR, HOVLETS_VERSION_MINOR, HOVLETS_VERSION_PATCH };
}

} // namespace Hovlets
