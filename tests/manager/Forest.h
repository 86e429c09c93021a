// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlElement.h"
#include "HoverScene.h"

#include <QtCore/QList>
#include <QtCore/QPointer>

/// Hands out trees and counts the deleted elements.
class Forest
{
public:
    enum Shape { EntryBelowRoot, EntryBesideRoot, EntryBelowAnother };

    Hovlets::HVXmlElement *make(const QString &key, Shape shape, Hovlets::HVXmlElement *&root)
    {
        root = new Hovlets::HVXmlElement;
        Hovlets::HVXmlElement *parent = shape == EntryBesideRoot ? nullptr : root;
        if (shape == EntryBelowAnother)
            parent = new Hovlets::HVXmlElement(root);
        Hovlets::HVXmlElement *entry = MadeUpIndex::entry(key, parent);
        for (Hovlets::HVXmlElement *element : { entry, root }) {
            alive += element;
            QObject::connect(element, &QObject::destroyed, element, [this] { ++deleted; });
        }
        return entry;
    }

    int deleted = 0;
    QList<QPointer<Hovlets::HVXmlElement>> alive;
};

Q_DECLARE_METATYPE(Forest::Shape)
