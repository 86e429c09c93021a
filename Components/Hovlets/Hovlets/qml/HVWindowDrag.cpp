// SPDX-License-Identifier: Apache-2.0
#include "HVWindowDrag.h"

#include "HVQtCompat.h"
#include "HVWindowSystem.h"

#include <QtCore/QEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QWidget>

namespace Hovlets {

HVWindowDrag::HVWindowDrag(QWidget &view)
    : QObject(&view)
    , m_view(view)
{
    view.installEventFilter(this);
}

void HVWindowDrag::start(Qt::Edges edges)
{
    QWidget *const window = m_view.window();
    if (!m_isActive)
        m_geometry = QRect(positionOf(*window->windowHandle()), window->size());
    m_edges = edges;
    m_isActive = true;
}

bool HVWindowDrag::eventFilter(QObject *object, QEvent *event)
{
    if (object != &m_view)
        return false;
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick: // instead of the second press
        press(static_cast<const QMouseEvent &>(*event));
        break;
    case QEvent::MouseMove:
    case QEvent::MouseButtonRelease:
        move(static_cast<const QMouseEvent &>(*event));
        break;
    case QEvent::Hide:
        m_isActive = false;
        break;
    default:
        break;
    }
    return false;
}

void HVWindowDrag::press(const QMouseEvent &event)
{
    if (event.button() == m_button || !(event.buttons() & m_button))
        m_isActive = false; // the release of the button got lost
    if (m_isActive)
        return;
    m_button = event.button();
    m_pressed = globalPosition(event);
}

void HVWindowDrag::move(const QMouseEvent &event)
{
    const bool isEnd = event.type() == QEvent::MouseButtonRelease && event.button() == m_button;
    if (!isEnd && !(event.buttons() & m_button))
        m_isActive = false; // the release got lost
    if (m_isActive)
        follow(globalPosition(event)); // Qt may report the last movement with the release alone
    if (isEnd)
        m_isActive = false;
}

void HVWindowDrag::follow(const QPoint &pointer)
{
    QWidget *const window = m_view.window();
    const QPoint offset = pointer - m_pressed;
    if (!m_edges) {
        window->move(m_geometry.topLeft() + offset);
        return;
    }
    const QSize smallest = window->minimumSize().expandedTo({ 1, 1 });
    QRect geometry = m_geometry;
    if (m_edges & Qt::LeftEdge)
        geometry.setLeft(
                qMin(geometry.left() + offset.x(), geometry.right() + 1 - smallest.width()));
    if (m_edges & Qt::RightEdge)
        geometry.setWidth(qMax(geometry.width() + offset.x(), smallest.width()));
    if (m_edges & Qt::TopEdge)
        geometry.setTop(
                qMin(geometry.top() + offset.y(), geometry.bottom() + 1 - smallest.height()));
    if (m_edges & Qt::BottomEdge)
        geometry.setHeight(qMax(geometry.height() + offset.y(), smallest.height()));
    window->setGeometry(geometry);
}

} // namespace Hovlets
