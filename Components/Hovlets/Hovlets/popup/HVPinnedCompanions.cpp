// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedCompanions.h"

#include "HVStandIn.h"
#include "HVWindowSystem.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

#include <algorithm>
#include <iterator>

namespace Hovlets {

namespace {

constexpr int ActivationTime = 1000; // ms; ample for a compositor

} // namespace

void HVPinnedCompanions::add(QWidget &popup, QWidget &window)
{
    auto *companions =
            window.findChild<HVPinnedCompanions *>(QString(), Qt::FindDirectChildrenOnly);
    if (!companions)
        companions = new HVPinnedCompanions(window);
    companions->m_popups.append(&popup);
    popup.installEventFilter(companions);
    connect(&popup, &QObject::destroyed, companions, &HVPinnedCompanions::forget);
    companions->activeWindowChanged(QGuiApplication::focusWindow());
}

HVPinnedCompanions::HVPinnedCompanions(QWidget &window)
    : QObject(&window)
    , m_window(window)
{
    connect(qGuiApp, &QGuiApplication::focusWindowChanged, this,
            &HVPinnedCompanions::activeWindowChanged);
    QWindow *const handle = windowShowing(window);
    if (programsPlaceWindows() || !handle)
        return;
    m_click.setSingleShot(true);
    m_click.setInterval(ActivationTime);
    connect(&m_click, &QTimer::timeout, this, &HVPinnedCompanions::clickDidNotActivate);
    handle->installEventFilter(this);
}

/// The popup is being destroyed, and no longer a widget.
void HVPinnedCompanions::forget(const QObject *popup)
{
    const auto isGone = [&](const QObject *other) { return other == popup; };
    m_popups.erase(std::remove_if(m_popups.begin(), m_popups.end(), isGone), m_popups.end());
    activeWindowChanged(QGuiApplication::focusWindow());
    if (m_popups.isEmpty())
        delete this;
}

bool HVPinnedCompanions::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::Show && object->isWidgetType())
        tieToWindow(*static_cast<QWidget *>(object));
    else if (event->type() == QEvent::MouseButtonPress && object == windowShowing(m_window)
             && QGuiApplication::focusWindow() != object)
        m_click.start();
    return false;
}

/// Makes a popup that is about to show stay above the window. An ordinary window does not: window
/// managers give no entry in the taskbar to windows that belong to another.
void HVPinnedCompanions::tieToWindow(QWidget &popup) const
{
    if (!popup.isWindow() || !popup.windowHandle())
        return;
    const bool isApart = m_isLockedOut || popup.windowType() == Qt::Window;
    popup.windowHandle()->setTransientParent(isApart ? nullptr : windowShowing(m_window));
}

/// Some Wayland compositors activate the last window that belongs to another, instead of that one.
/// Such a tie ends only when the popup appears again.
void HVPinnedCompanions::clickDidNotActivate()
{
    if (m_isLockedOut || !contains(QGuiApplication::focusWindow()))
        return;
    m_isLockedOut = true;
    QVector<QPointer<QWidget>> popups; // showing them runs code of the host
    std::copy(m_popups.begin(), m_popups.end(), std::back_inserter(popups));
    for (const QPointer<QWidget> &popup : popups) {
        if (!popup || !popup->isWindow() || !popup->isVisible())
            continue;
        popup->hide();
        if (popup)
            popup->show();
    }
}

void HVPinnedCompanions::activeWindowChanged(const QWindow *active)
{
    const bool isBeside = contains(active);
    if (active && active == windowShowing(m_window))
        m_click.stop();
    if (isBeside == m_hasSetAttribute)
        return;
    if (isBeside && m_window.testAttribute(Qt::WA_AlwaysShowToolTips))
        return; // set by the host, and left to it
    m_window.setAttribute(Qt::WA_AlwaysShowToolTips, isBeside);
    m_hasSetAttribute = isBeside;
}

/// A popup may be docked in a window of the host.
bool HVPinnedCompanions::contains(const QWindow *window) const
{
    return window && std::any_of(m_popups.begin(), m_popups.end(), [&](const QWidget *popup) {
               return popup->window() != &m_window && popup->window()->windowHandle() == window;
           });
}

} // namespace Hovlets
