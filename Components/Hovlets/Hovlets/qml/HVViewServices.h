// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HVHostTypes.h"

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>

namespace Hovlets {

class HVIndex;
class HVManager;
class HVView;

/*!
 * \brief The services of the library that a view uses.
 *
 * The manager owns the object that implements them. A pinned popup may outlive the manager, so
 * views keep a guarded pointer to it. GUI thread only.
 */
class HVViewServices : public QObject
{
public:
    /// The parent for objects that views create for the services. It lives as long as the services.
    virtual QObject *owner() = 0;

    /// The settings that the host can change at run time.
    [[nodiscard]] virtual const HVContext &settings() const = 0;

    /// The index that knows the folders of packages.
    [[nodiscard]] virtual const HVIndex &contentIndex() const = 0;

    virtual void sendMessage(HVMessageType type, const QString &message) = 0;

    /// Sends a warning, unless it was sent before.
    void warnOnce(const QString &message)
    {
        if (m_warnings.contains(message))
            return;
        m_warnings.insert(message);
        sendMessage(HVMessageWarning, message);
    }

    /// \a text with its placeholders "%(name)s" filled.
    [[nodiscard]] virtual QString interpolated(const QString &text) const = 0;

    /// Asks the host to translate \a text for \a view, whose package may contain the translation.
    virtual QString translated(HVView &view, const QString &text, const QString &context) = 0;

    /// Asks the host to open \a resource if the settings allow it; false if nothing was opened.
    virtual bool openResource(const QString &resource) = 0;

private:
    QSet<QString> m_warnings; // sent by warnOnce()
};

/// The services of \a manager; null for a null manager.
HVViewServices *viewServicesOf(HVManager *manager);

} // namespace Hovlets
