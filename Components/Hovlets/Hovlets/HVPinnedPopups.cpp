// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedPopups.h"

#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <algorithm>

namespace Hovlets {

void HVPinnedPopups::add(HVWidget *popup)
{
    m_popups.append(popup);
}

void HVPinnedPopups::raise()
{
    forgetClosed();
    std::for_each(m_popups.crbegin(), m_popups.crend(),
                  [](const QPointer<HVWidget> &popup) { popup->raise(); });
}

void HVPinnedPopups::setStayOnTop(bool on)
{
    forgetClosed();
    // Showing a window runs code of others, which may close or pin a popup meanwhile.
    const QList<QPointer<HVWidget>> popups = m_popups;
    std::for_each(popups.crbegin(), popups.crend(), [on](const QPointer<HVWidget> &popup) {
        if (!popup)
            return;
        popup->setWindowFlags(popup->windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
        popup->show(); // a change of flags hides a window
    });
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
