// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlParser.h"

#include <QtCore/QStringList>
#include <QXmlAttributes>
#include <QXmlInputSource>

/*!
 * \brief The values that the parser reads for an attribute of all elements with a tag, each value
 * once.
 *
 * A fuzzer looks these keys up, because it would hardly guess them.
 */
class KeyReader : public Hovlets::HVXmlParser
{
public:
    KeyReader(const QByteArray &file, QLatin1String tag, QLatin1String attribute)
        : HVXmlParser(&KeyReader::take, this)
        , m_tag(tag)
        , m_attribute(attribute)
    {
        QXmlInputSource source;
        source.setData(file);
        qDeleteAll(read(source));
    }

    const QStringList &keys() const { return m_keys; }

private:
    static int take(const QString &qName, const QXmlAttributes &attributes, void *reader)
    {
        auto *self = static_cast<KeyReader *>(reader);
        const QString key = attributes.value(self->m_attribute);
        if (qName == self->m_tag && !self->m_keys.contains(key))
            self->m_keys.append(key);
        return SkipElement;
    }

    QLatin1String m_tag;
    QLatin1String m_attribute;
    QStringList m_keys;
};
