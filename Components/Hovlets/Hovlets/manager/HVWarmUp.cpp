// SPDX-License-Identifier: Apache-2.0
#include "HVWarmUp.h"

#include "HVHoverPopup.h"
#include "HVLookUp.h"
#include "HVManager.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"

#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <array>
#include <utility>

namespace Hovlets {

namespace {

constexpr int Interval = 1000; // ms; a user may need the time between two steps
constexpr int MostAttempts = 60;

bool isIdle()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const bool isRunning = std::any_of(windows.begin(), windows.end(), [](const QWindow *window) {
        return window->isVisible() && window->isExposed();
    });
    return isRunning && !QApplication::activePopupWidget()
            && QGuiApplication::mouseButtons() == Qt::NoButton;
}

} // namespace

HVWarmUp::HVWarmUp(HVManager &manager, HVHoverPopup &popup, const QString &key)
    : QObject(&manager)
    , m_manager(manager)
    , m_popup(popup)
    , m_key(key)
{
    connect(&m_timer, &QTimer::timeout, this, &HVWarmUp::takeStep);
    m_timer.start(Interval);
}

void HVWarmUp::takeStep()
{
    static constexpr std::array Steps { &HVWarmUp::createPopup, &HVWarmUp::loadContent,
                                        &HVWarmUp::createWindow, &HVWarmUp::render };
    const bool isUsed = m_popup.content() != m_content || m_popup.isVisible();
    if (isUsed || m_nextStep == Steps.size() || ++m_attempts > MostAttempts) {
        m_timer.stop();
        return;
    }
    if (isIdle())
        (this->*Steps.at(m_nextStep++))();
}

void HVWarmUp::createPopup()
{
    m_popup.prepare(&m_manager, nullptr);
}

void HVWarmUp::loadContent()
{
    HVFoundContent found = lookUp([&](QString &path, int &depth, HVXmlElement *&root) {
        return m_manager.retrieve(m_key, path, depth, root);
    });
    HVXmlElement *entry = found.tree.entry();
    if (!entry || !found.tree.root() || !m_popup.view() || m_popup.content()) {
        m_timer.stop(); // the host's code may have shown a popup meanwhile
        return;
    }
    m_content = entry;
    m_popup.view()->setContentTree(std::move(found.tree));
    m_popup.widget()->prepare(entry, found.packageRoot);
}

void HVWarmUp::createWindow()
{
    if (!m_popup.widget()) // the host has deleted it
        return m_timer.stop();
    m_popup.widget()->createWindow();
}

void HVWarmUp::render()
{
    if (!m_popup.view())
        return m_timer.stop();
    m_popup.view()->renderUnseen();
}

} // namespace Hovlets
