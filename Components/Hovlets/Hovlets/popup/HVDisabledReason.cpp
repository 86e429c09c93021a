// SPDX-License-Identifier: Apache-2.0
#include "HVDisabledReason.h"

#include "HVScene.h"

#include <QtCore/QEvent>
#include <QtCore/QMetaMethod>
#include <QtCore/QMetaProperty>
#include <QtCore/QVariant>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QToolButton>

#include <utility>

namespace Hovlets {

namespace {

constexpr auto ReasonProperty = "hovletDisabledReason";

/// The action that \a control shows at \a position; null if there is none.
QAction *actionOf(const QWidget &control, const QPoint &position)
{
    if (const auto *button = qobject_cast<const QToolButton *>(&control))
        return button->defaultAction();
    const QPoint point = control.mapFromGlobal(position);
    if (const auto *menu = qobject_cast<const QMenu *>(&control))
        return menu->actionAt(point);
    if (const auto *bar = qobject_cast<const QMenuBar *>(&control))
        return bar->actionAt(point);
    return nullptr;
}

/// Widgets, actions and items of Qt Quick have the property.
bool isDisabled(const QObject &object)
{
    const QVariant enabled = object.property("enabled");
    return enabled.isValid() && !enabled.toBool();
}

} // namespace

HVDisabledReason::HVDisabledReason(QObject *parent)
    : QObject(parent)
{
}

void HVDisabledReason::watch(QWidget *control, const QPoint &position)
{
    release();
    if (!control)
        return;
    add(actionOf(*control, position));
    for (QWidget *widget = control; widget; widget = widget->parentWidget()) {
        add(HVScene::controlOf(widget)); // a widget of a scene is never disabled itself
        add(widget);
        if (widget->isWindow())
            break;
    }
}

QString HVDisabledReason::text() const
{
    for (const QPointer<QObject> &object : m_objects) {
        const QString reason = object && isDisabled(*object)
                ? object->property(ReasonProperty).toString()
                : QString();
        if (!reason.isEmpty())
            return reason;
    }
    return {};
}

bool HVDisabledReason::eventFilter(QObject *object, QEvent *event)
{
    Q_UNUSED(object)
    if (event->type() == QEvent::EnabledChange || event->type() == QEvent::DynamicPropertyChange)
        Q_EMIT changed();
    return false;
}

/// Widgets report a change by an event, other objects by the signal of the property.
void HVDisabledReason::add(QObject *object)
{
    if (!object)
        return;
    m_objects.append(object);
    object->installEventFilter(this);
    const QMetaObject *meta = object->metaObject();
    const int enabled = meta->indexOfProperty("enabled");
    if (enabled < 0 || !meta->property(enabled).hasNotifySignal())
        return;
    const QMetaMethod notify = QMetaMethod::fromSignal(&HVDisabledReason::changed);
    connect(object, meta->property(enabled).notifySignal(), this, notify);
}

void HVDisabledReason::release()
{
    for (const QPointer<QObject> &object : std::as_const(m_objects)) {
        if (!object)
            continue;
        object->removeEventFilter(this);
        disconnect(object, nullptr, this, nullptr);
    }
    m_objects.clear();
}

} // namespace Hovlets
