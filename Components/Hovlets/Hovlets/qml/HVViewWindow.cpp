// SPDX-License-Identifier: Apache-2.0
#include "HVViewWindow.h"

#include "HVWindowDrag.h"

#include <QtCore/QEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

constexpr int ReportTime = 500; // ms; ample for a window manager

} // namespace

HVViewWindow::HVViewWindow(QWidget &view)
    : QObject(&view)
    , m_view(view)
    , m_drag(new HVWindowDrag(view))
{
    m_afterResize.setSingleShot(true);
    m_afterResize.setInterval(ReportTime);
    connect(&m_afterResize, &QTimer::timeout, this, [this] { m_desktopResizes = false; });
    view.installEventFilter(this);
}

void HVViewWindow::setTitleBar(TitleBar titleBar)
{
    if (titleBar == m_titleBar)
        return;
    m_titleBar = titleBar;
    Q_EMIT titleBarChanged();
}

QString HVViewWindow::titleBarName() const
{
    switch (m_titleBar) {
    case TitleBar::Own:
        return QStringLiteral("own");
    case TitleBar::Desktop:
        return QStringLiteral("desktop");
    case TitleBar::None:
        break;
    }
    return {};
}

void HVViewWindow::setUserSize(const QSize &size)
{
    const QSize valid = size.isValid() ? size : QSize(0, 0);
    m_rememberedSize = valid;
    if (valid == m_userSize)
        return;
    m_userSize = valid;
    Q_EMIT userSizeChanged();
}

void HVViewWindow::windowResized(const QSize &size)
{
    if (m_afterResize.isActive())
        m_afterResize.start();
    if (isResizedByUser()) {
        setUserSize(size);
        return;
    }
    if (size == m_userSize)
        return;
    m_userSize = size;
    Q_EMIT userSizeChanged();
}

bool HVViewWindow::isResizingItself() const
{
    return m_drag->isResizing();
}

bool HVViewWindow::isResizedByUser() const
{
    constexpr Qt::WindowStates Desktops = Qt::WindowMaximized | Qt::WindowFullScreen;
    return m_drag->isResizing()
            || (m_desktopResizes && !(m_view.window()->windowState() & Desktops));
}

void HVViewWindow::setLevelKey(const QString &key)
{
    if (key == m_levelKey)
        return;
    m_levelKey = key;
    Q_EMIT levelKeyChanged();
}

void HVViewWindow::setExpanding(bool isExpanding)
{
    if (isExpanding == m_isExpanding)
        return;
    m_isExpanding = isExpanding;
    Q_EMIT expandingChanged();
}

bool HVViewWindow::startMove()
{
    QWindow *window = m_view.window()->windowHandle();
    if (m_titleBar != TitleBar::Own || !window)
        return false;
    if (!window->startSystemMove())
        m_drag->start({});
    return true;
}

bool HVViewWindow::startResize(int edges)
{
    QWindow *window = m_view.window()->windowHandle();
    if (m_titleBar != TitleBar::Own || !window)
        return false;
    m_afterResize.stop();
    m_desktopResizes = window->startSystemResize(Qt::Edges(edges));
    if (!m_desktopResizes)
        m_drag->start(Qt::Edges(edges));
    return true;
}

/// While the desktop resizes the window, the program gets no mouse events. It may get the last
/// change of the size after the first of them.
bool HVViewWindow::eventFilter(QObject *object, QEvent *event)
{
    if (!m_desktopResizes || object != &m_view)
        return false;
    const bool isMove = event->type() == QEvent::MouseMove
            && static_cast<const QMouseEvent *>(event)->buttons() == Qt::NoButton;
    if (event->type() == QEvent::MouseButtonPress)
        m_desktopResizes = false;
    else if ((isMove || event->type() == QEvent::Enter) && !m_afterResize.isActive())
        m_afterResize.start();
    return false;
}

} // namespace Hovlets
