// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVSettings.h"
#include "HVViewServices.h"

class QWidget;

namespace Hovlets {

class HVWidget;

/*!
 * \brief The services of the library that a popup uses, in addition to those of its view.
 *
 * A pinned popup may outlive the manager, which owns this object. Therefore popups keep a guarded
 * pointer to it. GUI thread only.
 */
class HVPopupServices : public HVViewServices
{
public:
    virtual HVManager *manager() = 0;

    /// The host's key for \a control, or for its part under the pointer. Runs code of the host.
    virtual QString keyFor(QWidget *control) = 0;

    /*!
     * Makes \a popup independent if it is the current one.
     * \param[out] container the host's window for it, or null; set only on success
     */
    virtual bool reservePopup(HVWidget *popup, QWidget *&container) = 0;
};

/// The services of \a manager; null for a null manager.
HVPopupServices *popupServicesOf(HVManager *manager);

/// A setting; its default if \a services is null.
inline QVariant settingOf(const HVPopupServices *services, contextKey key)
{
    return services ? services->settings().get(key) : defaultOf(key);
}

} // namespace Hovlets
