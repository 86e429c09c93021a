// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QList>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief The control files of an index, newest first, each once.
 *
 * Membership is looked up in a set, so that indexing any number of files stays linear.
 */
class HVControlFiles
{
public:
    /// Path, and number of folder levels from the package folder down to the file.
    using File = QPair<QString, int>;

    /// Adds \a file before or behind all others; false when it is there already.
    bool prepend(const File &file);
    bool append(const File &file);

    QList<File>::const_iterator begin() const { return m_files.cbegin(); }
    QList<File>::const_iterator end() const { return m_files.cend(); }

    /*!
     * The number of levels from the folder \a location down to \a file, or -1 when the folder is
     * not above the file.
     */
    int depthBelow(const QString &file, const QString &location);

    /// Whether the first start tag of \a file is "hovlets".
    static bool isControlFile(const QString &file);

private:
    bool insert(const File &file);

    QList<File> m_files;
    QSet<File> m_known;

    // The files of a folder come one after the other: its depth, once found, is kept.
    QString m_folder;
    QString m_location;
    int m_folderDepth = -1;
};

} // namespace Hovlets
