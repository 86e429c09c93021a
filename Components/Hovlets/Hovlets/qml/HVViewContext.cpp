// SPDX-License-Identifier: Apache-2.0
#include "HVViewContext.h"

#include "HVEntryReader.h"
#include "HVToolTipTheme.h"
#include "HVView.h"
#include "HVViewMessages.h"
#include "HVViewWindow.h"

#include <QtCore/QSignalBlocker>
#include <QtCore/QVector>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>

namespace Hovlets {

HVViewContext::HVViewContext(HVView &view, const HVViewMessages &messages)
    : m_view(view)
    , m_theme(new HVToolTipTheme(&view))
    , m_window(new HVViewWindow(view))
    , m_reader(new HVEntryReader(&view))
{
    QObject::connect(m_reader, &HVEntryReader::warned, &view,
                     [messages](const QString &message) { messages.warn(message); });
    QQmlContext *context = view.engine()->rootContext();
    context->setContextProperty(QStringLiteral("hovletTheme"), m_theme);
    context->setContextProperty(QStringLiteral("hovletReader"), m_reader);
    context->setContextProperty(QStringLiteral("hovletWindow"), m_window);
}

void HVViewContext::setContent(const QString &rootPath)
{
    QQmlContext *context = m_view.engine()->rootContext();
    const QVector<QQmlContext::PropertyPair> properties {
        { QStringLiteral("hovlet"), QVariant::fromValue<QObject *>(m_view.content()) },
        { QStringLiteral("dataLocation"), rootPath },
        { QStringLiteral("hovletView"), QVariant::fromValue<QObject *>(&m_view) },
    };
    // Qt 6 connects the view to the context each time, and keeps all connections while the view
    // lives.
    const auto forgetView = [this, context] {
        QObject::disconnect(&m_view, &QObject::destroyed, context, nullptr);
    };
    // Setting each property runs its bindings. All three are set before the first binding runs, so
    // none combines the new content with the old folder.
    {
        const QSignalBlocker silent(context);
        forgetView();
        context->setContextProperties(properties);
    }
    forgetView();
    context->setContextProperties(properties);
}

void HVViewContext::refreshTheme(bool isExact)
{
    m_theme->refresh(isExact);
}

bool HVViewContext::isRounded() const
{
    return m_theme->isRounded();
}

void HVViewContext::setSurface(bool isRounded, bool isFramed)
{
    m_theme->setSurface(isRounded, isFramed);
}

} // namespace Hovlets
