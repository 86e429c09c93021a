// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVContext.h"
#include "HoverScene.h"
#include "Text.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QObject>
#include <QtGui/QKeyEvent>
#include <QtQuick/QQuickItem>

#include <memory>

/// Counts the key events that still reach an object: those of one key or, without it, all.
class Receiver : public QObject
{
public:
    explicit Receiver(QObject *object, int key = 0)
        : m_key(key)
    {
        object->installEventFilter(this);
    }

    int overrides = 0;
    int presses = 0;
    int releases = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        int *const count = event->type() == QEvent::ShortcutOverride ? &overrides
                : event->type() == QEvent::KeyPress                  ? &presses
                : event->type() == QEvent::KeyRelease                ? &releases
                                                                     : nullptr;
        if (count && (m_key == 0 || static_cast<QKeyEvent *>(event)->key() == m_key))
            ++*count;
        return false;
    }

private:
    int m_key;
};

/// A scene with a simple popup, which the F1 key turns into the full one.
class LevelScene
{
protected:
    void start()
    {
        m_scene = std::make_unique<HoverScene>();
        setInterfaces({}, {});
        m_scene->context().set(Hovlets::HVKeySimpleMode, true);
        m_scene->context().set(Hovlets::HVKeyExpandKey, text("F1"));
    }

    /// The interfaces of the popup, with properties of their own.
    void setInterfaces(const QByteArray &simple, const QByteArray &full)
    {
        const auto add = [this](const char *file, const char *name, int height,
                                const QByteArray &properties) {
            m_scene->packages.add(text("Scene.hovlets/ui/") + text(file),
                                  QByteArray("import QtQuick 2.15\nItem { objectName: '") + name
                                          + "'; width: 200; height: " + QByteArray::number(height)
                                          + '\n' + properties + "\n}");
        };
        add("SimpleTooltip.qml", "simple", 50, simple);
        add("HovletsUI.qml", "full", 200, full);
    }

    QString shownInterface() { return m_scene->view()->rootObject()->objectName(); }

    std::unique_ptr<HoverScene> m_scene;
};
