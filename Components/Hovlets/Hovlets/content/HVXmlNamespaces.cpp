// SPDX-License-Identifier: Apache-2.0
#include "HVXmlNamespaces.h"

namespace Hovlets {

HVXmlNamespaces::HVXmlNamespaces()
{
    m_uris.insert(QStringLiteral("xml"), QStringLiteral("http://www.w3.org/XML/1998/namespace"));
}

QXmlAttributes HVXmlNamespaces::enter(const QXmlAttributes &attributes)
{
    const QLatin1String keyword("xmlns");
    m_scopes.append(static_cast<int>(m_replaced.size()));
    QXmlAttributes named;
    for (int i = 0; i < attributes.count(); ++i) {
        const QString name = attributes.qName(i);
        const auto colon = name.indexOf(QLatin1Char(':'));
        const QString prefix = name.left(colon);
        const QString local = colon < 0 ? name : name.mid(colon + 1);
        if (prefix == keyword) {
            declare(colon < 0 ? QString() : local, attributes.value(i));
            continue;
        }
        named.append(name, colon < 0 ? QString() : m_uris.value(prefix), local,
                     attributes.value(i));
    }
    return named;
}

void HVXmlNamespaces::declare(const QString &prefix, const QString &uri)
{
    const auto found = m_uris.constFind(prefix);
    const bool wasDeclared = found != m_uris.constEnd();
    m_replaced.append({ prefix, wasDeclared ? *found : QString(), wasDeclared });
    m_uris.insert(prefix, uri);
}

void HVXmlNamespaces::leave()
{
    if (m_scopes.isEmpty())
        return;
    const int size = m_scopes.takeLast();
    while (m_replaced.size() > size) {
        const Replaced replaced = m_replaced.takeLast();
        if (replaced.wasDeclared)
            m_uris.insert(replaced.prefix, replaced.uri);
        else
            m_uris.remove(replaced.prefix);
    }
}

HVXmlNamespaces::Name HVXmlNamespaces::elementName(const QString &qName) const
{
    const auto colon = qName.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return { m_uris.value(QString()), qName };
    return { m_uris.value(qName.left(colon)), qName.mid(colon + 1) };
}

} // namespace Hovlets
