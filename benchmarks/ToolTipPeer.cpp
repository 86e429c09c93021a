// SPDX-License-Identifier: Apache-2.0
#include "ToolTipPeer.h"

#include "HVToolTipTheme.h"

#include <QtCore/QVariant>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

ToolTipServices::ToolTipServices(QObject *parent)
    : QObject(parent)
{
}

void ToolTipServices::setContent(QObject *content)
{
    m_content = content;
}

ToolTipPeer::ToolTipPeer()
    : m_services(nullptr)
{
    setWindowFlags(Qt::ToolTip);
    setAttribute(Qt::WA_ShowWithoutActivating);
    setResizeMode(QQuickWidget::SizeViewToRootObject);
    engine()->rootContext()->setContextProperty(QStringLiteral("hovletTheme"),
                                                new Hovlets::HVToolTipTheme(this));
}

void ToolTipPeer::show(QObject *content, const QString &folder, const QUrl &qml,
                       const QPoint &position)
{
    m_services.setContent(content);
    engine()->rootContext()->setContextProperties({
            { QStringLiteral("hovlet"), QVariant::fromValue(content) },
            { QStringLiteral("dataLocation"), folder },
            { QStringLiteral("hovletView"), QVariant::fromValue<QObject *>(&m_services) },
    });
    if (source() != qml)
        setSource(qml);
    move(position);
    QQuickWidget::show();
}
