// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVInterface.h>

#include <QtCore/QStringList>

namespace HovletsTool {

/// A host without an application. It collects the complaints of its popups.
class PopupHost : public Hovlets::HVInterface
{
public:
    explicit PopupHost(HVContext &context)
        : HVInterface(context, {})
    {
    }

    void handleMessage(Hovlets::HVMessageType type, const QString &message) override
    {
        if (type <= Hovlets::HVMessageWarning || message.startsWith(QLatin1String("QML Warning"))
            || message.startsWith(QLatin1String("Error"))
            || message.startsWith(QLatin1String("Can't find")))
            m_complaints += message.trimmed();
    }

    /// Mistakes in QML and missing files.
    [[nodiscard]] QStringList complaints() const { return m_complaints; }
    void clearComplaints() { m_complaints.clear(); }

private:
    QStringList m_complaints;
};

} // namespace HovletsTool
