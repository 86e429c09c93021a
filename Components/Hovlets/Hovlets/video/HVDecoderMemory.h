// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"

#include <QtCore/QtGlobal>

#include <atomic>

namespace Hovlets {

/*!
 * \brief Counts and limits the memory of the frames that one decoder holds.
 *
 * A clip selects how many earlier frames its decoder keeps for reference, and each thread of the
 * decoder holds further ones. Decoders fetch the memory of each frame here, on any of their
 * threads. Decoders of external libraries do not; only the size of their frames can be limited.
 */
class HVDecoderMemory
{
    Q_DISABLE_COPY_MOVE(HVDecoderMemory)

public:
    /// The decoder may hold frames of \a limit bytes together.
    explicit HVDecoderMemory(qint64 limit);

    /// The most pixels that a frame may have where its memory cannot be counted: a frame and one
    /// reference then fit in any format.
    qint64 mostUncountedPixels() const;

    /// Prepares \a codec before it is opened. This object must outlive it and all of its frames.
    void attach(AVCodecContext *codec, const AVCodec &decoder);

    /// Whether frames of the size of \a codec fill the limit with one thread.
    bool isLarge(const AVCodecContext &codec) const;

    /// Whether the decoder was refused a frame. Its output is incomplete from then on.
    bool isExhausted() const { return m_isExhausted; }

private:
    struct Counted;
    static int fetch(AVCodecContext *codec, AVFrame *frame, int flags);
    static void release(void *counted, uint8_t *data);
    bool hasRoomFor(qint64 bytes);
    bool count(AVBufferRef *&buffer);

    const qint64 m_limit;
    std::atomic<qint64> m_used { 0 };
    std::atomic<bool> m_isExhausted { false };
};

} // namespace Hovlets
