// SPDX-License-Identifier: Apache-2.0
#include "HVViewWindow.h"

#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace Hovlets {

HVViewWindow::HVViewWindow(QWidget &view)
    : QObject(&view)
    , m_view(view)
{
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
    if (valid == m_userSize)
        return;
    m_userSize = valid;
    Q_EMIT userSizeChanged();
}

bool HVViewWindow::startMove()
{
    QWindow *window = m_view.window()->windowHandle();
    return m_titleBar == TitleBar::Own && window && window->startSystemMove();
}

bool HVViewWindow::startResize(int edges)
{
    QWindow *window = m_view.window()->windowHandle();
    return m_titleBar == TitleBar::Own && window && window->startSystemResize(Qt::Edges(edges));
}

} // namespace Hovlets
