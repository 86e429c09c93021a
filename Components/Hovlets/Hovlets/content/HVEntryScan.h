// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <vector>

namespace Hovlets {

/*!
 * \brief Searches the bytes of a control file for the entry for a key, without parsing them.
 *
 * A look-up reads many files and finds its key in one of them, and parsing takes about thirty times
 * as long as searching. "No" is certain: the parser would not find such an entry either. "Maybe"
 * leaves the decision to the parser. It is the answer wherever the bytes differ from what the
 * parser reads: an encoding other than UTF-8, a document type declaration, references in a key.
 */
class HVEntryScan
{
public:
    explicit HVEntryScan(const QString &key);

    /// False if no "hovlet" element of the file has the key.
    [[nodiscard]] bool mayHold(const QByteArray &file) const;

    /// The key in UTF-8, or a null array if UTF-8 cannot represent it.
    [[nodiscard]] QByteArray plainKey() const { return m_plainKey ? m_key : QByteArray(); }

    /// Whether file and key are in plain UTF-8, and the file has no document type declaration.
    [[nodiscard]] bool isPlainFile(const QByteArray &file) const;

private:
    friend class HVEntryKeys;

    QByteArray m_key;
    bool m_plainKey;
    quint32 m_hash;
};

/*!
 * \brief The keys of all entries in the bytes of a control file, in four bytes each.
 *
 * Gives the same answers as HVEntryScan for these bytes, but does not store the bytes. It may say
 * "maybe" for a key that only resembles one of the file's. If only the parser can determine some
 * keys, the set is incomplete until the parser has added them.
 */
class HVEntryKeys
{
public:
    /// The keys of an unknown file: "maybe" for every key.
    HVEntryKeys() = default;

    explicit HVEntryKeys(const QByteArray &file);

    [[nodiscard]] bool isComplete() const { return m_isComplete; }

    /// Adds a key that the parser found.
    void add(const QString &key);

    /// Call when the parser has added all keys that only it can determine.
    void complete();

    /// Forgets all keys, because the file serves none.
    void clear();

    /// False if no "hovlet" element of the file has the key.
    [[nodiscard]] bool mayHold(const HVEntryScan &key) const;

private:
    void insert(quint32 hash);
    void sort();

    bool m_isComplete = false;
    bool m_hasTooMany = false;
    std::vector<quint32> m_hashes; // sorted
};

} // namespace Hovlets
