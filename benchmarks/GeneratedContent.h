// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/*!
 * \brief A data path full of control files, which are the same in every run.
 *
 * The files contain what authors write: titles, paragraphs with markup in CDATA, entities and
 * character references, words in several languages, comments. The destructor deletes the folder.
 */
class GeneratedContent
{
public:
    /// Writes \a files control files of about \a fileSize bytes, \a filesPerPackage to a package.
    GeneratedContent(int files, int fileSize, int filesPerPackage);

    /// The data path.
    QString path() const;

    /// The control folders, and all files in the order of writing.
    const QStringList &controlFolders() const { return m_folders; }
    const QStringList &files() const { return m_files; }

    /// A package folder.
    QString packageFolder(int package) const;

    /// The key of an entry.
    static QString key(int file, int entry);

    /// Writes \a content to \a path and creates missing folders. Exits on failure.
    static void write(const QString &path, const QByteArray &content);

private:
    QTemporaryDir m_folder;
    QStringList m_folders;
    QStringList m_files;
};
