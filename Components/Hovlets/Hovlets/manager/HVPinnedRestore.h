// SPDX-License-Identifier: Apache-2.0
#pragma once

class QByteArray;

namespace Hovlets {

class HVHoverPopup;
class HVManager;

/*!
 * \brief Brings back popups that were pinned in an earlier run and whose keys still have content.
 *
 * Each replaces the current popup, even one that is on screen, and is then pinned as if by the
 * user. Runs QML and code of the host, which may delete the manager. GUI thread only.
 *
 * \param state the result of encodePinnedStates(); need not be trusted
 * \return whether the state was valid. Otherwise, the host gets a warning
 */
bool restorePinned(HVManager &manager, HVHoverPopup &popup, const QByteArray &state);

} // namespace Hovlets
