// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"

#include <QtCore/QFile>

#include <functional>

namespace Hovlets {

/*!
 * \brief The file of a clip, as FFmpeg reads it.
 *
 * FFmpeg opens nothing by itself: it reads this one regular file through context(). One thread at a
 * time.
 */
class HVClipFile
{
    Q_DISABLE_COPY_MOVE(HVClipFile)

public:
    /// Asked before each read; true makes the read fail.
    using Interrupted = std::function<bool()>;

    explicit HVClipFile(Interrupted interrupted);
    ~HVClipFile();

    /// False for what is not a regular file, cannot be read, or finds no memory.
    [[nodiscard]] bool open(const QString &path);

    /*!
     * The demuxer for the file, or null when no accepted one recognises it.
     *
     * Accepted are containers that hold their frames themselves. What names other files or
     * addresses (playlists, manifests, session descriptions, image patterns), runs a script or
     * stands for a device is refused.
     */
    [[nodiscard]] const AVInputFormat *format();

    /// A file name for demuxers that look at suffixes; no other part of the real name is in it.
    const char *hint() const { return m_hint.constData(); }

    /// The file itself, for checks before the demuxer reads it.
    QFile &device() { return m_file; }

    /// Makes a context that reads the file from its start; false without memory.
    [[nodiscard]] bool restart();

    /// For the demuxer; owned by this object, null before restart().
    AVIOContext *context() const { return m_context.get(); }

private:
    static int read(void *opaque, uint8_t *buffer, int size);
    static int64_t seek(void *opaque, int64_t offset, int whence);

    Interrupted m_interrupted;
    QFile m_file;
    QByteArray m_hint;
    HVFfmpegPtr<AVIOContext> m_context;
};

} // namespace Hovlets
