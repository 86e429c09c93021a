// SPDX-License-Identifier: Apache-2.0
#include "HVControlPart.h"

#include <QtCore/QAbstractItemModel>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>

#include <optional>

namespace Hovlets {

namespace {

/// In the coordinates of the widget; no value outside all parts.
using Part = std::optional<HVControlPart>;

Part tabAt(const QTabBar &bar, const QPoint &point)
{
    const int tab = bar.tabAt(point);
    if (tab < 0)
        return std::nullopt;
    return HVControlPart { { quintptr(tab) + 1, 0, 0 }, bar.tabRect(tab) };
}

Part sectionAt(const QHeaderView &header, const QPoint &point)
{
    const int section = header.logicalIndexAt(point);
    if (section < 0)
        return std::nullopt;
    const int begin = header.sectionViewportPosition(section);
    const int length = header.sectionSize(section);
    const QRect geometry = header.orientation() == Qt::Horizontal
            ? QRect(begin, 0, length, header.viewport()->height())
            : QRect(0, begin, header.viewport()->width(), length);
    return HVControlPart { { quintptr(section) + 1, 0, 0 }, geometry };
}

Part itemAt(const QAbstractItemView &view, const QPoint &point)
{
    const QModelIndex index = view.indexAt(point);
    if (!index.isValid())
        return std::nullopt;
    return HVControlPart { { quintptr(index.row()) + 1, quintptr(index.column()) + 1,
                             index.internalId() },
                           view.visualRect(index) };
}

template <typename Menu> Part actionAt(const Menu &menu, const QPoint &point)
{
    QAction *action = menu.actionAt(point);
    if (!action)
        return std::nullopt;
    return HVControlPart { { reinterpret_cast<quintptr>(action), 0, 0 },
                           menu.actionGeometry(action) };
}

Part partAt(const QWidget &widget, const QPoint &point)
{
    if (const auto *bar = qobject_cast<const QTabBar *>(&widget))
        return tabAt(*bar, point);
    if (const auto *menu = qobject_cast<const QMenu *>(&widget))
        return actionAt(*menu, point);
    if (const auto *bar = qobject_cast<const QMenuBar *>(&widget))
        return actionAt(*bar, point);
    // Views receive their events through a child.
    const auto *view = qobject_cast<const QAbstractItemView *>(widget.parentWidget());
    if (!view || view->viewport() != &widget)
        return std::nullopt;
    const auto *header = qobject_cast<const QHeaderView *>(view);
    return header ? sectionAt(*header, point) : itemAt(*view, point);
}

bool hasToolTip(const QHeaderView &header, const QPoint &point)
{
    const int section = header.logicalIndexAt(point);
    return section >= 0 && header.model()
            && header.model()->headerData(section, header.orientation(), Qt::ToolTipRole).isValid();
}

/// An action without a tooltip returns its text as one.
bool hasToolTip(const QMenu &menu, const QPoint &point)
{
    const QAction *action = menu.toolTipsVisible() ? menu.actionAt(point) : nullptr;
    return action && action->toolTip() != action->iconText();
}

} // namespace

bool hasPartToolTip(const QWidget &widget, const QPoint &position)
{
    const QPoint point = widget.mapFromGlobal(position);
    if (const auto *bar = qobject_cast<const QTabBar *>(&widget))
        return !bar->tabToolTip(bar->tabAt(point)).isEmpty();
    if (const auto *menu = qobject_cast<const QMenu *>(&widget))
        return hasToolTip(*menu, point);
    const auto *view = qobject_cast<const QAbstractItemView *>(widget.parentWidget());
    if (!view || view->viewport() != &widget)
        return false;
    if (const auto *header = qobject_cast<const QHeaderView *>(view))
        return hasToolTip(*header, point);
    return view->indexAt(point).data(Qt::ToolTipRole).isValid();
}

HVControlPart controlPartAt(const QWidget &widget, const QPoint &position)
{
    const QPoint origin = widget.mapToGlobal(QPoint());
    HVControlPart part = partAt(widget, widget.mapFromGlobal(position))
                                 .value_or(HVControlPart { {}, widget.rect() });
    part.geometry = part.geometry.intersected(widget.rect()).translated(origin);
    return part;
}

} // namespace Hovlets
