// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <Hovlets/HVContext.h>
#include <Hovlets/HVInterface.h>
#include <HovletsAssist/HVStandardKeys.h>

namespace Hovlets {

/*!
 * \brief The interface in an application that knows nothing of it.
 *
 * Keys are the standard ones, and shortcuts are those that actions and buttons have. Messages go to
 * standard error.
 */
class AttachedHost : public HVInterface
{
    Q_OBJECT

public:
    AttachedHost(HVContext &settings, const QStringList &dataPaths, const QString &rules);

    QString keyForObject(QObject *object) override;
    QString shortCutForObject(const QString &key, QObject *object,
                              const QString &shortcut) override;
    void handleMessage(HVMessageType type, const QString &message) override;

    HVStandardKeys &standardKeys() { return m_keys; }

private:
    HVStandardKeys m_keys;
};

/// Writes a line to standard error.
void printMessage(const QString &message);

} // namespace Hovlets
