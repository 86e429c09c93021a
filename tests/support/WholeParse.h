// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVXmlElement.h"
#include "HVXmlParser.h"

#include <QtCore/QString>
#include <QXmlInputSource>

/*!
 * \brief Looks up a key in a control file by parsing the whole file, without a search first.
 *
 * A look-up through the index must find the same. Owns what it builds.
 */
class WholeParse : public Hovlets::HVXmlParser
{
public:
    WholeParse(const QByteArray &file, const QString &key)
        : HVXmlParser(&WholeParse::generate, &m_key)
        , m_key(key)
    {
        QXmlInputSource source;
        source.setData(file);
        m_objects = read(source);
        m_root = m_objects.size() == 1
                ? qobject_cast<Hovlets::HVXmlElement *>(m_objects.constFirst())
                : nullptr;
    }

    ~WholeParse() override { qDeleteAll(m_objects); }

    Hovlets::HVXmlElement *root() const { return m_root; }

    /// The entry for the key in any locale; null if there is none, or more than one.
    Hovlets::HVXmlElement *entry() const
    {
        return m_root && m_root->children().size() == 1 && m_open == 0
                ? qobject_cast<Hovlets::HVXmlElement *>(m_root->children().constFirst())
                : nullptr;
    }

    bool startElement(const QString &uri, const QString &local, const QString &qName,
                      const QXmlAttributes &atts) override
    {
        ++m_open;
        return HVXmlParser::startElement(uri, local, qName, atts);
    }

    bool endElement(const QString &uri, const QString &local, const QString &qName) override
    {
        --m_open;
        return HVXmlParser::endElement(uri, local, qName);
    }

private:
    static int generate(const QString &qName, const QXmlAttributes &attributes, void *key)
    {
        if (qName == QLatin1String("hovlets"))
            return GenerateAsk;
        if (qName != QLatin1String("hovlet"))
            return SkipElement | SkipChildren;
        return attributes.value(QStringLiteral("key")) == *static_cast<QString *>(key)
                ? GenerateAsk | GenerateAll
                : SkipElement | SkipChildren;
    }

    QString m_key;
    QList<QObject *> m_objects;
    Hovlets::HVXmlElement *m_root = nullptr;
    int m_open = 0; // counted here rather than taken from the code under test
};
