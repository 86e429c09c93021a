// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVPictureHeader.h"

#include <QtCore/QSize>
#include <QtCore/QString>

class QFile;
class QImage;

namespace Hovlets {

/*!
 * \brief A picture in an untrusted file.
 *
 * Opens only regular files in the formats of readPictureHeader(). HVLimits limits the size of
 * pictures, and HVPictureCheck what Qt may decode.
 */
class HVPictureFile
{
public:
    explicit HVPictureFile(const QString &path);

    /// Width and height in pixels; empty if the header shows that the picture cannot be shown.
    /// Reads only the header, and only again if the file may have changed. GUI thread only.
    [[nodiscard]] QSize size() const;

    /// Reads the header again. Its format is empty if the file cannot be read.
    [[nodiscard]] HVPictureHeader header() const;

    /// Whether a picture is within the current limits and its header is sound.
    [[nodiscard]] static bool isWithinLimits(const HVPictureHeader &header);

    /*!
     * Decodes the picture, scaled down to \a size; vector graphics are scaled up as well. Returns
     * null if it cannot be shown, and sets \a problem to the reason, in English. May take a few
     * seconds: call it on a background thread.
     */
    [[nodiscard]] QImage decode(const QSize &size, QString *problem = nullptr) const;

private:
    bool open(QFile &file) const;

    QString m_path;
};

} // namespace Hovlets
