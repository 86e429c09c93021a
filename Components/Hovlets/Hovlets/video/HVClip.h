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
 * while another thread converts the current one. To close the clip, destroy it.
 *
 * A clip is a regular file whose container stores the frames itself. Nothing that the file names is
 * opened, and opening the clip stays within HVLimits.
 */
class HVClip
{
    Q_DISABLE_COPY_MOVE(HVClip)

public:
    /// Called often while the file is read. Returning true ends the reading, which then fails.
    using Interrupted = HVClipFile::Interrupted;

    explicit HVClip(Interrupted interrupted);
    ~HVClip();

    /// Null on success; otherwise the reason, a message with "%1" for the path.
    [[nodiscard]] const char *open(const QString &filePath);

    /*!
     * The next frame; null at the end of the clip, or where nothing more can be read.
     *
     * Skips frames that the decoder reports as damaged.
     */
    QImage nextPicture();

    /// Jumps to the key frame before \a seconds, or without \a backward to one after it.
    void seek(double seconds, bool backward);
    void seekTo(qint64 target, int flags);

    /// Width and height of the first frame in pixels. Frames of another size are scaled to it.
    QSize size() const { return m_size; }

    /// In seconds; 0 if unknown.
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
    HVLimits m_limits; // limits at the time when opening began
    std::optional<QDeadlineTimer> m_openingEnds; // while the clip is opened
    qint64 m_openingMemory = 0; // memory of the process when opening began, in bytes
    HVClipFile m_file;
    HVFfmpegPtr<AVFormatContext> m_format; // reads from the file
    HVFfmpegPtr<AVCodecContext> m_codec;
    HVFfmpegPtr<AVFrame> m_decoded;
    HVFfmpegPtr<AVPacket> m_packet;
    HVPictureConverter m_converter;
    std::future<QImage> m_converting; // destroyed before what it uses
    bool m_isFirst = true;
    QSize m_size;
    AVStream *m_stream = nullptr; // owned by the format context
    bool m_draining = false;
};

} // namespace Hovlets
