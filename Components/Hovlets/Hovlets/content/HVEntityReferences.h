// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <QtCore/QStringView>

namespace Hovlets {

/*!
 * \brief How often a document refers to the entities that it declares itself.
 *
 * Told from its text before it is parsed, and rather too often than too rarely: how far its
 * entities can grow is limited by it. A document that declares none refers to none.
 */
class HVEntityReferences
{
public:
    HVEntityReferences() = default;
    explicit HVEntityReferences(const QString &document);

    /// To all entities.
    qint64 count() const { return m_count; }

    /// To one; the name of one for declarations may begin with "%", as the reader has it.
    qint64 countTo(const QString &name) const;

private:
    void addReference(QStringView text);

    QHash<QString, qint64> m_counts; // by name
    qint64 m_count = 0;
    qint64 m_spelled = 0; // by character references, to whatever entity
};

} // namespace Hovlets
