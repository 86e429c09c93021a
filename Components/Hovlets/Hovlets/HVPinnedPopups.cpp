// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedPopups.h"

#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

namespace Hovlets {

void HVPinnedPopups::add(HVWidget *popup)
{
    m_popups.append(popup);
}

void HVPinnedPopups::raise()
{
    forgetClosed();
    for (auto it = m_popups.crbegin(); it != m_popups.crend(); ++it)
        (*it)->raise();
}

void HVPinnedPopups::setStayOnTop(bool on)
{
    forgetClosed();
    for (auto it = m_popups.crbegin(); it != m_popups.crend(); ++it) {
        HVWidget *popup = *it;
        popup->setWindowFlags(popup->windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
        popup->show(); // a change of flags hides a window
    }
}

HVXmlElement *HVPinnedPopups::contentFor(const QString &key) const
{
    for (const QPointer<HVWidget> &popup : m_popups) {
        HVXmlElement *content = popup && popup->view() ? popup->view()->content() : nullptr;
        if (content && content->attribute(QStringLiteral("key")) == key)
            return content;
    }
    return nullptr;
}

void HVPinnedPopups::forgetClosed()
{
    m_popups.removeAll(QPointer<HVWidget>());
}

} // namespace Hovlets
