// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlElement.h"
#include "HVXmlParser.h"

#include <QXmlInputSource>
#include <QtCore/QRegularExpression>

#include <memory>
#include <vector>

// Reads documents from memory, for tests of the parser.

using Objects = std::vector<std::unique_ptr<QObject>>;

inline Objects read(Hovlets::HVXmlParser &parser, const QByteArray &document)
{
    QXmlInputSource source;
    source.setData(document);
    Objects objects;
    const QList<QObject *> list = parser.read(source);
    for (QObject *object : list)
        objects.emplace_back(object);
    return objects;
}

/// A callback for the parser that skips everything.
inline int skipAll(const QString &, const QXmlAttributes &, void *)
{
    return Hovlets::HVXmlParser::SkipElement | Hovlets::HVXmlParser::SkipChildren;
}

/// The only object, if it is an element; else null.
inline Hovlets::HVXmlElement *element(const Objects &objects)
{
    return objects.size() == 1 ? qobject_cast<Hovlets::HVXmlElement *>(objects.front().get())
                               : nullptr;
}

/// The tree in one line.
inline QString flat(const Objects &objects)
{
    auto *root = element(objects);
    return root ? root->toXml().remove(QRegularExpression(QStringLiteral("\n *"))) : QString();
}
