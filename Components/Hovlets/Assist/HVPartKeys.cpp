// SPDX-License-Identifier: Apache-2.0
#include "HVPartKeys.h"

#include "HVControlNames.h"

#include <HovletsAssist/HVStandardKeys.h>
#include <QtCore/QAbstractItemModel>
#include <QtCore/QVariant>
#include <QtWidgets/QDockWidget>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>
#include <QtWidgets/QTreeView>
// QtWidgets in Qt 5, QtGui in Qt 6.
#include <QAction>

#include <algorithm>

namespace Hovlets {

namespace {

/// The part at a position of a widget.
struct Part
{
    HVControlKeys keys;
    bool hasToolTip = false; // of its own
    bool isOfWhole = true; // whether the entry of the whole describes it, too
};

/// The path of the part for rules.
void setPartPath(Part &part, const QWidget *widget, const QString &text)
{
    part.keys.path = pathOf(widget);
    if (!text.isEmpty())
        part.keys.path += QLatin1Char('/') + text;
}

QRect onScreen(const QWidget *widget, const QRect &area)
{
    return area.intersected(widget->rect()).translated(widget->mapToGlobal(QPoint(0, 0)));
}

/// An entry of a menu, or a title of a menu bar.
template <typename Menu> Part entryAt(const Menu *menu, const QPoint &point, const QWidget *window)
{
    Part part;
    const QAction *action = menu->actionAt(point);
    setPartPath(part, menu, action ? plainText(action->text()) : QString());
    if (!action)
        return part;
    const QRect area = onScreen(menu, menu->actionGeometry(const_cast<QAction *>(action)));
    if (fixKey(part.keys, action, area)
        || (action->menu() && fixKey(part.keys, action->menu(), area)))
        return part;
    if (action->isSeparator())
        return part;
    part.keys.addName(nameOf(action), action, area);
    if (action->menu())
        part.keys.addName(nameOf(action->menu()), action->menu(), area);
    part.keys.add(menuPathOf(action, window), area);
    return part;
}

/// The window whose menus contain \a menu; the menu itself if it has no parent.
const QWidget *windowOf(const QMenu *menu)
{
    const QWidget *widget = menu;
    while (widget->windowType() == Qt::Popup && widget->parentWidget())
        widget = widget->parentWidget();
    return widget->window();
}

const QDockWidget *dockOfTab(const QTabBar *bar, int tab)
{
    const auto *window = qobject_cast<const QMainWindow *>(bar->parentWidget());
    const auto docks = window ? window->findChildren<QDockWidget *>() : QList<QDockWidget *>();
    const auto find = [&](auto isOfTab) {
        const auto dock = std::find_if(docks.begin(), docks.end(), isOfTab);
        return dock == docks.end() ? nullptr : *dock;
    };
    // Several docks may have the same title.
    const quintptr address = bar->tabData(tab).toULongLong();
    if (const QDockWidget *dock =
                find([&](const QDockWidget *each) { return quintptr(each) == address; }))
        return dock;
    const QString title = plainText(bar->tabText(tab));
    return find([&](const QDockWidget *each) { return plainText(each->windowTitle()) == title; });
}

Part tabAt(const QTabBar *bar, const QPoint &point)
{
    Part part;
    const int tab = bar->tabAt(point);
    const QString label = tab < 0 ? QString() : plainText(bar->tabText(tab));
    setPartPath(part, bar, label);
    if (tab < 0)
        return part;
    part.hasToolTip = !bar->tabToolTip(tab).isEmpty();
    const QRect area = onScreen(bar, bar->tabRect(tab));
    const auto *tabs = qobject_cast<const QTabWidget *>(bar->parentWidget());
    const QWidget *page = tabs ? tabs->widget(tab) : dockOfTab(bar, tab);
    if (page && fixKey(part.keys, page, area))
        return part;
    if (page)
        part.keys.addName(nameOf(page), page, area);
    if (bar->tabData(tab).userType() == QMetaType::QString)
        part.keys.add(bar->tabData(tab).toString(), area);
    const QWidget *named = tabs ? static_cast<const QWidget *>(tabs) : bar;
    if (!label.isEmpty())
        part.keys.addName(qualifierOf(named) + QLatin1Char('/') + label, named, area);
    return part;
}

QString keyInRole(const QVariant &value)
{
    return value.userType() == QMetaType::QString ? value.toString() : QString();
}

Part sectionAt(const QHeaderView *header, const QPoint &point, int role)
{
    Part part;
    const int section = header->logicalIndexAt(point);
    const auto data = [&](int of) {
        return header->model()->headerData(section, header->orientation(), of);
    };
    const QString label = section < 0 ? QString() : plainText(data(Qt::DisplayRole).toString());
    setPartPath(part, header, label);
    if (section < 0)
        return part;
    part.hasToolTip = !data(Qt::ToolTipRole).toString().isEmpty();
    const int begin = header->sectionViewportPosition(section);
    const int length = header->sectionSize(section);
    const QWidget *viewport = header->viewport();
    const QRect area = onScreen(viewport,
                                header->orientation() == Qt::Horizontal
                                        ? QRect(begin, 0, length, viewport->height())
                                        : QRect(0, begin, viewport->width(), length));
    if (role >= 0)
        part.keys.add(keyInRole(data(role)), area);
    if (!label.isEmpty())
        part.keys.addName(qualifierOf(header) + QLatin1Char('/') + label, header, area);
    return part;
}

/// The header with the names of the view's columns; null if it has none or they are hidden.
const QHeaderView *columnHeader(const QAbstractItemView *view)
{
    const QHeaderView *header = nullptr;
    if (const auto *table = qobject_cast<const QTableView *>(view))
        header = table->horizontalHeader();
    else if (const auto *tree = qobject_cast<const QTreeView *>(view))
        header = tree->header();
    return header && !header->isHidden() ? header : nullptr;
}

Part itemAt(const QAbstractItemView *view, const QPoint &point, int role)
{
    Part part;
    const QModelIndex item = view->indexAt(point);
    const QString row = plainText(item.siblingAtColumn(0).data().toString());
    setPartPath(part, view, row);
    if (!item.isValid())
        return part;
    part.hasToolTip = !item.data(Qt::ToolTipRole).toString().isEmpty();
    const QWidget *viewport = view->viewport();
    const QRect area = view->visualRect(item);
    if (role >= 0)
        part.keys.add(keyInRole(item.data(role)), onScreen(viewport, area));
    const QString prefix = qualifierOf(view) + QLatin1Char('/');
    if (columnHeader(view)) {
        const QString column =
                plainText(item.model()
                                  ->headerData(item.column(), Qt::Horizontal, Qt::DisplayRole)
                                  .toString());
        const QRect whole(area.left(), 0, area.width(), viewport->height());
        if (!column.isEmpty())
            part.keys.addName(prefix + column, view, onScreen(viewport, whole));
    }
    if (!row.isEmpty())
        part.keys.addName(prefix + row, view, onScreen(viewport, area));
    return part;
}

Part partAt(const QWidget *widget, const QPoint &position, int role)
{
    const QPoint point = widget->mapFromGlobal(position);
    if (const auto *menu = qobject_cast<const QMenu *>(widget)) {
        Part part = entryAt(menu, point, windowOf(menu));
        const QAction *action = menu->toolTipsVisible() ? menu->actionAt(point) : nullptr;
        part.hasToolTip = action && action->toolTip() != action->iconText();
        part.isOfWhole = part.keys.candidates.isEmpty();
        return part;
    }
    if (const auto *bar = qobject_cast<const QMenuBar *>(widget))
        return entryAt(bar, point, bar->window());
    if (const auto *bar = qobject_cast<const QTabBar *>(widget))
        return tabAt(bar, point);
    // Views receive their events through a child.
    const auto *view = qobject_cast<const QAbstractItemView *>(widget->parentWidget());
    if (!view || view->viewport() != widget || !view->model())
        return {};
    const auto *header = qobject_cast<const QHeaderView *>(view);
    return header ? sectionAt(header, point, role) : itemAt(view, point, role);
}

} // namespace

HVControlKeys keysAt(QObject *object, const QPoint &position,
                     const HVStandardKeysSettings &settings)
{
    const auto *widget = qobject_cast<const QWidget *>(object);
    Part part = widget ? partAt(widget, position, settings.keyRole) : Part();
    if (part.keys.isFixed)
        return part.keys;
    const HVControlKeys whole = keysOfWhole(object, settings.windowsHaveKeys);
    if (part.keys.path.isEmpty())
        part.keys.path = whole.path;
    part.keys.isFixed = part.keys.candidates.isEmpty() && whole.isFixed;
    // A tooltip of the part itself says more about it than the entry of the whole. An entry of a
    // menu has little in common with the title of the menu.
    if (!part.hasToolTip && part.isOfWhole)
        part.keys.add(whole);
    return part.keys;
}

} // namespace Hovlets
