// SPDX-License-Identifier: Apache-2.0
#include "BenchmarkClip.h"

#include <QtCore/QProcess>

QString BenchmarkClip::path()
{
    if (!m_path.isEmpty())
        return m_path;
    m_path = m_folder.filePath(QStringLiteral("clip.mp4"));
    const QString picture = QStringLiteral("testsrc2=size=%1x%2:rate=%3")
                                    .arg(m_size.width())
                                    .arg(m_size.height())
                                    .arg(FrameRate);
    const int status = QProcess::execute(
            QStringLiteral("ffmpeg"),
            { QStringLiteral("-nostdin"), QStringLiteral("-v"), QStringLiteral("error"),
              QStringLiteral("-f"), QStringLiteral("lavfi"), QStringLiteral("-i"), picture,
              QStringLiteral("-frames:v"), QString::number(Frames), QStringLiteral("-c:v"),
              QStringLiteral("libx264"), QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"),
              m_path });
    if (status != 0)
        qFatal("ffmpeg, which makes the clip to measure with, is missing or failed");
    return m_path;
}
