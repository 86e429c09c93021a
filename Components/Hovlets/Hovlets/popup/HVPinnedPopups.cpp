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
    forEachFromLast([](HVWidget &popup) { popup.raise(); });
}

void HVPinnedPopups::setStayOnTop(bool on)
{
    forEachFromLast([on](HVWidget &popup) {
        popup.setWindowFlags(popup.windowFlags().setFlag(Qt::WindowStaysOnTopHint, on));
        popup.show(); // changing the flags has hidden the window
    });
}

/// Raising and showing windows runs foreign code, which may close or pin a popup meanwhile.
void HVPinnedPopups::forEachFromLast(const std::function<void(HVWidget &)> &change)
{
    forgetClosed();
    const QList<QPointer<HVWidget>> popups = m_popups;
    std::for_each(popups.crbegin(), popups.crend(), [&](const QPointer<HVWidget> &popup) {
        if (popup)
            change(*popup);
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
