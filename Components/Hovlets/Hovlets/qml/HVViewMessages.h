// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVHostTypes.h"

#include <QtCore/QList>
#include <QtCore/QPointer>
#include <QtCore/QString>

class QQmlError;

namespace Hovlets {

class HVViewServices;

/*!
 * \brief Sends a view's messages to the host, and none after the manager is destroyed.
 *
 * Sending one runs code of the host, which may delete the view. GUI thread only.
 */
class HVViewMessages
{
public:
    explicit HVViewMessages(HVViewServices *services);

    void warn(const QString &message) const;
    void debug(const QString &message) const;

    /// A debug message "title 12:3:text" for each of \a errors.
    void debug(const QString &title, const QList<QQmlError> &errors) const;

private:
    void send(HVMessageType type, const QString &message) const;

    QPointer<HVViewServices> m_services;
};

} // namespace Hovlets
