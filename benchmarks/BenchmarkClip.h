// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>

/// An H.264 clip, made by the ffmpeg program at the first call of path().
class BenchmarkClip
{
public:
    static constexpr int Width = 640;
    static constexpr int Height = 360;
    static constexpr int Frames = 300;
    static constexpr int FrameRate = 30;

    explicit BenchmarkClip(QSize size = { Width, Height })
        : m_size(size)
    {
    }

    /// Exits if ffmpeg is missing or fails.
    QString path();

private:
    QSize m_size;
    QTemporaryDir m_folder;
    QString m_path;
};
