// SPDX-License-Identifier: Apache-2.0
#include "HVHovlet.h"

#include "HVQuickScene.h"

#include <QtQml/QQmlInfo>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

namespace Hovlets {

namespace {

/// Whether the program can show popups. Prints an error about \a object once if it cannot.
bool hasApplication(const QObject *object)
{
    if (qobject_cast<QApplication *>(QCoreApplication::instance()))
        return true;
    static bool isReported = false;
    if (!isReported)
        qmlWarning(object) << "Hovlet needs a QApplication, because its popups are widgets. Create "
                              "one in main() instead of a QGuiApplication.";
    isReported = true;
    return false;
}

} // namespace

HVHovlet::HVHovlet(QObject *object)
    : QObject(object)
    , m_item(qobject_cast<QQuickItem *>(object))
{
    if (!m_item) {
        qmlWarning(object) << "Hovlet can only be attached to items";
        return;
    }
    if (!hasApplication(object))
        return;
    connect(m_item, &QQuickItem::windowChanged, this, &HVHovlet::enterWindow);
    connect(m_item, &QQuickItem::visibleChanged, this, &HVHovlet::leaveWhileHidden);
    enterWindow();
}

QString HVHovlet::key() const
{
    return m_key;
}

void HVHovlet::setKey(const QString &key)
{
    if (key == m_key)
        return;
    m_key = key;
    Q_EMIT keyChanged();
}

QString HVHovlet::shortcut() const
{
    return m_shortcut;
}

void HVHovlet::setShortcut(const QString &shortcut)
{
    if (shortcut == m_shortcut)
        return;
    m_shortcut = shortcut;
    Q_EMIT shortcutChanged();
}

bool HVHovlet::isEnabled() const
{
    return m_isEnabled;
}

void HVHovlet::setEnabled(bool enabled)
{
    if (enabled == m_isEnabled)
        return;
    m_isEnabled = enabled;
    if (!enabled && m_scene)
        m_scene->controlHidden(m_item);
    Q_EMIT enabledChanged();
}

void HVHovlet::enterWindow()
{
    if (m_scene)
        m_scene->controlHidden(m_item);
    m_scene = HVQuickScene::in(m_item->window());
}

void HVHovlet::leaveWhileHidden()
{
    if (m_scene && !m_item->isVisible())
        m_scene->controlHidden(m_item);
}

const HVHovlet *HVHovlet::of(const QObject *item)
{
    const auto *hovlet =
            qobject_cast<const HVHovlet *>(qmlAttachedPropertiesObject<HVHovlet>(item, false));
    return hovlet && hovlet->isEnabled() ? hovlet : nullptr;
}

HVHovlet *HVHovlet::qmlAttachedProperties(QObject *object)
{
    return new HVHovlet(object);
}

} // namespace Hovlets
