// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFfmpeg.h"

#include <QtCore/QSize>
#include <QtGui/QImage>

namespace Hovlets {

/*!
 * \brief Turns decoded pictures into 32-bit images of one size.
 *
 * The clip's own colour matrix and range are honoured, and the bytes are those of the ffmpeg
 * program for bicubic scaling. Geometry and format may change from picture to picture. One thread
 * at a time.
 */
class HVPictureConverter
{
public:
    /// Images will have this size. The converter is made anew for each clip.
    explicit HVPictureConverter(QSize size = QSize());

    /// Gets ready for pictures of the given geometry; false when there is no conversion.
    bool prepare(int width, int height, AVPixelFormat format);

    /*!
     * The picture in QImage::Format_RGB32; null when memory or the conversion fails.
     *
     * Rows are padded to 64 bytes: the conversion writes whole vectors, past the end of odd rows.
     */
    QImage convert(const AVFrame &picture);

private:
    void setColors(const AVFrame &picture);

    QSize m_size;
    HVFfmpegPtr<SwsContext> m_context;
    int m_width = 0;
    int m_height = 0;
    AVPixelFormat m_format = AV_PIX_FMT_NONE;
    int m_colorSpace = -1; // what the context's tables were made for; -1: nothing yet
    int m_colorRange = -1;
};

} // namespace Hovlets
