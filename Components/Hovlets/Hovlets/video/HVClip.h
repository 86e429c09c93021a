// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVClipFile.h"
#include "HVDecoderMemory.h"
#include "HVDecodingTurn.h"
#include "HVFfmpeg.h"
#include "HVFrameMemory.h"
#include "HVLimits.h"
#include "HVFrameConverter.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <functional>
#include <future>
#include <memory>
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

    /// Called before a frame is converted, for the memory that it will take. Returning false ends
    /// the clip.
    using ClaimMemory = std::function<HVFrameMemory::Claim(qint64 bytes)>;

    /// Without \a claimMemory, the memory for converted frames is unlimited.
    explicit HVClip(Interrupted interrupted, ClaimMemory claimMemory = {});
    ~HVClip();

    /// Null on success; otherwise the reason, a message with "%1" for the path.
    [[nodiscard]] const char *open(const QString &filePath);

    /*!
     * The next frame; null at the end of the clip, or where nothing more can be read.
     *
     * Skips frames that the decoder reports as damaged.
     */
    QImage nextFrame();

    /// The claim on the memory of the frame that nextFrame() returned last.
    HVFrameMemory::Claim takeClaim() { return std::move(m_claim); }

    /// Whether the clip ended because another frame did not fit into the memory.
    bool isOutOfMemory() const;

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
    qint64 mostPixels() const;
    static int interrupted(void *clip);
    bool isInterrupted() const;
    bool receive();
    bool feed();
    bool claim();
    void startConverting();

    Interrupted m_interrupted;
    ClaimMemory m_claimMemory;
    HVLimits m_limits; // limits at the time when opening began
    std::optional<QDeadlineTimer> m_openingEnds; // while the clip is opened
    qint64 m_openingMemory = 0; // memory of the process when opening began, in bytes
    HVClipFile m_file;
    HVFfmpegPtr<AVFormatContext> m_format; // reads from the file
    HVDecodingTurn m_turn; // ends when the decoder is destroyed
    std::unique_ptr<HVDecoderMemory> m_decoderMemory; // outlives the codec and its frames
    HVFfmpegPtr<AVCodecContext> m_codec;
    HVFfmpegPtr<AVFrame> m_decoded;
    HVFfmpegPtr<AVPacket> m_packet;
    HVFrameConverter m_converter;
    HVFrameMemory::Claim m_claim; // for the frame that was returned last
    HVFrameMemory::Claim m_nextClaim; // for the frame that is being converted
    bool m_isClaimRefused = false;
    std::future<QImage> m_converting; // destroyed before what it uses
    bool m_isFirst = true;
    QSize m_size;
    AVStream *m_stream = nullptr; // owned by the format context
    bool m_draining = false;
};

} // namespace Hovlets
