// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/// A clip in H.264 that the ffmpeg program makes when its path is first asked for.
class BenchmarkClip
{
public:
    static constexpr int Width = 640;
    static constexpr int Height = 360;
    static constexpr int Pictures = 300;
    static constexpr int FrameRate = 30;

    /// The program ends when there is no ffmpeg, or it fails.
    QString path();

private:
    QTemporaryDir m_folder;
    QString m_path;
};
