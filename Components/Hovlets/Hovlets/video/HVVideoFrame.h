// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QImage>

namespace Hovlets {

/*!
 * \brief A decoded picture of a clip with its presentation time.
 *
 * It is an image, and as cheap to copy: copies share the pixels until one is written to.
 */
class HVVideoFrame : public QImage
{
public:
    /// A null picture at 0 s.
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
