// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedPopups.h"

#include "HVView.h"
#include "HVViewWindow.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <algorithm>

namespace Hovlets {

namespace {

HVXmlElement *contentOf(const HVWidget *popup)
{
    return popup && popup->view() ? popup->view()->content() : nullptr;
}

} // namespace

void HVPinnedPopups::add(HVWidget *popup, const QString &locale)
{
    m_popups.append({ popup, locale });
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

/// Raising and showing windows runs code of the host, which may close or pin a popup meanwhile.
void HVPinnedPopups::forEachFromLast(const std::function<void(HVWidget &)> &change)
{
    forgetClosed();
    const QList<Pinned> popups = m_popups;
    std::for_each(popups.crbegin(), popups.crend(), [&](const Pinned &pinned) {
        if (pinned.popup)
            change(*pinned.popup);
    });
}

QVector<HVPinnedState> HVPinnedPopups::states() const
{
    QVector<HVPinnedState> states;
    for (const auto &[popup, locale] : m_popups) {
        const HVXmlElement *content = contentOf(popup);
        if (!content || !popup->isVisible())
            continue;
        const bool stayOnTop = popup->windowFlags().testFlag(Qt::WindowStaysOnTopHint);
        states.append({ content->attribute(QStringLiteral("key")), locale, popup->placeOfWindow(),
                        stayOnTop, popup->view()->viewWindow().rememberedSize() });
    }
    return states;
}

HVXmlElement *HVPinnedPopups::contentFor(const QString &key) const
{
    for (const Pinned &pinned : m_popups) {
        HVXmlElement *content = contentOf(pinned.popup);
        if (content && content->attribute(QStringLiteral("key")) == key)
            return content;
    }
    return nullptr;
}

void HVPinnedPopups::forgetClosed()
{
    const auto isClosed = [](const Pinned &pinned) { return !pinned.popup; };
    m_popups.erase(std::remove_if(m_popups.begin(), m_popups.end(), isClosed), m_popups.end());
}

} // namespace Hovlets
