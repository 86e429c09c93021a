// SPDX-License-Identifier: Apache-2.0
#include "HVXmlElement.h"

#include <QtCore/QMap>
#include <QtQml/QQmlEngine>
#include <QXmlAttributes>

namespace Hovlets {

class HVXmlElement::Private
{
public:
    QMap<QString, QString> attributes;
    QString tagNameSpace;
    QString content;
};

HVXmlElement::HVXmlElement(QObject *parent, const QXmlAttributes &attrs)
    : HVXmlElement(parent)
{
    for (int i = 0; i < attrs.count(); ++i)
        setAttribute(attrs.qName(i), attrs.value(i));
}

HVXmlElement::HVXmlElement(QObject *parent)
    : QObject(parent)
    , d(std::make_unique<Private>())
{
}

HVXmlElement::~HVXmlElement() = default;

QString HVXmlElement::getTagName() const
{
    return objectName();
}

void HVXmlElement::setTagName(const QString &tagName)
{
    setObjectName(tagName);
    Q_EMIT tagNameChanged();
}

QString HVXmlElement::getTagNameSpace() const
{
    return d->tagNameSpace;
}

void HVXmlElement::setTagNameSpace(const QString &tagNameSpace)
{
    d->tagNameSpace = tagNameSpace;
    Q_EMIT tagNameSpaceChanged();
}

QString HVXmlElement::content() const
{
    return d->content;
}

void HVXmlElement::setContent(const QString &content)
{
    d->content = content;
    Q_EMIT contentChanged();
}

HVXmlElement *HVXmlElement::childElement(const QString &name) const
{
    auto *child = findChild<HVXmlElement *>(name);
    // Otherwise the QML engine would own the object that an invokable returns, and delete it.
    if (child)
        QQmlEngine::setObjectOwnership(child, QQmlEngine::CppOwnership);
    return child;
}

QList<QObject *> HVXmlElement::childElementList(const QString &name)
{
    const QList<QObject *> children = findChildren<QObject *>(name.isEmpty() ? QString() : name);
    for (QObject *child : children)
        QQmlEngine::setObjectOwnership(child, QQmlEngine::CppOwnership);
    return children;
}

QString HVXmlElement::attribute(const QString &name) const
{
    return d->attributes.value(name);
}

bool HVXmlElement::hasAttribute(const QString &name) const
{
    return d->attributes.contains(name);
}

void HVXmlElement::appendContent(const QString &content)
{
    d->content += content;
    Q_EMIT contentChanged();
}

QString HVXmlElement::toXml(int index)
{
    const QString indent(qMax(0, index), QLatin1Char(' '));
    QString tag = indent + QLatin1Char('<') + objectName();
    for (auto it = d->attributes.cbegin(); it != d->attributes.cend(); ++it)
        tag += QLatin1Char(' ') + it.key() + QLatin1String("=\"") + it.value() + QLatin1Char('"');

    QStringList lines;
    for (QObject *child : children()) {
        if (auto *element = qobject_cast<HVXmlElement *>(child))
            lines += element->toXml(index + 2);
    }
    if (lines.isEmpty())
        return tag + QLatin1String("/>");

    lines.prepend(tag + QLatin1Char('>'));
    lines.append(indent + QLatin1String("</") + objectName() + QLatin1Char('>'));
    return lines.join(QLatin1Char('\n'));
}

QStringList HVXmlElement::attributeNames() const
{
    return d->attributes.keys();
}

void HVXmlElement::setAttribute(const QString &name, const QString &value)
{
    d->attributes.insert(name, value);
}

} // namespace Hovlets

// Qt generates this code, which needs the complete type QXmlAttributes. Only this file has it.
#include "moc_HVXmlElement.cpp" // NOLINT(bugprone-suspicious-include): generated
