// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QString>

class QWidget;

namespace Hovlets {

/*!
 * \brief The popup's window as QML sees it, by the name "hovletWindow".
 *
 * A pinned popup may have a window without a frame, which its user interface then moves and
 * resizes. The popup writes the properties. GUI thread only; owned by the view.
 */
class HVViewWindow : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVViewWindow)
    Q_PROPERTY(QString titleBar READ titleBarName NOTIFY titleBarChanged)
    Q_PROPERTY(QSize userSize READ userSize NOTIFY userSizeChanged)

public:
    /// Who draws the title bar, as far as the user interface should care.
    enum class TitleBar {
        /// There is none, or the setting HVKeyOwnTitleBar is off.
        None,
        /// The user interface.
        Own,
        /// The desktop.
        Desktop
    };

    explicit HVViewWindow(QWidget &view);

    [[nodiscard]] TitleBar titleBar() const { return m_titleBar; }
    void setTitleBar(TitleBar titleBar);

    /// Empty, "own" or "desktop".
    [[nodiscard]] QString titleBarName() const;

    /// The size that the user has given the view; empty if the content determines it.
    [[nodiscard]] QSize userSize() const { return m_userSize; }
    void setUserSize(const QSize &size);

    /// Lets the user move the window while a button is pressed; false if the desktop does not.
    Q_INVOKABLE bool startMove();

    /// Lets the user resize the window at \a edges, a combination of Qt::Edge.
    Q_INVOKABLE bool startResize(int edges);

Q_SIGNALS:
    void titleBarChanged();
    void userSizeChanged();

private:
    QWidget &m_view;
    TitleBar m_titleBar = TitleBar::None;
    QSize m_userSize { 0, 0 };
};

} // namespace Hovlets
