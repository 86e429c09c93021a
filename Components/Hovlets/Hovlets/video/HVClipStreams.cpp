// SPDX-License-Identifier: Apache-2.0
#include "HVClipStreams.h"

#include <QtCore/QSize>

#include <vector>

namespace Hovlets {

namespace {

bool isClip(const AVStream &stream)
{
    return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO
            && (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
}

} // namespace

int findStreams(AVFormatContext *format, qint64 mostPixels)
{
    std::vector<QSize> sizes;
    sizes.reserve(format->nb_streams);
    for (unsigned int i = 0; i < format->nb_streams; ++i)
        sizes.emplace_back(format->streams[i]->codecpar->width,
                           format->streams[i]->codecpar->height);
    const std::size_t count = format->nb_streams; // the search may add more, without options
    std::vector<AVDictionary *> options(count, nullptr);
    for (AVDictionary *&each : options)
        av_dict_set_int(&each, "max_pixels", mostPixels, 0);
    const int result = avformat_find_stream_info(format, options.data());
    for (AVDictionary *&each : options)
        av_dict_free(&each);
    for (std::size_t i = 0; i < count; ++i) {
        AVCodecParameters *found = format->streams[i]->codecpar;
        if (found->width > 0 || qint64 { sizes[i].width() } * sizes[i].height() <= mostPixels)
            continue;
        found->width = sizes[i].width();
        found->height = sizes[i].height();
    }
    return result;
}

int findClip(AVFormatContext *format, const AVCodec **codec)
{
    const int best = av_find_best_stream(format, AVMEDIA_TYPE_VIDEO, -1, -1, codec, 0);
    if (best < 0 || isClip(*format->streams[best]))
        return best;
    for (unsigned int i = 0; i < format->nb_streams; ++i) {
        if (!isClip(*format->streams[i]))
            continue;
        *codec = avcodec_find_decoder(format->streams[i]->codecpar->codec_id);
        if (*codec)
            return static_cast<int>(i);
    }
    return AVERROR_STREAM_NOT_FOUND;
}

} // namespace Hovlets
