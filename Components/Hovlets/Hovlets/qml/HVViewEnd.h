// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

/*!
 * \brief Deletes every view when the application ends, before Qt Quick cleans up.
 *
 * Views cannot be deleted after that clean-up, and a host may keep the library until then. Call
 * this function after Qt Quick is loaded: post routines run in the reverse order of their
 * registration. GUI thread only.
 */
void deleteViewsAtEnd();

} // namespace Hovlets
