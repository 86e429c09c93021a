// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/*!
 * \brief Has every view deleted when the application ends, before Qt Quick cleans up.
 *
 * No view can be deleted after that clean-up, and a host may keep the library until then. Call it
 * once Qt Quick is loaded: routines run in the reverse order of their registration. GUI thread
 * only.
 */
void deleteViewsAtEnd();

} // namespace Hovlets
