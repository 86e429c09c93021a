// SPDX-License-Identifier: Apache-2.0
#include "HVDecoderMemory.h"

#include <QtCore/QThread>

#include <algorithm>
#include <memory>

namespace Hovlets {

namespace {

constexpr qint64 WidestPixel = 6; // bytes; 4:4:4 in 16 bits
constexpr int MostThreads = 4; // more would hardly speed up such clips, and each costs memory
constexpr qint64 FramesPerThread = 3; // the one that it decodes, and its share of the others

/// Bytes in a frame of the decoder.
qint64 frameSize(const AVCodecContext &codec)
{
    const int size = av_image_get_buffer_size(codec.pix_fmt, codec.width, codec.height, 64);
    return size > 0 ? size : WidestPixel * codec.width * codec.height;
}

} // namespace

/// A buffer of FFmpeg's pool while a frame uses it.
struct HVDecoderMemory::Counted
{
    HVDecoderMemory *memory;
    AVBufferRef *buffer;
};

HVDecoderMemory::HVDecoderMemory(qint64 limit)
    : m_limit(std::max<qint64>(limit, 0))
{
}

qint64 HVDecoderMemory::mostUncountedPixels() const
{
    return m_limit / (2 * WidestPixel);
}

bool HVDecoderMemory::isLarge(const AVCodecContext &codec) const
{
    return frameSize(codec) > m_limit / FramesPerThread;
}

void HVDecoderMemory::attach(AVCodecContext *codec, const AVCodec &decoder)
{
    if ((decoder.capabilities & AV_CODEC_CAP_DR1) == 0)
        codec->max_pixels = std::min<qint64>(codec->max_pixels, mostUncountedPixels());
    const qint64 threads = m_limit / FramesPerThread / std::max<qint64>(frameSize(*codec), 1);
    codec->thread_count = static_cast<int>(std::clamp<qint64>(
            threads, 1, std::clamp(QThread::idealThreadCount(), 1, MostThreads)));
    codec->opaque = this;
    codec->get_buffer2 = &HVDecoderMemory::fetch;
    allowFetchingOnAnyThread(codec);
}

int HVDecoderMemory::fetch(AVCodecContext *codec, AVFrame *frame, int flags)
{
    auto *self = static_cast<HVDecoderMemory *>(codec->opaque);
    const auto format = static_cast<AVPixelFormat>(frame->format);
    const int size = av_image_get_buffer_size(format, frame->width, frame->height, 1);
    if (size < 0 || !self->hasRoomFor(size))
        return AVERROR(ENOMEM);
    const int result = avcodec_default_get_buffer2(codec, frame, flags);
    if (result < 0)
        return result;
    for (AVBufferRef *&buffer : frame->buf) {
        if (buffer && !self->count(buffer))
            return AVERROR(ENOMEM); // the caller frees the frame
    }
    return result;
}

/// Returns false, and marks the memory as exhausted, if \a bytes more would exceed the limit.
bool HVDecoderMemory::hasRoomFor(qint64 bytes)
{
    if (m_used + bytes <= m_limit)
        return true;
    m_isExhausted = true;
    return false;
}

/// Wraps the buffer, to notice when the last reference to it ends.
bool HVDecoderMemory::count(AVBufferRef *&buffer)
{
    const auto size = static_cast<qint64>(buffer->size);
    if (!hasRoomFor(size))
        return false;
    auto counted = std::make_unique<Counted>(Counted { this, buffer });
    AVBufferRef *wrapped = av_buffer_create(buffer->data, buffer->size, &HVDecoderMemory::release,
                                            counted.get(), 0);
    if (!wrapped)
        return false;
    static_cast<void>(counted.release()); // until release()
    m_used += size;
    buffer = wrapped;
    return true;
}

void HVDecoderMemory::release(void *counted, uint8_t *)
{
    const std::unique_ptr<Counted> ending(static_cast<Counted *>(counted));
    ending->memory->m_used -= static_cast<qint64>(ending->buffer->size);
    av_buffer_unref(&ending->buffer);
}

} // namespace Hovlets
