// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"

#include <QtCore/QDebug>
#include <QtCore/QFile>
#include <QtCore/QProcess>

#include <thread>

QString ClipFolder::filePath(const QString &name) const
{
    return m_folder.filePath(name);
}

QString ClipFolder::clip(const QString &name, const QString &geometry, const QString &options) const
{
    const QString source = QStringLiteral("-f lavfi -i testsrc=size=%1:rate=25:duration=0.4 ");
    return make(name, source.arg(geometry) + options);
}

QString ClipFolder::make(const QString &name, const QString &arguments) const
{
    const QString path = filePath(name);
    if (QFile::exists(path))
        return path;
    QStringList list { QStringLiteral("-y") };
    list += arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    // Without "file:", the program could read the name as a pattern or a protocol.
    run(list << QLatin1String("file:") + path);
    return QFile::exists(path) ? path : QString();
}

QString ClipFolder::write(const QString &name, const QByteArray &bytes) const
{
    QFile file(filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qWarning() << "Could not write" << file.fileName();
        return {};
    }
    return file.fileName();
}

QByteArray ClipFolder::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qWarning() << "Could not read" << path;
    return file.readAll();
}

QByteArray ClipFolder::pictures(const QString &path)
{
    return run({ QStringLiteral("-i"), QLatin1String("file:") + path, QStringLiteral("-f"),
                 QStringLiteral("rawvideo"), QStringLiteral("-pix_fmt"), QStringLiteral("bgra"),
                 QStringLiteral("-fps_mode"), QStringLiteral("passthrough"),
                 QStringLiteral("-sws_flags"), QStringLiteral("bicubic"), QStringLiteral("-") });
}

QByteArray ClipFolder::run(const QStringList &arguments)
{
    QByteArray output;
    QString error;
    // The child shares this process's memory until it runs the program. The thread sanitizer takes
    // it for the thread that started it, and ignores that thread's locks from then on.
    std::thread([&] {
        QProcess ffmpeg;
        ffmpeg.setProcessChannelMode(QProcess::SeparateChannels);
        const QStringList all { QStringLiteral("-nostdin"), QStringLiteral("-v"),
                                QStringLiteral("fatal") };
        ffmpeg.start(QStringLiteral("ffmpeg"), all + arguments);
        if (ffmpeg.waitForFinished(120000) && ffmpeg.exitStatus() == QProcess::NormalExit
            && ffmpeg.exitCode() == 0)
            output = ffmpeg.readAllStandardOutput();
        else
            error = ffmpeg.errorString() + QString::fromLocal8Bit(ffmpeg.readAllStandardError());
    }).join();
    if (!error.isNull())
        qWarning() << "ffmpeg" << arguments << error;
    return output;
}
