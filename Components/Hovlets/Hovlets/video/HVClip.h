// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"
#include "HVPictureConverter.h"

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>
#include <future>

namespace Hovlets {

/*!
 * \brief An open clip file: reads, decodes and converts its first video stream, picture by picture.
 *
 * One thread at a time. From the second picture on it works ahead: while one is converted, on a
 * thread of its own, the next is decoded. Closing is destroying.
 */
class HVClip
{
public:
    /// Asked often while a file is read; true makes the reading end with a failure.
    using Interrupted = std::function<bool()>;

    explicit HVClip(Interrupted interrupted);
    ~HVClip();
    HVClip(const HVClip &) = delete;
    HVClip &operator=(const HVClip &) = delete;

    /// Opens the file; otherwise the reason, a message with "%1" for the path. Null is success.
    const char *open(const QString &filePath);

    /*!
     * The next picture; null at the end of the clip, or where it can be read no further.
     *
     * Pictures that the decoder finds damaged are skipped.
     */
    QImage nextPicture();

    /// Jumps to the key picture before \a seconds or, without \a backward, to one after it.
    void seek(double seconds, bool backward);
    void seekTo(qint64 target, int flags);

    /// That of the first picture; those of another size are scaled to it.
    QSize size() const { return m_size; }

    /// In seconds; 0 when unknown.
    double duration() const;
    double timeBase() const;

    /// In pictures per second, always above 0.
    double frameRate() const;

private:
    bool receive();
    bool feed();
    void startConverting();

    Interrupted m_interrupted;
    HVFfmpegPtr<AVFormatContext> m_format;
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
