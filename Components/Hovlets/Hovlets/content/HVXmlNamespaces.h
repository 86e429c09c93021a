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
 * The reader compares the lists of all prefixes before and after each empty element, so its time
 * grows with the square of their number. Here it grows only with the names.
 */
class HVXmlNamespaces
{
public:
    HVXmlNamespaces();

    struct Name
    {
        QString uri; // null if there is none
        QString local;
    };

    /*!
     * Begins the scope of an element.
     * \param attributes of its start tag, with qualified names only
     * \return them with their namespaces, without the declarations ("xmlns:x")
     */
    QXmlAttributes enter(const QXmlAttributes &attributes);

    /// Ends the innermost scope.
    void leave();

    /// The namespace and local name of an element in the innermost scope.
    [[nodiscard]] Name elementName(const QString &qName) const;

private:
    struct Replaced
    {
        QString prefix;
        QString uri;
        bool wasDeclared;
    };

    void declare(const QString &prefix, const QString &uri);

    QHash<QString, QString> m_uris; // by prefix; the empty prefix is for elements without one
    QVector<Replaced> m_replaced; // prefixes that the open scopes have redefined, innermost last
    QVector<int> m_scopes; // size of m_replaced at the start of each open scope
};

} // namespace Hovlets
