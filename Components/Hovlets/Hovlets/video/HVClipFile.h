// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"

#include <QtCore/QFile>

#include <functional>

namespace Hovlets {

/*!
 * \brief The file of a clip, for FFmpeg to read.
 *
 * FFmpeg does not open anything itself: it reads this one regular file through context(). One
 * thread at a time.
 */
class HVClipFile
{
    Q_DISABLE_COPY_MOVE(HVClipFile)

public:
    /// Called before each read. Returning true makes the read fail.
    using Interrupted = std::function<bool()>;

    explicit HVClipFile(Interrupted interrupted);
    ~HVClipFile();

    /// False if \a path is not a regular file or cannot be read, or if memory runs out.
    [[nodiscard]] bool open(const QString &path);

    /*!
     * The demuxer for the file, or null if no permitted one recognises it.
     *
     * Permitted are containers that store their frames themselves. Files that name other files or
     * addresses (playlists, manifests, session descriptions, image patterns), run a script or
     * represent a device are rejected.
     */
    [[nodiscard]] const AVInputFormat *format();

    /// A file name for demuxers that check suffixes. It contains no other part of the real name.
    const char *hint() const { return m_hint.constData(); }

    /// The file itself, for checks before the demuxer reads it.
    QFile &device() { return m_file; }

    /// Creates a context that reads the file from its start; false if memory runs out.
    [[nodiscard]] bool restart();

    /// For the demuxer. Owned by this object; null before restart().
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
