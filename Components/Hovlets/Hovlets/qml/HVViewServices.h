// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVHostTypes.h"

#include <QtCore/QObject>
#include <QtCore/QString>

namespace Hovlets {

class HVIndex;
class HVManager;
class HVView;

/*!
 * \brief What a view asks of the library around it.
 *
 * The manager owns the object that answers. Views keep a guarded pointer to it, since a pinned
 * popup may outlive the manager. GUI thread only.
 */
class HVViewServices : public QObject
{
public:
    /// The parent of what views make for the services; it lives as long as they do.
    virtual QObject *owner() = 0;

    /// The settings that the host can change at run time.
    virtual const HVContext &settings() const = 0;

    /// Where the folders of a package are looked up.
    virtual const HVIndex &contentIndex() const = 0;

    virtual void sendMessage(HVMessageType type, const QString &message) = 0;

    /// Fills the placeholders "%(name)s" of \a text.
    virtual QString interpolated(const QString &text) const = 0;

    /// Asks the host to translate \a text on behalf of \a view, whose package may have the answer.
    virtual QString translated(HVView &view, const QString &text, const QString &context) = 0;

    /// Asks the host to open what the settings allow; false when nothing was opened.
    virtual bool openResource(const QString &resource) = 0;
};

/// The services of \a manager; null for a null manager.
HVViewServices *viewServicesOf(HVManager *manager);

} // namespace Hovlets
