// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

namespace Hovlets {

/*!
 * \brief A decoded frame of a clip with its presentation time.
 *
 * As cheap to copy as any QImage: copies share the pixels until one is modified.
 */
class HVVideoFrame : public QImage
{
public:
    /// A null frame at 0 s.
    HVVideoFrame() = default;
    HVVideoFrame(const QImage &image, quint64 pts);
    HVVideoFrame(int width, int height, QImage::Format format, quint64 pts);

    /// In seconds from the start of the clip.
    double pts() const { return m_pts; }
    void setPts(double pts) { m_pts = pts; }

private:
    double m_pts = 0.0;
};

} // namespace Hovlets
