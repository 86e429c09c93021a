// SPDX-License-Identifier: Apache-2.0
#include "HVHoverShow.h"

#include "HVContentLocale.h"
#include "HVHoverPopup.h"
#include "HVManager.h"
#include "HVOwnTipContent.h"
#include "HVShowScope.h"
#include "HVStandIn.h"
#include "HVView.h"
#include "HVWidget.h"

#include <QtWidgets/QApplication>

#include <utility>

namespace Hovlets {

HVHoverShow::HVHoverShow(HVManager &manager, HVHoverPopup &popup)
    : m_manager(manager)
    , m_popup(popup)
{
}

bool HVHoverShow::isAllowed() const
{
    const HVContext &settings = m_manager.context();
    if (settings.get(HVKeySuspended).toBool())
        return false;
    const int modifiers = settings.get(HVKeyRequiredModifiers).toInt();
    return modifiers == 0 || static_cast<int>(QApplication::keyboardModifiers()) == modifiers;
}

bool HVHoverShow::hasContent(const QString &key, QWidget &widget, const QPoint &position) const
{
    const QPointer<QWidget> control(&widget);
    HVFoundContent found = find(key);
    if (!found.tree.entry())
        found = findOwnTip(control, position);
    if (!found.tree.entry())
        found = findFallback(m_manager.context().get(HVKeyFallbackKey).toString());
    const HVXmlElement *entry = found.tree.entry();
    if (entry && entry == m_popup.content())
        found.tree.release(); // an index supplied by the host may return the same tree again
    return entry;
}

bool HVHoverShow::show(const QString &key, const QPoint &position, QObject *object)
{
    const HVShowScope showing;
    Hover hover { key, position, object, qobject_cast<QWidget *>(object) };
    if (m_popup.isShowing(key))
        return stay(hover);

    HVFoundContent found = find(key);
    if (!found.tree.entry()) {
        found = findOwnTip(hover.widget, position);
        if (found.tree.entry())
            hover.partKey = found.tree.entry()->attribute(QStringLiteral("key"));
        if (found.tree.entry() && m_popup.isShowing(hover.partKey))
            return stay(hover);
    }
    if (!found.tree.entry()) {
        const QString fallbackKey = m_manager.context().get(HVKeyFallbackKey).toString();
        if (m_popup.isShowing(fallbackKey))
            return stay(hover);
        found = findFallback(fallbackKey);
    }
    HVXmlElement *entry = found.tree.entry();
    const bool complete = entry && found.tree.root();
    const bool isOnScreen = entry && m_popup.content() == entry;
    if (isOnScreen)
        found.tree.release(); // an index supplied by the host may return the same tree again
    if (!complete)
        return m_popup.keepOrHide(position, hover.widget);
    if (isOnScreen && m_popup.isVisible())
        return stay(hover);
    return present(hover, entry, std::move(found));
}

/// Keeps the popup, which already shows the content for \a hover. Moves it only if its place is no
/// longer right for the control.
bool HVHoverShow::stay(const Hover &hover)
{
    const QPointer<HVWidget> popup(m_popup.widget());
    if (!popup->isPlacedFor(hover.widget)) {
        popup->setHoverPosition(hover.position);
        popup->placeFor(hover.widget, m_manager.tooltipPosition(hover.position, hover.widget));
    }
    if (!popup || popup != m_popup.widget() || popup->isHidden())
        return m_popup.isShowing(hover.key); // the host's code has hidden it while it moved
    if (hover.widget == popup->referenceWidget())
        popup->setHover(hover.partKey, hover.position);
    return m_popup.keep();
}

HVFoundContent HVHoverShow::find(const QString &key) const
{
    return lookUp([&](QString &path, int &depth, HVXmlElement *&root) {
        return m_manager.retrieve(key, path, depth, root);
    });
}

/// The tip that the control has without content, if the settings ask for it and the package that
/// draws it is there.
HVFoundContent HVHoverShow::findOwnTip(QWidget *widget, const QPoint &position) const
{
    if (!widget || !m_manager.context().get(HVKeyShowOwnTips).toBool())
        return { HVContentTree(), QString() };
    HVFoundContent found = ownTipContent(*widget, position);
    const bool canBeDrawn = found.tree.entry()
            && !m_manager.index()
                        ->componentPathsForElement(found.tree.entry(), QString())
                        .isEmpty();
    return canBeDrawn ? std::move(found) : HVFoundContent { HVContentTree(), QString() };
}

HVFoundContent HVHoverShow::findFallback(const QString &fallbackKey) const
{
    if (fallbackKey.isNull())
        return { HVContentTree(), QString() };
    return lookUp([&](QString &path, int &depth, HVXmlElement *&root) {
        return m_manager.index()->retrieve(fallbackKey, fallbackContentLocale(m_manager.context()),
                                           path, depth, root);
    });
}

bool HVHoverShow::present(const Hover &hover, HVXmlElement *entry, HVFoundContent found)
{
    // Sending a message or asking the host's index may have closed the popup, and the popup's own
    // QML may have caused this call.
    m_popup.prepareForContent(&m_manager);
    if (m_popup.content() != entry)
        m_popup.view()->setContentTree(std::move(found.tree));
    const QPointer<HVXmlElement> shown(entry);
    const QPoint corner = m_manager.tooltipPosition(hover.position, hover.widget);
    fillInShortcut(hover, *entry);
    if (!shown || m_popup.content() != shown)
        return m_popup.isShowing(hover.key);
    const QPointer<HVWidget> popup(m_popup.widget());
    popup->setHoverPosition(hover.position);
    popup->showWithContent(hover.control, corner, entry, found.packageRoot);
    if (!popup || popup != m_popup.widget())
        return m_popup.isShowing(hover.key); // QML called the host, which showed something else
    if (popup->isHidden())
        return false; // by code of the host
    popup->setHover(hover.partKey, hover.position);
    popup->raise();
    return true;
}

/// Asks the host, whose code may delete the entry to which the shortcut belongs.
void HVHoverShow::fillInShortcut(const Hover &hover, HVXmlElement &entry) const
{
    const QString name = QStringLiteral("shortcut");
    const auto *standIn = qobject_cast<const HVStandIn *>(hover.control.data());
    const QString known = standIn ? standIn->shortcut() : QString();
    const QString written = known.isEmpty() ? entry.attribute(name) : known;
    QObject *control = standIn ? standIn->control() : hover.control.data();
    const QPointer<HVXmlElement> shown(&entry);
    HVInterface *host = m_manager.interface();
    const QString shortcut = host ? host->shortCutForObject(hover.key, control, written) : written;
    if (shown && !shortcut.isEmpty())
        shown->setAttribute(name, shortcut);
}

} // namespace Hovlets
