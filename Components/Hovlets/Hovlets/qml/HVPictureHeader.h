// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>

namespace Hovlets {

/// Format and size of a picture, according to its first bytes.
struct HVPictureHeader
{
    QByteArray format; ///< QImageReader's name; empty if the format is not supported here.
    QSize size; ///< In pixels.
};

/*!
 * \brief Reads the header of a PNG, JPEG, GIF, BMP, WebP or SVG picture from the start of its file.
 *
 * Takes time linear in \a start, whatever it contains. QImageReader does not guarantee that: it
 * decompresses what precedes the picture in the file.
 */
HVPictureHeader readPictureHeader(const QByteArray &start);

/// The number of scans in a JPEG picture. Each takes as long to decode as a whole picture.
int jpegScans(const QByteArray &file);

} // namespace Hovlets
