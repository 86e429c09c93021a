// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>

namespace Hovlets {

/// Format and size of a picture, as its first bytes tell them.
struct HVPictureHeader
{
    QByteArray format; ///< As QImageReader names it; empty when it is none of those shown here.
    QSize size; ///< In pixels.
};

/*!
 * \brief Reads the header of a PNG, JPEG, GIF, BMP, WebP or SVG picture from the start of its file.
 *
 * Takes a time linear in \a start, whatever that holds. QImageReader promises no such thing: it
 * unpacks what stands before the picture in the file.
 */
HVPictureHeader readPictureHeader(const QByteArray &start);

/// How often a JPEG picture draws over itself, which costs as much as a whole picture each time.
int jpegScans(const QByteArray &file);

} // namespace Hovlets
