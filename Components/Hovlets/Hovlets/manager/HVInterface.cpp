// SPDX-License-Identifier: Apache-2.0
#include "HVInterface.h"

#include "HVContext.h"
#include "HVManager.h"

#include <QtCore/QDebug>
#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>

namespace Hovlets {

class HVInterface::Private
{
public:
    std::unique_ptr<HVManager> manager;
};

namespace {

QString levelText(HVMessageType type)
{
    switch (type) {
    case HVMessageError:
        return QStringLiteral("ERROR");
    case HVMessageWarning:
        return QStringLiteral("Warning");
    case HVMessageInformation:
        return QStringLiteral("Information");
    case HVMessageDebug:
        return QStringLiteral("DEBUG");
    }
    return QString::number(type);
}

} // namespace

HVInterface::HVInterface(HVContext &context, const QStringList &dataPaths, HVIndex *index)
    : QObject(nullptr)
    , d(std::make_unique<Private>())
{
    d->manager = std::make_unique<HVManager>(this, context, dataPaths, index);
}

HVInterface::~HVInterface() = default;

QWidget *HVInterface::createWindow(HVWindowType type)
{
    Q_UNUSED(type)
    return nullptr;
}

QString HVInterface::keyForObject(QObject *object)
{
    return object ? object->objectName() : QString();
}

bool HVInterface::openExternalResource(HVExternalResourceType type, const QString &resource)
{
    return type == HVUrlResource && QDesktopServices::openUrl(QUrl(resource));
}

void HVInterface::handleMessage(HVMessageType type, const QString &message)
{
    const QString line = levelText(type) + QLatin1Char(':') + message;
    qDebug("%s", line.toUtf8().constData());
}

QString HVInterface::translateString(const QString &text, const QString &context)
{
    return d->manager->translateString(text, context);
}

QString HVInterface::shortCutForObject(const QString &key, QObject *object, const QString &shortcut)
{
    Q_UNUSED(key)
    Q_UNUSED(object)
    return shortcut;
}

HVContext &HVInterface::context()
{
    return d->manager->context();
}

const HVContext &HVInterface::context() const
{
    return d->manager->context();
}

QStringList HVInterface::keys()
{
    return d->manager->keys();
}

bool HVInterface::mouseMoveEventFilter(QObject *object, QMouseEvent *event)
{
    return d->manager->mouseMoveEventFilter(object, event);
}

bool HVInterface::mouseButtonEventFilter(QObject *object, QMouseEvent *event)
{
    return d->manager->mouseButtonEventFilter(object, event);
}

bool HVInterface::show(const QString &key, const QPoint &position, QObject *object)
{
    return d->manager->show(key, position, object);
}

void HVInterface::setGlobalProperty(const QString &name, const QVariant &value)
{
    d->manager->setGlobalProperty(name, value);
}

QString HVInterface::hovletAttribute(const QString &key, const QString &attribute,
                                     const QString &defaultValue)
{
    return d->manager->hovletAttribute(key, attribute, defaultValue);
}

QByteArray HVInterface::saveState() const
{
    return d->manager->saveState();
}

bool HVInterface::restoreState(const QByteArray &state)
{
    return d->manager->restoreState(state);
}

} // namespace Hovlets
