// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QSize>
#include <QtCore/QString>

class QImage;

namespace Hovlets {

/*!
 * \brief A picture in a file that anybody may have made.
 *
 * Only regular files of the formats above are opened; HVLimits says how large the pictures may be.
 */
class HVPictureFile
{
public:
    explicit HVPictureFile(const QString &path);

    /// Width and height in pixels; empty when the picture cannot be shown. Reads the file's start.
    QSize size() const;

    /*!
     * The picture, scaled down to \a size as it is decoded; vector graphics are scaled up as well.
     * Null when it cannot be shown. May take a second: for background threads.
     */
    QImage decode(const QSize &size) const;

private:
    QByteArray bytes(qint64 most) const;

    QString m_path;
};

} // namespace Hovlets
