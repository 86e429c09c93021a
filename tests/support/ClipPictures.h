// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVClip.h"

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtGui/QImage>

#include <algorithm>
#include <memory>

/// Compares the frames of clips.
namespace ClipPictures {

/// The rows of a 32-bit image without their padding.
inline QByteArray packed(const QImage &image)
{
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        bytes.append(reinterpret_cast<const char *>(image.constScanLine(y)), image.width() * 4LL);
    return bytes;
}

/// The same pixels, all opaque.
inline QByteArray opaque(QByteArray pixels)
{
    for (int i = 3; i < pixels.size(); i += 4)
        pixels[i] = char(0xFF);
    return pixels;
}

/// Describes the first difference; empty if there is none.
inline QString difference(const QByteArray &is, const QByteArray &should)
{
    const auto size = std::min(is.size(), should.size());
    for (int i = 0; i < size; ++i) {
        if (is[i] != should[i])
            return QStringLiteral("byte %1 is %2 instead of %3")
                    .arg(i)
                    .arg(int(quint8(is[i])))
                    .arg(int(quint8(should[i])));
    }
    if (is.size() != should.size())
        return QStringLiteral("%1 bytes instead of %2").arg(is.size()).arg(should.size());
    return {};
}

/// A clip that nobody interrupts.
inline std::unique_ptr<Hovlets::HVClip> newClip()
{
    return std::make_unique<Hovlets::HVClip>([] { return false; });
}

} // namespace ClipPictures
