// SPDX-License-Identifier: Apache-2.0
#include "HVQuickScene.h"

#include "HVHovlet.h"

#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <algorithm>

namespace Hovlets {

namespace {

/// Whether the item takes the mouse, so that the items below it do not get it.
bool takesMouse(const QQuickItem &item)
{
    return item.acceptedMouseButtons() != Qt::NoButton || item.acceptHoverEvents();
}

/// The children from top to bottom, as they are painted.
QList<QQuickItem *> childrenFromTop(const QQuickItem &item)
{
    QList<QQuickItem *> children = item.childItems();
    std::stable_sort(
            children.begin(), children.end(),
            [](const QQuickItem *left, const QQuickItem *right) { return left->z() < right->z(); });
    std::reverse(children.begin(), children.end());
    return children;
}

/// The uppermost item at \a point, in the coordinates of \a item, that is a control or hides the
/// controls below it. Null if there is none.
QQuickItem *uppermostAt(QQuickItem &item, const QPointF &point)
{
    if (!item.isVisible() || (item.clip() && !item.contains(point)))
        return nullptr;
    const auto ofChild = [&](QQuickItem *child) {
        return uppermostAt(*child, child->mapFromItem(&item, point));
    };
    const QList<QQuickItem *> children = childrenFromTop(item);
    const auto below = std::find_if(children.cbegin(), children.cend(),
                                    [](const QQuickItem *child) { return child->z() < 0; });
    QQuickItem *found = nullptr;
    for (auto child = children.cbegin(); child != below && !found; ++child)
        found = ofChild(*child);
    if (!found && item.contains(point) && (HVHovlet::of(&item) || takesMouse(item)))
        found = &item;
    for (auto child = below; child != children.cend() && !found; ++child)
        found = ofChild(*child);
    return found;
}

/// \a item and the items around it, as far as they are controls. Empty for null.
QList<QObject *> controlsAround(QQuickItem *item)
{
    QList<QObject *> controls;
    for (; item; item = item->parentItem()) {
        if (HVHovlet::of(item))
            controls += item;
    }
    return controls;
}

QRectF rectangleOf(const QQuickItem &item)
{
    return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
}

} // namespace

HVQuickScene::HVQuickScene(QQuickWindow *window)
    : HVScene(window)
    , m_window(*window)
{
}

HVQuickScene *HVQuickScene::in(QQuickWindow *window)
{
    if (!window)
        return nullptr;
    // The host may have a scene of its own in the window.
    auto *scene = window->findChild<HVQuickScene *>(QString(), Qt::FindDirectChildrenOnly);
    return scene ? scene : new HVQuickScene(window);
}

QList<QObject *> HVQuickScene::controlsAt(const QPoint &position) const
{
    QQuickItem *root = m_window.contentItem();
    return controlsAround(uppermostAt(*root, root->mapFromGlobal(position)));
}

QList<QObject *> HVQuickScene::focusedControls() const
{
    return controlsAround(m_window.activeFocusItem());
}

QRect HVQuickScene::geometryOf(const QObject *control) const
{
    const auto *item = qobject_cast<const QQuickItem *>(control);
    if (!item)
        return {};
    QRectF visible = rectangleOf(*item) & QRectF(QPointF(), m_window.size());
    for (const QQuickItem *around = item->parentItem(); around; around = around->parentItem()) {
        if (around->clip())
            visible &= rectangleOf(*around);
    }
    return visible.toAlignedRect().translated(m_window.mapToGlobal(QPoint()));
}

QString HVQuickScene::keyOf(const QObject *control) const
{
    const HVHovlet *hovlet = HVHovlet::of(control);
    return hovlet ? hovlet->key() : QString();
}

QString HVQuickScene::shortcutOf(const QObject *control) const
{
    const HVHovlet *hovlet = HVHovlet::of(control);
    return hovlet ? hovlet->shortcut() : QString();
}

} // namespace Hovlets
