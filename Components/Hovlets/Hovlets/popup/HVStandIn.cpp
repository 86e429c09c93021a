// SPDX-License-Identifier: Apache-2.0
#include "HVStandIn.h"

#include "HVScene.h"
#include "HVScenePrivate.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

namespace Hovlets {

HVStandIn::HVStandIn(const HVScene &scene, QWidget *parent, QObject *control)
    : QWidget(parent)
    , m_scene(scene)
    , m_control(control)
{
}

QObject *HVStandIn::control() const
{
    return m_control;
}

QString HVStandIn::key() const
{
    return m_control ? m_scene.keyOf(m_control) : QString();
}

QString HVStandIn::shortcut() const
{
    return m_control ? m_scene.shortcutOf(m_control) : QString();
}

QWindow *HVStandIn::sceneWindow() const
{
    return m_scene.window();
}

HVStandIn *HVStandIn::at(const QWindow *window, const QPoint &position)
{
    const HVScene *scene = HVScene::of(window);
    return scene ? scene->d->standInAt(position) : nullptr;
}

QWindow *windowShowing(const QWidget &widget)
{
    const auto *standIn = qobject_cast<const HVStandIn *>(&widget);
    return standIn ? standIn->sceneWindow() : widget.window()->windowHandle();
}

QScreen *screenShowing(const QWidget &widget)
{
    const auto *standIn = qobject_cast<const HVStandIn *>(&widget);
    return standIn ? standIn->sceneWindow()->screen() : widget.screen();
}

bool isInScreenFillingWindow(const QWidget &widget)
{
    constexpr Qt::WindowStates Filling = Qt::WindowMaximized | Qt::WindowFullScreen;
    const auto *standIn = qobject_cast<const HVStandIn *>(&widget);
    return (standIn ? standIn->sceneWindow()->windowStates() : widget.window()->windowState())
            & Filling;
}

QWidget *controlAt(const QPoint &position)
{
    QWidget *widget = QApplication::widgetAt(position);
    return widget ? widget : HVStandIn::at(QGuiApplication::topLevelAt(position), position);
}

QWidget *controlReceiving(QObject *receiver, const QPoint &position)
{
    return receiver->isWidgetType() ? static_cast<QWidget *>(receiver)
                                    : HVStandIn::at(qobject_cast<QWindow *>(receiver), position);
}

} // namespace Hovlets
