// SPDX-License-Identifier: Apache-2.0
#include "HVFrameConverter.h"

namespace Hovlets {

namespace {

constexpr int Alignment = 64; // bytes; the widest vectors that the conversion writes

bool hasAlpha(AVPixelFormat format)
{
    const AVPixFmtDescriptor *descriptor = av_pix_fmt_desc_get(format);
    return descriptor && (descriptor->flags & (AV_PIX_FMT_FLAG_ALPHA | AV_PIX_FMT_FLAG_PAL)) != 0;
}

/// The colour matrix of a frame. RGB and untagged frames use that of standard definition.
const int *matrixOf(const AVFrame &frame)
{
    const bool isTagged = frame.colorspace != AVCOL_SPC_RGB;
    return sws_getCoefficients(isTagged ? frame.colorspace : SWS_CS_DEFAULT);
}

void freePixels(void *pixels)
{
    av_free(pixels);
}

} // namespace

HVFrameConverter::HVFrameConverter(QSize size)
    : m_size(size)
{
}

qint64 HVFrameConverter::imageSize() const
{
    return av_image_get_buffer_size(AV_PIX_FMT_RGB32, m_size.width(), m_size.height(), Alignment);
}

bool HVFrameConverter::prepare(int width, int height, AVPixelFormat format)
{
    if (m_context && width == m_width && height == m_height && format == m_format)
        return true;
    m_width = width;
    m_height = height;
    m_format = format;
    m_colorSpace = -1;
    m_colorRange = -1;
    m_context.reset(sws_isSupportedInput(format) ? sws_alloc_context() : nullptr);
    if (!m_context)
        return false;
    SwsContext *context = m_context.get();
    av_opt_set_int(context, "srcw", width, 0);
    av_opt_set_int(context, "srch", height, 0);
    av_opt_set_int(context, "src_format", format, 0);
    av_opt_set_int(context, "dstw", m_size.width(), 0);
    av_opt_set_int(context, "dsth", m_size.height(), 0);
    av_opt_set_int(context, "dst_format", AV_PIX_FMT_RGB32, 0);
    av_opt_set_int(context, "sws_flags", SWS_BICUBIC, 0);
    // MPEG-2 and all later codecs place the colour samples of this format there.
    if (format == AV_PIX_FMT_YUV420P)
        av_opt_set_int(context, "src_v_chr_pos", 128, 0);
    if (sws_init_context(context, nullptr, nullptr) < 0)
        m_context.reset();
    return m_context != nullptr;
}

void HVFrameConverter::setColors(const AVFrame &frame)
{
    if (frame.colorspace == m_colorSpace && frame.color_range == m_colorRange)
        return;
    m_colorSpace = frame.colorspace;
    m_colorRange = frame.color_range;
    int *inverse = nullptr;
    int *table = nullptr;
    int sourceRange = 0;
    int range = 0;
    int brightness = 0;
    int contrast = 0;
    int saturation = 0;
    if (sws_getColorspaceDetails(m_context.get(), &inverse, &sourceRange, &table, &range,
                                 &brightness, &contrast, &saturation)
        < 0) {
        return; // RGB needs no matrix
    }
    const int *matrix = matrixOf(frame);
    if (frame.color_range != AVCOL_RANGE_UNSPECIFIED)
        sourceRange = frame.color_range == AVCOL_RANGE_JPEG;
    sws_setColorspaceDetails(m_context.get(), matrix, sourceRange, matrix, range, brightness,
                             contrast, saturation);
}

QImage HVFrameConverter::convert(const AVFrame &frame)
{
    const auto format = static_cast<AVPixelFormat>(frame.format);
    if (!prepare(frame.width, frame.height, format))
        return {};
    setColors(frame);

    uint8_t *planes[4] = {};
    int lineSizes[4] = {};
    if (av_image_alloc(planes, lineSizes, m_size.width(), m_size.height(), AV_PIX_FMT_RGB32,
                       Alignment)
        < 0) {
        return {};
    }
    QImage image(planes[0], m_size.width(), m_size.height(), lineSizes[0], QImage::Format_ARGB32,
                 &freePixels, planes[0]);
    if (image.isNull()) {
        av_free(planes[0]);
        return {};
    }
    if (sws_scale(m_context.get(), frame.data, frame.linesize, 0, frame.height, planes, lineSizes)
        <= 0) {
        return {};
    }
    if (hasAlpha(format))
        return std::move(image).convertToFormat(QImage::Format_RGB32);
    image.reinterpretAsFormat(QImage::Format_RGB32);
    return image;
}

} // namespace Hovlets
