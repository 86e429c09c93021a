// SPDX-License-Identifier: Apache-2.0
#include "HVPictureFile.h"

#include "HVFileBytes.h"
#include "HVLimits.h"
#include "HVPictureCheck.h"
#include "HVRegularFile.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QHash>
#include <QtGui/QImage>
#include <QtGui/QImageReader>

namespace Hovlets {

namespace {

/// Whether Qt has a plug-in for the format.
bool isReadable(const QByteArray &format)
{
    static const QList<QByteArray> formats = QImageReader::supportedImageFormats();
    return formats.contains(format);
}

/// The header that a file had when it was last read.
struct KnownHeader
{
    HVFileStatus status;
    HVPictureHeader header;
};

/// The size that the decoder allocates. It must be the one that the limits were compared with.
bool isSizeAsInHeader(const QImageReader &reader, const HVPictureHeader &header)
{
    // Qt rounds the size of vector graphics in its own way. GIF pictures have been checked, and the
    // header of BMP files has only one form.
    const bool isFixed = header.format == "svg" || header.format == "gif" || header.format == "bmp";
    return isFixed || reader.size() == header.size;
}

} // namespace

HVPictureFile::HVPictureFile(const QString &path)
    : m_path(path)
{
}

QSize HVPictureFile::size() const
{
    constexpr int MostKnown = 200;
    static QHash<QString, KnownHeader> known;
    const HVFileStatus status(m_path);
    auto found = known.find(m_path);
    if (found == known.end() || !found->status.isSameAs(status)) {
        if (known.size() >= MostKnown)
            known.clear();
        found = known.insert(m_path, { status, header() });
    }
    return isWithinLimits(found->header) && isReadable(found->header.format) ? found->header.size
                                                                             : QSize();
}

HVPictureHeader HVPictureFile::header() const
{
    QFile file;
    return open(file) ? readPictureHeader(file) : HVPictureHeader();
}

bool HVPictureFile::isWithinLimits(const HVPictureHeader &header)
{
    const HVLimits limits = HVLimits::current();
    return !header.size.isEmpty()
            && qint64 { header.size.width() } * header.size.height() <= limits.picturePixels
            && header.memory <= limits.pictureMemory;
}

QImage HVPictureFile::decode(const QSize &size, QString *problem) const
{
    const auto refuse = [&](const QString &reason) {
        if (problem)
            *problem = reason;
        return QImage();
    };
    QFile file;
    if (!open(file))
        return refuse(QStringLiteral("it cannot be read, or it is too large"));
    QByteArray content = file.read(HVLimits::current().pictureMemory);
    QBuffer whole(&content);
    whole.open(QIODevice::ReadOnly);
    const HVPictureHeader header = readPictureHeader(whole);
    whole.close();
    if (header.format.isEmpty() || !isReadable(header.format))
        return refuse(QStringLiteral("Unsupported image format"));
    if (!isWithinLimits(header))
        return refuse(QStringLiteral("its header is damaged, or it is too large"));
    const HVPictureCheck check(header, std::move(content), size);
    if (!check.problem().isEmpty())
        return refuse(check.problem());

    QByteArray bytes = check.bytes();
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, header.format);
    reader.setAutoDetectImageFormat(false);
    if (!isSizeAsInHeader(reader, header))
        return refuse(QStringLiteral("its header is damaged"));
    const bool isVector = header.format == "svg";
    if (isVector || size.width() < header.size.width() || size.height() < header.size.height())
        reader.setScaledSize(size);
    const QImage image = reader.read();
    if (image.isNull())
        return refuse(reader.errorString());
    // Formats that the GUI thread need not convert.
    return image.convertToFormat(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied
                                                         : QImage::Format_RGB32);
}

bool HVPictureFile::open(QFile &file) const
{
    if (m_path.startsWith(QLatin1Char(':'))) { // compiled into the host
        file.setFileName(m_path);
        if (!file.open(QIODevice::ReadOnly))
            return false;
    } else if (!openRegularFile(file, m_path)) {
        return false;
    }
    return file.size() <= HVLimits::current().pictureMemory;
}

} // namespace Hovlets
