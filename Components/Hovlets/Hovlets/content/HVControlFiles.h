// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QSet>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief The control files of an index, newest first and without duplicates.
 *
 * A hash set finds duplicates, which keeps indexing linear in the number of files.
 */
class HVControlFiles
{
public:
    struct File
    {
        QString path;
        int depth; ///< number of folder levels from the package folder down to the file

        friend bool operator==(const File &a, const File &b)
        {
            return a.depth == b.depth && a.path == b.path;
        }
        friend auto qHash(const File &file, decltype(qHash(QString())) seed = 0)
        {
            return ::qHash(file.path, seed);
        }
    };

    /// Adds \a file before or after all others. Returns false if it is already present.
    bool prepend(const File &file);
    bool append(const File &file);

    [[nodiscard]] QList<File> files() const { return m_files; }

    /*!
     * The number of levels from the folder \a location down to \a file, or -1 if the folder is not
     * above the file.
     */
    int depthBelow(const QString &file, const QString &location);

    /// Whether the first start tag of \a file is "hovlets".
    static bool isControlFile(const QString &file);

    /// Like isControlFile(), but also sets \a problem to the reason why an existing file is not
    /// read, or to a null string.
    static bool findControlFile(const QString &file, QString &problem);

private:
    bool insert(const File &file);

    QList<File> m_files;
    QSet<File> m_known;

    // Caches the last folder and its depth, because the files of a folder are adjacent.
    QString m_folder;
    QString m_location;
    int m_folderDepth = -1;
};

} // namespace Hovlets
