// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace Hovlets {

/// The texts of an entry that an author edits, as they are in the file.
struct RecordedEntry
{
    QString key;
    QString title;
    QStringList paragraphs; // with inline markup, if any
};

/// An entry of a control file, and where it is.
struct FoundEntry
{
    RecordedEntry entry;
    int line = 0;
    QString locale; // of the file; empty for all locales
};

/*!
 * \brief A control file in which single entries are replaced.
 *
 * Everything else in it stays as it is, character by character: comments, other entries, and what
 * an entry has beside its title and its paragraphs.
 */
class RecordedFile
{
public:
    explicit RecordedFile(const QString &path);

    [[nodiscard]] QString path() const { return m_path; }

    /// Creates a file without entries, and the folders that it needs, unless it exists. Returns a
    /// message on failure.
    [[nodiscard]] QString create(const QString &locale) const;

    /// The first entry for \a key.
    [[nodiscard]] std::optional<FoundEntry> find(const QString &key) const;

    /// Replaces the entry for the key, or adds it at the end. Returns a message on failure, and
    /// then leaves the file as it is.
    [[nodiscard]] QString write(const RecordedEntry &entry) const;

private:
    QString m_path;
};

} // namespace Hovlets
