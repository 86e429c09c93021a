// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/*!
 * \brief Clips that the ffmpeg program makes on first use, once for each folder.
 *
 * If the program fails, the functions return an empty string, and a warning with the program's
 * output fails the test.
 */
class ClipFolder
{
public:
    QString filePath(const QString &name) const;

    /*!
     * The path of the clip \a name: a moving test picture of size \a geometry ("WIDTHxHEIGHT"),
     * encoded with \a options. The suffix of the name selects the container.
     */
    QString clip(const QString &name, const QString &geometry, const QString &options) const;

    /// The same for any arguments before the file name, separated by spaces.
    QString make(const QString &name, const QString &arguments) const;

    /// Writes a file and returns its path.
    QString write(const QString &name, const QByteArray &bytes) const;
    static QByteArray read(const QString &path);

    /// Every frame of a clip as the program converts it: 32 bits a pixel, without padding.
    static QByteArray pictures(const QString &path);

    /// Runs the program and returns its standard output.
    static QByteArray run(const QStringList &arguments);

private:
    QTemporaryDir m_folder;
};
