// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVViewServices.h"

class QWidget;

namespace Hovlets {

class HVWidget;

/*!
 * \brief What a popup asks of the library around it, beside what its view asks.
 *
 * A popup that the user has pinned may outlive the manager, which owns this object: popups keep a
 * guarded pointer to it. GUI thread only.
 */
class HVPopupServices : public HVViewServices
{
public:
    virtual HVManager *manager() = 0;

    /*!
     * Lets \a popup live on by itself if it is the current one.
     * \param[out] container the host's window for it, or null; written on success only
     */
    virtual bool reservePopup(HVWidget *popup, QWidget *&container) = 0;
};

/// The services of \a manager; null for a null manager.
HVPopupServices *popupServicesOf(HVManager *manager);

} // namespace Hovlets
