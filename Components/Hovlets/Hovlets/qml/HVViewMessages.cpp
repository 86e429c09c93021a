// SPDX-License-Identifier: Apache-2.0
#include "HVViewMessages.h"

#include "HVViewServices.h"

#include <QtQml/QQmlError>

namespace Hovlets {

HVViewMessages::HVViewMessages(HVViewServices *services)
    : m_services(services)
{
}

void HVViewMessages::warn(const QString &message) const
{
    send(HVMessageWarning, message);
}

void HVViewMessages::debug(const QString &message) const
{
    send(HVMessageDebug, message);
}

void HVViewMessages::debug(const QString &title, const QList<QQmlError> &errors) const
{
    for (const QQmlError &error : errors) {
        // In one step, which does not replace placeholders in the texts.
        debug(QStringLiteral("%1 %2:%3:%4")
                      .arg(title, QString::number(error.line()), QString::number(error.column()),
                           error.description()));
    }
}

void HVViewMessages::send(HVMessageType type, const QString &message) const
{
    if (m_services)
        m_services->sendMessage(type, message);
}

} // namespace Hovlets
