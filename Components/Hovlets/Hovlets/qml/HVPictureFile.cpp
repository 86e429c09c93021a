// SPDX-License-Identifier: Apache-2.0
#include "HVPictureFile.h"

#include "HVLimits.h"
#include "HVPictureHeader.h"
#include "HVRegularFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

namespace Hovlets {

namespace {

// Contains the size of any ordinary picture. In a JPEG file, it comes after the camera's data.
constexpr qint64 ShortStart = 4096;
constexpr qint64 LongStart = qint64 { 256 } * 1024;

constexpr qint64 LargestSvg = qint64 { 1024 } * 1024;
constexpr int MostJpegScans = 64;

/// Whether Qt has a plug-in for the format.
bool isReadable(const QByteArray &format)
{
    static const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    return formats.contains(format);
}

bool isWithinLimits(const HVPictureHeader &header)
{
    if (header.size.isEmpty() || !isReadable(header.format))
        return false;
    const HVLimits limits = HVLimits::current();
    const qint64 pixels = qint64 { header.size.width() } * header.size.height();
    return pixels <= limits.picturePixels && 4 * pixels <= limits.pictureMemory;
}

/// Whether the size in pixels bounds the decoding time, and no other file is opened.
bool isPlain(const HVPictureHeader &header, const QByteArray &file)
{
    if (header.format == "jpeg")
        return jpegScans(file) <= MostJpegScans;
    if (header.format != "svg")
        return true;
    const auto holds = [&](const char *text) { return file.contains(text); };
    return file.size() <= LargestSvg && !holds("<!ENTITY") && !holds("<?xml-stylesheet")
            && !holds("<use") && !holds("<image") && !holds("<pattern") && !holds("<filter");
}

} // namespace

HVPictureFile::HVPictureFile(const QString &path)
    : m_path(path)
{
}

QSize HVPictureFile::size() const
{
    HVPictureHeader header = readPictureHeader(bytes(ShortStart));
    if (!header.format.isEmpty() && header.size.isEmpty())
        header = readPictureHeader(bytes(LongStart));
    return isWithinLimits(header) ? header.size : QSize();
}

QImage HVPictureFile::decode(const QSize &size) const
{
    QByteArray file = bytes(HVLimits::current().pictureMemory);
    const HVPictureHeader header = readPictureHeader(file.left(LongStart));
    if (!isWithinLimits(header) || !isPlain(header, file))
        return {};
    QBuffer buffer(&file);
    QImageReader reader(&buffer, header.format);
    reader.setAutoDetectImageFormat(false);
    const bool isVector = header.format == "svg";
    if (isVector || size.width() < header.size.width() || size.height() < header.size.height())
        reader.setScaledSize(size);
    const QImage image = reader.read();
    // Formats that the GUI thread need not convert.
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

QByteArray HVPictureFile::bytes(qint64 most) const
{
    QFile file;
    if (m_path.startsWith(QLatin1Char(':'))) { // compiled into the host
        file.setFileName(m_path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
    } else if (!openRegularFile(file, m_path)) {
        return {};
    }
    return file.size() <= HVLimits::current().pictureMemory ? file.read(most) : QByteArray();
}

} // namespace Hovlets
