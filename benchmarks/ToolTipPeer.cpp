// SPDX-License-Identifier: Apache-2.0
#include "ToolTipPeer.h"

#include "HVEntryReader.h"
#include "HVToolTipTheme.h"
#include "HVViewWindow.h"

#include <QtCore/QVariant>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

namespace {

QVariant object(QObject *object)
{
    return QVariant::fromValue(object);
}

} // namespace

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
    auto *reader = new Hovlets::HVEntryReader(nullptr); // neither translates nor finds files
    reader->setParent(this);
    engine()->rootContext()->setContextProperties({
            { QStringLiteral("hovletTheme"), object(new Hovlets::HVToolTipTheme(this)) },
            { QStringLiteral("hovletReader"), object(reader) },
            { QStringLiteral("hovletWindow"), object(new Hovlets::HVViewWindow(*this)) },
    });
}

void ToolTipPeer::show(QObject *content, const QString &folder, const QUrl &qml,
                       const QPoint &position)
{
    m_services.setContent(content);
    engine()->rootContext()->setContextProperties({
            { QStringLiteral("hovlet"), object(content) },
            { QStringLiteral("dataLocation"), folder },
            { QStringLiteral("hovletView"), object(&m_services) },
    });
    if (source() != qml)
        setSource(qml);
    move(position);
    QQuickWidget::show();
}
