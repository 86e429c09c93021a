// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtCore/QString>
#include <QtCore/QTimer>

#include <cstddef>

namespace Hovlets {

class HVHoverPopup;
class HVManager;
class HVXmlElement;

/*!
 * \brief Prepares the popup while the application is idle, which makes the first one as fast as
 * later ones.
 *
 * Creates the popup, loads the user interface for an entry, and renders it.
 * Nothing is shown. Each step waits until a window of the application is visible and no menu is
 * open. The warm-up ends when the popup is used for something else, and gives up after a minute.
 * GUI thread only.
 */
class HVWarmUp : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVWarmUp)

public:
    /// \a manager owns the object and \a popup. \a key is that of the entry to load.
    HVWarmUp(HVManager &manager, HVHoverPopup &popup, const QString &key);

    /// Whether steps are left, and the popup is not used otherwise.
    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

    /// Takes the next step if the application is idle. Called once a second.
    void takeStep();

private:
    void createPopup();
    void loadContent();
    void createWindow();
    void render();

    HVManager &m_manager;
    HVHoverPopup &m_popup;
    QString m_key;
    QTimer m_timer;
    int m_attempts = 0;
    std::size_t m_nextStep = 0;
    QPointer<HVXmlElement> m_content; // loaded by the warm-up
};

} // namespace Hovlets
