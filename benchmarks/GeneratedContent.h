// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/*!
 * \brief A data path full of control files, the same ones in every run.
 *
 * Files hold what authors write: titles, paragraphs with markup in CDATA, entities and character
 * references, words from several languages, comments. The folder goes with the object.
 */
class GeneratedContent
{
public:
    /// \a files control files of about \a fileSize bytes in packages of \a filesPerPackage.
    GeneratedContent(int files, int fileSize, int filesPerPackage);

    /// The data path.
    QString path() const;

    /// The control folders, and all files in the order in which they were written.
    const QStringList &controlFolders() const { return m_folders; }
    const QStringList &files() const { return m_files; }

    /// A package folder.
    QString packageFolder(int package) const;

    /// The key of an entry.
    static QString key(int file, int entry);

    /// Writes \a content to \a path with the folders that it needs; the program ends on failure.
    static void write(const QString &path, const QByteArray &content);

private:
    QTemporaryDir m_folder;
    QStringList m_folders;
    QStringList m_files;
};
