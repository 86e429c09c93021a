// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"

#include <QtCore/QSize>
#include <QtGui/QImage>

namespace Hovlets {

/*!
 * \brief Converts decoded frames to 32-bit images of one size.
 *
 * Uses the clip's colour matrix and range, and gives the same bytes as the ffmpeg program with
 * bicubic scaling. Size and format may change from frame to frame. One thread at a time.
 */
class HVFrameConverter
{
public:
    /// \a size is the size of the images. Create a new converter for each clip.
    explicit HVFrameConverter(QSize size = QSize());

    /// Bytes in one image. Rows are padded to 64 bytes.
    qint64 imageSize() const;

    /// Prepares for frames of the given size and format; false if no conversion exists.
    bool prepare(int width, int height, AVPixelFormat format);

    /*!
     * The frame in QImage::Format_RGB32; null if memory runs out or the conversion fails.
     *
     * Rows are padded to 64 bytes, because the conversion writes whole vectors, past the end of odd
     * rows.
     */
    QImage convert(const AVFrame &frame);

private:
    void setColors(const AVFrame &frame);

    QSize m_size;
    HVFfmpegPtr<SwsContext> m_context;
    int m_width = 0;
    int m_height = 0;
    AVPixelFormat m_format = AV_PIX_FMT_NONE;
    int m_colorSpace = -1; // for which the context has tables; -1: none yet
    int m_colorRange = -1;
};

} // namespace Hovlets
