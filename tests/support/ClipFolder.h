// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QTemporaryDir>

/*!
 * \brief Clips that the ffmpeg program makes when they are asked for, once in the life of a folder.
 *
 * What goes wrong with the program fails the test with a warning that holds its words, and answers
 * an empty string.
 */
class ClipFolder
{
public:
    QString filePath(const QString &name) const;

    /*!
     * The path of the clip \a name, whose ending tells the container: a moving test picture of
     * \a geometry ("WIDTHxHEIGHT"), coded as \a options say.
     */
    QString clip(const QString &name, const QString &geometry, const QString &options) const;

    /// The same with any arguments of the program in front of the file name; separated by blanks.
    QString make(const QString &name, const QString &arguments) const;

    /// The path of a file with the given bytes.
    QString write(const QString &name, const QByteArray &bytes) const;
    static QByteArray read(const QString &path);

    /// Every picture of a clip, 32 bits a pixel, without padding, as the program converts them.
    static QByteArray pictures(const QString &path);

    /// What the program writes to its output.
    static QByteArray run(const QStringList &arguments);

private:
    QTemporaryDir m_folder;
};
