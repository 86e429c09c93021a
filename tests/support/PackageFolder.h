// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/*!
 * \brief A data path in a temporary folder, filled file by file.
 *
 * Returns canonical paths, as the index records them.
 */
class PackageFolder
{
public:
    PackageFolder();

    QString path() const;

    /// Writes a file below the data path, creates the folders that it needs, and returns its path.
    QString add(const QString &relativePath, const QByteArray &content) const;

    /// Writes "PACKAGE.hovlets/Control/NAME.xml".
    QString addControlFile(const QString &package, const QString &name,
                           const QByteArray &content) const;

    /*!
     * Writes a "PACKAGE.hovlets" whose control file has one entry per key, each with a title
     * "Title of KEY", and whose user interface is a QML rectangle of 200 x 100.
     */
    void addPackage(const QString &package, const QStringList &keys) const;

    /// A user interface whose root item has the given size and \a body inside.
    static QByteArray userInterface(int width, int height, const QByteArray &body = {});

private:
    QTemporaryDir m_folder;
};
