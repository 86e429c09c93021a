// SPDX-License-Identifier: Apache-2.0
#pragma once

// The one place that includes FFmpeg, and that knows how its objects are freed.

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libavutil/time.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace Hovlets {

struct HVFfmpegDeleter
{
    void operator()(AVFormatContext *context) const { avformat_close_input(&context); }
    void operator()(AVCodecContext *context) const { avcodec_free_context(&context); }
    void operator()(AVFrame *frame) const { av_frame_free(&frame); }
    void operator()(AVPacket *packet) const { av_packet_free(&packet); }
    void operator()(SwsContext *context) const { sws_freeContext(context); }
};

template <typename T> using HVFfmpegPtr = std::unique_ptr<T, HVFfmpegDeleter>;

} // namespace Hovlets
