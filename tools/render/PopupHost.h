// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <HVInterface.h>
#include <HVManager.h>

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

    /// \param manager the manager of the popups, whose packages translate their texts. That of the
    /// base class has no content
    void setManager(Hovlets::HVManager &manager) { m_manager = &manager; }

    QString translateString(const QString &text, const QString &context) override
    {
        return m_manager ? m_manager->translateString(text, context) : text;
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
    Hovlets::HVManager *m_manager = nullptr;
    QStringList m_complaints;
};

} // namespace HovletsTool
