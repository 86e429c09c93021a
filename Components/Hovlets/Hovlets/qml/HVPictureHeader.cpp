// SPDX-License-Identifier: Apache-2.0
#include "HVPictureHeader.h"

#include "HVByteView.h"
#include "HVSvgCheck.h"

#include <QtCore/QIODevice>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QXmlStreamReader>

#include <limits>

namespace Hovlets {

namespace {

QByteArray bytesAt(QIODevice &file, qint64 position, qint64 count)
{
    return position < file.size() && file.seek(position) ? file.read(count) : QByteArray();
}

/// Values too large for an int become negative, and are then not a valid size.
int side(quint32 pixels)
{
    return static_cast<int>(pixels);
}

qint64 pixels(const QSize &size)
{
    return qint64 { size.width() } * size.height();
}

/// Whether the segment may precede the picture. It has a length, and the decoder skips or reads the
/// whole segment: each decoder must find the next one at the same position.
bool isJpegSegment(int marker)
{
    constexpr int HuffmanTable = 0xc4;
    constexpr int QuantizationTable = 0xdb;
    constexpr int RestartInterval = 0xdd;
    constexpr int Comment = 0xfe;
    return marker == HuffmanTable || marker == QuantizationTable || marker == RestartInterval
            || marker == Comment || (marker & 0xf0) == 0xe0;
}

/// The bytes of the coefficients of a whole picture. A decoder needs them all at once if more than
/// one scan contributes to a pixel.
qint64 jpegCoefficients(const QSize &size, int components)
{
    constexpr int LargestBlock = 32; // pixels
    const auto padded = [](int side) {
        return qint64 { (side + LargestBlock - 1) / LargestBlock } * LargestBlock;
    };
    return padded(size.width()) * 2 * components * padded(size.height());
}

/// Of a file with a segment that the decoder might not read in the same way: no size.
HVPictureHeader jpegHeader(QIODevice &file)
{
    constexpr int MostSegments = 200; // and bytes between them
    constexpr int SegmentStart = 12;
    constexpr int BaselineFrame = 0xc0;
    constexpr int ProgressiveFrame = 0xc2;
    constexpr int StartOfScan = 0xda;
    constexpr int MostComponents = 4;
    HVPictureHeader header { "jpeg" };
    int components = 0;
    bool isProgressive = false;
    qint64 at = 2;
    for (int i = 0; i < MostSegments; ++i) {
        const QByteArray start = bytesAt(file, at, SegmentStart);
        const HVByteView bytes(start);
        const int marker = bytes.byte(1);
        if (bytes.byte(0) != 0xff)
            break;
        if (marker == 0xff) { // padding
            ++at;
            continue;
        }
        if (marker == StartOfScan) {
            if (header.size.isEmpty())
                break;
            const bool isWhole = !isProgressive && bytes.byte(4) == components;
            header.memory = 4 * pixels(header.size)
                    + (isWhole ? 0 : jpegCoefficients(header.size, components));
            return header;
        }
        if (marker >= BaselineFrame && marker <= ProgressiveFrame) {
            components = bytes.byte(9);
            if (header.size.isValid() || components < 1 || components > MostComponents)
                break;
            header.size = { bytes.big16(7), bytes.big16(5) };
            isProgressive = marker == ProgressiveFrame;
        } else if (!isJpegSegment(marker)) {
            break;
        }
        const int length = bytes.big16(2);
        if (length < 2)
            break;
        at += 2 + length;
    }
    return { "jpeg" };
}

QSize bmpSize(const HVByteView &bytes)
{
    constexpr int OldHeader = 12;
    if (bytes.little32(14) == OldHeader)
        return { bytes.little16(18), bytes.little16(20) };
    const int height = side(bytes.little32(22)); // negative if the top row comes first
    return { side(bytes.little32(18)),
             height > std::numeric_limits<int>::min() ? qAbs(height) : 0 };
}

QSize webpSize(const HVByteView &bytes)
{
    const auto little24 = [&](int at) { return bytes.little16(at) | bytes.byte(at + 2) << 16; };
    if (bytes.hasText(12, "VP8X"))
        return { little24(24) + 1, little24(27) + 1 };
    constexpr int Mask = 0x3fff;
    if (bytes.hasText(12, "VP8L")) {
        const quint32 packed = bytes.little32(21);
        return { int(packed & Mask) + 1, int(packed >> 14 & Mask) + 1 };
    }
    if (bytes.hasText(12, "VP8 "))
        return { bytes.little16(26) & Mask, bytes.little16(28) & Mask };
    return {};
}

/// A length in pixels; 0 if it depends on something else.
int svgLength(QString length)
{
    double scale = 1;
    if (length.endsWith(QLatin1String("pt")))
        scale = 1.25;
    if (length.endsWith(QLatin1String("pt")) || length.endsWith(QLatin1String("px")))
        length.chop(2);
    bool isNumber = false;
    const double pixels = scale * length.trimmed().toDouble(&isNumber);
    return isNumber && pixels > 0 && pixels < 1e6 ? qMax(1, qRound(pixels)) : 0;
}

QSize svgSize(const QByteArray &start)
{
    QXmlStreamReader reader(start);
    while (!reader.atEnd() && reader.readNext() != QXmlStreamReader::StartElement) { }
    if (!reader.isStartElement() || reader.name() != QLatin1String("svg"))
        return {};
    const QXmlStreamAttributes attributes = reader.attributes();
    const QSize size(svgLength(attributes.value(QLatin1String("width")).toString()),
                     svgLength(attributes.value(QLatin1String("height")).toString()));
    if (!size.isEmpty())
        return size;
    const QStringList box = attributes.value(QLatin1String("viewBox"))
                                    .toString()
                                    .replace(QLatin1Char(','), QLatin1Char(' '))
                                    .simplified()
                                    .split(QLatin1Char(' '));
    return box.size() == 4 ? QSize(svgLength(box.at(2)), svgLength(box.at(3))) : QSize();
}

HVPictureHeader withMemory(const char *format, const QSize &size, int bytesPerPixel = 4)
{
    constexpr qint64 Most = std::numeric_limits<qint64>::max();
    const qint64 count = size.isEmpty() ? 0 : pixels(size);
    return { format, size, count > Most / bytesPerPixel ? Most : bytesPerPixel * count };
}

HVPictureHeader pngHeader(const HVByteView &bytes)
{
    const int depth = bytes.byte(24);
    return withMemory("png", { side(bytes.big32(16)), side(bytes.big32(20)) }, depth > 8 ? 8 : 4);
}

/// Decoders of animations hold two more frames, and the lossless one a second copy of the picture.
HVPictureHeader webpHeader(const HVByteView &bytes)
{
    constexpr int Animation = 2;
    const bool isAnimated = bytes.hasText(12, "VP8X") && (bytes.byte(20) & Animation);
    return withMemory("webp", webpSize(bytes), isAnimated ? 12 : bytes.hasText(12, "VP8 ") ? 4 : 8);
}

} // namespace

HVPictureHeader readPictureHeader(QIODevice &file)
{
    constexpr int StartSize = 8192; // of an SVG file, the root tag must fit
    const QByteArray start = bytesAt(file, 0, StartSize);
    const HVByteView bytes(start);
    if (bytes.hasText(0, "\x89PNG\r\n\x1a\n") && bytes.hasText(12, "IHDR"))
        return pngHeader(bytes);
    if (bytes.hasText(0, "\xff\xd8\xff"))
        return jpegHeader(file);
    if (bytes.hasText(0, "GIF87a") || bytes.hasText(0, "GIF89a"))
        return withMemory("gif", { bytes.little16(6), bytes.little16(8) });
    if (bytes.hasText(0, "RIFF") && bytes.hasText(8, "WEBP"))
        return webpHeader(bytes);
    if (bytes.hasText(0, "BM"))
        return withMemory("bmp", bmpSize(bytes));
    if (start.contains("<svg") && HVSvgCheck::isQuicklyRead(start))
        return withMemory("svg", svgSize(start));
    return {};
}

} // namespace Hovlets
