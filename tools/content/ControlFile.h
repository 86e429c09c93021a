// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "LibraryParse.h"
#include "XmlDocument.h"

#include <QtCore/QHash>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <optional>
#include <vector>

namespace HovletsTool {

/// The entries of a control file, without their content.
struct EntryList
{
    struct Entry
    {
        QString key;
        Position position; // of the key
        bool isServed = false; // whether a look-up finds the entry in this file
    };

    QString path;
    QString locale; // empty for all locales
    std::vector<Entry> entries;
    bool isWhole = true; // false when there are more entries than the list can hold
};

/// A control file that the library indexes.
class ControlFile
{
public:
    using Element = XmlDocument::Element;
    using Branch = XmlDocument::Branch;

    ControlFile(const QString &path, const QString &package, QByteArray bytes);

    [[nodiscard]] const QString &path() const { return m_entries.path; }
    [[nodiscard]] const QString &package() const { return m_package; }
    [[nodiscard]] const XmlDocument &document() const { return m_document; }

    /// Null for a file without any element.
    [[nodiscard]] const Element *root() const { return m_document.root(); }

    /// Empty for a file for all locales.
    [[nodiscard]] QString locale() const { return m_entries.locale; }

    /// The limit that keeps the library from serving the file.
    [[nodiscard]] const std::optional<MetLimit> &limit() const { return m_limit; }

    [[nodiscard]] const EntryList &entries() const { return m_entries; }

    /// Whether the branch is an entry for which a look-up would parse more than the library allows.
    [[nodiscard]] bool isTooLargeToParse(const Branch &branch) const;

    /// Whether the branch is an entry that a look-up finds in this file.
    [[nodiscard]] bool serves(const Branch &branch) const;

private:
    [[nodiscard]] bool isServed() const;
    void listEntries();
    void findLargeEntries(const std::vector<int> &offsets);

    QString m_package;
    qint64 m_size; // in bytes, as stored
    XmlDocument m_document;
    std::optional<MetLimit> m_limit;
    qint64 m_sizeAround = 0; // bytes that every look-up parses; 0 if the file is small
    QSet<int> m_largeEntries; // offsets
    EntryList m_entries;
    QHash<QString, int> m_uses; // of each key: the library serves no duplicates
};

/// The packages that the value of the attribute "search" names, as the library reads it.
[[nodiscard]] QStringList searchedPackages(const QString &search);

/// Whether the branch is an entry.
[[nodiscard]] bool isEntry(const XmlDocument::Branch &branch);

/// Whether the entry has more elements than the library builds.
[[nodiscard]] bool isTooLarge(const XmlDocument::Branch &entry);

} // namespace HovletsTool
