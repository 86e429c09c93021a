// SPDX-License-Identifier: Apache-2.0
#include "HVBesideControl.h"

#include "HVControlPlace.h"

#include <QtGui/QCursor>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

namespace Hovlets {

namespace {

constexpr int Unlimited = 1 << 20; // px
constexpr int MaximumRegions = 64; // a curved selection has one for each row of pixels

QVector<QRect> rectanglesOf(const QRegion &region)
{
    if (region.rectCount() > MaximumRegions)
        return { region.boundingRect() };
    return { region.begin(), region.end() };
}

QVector<QRect> openMenus()
{
    QVector<QRect> menus;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget *window : windows) {
        if (window->isVisible() && window->windowType() == Qt::Popup)
            menus.append(window->geometry());
    }
    return menus;
}

} // namespace

HVControlPart visiblePartAt(const QWidget &control, const QPoint &position)
{
    HVControlPart part = controlPartAt(control, position);
    for (const QWidget *widget = &control; !widget->isWindow();) {
        widget = widget->parentWidget();
        const QRect outer(widget->mapToGlobal(QPoint()), widget->size());
        if (outer.intersects(part.geometry))
            part.geometry &= outer;
    }
    return part;
}

HVBesideControl::HVBesideControl(const QWidget &control, const QPoint &position,
                                 const QRegion &keepClear)
{
    m_request.control = visiblePartAt(control, position).geometry;
    const QRect area = availableAreaFor(control);
    m_request.area = area.isNull()
            ? m_request.control.adjusted(-Unlimited, -Unlimited, Unlimited, Unlimited)
            : area;
    m_request.cursor = position;
    m_request.direction = control.layoutDirection();
    m_request.keepClear = rectanglesOf(keepClear) + openMenus();
}

QPoint HVBesideControl::cornerFor(const QSize &popup)
{
    if (m_request.current)
        m_request.cursor = QCursor::pos();
    m_request.popup = popup;
    m_request.current = placeBeside(m_request);
    return m_request.current->geometry.topLeft();
}

std::optional<HVArrow> HVBesideControl::arrow(int corner) const
{
    if (!m_request.current)
        return std::nullopt;
    const QRect visible = m_request.control.intersected(m_request.area);
    return arrowTowards(visible, *m_request.current, corner);
}

} // namespace Hovlets
