// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVPopupServices.h"

#include <QtCore/QPointer>

namespace Hovlets {

/*!
 * \brief Answers views and popups on behalf of the manager.
 *
 * It must be destroyed before the members that it uses.
 */
class HVManagerServices final : public HVPopupServices
{
public:
    explicit HVManagerServices(HVManager &manager);

    QObject *owner() override;
    [[nodiscard]] const HVContext &settings() const override;
    [[nodiscard]] const HVIndex &contentIndex() const override;
    void sendMessage(HVMessageType type, const QString &message) override;
    [[nodiscard]] QString interpolated(const QString &text) const override;
    QString translated(HVView &view, const QString &text, const QString &context) override;
    bool openResource(const QString &resource) override;
    HVManager *manager() override;
    QString keyFor(QWidget *control) override;
    bool reservePopup(HVWidget *popup, QWidget *&container) override;

    /// The view for which the host is currently translating a text, or null.
    [[nodiscard]] HVView *translatingView() const;

private:
    HVManager &m_manager;
    QPointer<HVView> m_translatingView;
};

} // namespace Hovlets
