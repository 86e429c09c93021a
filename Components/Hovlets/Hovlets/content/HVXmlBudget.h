// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLimits.h"

#include <QtCore/QHash>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief What parsing one document may still cost.
 *
 * Qt's XML reader recurses on elements and on the parentheses of content models, expands entities
 * without a total limit, and does work that grows with the square of their number. The parser
 * reports each step to the budget before the reader performs it, and stops when a method returns
 * false. After that, failure() names the limit that was met.
 */
class HVXmlBudget
{
public:
    explicit HVXmlBudget(const HVLimits &limits = HVLimits::current());

    /// The document type declaration begins or ends. Parentheses count only inside it.
    void setInDocumentType(bool inside);

    /// The reader gets the next character of the document.
    bool read(QChar c);

    /// The document declares an entity. The name of a parameter entity may begin with "%".
    bool declareEntity(const QString &name, const QString &value);

    /// The reader expands a reference to an entity.
    bool expandEntity(const QString &name);

    /// An element begins, \a depth levels deep; the root is at 1.
    bool openElement(int depth);

    /// An object is built for an element.
    bool buildElement();

    /// The reader delivers text or the value of an attribute.
    bool deliver(qint64 characters);

    /// The limit that was met, such as "elements nest deeper than 512 levels", or a null string.
    [[nodiscard]] QString failure() const { return m_failure; }

private:
    struct Entity
    {
        qint64 length = 0; // characters that it may add: in attributes, quotation marks are escaped
        int openParentheses = 0; // the most that its text can leave open
    };

    bool fail(const QString &reason);
    bool openParentheses(int number);
    bool readAttribute();

    HVLimits m_limits;
    QHash<QString, Entity> m_entities;
    qint64 m_entityNames = 0; // characters in the names of all entities
    qint64 m_entityReferences = 0;
    qint64 m_entityCharacters = 0;
    qint64 m_delivered = 0;
    int m_built = 0;
    int m_attributes = 0; // including text that looks like one
    bool m_followsEquals = false;
    int m_parentheses = 0; // open in the current content model
    bool m_inDocumentType = false;
    QString m_failure;
};

} // namespace Hovlets
