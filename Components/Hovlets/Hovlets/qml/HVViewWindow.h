// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QTimer>

class QWidget;

namespace Hovlets {

class HVWindowDrag;

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
    Q_PROPERTY(QString levelKey READ levelKey NOTIFY levelKeyChanged)
    Q_PROPERTY(bool expanding READ isExpanding NOTIFY expandingChanged)

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

    /// The size that the user or the desktop has given the view; empty if the content determines
    /// it.
    [[nodiscard]] QSize userSize() const { return m_userSize; }

    /// The size that the popup has when it is restored: the user's, but not that of a maximised or
    /// tiled window. Empty if the content determines it.
    [[nodiscard]] QSize rememberedSize() const { return m_rememberedSize; }

    /// Sets both sizes.
    void setUserSize(const QSize &size);

    /// The window has given the view the size \a size. Sets both sizes if the user has resized it
    /// at an edge, otherwise only the current one.
    void windowResized(const QSize &size);

    /// Whether the user resizes the window, and the desktop leaves that to the program.
    [[nodiscard]] bool isResizingItself() const;

    /// The name of the key that turns the simple popup into the full one, and pins the full one;
    /// empty if there is none.
    [[nodiscard]] QString levelKey() const { return m_levelKey; }
    void setLevelKey(const QString &key);

    /// Whether the full user interface, while it loads, replaces the simple one on screen.
    [[nodiscard]] bool isExpanding() const { return m_isExpanding; }
    void setExpanding(bool isExpanding);

    /// Lets the user move the window while a button is pressed. Returns false if the popup does not
    /// draw its title bar.
    Q_INVOKABLE bool startMove();

    /// Lets the user resize the window at \a edges, a combination of Qt::Edge.
    Q_INVOKABLE bool startResize(int edges);

Q_SIGNALS:
    void titleBarChanged();
    void userSizeChanged();
    void levelKeyChanged();
    void expandingChanged();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    [[nodiscard]] bool isResizedByUser() const;

    QWidget &m_view;
    TitleBar m_titleBar = TitleBar::None;
    QSize m_userSize { 0, 0 };
    QSize m_rememberedSize { 0, 0 };
    HVWindowDrag *m_drag; // child of the view
    /// The user resizes the window at an edge, and the desktop does it.
    bool m_desktopResizes = false;
    QTimer m_afterResize; // until the last change of the size has been reported
    QString m_levelKey;
    bool m_isExpanding = false;
};

} // namespace Hovlets
