// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtCore/QVector>

class QWidget;
class QWindow;

namespace Hovlets {

/*!
 * \brief The popups that were pinned from a window, which remains usable beside them.
 *
 * They stay above the window, unless they have entries in the taskbar, or the compositor would then
 * give them the keyboard whenever the user clicks the window.
 *
 * Qt shows tooltips only in active windows. Window systems may activate a new window, and all
 * activate one that is clicked. While a pinned popup is the active window, the window that it came
 * from therefore has Qt::WA_AlwaysShowToolTips.
 *
 * The object exists while there are such popups. GUI thread only.
 */
class HVPinnedCompanions : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVPinnedCompanions)

public:
    /// \a popup was pinned from \a window.
    static void add(QWidget &popup, QWidget &window);

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    explicit HVPinnedCompanions(QWidget &window);

    void forget(const QObject *popup);
    void activeWindowChanged(const QWindow *active);
    void tieToWindow(QWidget &popup) const;
    void clickDidNotActivate();
    [[nodiscard]] bool contains(const QWindow *window) const;

    QWidget &m_window; // owns this object
    QVector<QWidget *> m_popups;
    QTimer m_click; // runs from a click until the window should be active
    bool m_hasSetAttribute = false;
    bool m_isLockedOut =
            false; // the compositor does not activate the window while popups belong to it
};

} // namespace Hovlets
