// SPDX-License-Identifier: Apache-2.0
#include "HVVideoFrame.h"

namespace Hovlets {

HVVideoFrame::HVVideoFrame(const QImage &image, quint64 pts)
    : QImage(image)
    , m_pts(static_cast<double>(pts))
{
}

HVVideoFrame::HVVideoFrame(int width, int height, QImage::Format format, quint64 pts)
    : QImage(width, height, format)
    , m_pts(static_cast<double>(pts))
{
}

} // namespace Hovlets
