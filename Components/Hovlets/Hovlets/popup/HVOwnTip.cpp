// SPDX-License-Identifier: Apache-2.0
#include "HVOwnTip.h"

#include <QtCore/QAbstractItemModel>
#include <QtCore/QPointer>
#include <QtGui/QKeySequence>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QItemDelegate>
#include <QtWidgets/QMenu>
#include <QtWidgets/QStyledItemDelegate>
#include <QtWidgets/QTabBar>
#include <QtWidgets/QToolButton>

#include <typeinfo>

namespace Hovlets {

namespace {

QString nativeText(const QKeySequence &sequence)
{
    return sequence.toString(QKeySequence::NativeText);
}

QString shortcutOf(const QWidget &widget)
{
    const auto *tool = qobject_cast<const QToolButton *>(&widget);
    if (tool && tool->defaultAction())
        return nativeText(tool->defaultAction()->shortcut());
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    const QKeySequence sequence = button ? button->shortcut() : QKeySequence();
    // The mnemonic is already underlined in the button's text.
    const bool isMnemonic = button && sequence == QKeySequence::mnemonic(button->text());
    return isMnemonic ? QString() : nativeText(sequence);
}

HVOwnTip tipOf(const QWidget &widget)
{
    HVOwnTip tip { widget.toolTip(), widget.statusTip(), widget.whatsThis(), {}, {} };
    if (tip.isEmpty() || (widget.isWindow() && tip.toolTip.isEmpty()))
        return {};
    tip.shortcut = shortcutOf(widget);
    return tip;
}

HVOwnTip tipOf(const QTabBar &bar, int tab)
{
    const QString toolTip = bar.tabToolTip(tab);
    return toolTip.isEmpty() ? HVOwnTip() : HVOwnTip { toolTip, {}, bar.tabWhatsThis(tab), {}, {} };
}

/// An action without a tooltip returns its text as one.
HVOwnTip tipOf(const QMenu &menu, const QAction *action)
{
    if (!action || !menu.toolTipsVisible() || action->toolTip() == action->iconText())
        return {};
    return { action->toolTip(),
             action->statusTip(),
             action->whatsThis(),
             nativeText(action->shortcut()),
             {} };
}

template <typename Data> HVOwnTip tipFrom(const Data &data)
{
    const QString toolTip = data(Qt::ToolTipRole);
    return toolTip.isEmpty()
            ? HVOwnTip()
            : HVOwnTip { toolTip, data(Qt::StatusTipRole), data(Qt::WhatsThisRole), {}, {} };
}

HVOwnTip tipOf(const QHeaderView &header, int section)
{
    if (section < 0 || !header.model())
        return {};
    return tipFrom([&](int role) {
        return header.model()->headerData(section, header.orientation(), role).toString();
    });
}

/// A delegate of the host may show another tooltip than that of the model.
bool leavesToolTipsToQt(const QAbstractItemDelegate *delegate)
{
    return delegate
            && (typeid(*delegate) == typeid(QStyledItemDelegate)
                || typeid(*delegate) == typeid(QItemDelegate));
}

const QAbstractItemDelegate *delegateFor(const QAbstractItemView &view, const QModelIndex &index)
{
    if (const QAbstractItemDelegate *delegate = view.itemDelegateForRow(index.row()))
        return delegate;
    if (const QAbstractItemDelegate *delegate = view.itemDelegateForColumn(index.column()))
        return delegate;
    return view.itemDelegate();
}

HVOwnTip tipOf(const QAbstractItemView &view, const QModelIndex &index)
{
    if (!index.isValid() || !leavesToolTipsToQt(delegateFor(view, index)))
        return {};
    return tipFrom([&](int role) { return index.data(role).toString(); });
}

HVOwnTip partTipAt(const QWidget &widget, const QPoint &point)
{
    if (const auto *bar = qobject_cast<const QTabBar *>(&widget))
        return tipOf(*bar, bar->tabAt(point));
    if (const auto *menu = qobject_cast<const QMenu *>(&widget))
        return tipOf(*menu, menu->actionAt(point));
    const auto *view = qobject_cast<const QAbstractItemView *>(widget.parentWidget());
    if (!view || view->viewport() != &widget)
        return {};
    const auto *header = qobject_cast<const QHeaderView *>(view);
    return header ? tipOf(*header, header->logicalIndexAt(point))
                  : tipOf(*view, view->indexAt(point));
}

} // namespace

HVOwnTip ownTipAt(const QWidget &widget, const QPoint &position)
{
    const QPointer<const QWidget> alive(&widget);
    const HVControlPart::Id part = controlPartAt(widget, position).id;
    if (!alive)
        return {};
    HVOwnTip tip = partTipAt(widget, widget.mapFromGlobal(position));
    if (tip.isEmpty())
        return alive ? tipOf(widget) : HVOwnTip();
    tip.part = part;
    return tip;
}

} // namespace Hovlets
