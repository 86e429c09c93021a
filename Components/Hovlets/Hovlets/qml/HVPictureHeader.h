// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>

class QIODevice;

namespace Hovlets {

/// What a picture's file says about it before the picture begins.
struct HVPictureHeader
{
    QByteArray format; ///< QImageReader's name; empty if the format is not supported here.
    QSize size = {}; ///< In pixels; empty or negative if the header is damaged.
    qint64 memory = 0; ///< Bytes that decoding the picture at its full size takes.
};

/*!
 * \brief Reads the header of a PNG, JPEG, GIF, BMP, WebP or SVG picture.
 *
 * Reads at most 12 KB and takes time linear in them, whatever they contain. QImageReader does not
 * guarantee that: it decompresses what precedes the picture in the file. \a file must be open for
 * random access.
 */
HVPictureHeader readPictureHeader(QIODevice &file);

} // namespace Hovlets
