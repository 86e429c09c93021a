// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedRestore.h"

#include "HVContentLocale.h"
#include "HVHoverPopup.h"
#include "HVLookUp.h"
#include "HVManager.h"
#include "HVPinnedState.h"
#include "HVShowScope.h"
#include "HVView.h"
#include "HVViewWindow.h"
#include "HVWidget.h"

#include <QtGui/QScreen>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <utility>

namespace Hovlets {

namespace {

/// The content in the locale in which it was pinned, or in those that follow it.
HVFoundContent find(HVManager &manager, const HVPinnedState &state)
{
    const QVector<QLocale> locales = contentLocales(manager.context(), QLocale(state.locale));
    for (const QLocale &locale : locales) {
        HVFoundContent found = lookUp([&](QString &path, int &depth, HVXmlElement *&root) {
            return manager.index()->retrieve(state.key, locale, path, depth, root);
        });
        if (found.tree.entry())
            return found;
    }
    return { HVContentTree(), QString() };
}

/// The window of the host to which the popup belongs, or null.
QWidget *hostWindow()
{
    const auto isOfHost = [](const QWidget *window) {
        return window->isVisible() && window->windowType() == Qt::Window
                && !qobject_cast<const HVWidget *>(window);
    };
    QWidget *active = QApplication::activeWindow();
    if (active && isOfHost(active))
        return active;
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto first = std::find_if(windows.begin(), windows.end(), isOfHost);
    return first == windows.end() ? nullptr : *first;
}

/// The size that the user gave the popup, at most that of the screen where it appears, which may be
/// smaller than the one where it was.
QSize onScreen(const HVPinnedState &state)
{
    constexpr QSize Rim(1, 1); // by which popups are larger than their views
    const QScreen *screen = QGuiApplication::screenAt(state.position);
    if (!screen)
        screen = QGuiApplication::primaryScreen();
    return screen && state.size.isValid() ? state.size.boundedTo(screen->availableSize() - Rim)
                                          : state.size;
}

void restore(HVManager &manager, HVHoverPopup &popup, const HVPinnedState &state)
{
    const HVShowScope showing;
    HVFoundContent found = find(manager, state);
    HVXmlElement *entry = found.tree.entry();
    if (!entry || !found.tree.root())
        return;
    popup.prepareForContent(&manager);
    popup.view()->setContentTree(std::move(found.tree));
    const QPointer<HVWidget> widget(popup.widget());
    if (manager.context().get(HVKeyOwnTitleBar).toBool())
        popup.view()->viewWindow().setUserSize(onScreen(state));
    widget->showPinned(state.position, hostWindow(), entry, found.packageRoot);
    if (!widget || !state.stayOnTop || !widget->isWindow() || !widget->view()->reserved())
        return;
    widget->setWindowFlag(Qt::WindowStaysOnTopHint);
    widget->show(); // a change of flags hides a window
}

} // namespace

bool restorePinned(HVManager &manager, HVHoverPopup &popup, const QByteArray &state)
{
    const auto states = decodePinnedStates(state);
    if (!states) {
        manager.handleMessage(HVMessageWarning,
                              QStringLiteral("The saved state of pinned popups is damaged"));
        return false;
    }
    const QPointer<HVManager> self(&manager); // and with it the popup
    for (const HVPinnedState &pinned : *states) {
        if (self)
            restore(manager, popup, pinned);
    }
    return true;
}

} // namespace Hovlets
