// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVector>
#include <QXmlAttributes>

namespace Hovlets {

/*!
 * \brief Resolves the namespaces of elements and attributes, as Qt's XML reader does.
 *
 * The reader compares the lists of all prefixes before and after each empty element: its time grows
 * with the square of their number, for every element. Here it grows with the names alone.
 */
class HVXmlNamespaces
{
public:
    HVXmlNamespaces();

    struct Name
    {
        QString uri; // null without a namespace
        QString local;
    };

    /*!
     * Begins the scope of an element.
     * \param attributes those of its start tag, with qualified names only
     * \return them with their namespaces, without the declarations ("xmlns:x")
     */
    QXmlAttributes enter(const QXmlAttributes &attributes);

    /// Ends the innermost scope.
    void leave();

    /// What the tag of an element means in the innermost scope.
    Name elementName(const QString &qName) const;

private:
    struct Replaced
    {
        QString prefix;
        QString uri;
        bool wasDeclared;
    };

    void declare(const QString &prefix, const QString &uri);

    QHash<QString, QString> m_uris; // by prefix; the empty one is for elements without a prefix
    QVector<Replaced> m_replaced; // what the open scopes declared anew, innermost last
    QVector<int> m_scopes; // sizes of m_replaced when they began
};

} // namespace Hovlets
