// SPDX-License-Identifier: Apache-2.0
#pragma once

namespace Hovlets {

class HVHoverPopup;
class HVManager;
struct HVPinnedState;

/*!
 * \brief Brings back a popup that was pinned in an earlier run, if its key still has content.
 *
 * It replaces the current popup, even one that is on screen, and is then pinned as if by the
 * user. Runs QML and code of the host. GUI thread only.
 */
void restorePinned(HVManager &manager, HVHoverPopup &popup, const HVPinnedState &state);

} // namespace Hovlets
