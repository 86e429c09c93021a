// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVClipFile.h"
#include "HVFfmpeg.h"
#include "HVLimits.h"
#include "HVPictureConverter.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <future>
#include <optional>

namespace Hovlets {

/*!
 * \brief An open clip file: reads, decodes and converts its first video stream, frame by frame.
 *
 * One thread at a time. From the second frame on, the clip works ahead: it decodes the next frame
 * while another thread converts the current one. Destroy the clip to close it.
 *
 * A clip is a regular file whose container holds its frames itself. Nothing that the file names is
 * opened, and opening it stays within HVLimits.
 */
class HVClip
{
    Q_DISABLE_COPY_MOVE(HVClip)

public:
    /// Asked often while the file is read; true ends the reading, which then fails.
    using Interrupted = HVClipFile::Interrupted;

    explicit HVClip(Interrupted interrupted);
    ~HVClip();

    /// Null on success; otherwise the reason, a message with "%1" for the path.
    [[nodiscard]] const char *open(const QString &filePath);

    /*!
     * The next frame; null at the end of the clip, or where it can be read no further.
     *
     * Frames that the decoder finds damaged are skipped.
     */
    QImage nextPicture();

    /// Jumps to the key frame before \a seconds or, without \a backward, to one after it.
    void seek(double seconds, bool backward);
    void seekTo(qint64 target, int flags);

    /// Width and height of the first frame in pixels. Frames of another size are scaled to it.
    QSize size() const { return m_size; }

    /// In seconds; 0 when unknown.
    double duration() const;

    /// In seconds.
    double timeBase() const;

    /// In frames per second, always above 0.
    double frameRate() const;

private:
    const char *openContainer(const QString &filePath);
    const char *openDecoder();
    static int interrupted(void *clip);
    bool isInterrupted() const;
    bool receive();
    bool feed();
    void startConverting();

    Interrupted m_interrupted;
    HVLimits m_limits; // those that applied when the opening began
    std::optional<QDeadlineTimer> m_openingEnds; // while the clip is opened
    qint64 m_openingMemory = 0; // bytes of the process at its start
    HVClipFile m_file;
    HVFfmpegPtr<AVFormatContext> m_format; // reads from the file
    HVFfmpegPtr<AVCodecContext> m_codec;
    HVFfmpegPtr<AVFrame> m_decoded;
    HVFfmpegPtr<AVPacket> m_packet;
    HVPictureConverter m_converter;
    std::future<QImage> m_converting; // ends before what it works with
    bool m_isFirst = true;
    QSize m_size;
    AVStream *m_stream = nullptr; // the format context's
    bool m_draining = false;
};

} // namespace Hovlets
