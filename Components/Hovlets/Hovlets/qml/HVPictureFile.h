// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

class QImage;

namespace Hovlets {

/*!
 * \brief A picture in an untrusted file.
 *
 * Opens only regular files in the formats of readPictureHeader(). HVLimits limits the size of
 * pictures.
 */
class HVPictureFile
{
public:
    explicit HVPictureFile(const QString &path);

    /// Width and height in pixels; empty if the picture cannot be shown. Reads the start of the
    /// file.
    [[nodiscard]] QSize size() const;

    /*!
     * Decodes the picture, scaled down to \a size; vector graphics are scaled up as well. Returns
     * null if it cannot be shown. May take a second: call it on a background thread.
     */
    [[nodiscard]] QImage decode(const QSize &size) const;

private:
    [[nodiscard]] QByteArray bytes(qint64 most) const;

    QString m_path;
};

} // namespace Hovlets
