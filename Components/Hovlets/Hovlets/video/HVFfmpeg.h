// SPDX-License-Identifier: Apache-2.0
#pragma once

// FFmpeg's headers, and owning pointers for its objects.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/avstring.h>
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libavutil/time.h>
#include <libswscale/swscale.h>
}

#include <QtCore/QtGlobal>

#include <memory>

namespace Hovlets {

struct HVFfmpegDeleter
{
    void operator()(AVFormatContext *context) const { avformat_close_input(&context); }
    void operator()(AVIOContext *context) const
    {
        av_freep(static_cast<void *>(&context->buffer));
        avio_context_free(&context);
    }
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwsContext *context) const { sws_freeContext(context); }
};

template <typename T> using HVFfmpegPtr = std::unique_ptr<T, HVFfmpegDeleter>;

/// Lets the decoder's threads call its get_buffer2. Without this, FFmpeg 5 decodes one frame at a
/// time as soon as an application sets that function. Later versions always do it.
inline void allowFetchingOnAnyThread(AVCodecContext *codec)
{
#if LIBAVCODEC_VERSION_MAJOR < 60
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    codec->thread_safe_callbacks = 1;
    QT_WARNING_POP
#else
    Q_UNUSED(codec)
#endif
}

} // namespace Hovlets
