// SPDX-License-Identifier: Apache-2.0
#include "HVPictureHeader.h"

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QXmlStreamReader>

#include <cstring>
#include <limits>

namespace Hovlets {

namespace {

/// Reads numbers at positions in a file; 0 past its end.
class HeaderBytes
{
public:
    explicit HeaderBytes(const QByteArray &bytes)
        : m_bytes(bytes)
    {
    }

    int size() const { return int(m_bytes.size()); }

    bool has(int at, const char *text) const
    {
        const size_t length = std::strlen(text);
        return at + int(length) <= size()
                && std::memcmp(m_bytes.constData() + at, text, length) == 0;
    }

    int byte(int at) const { return at < size() ? quint8(m_bytes.at(at)) : 0; }
    int big16(int at) const { return byte(at) << 8 | byte(at + 1); }
    int little16(int at) const { return byte(at + 1) << 8 | byte(at); }

    // Values too large for an int become negative, and are then not a valid size.
    int big32(int at) const { return int(quint32(big16(at)) << 16 | quint32(big16(at + 2))); }
    int little32(int at) const
    {
        return int(quint32(little16(at + 2)) << 16 | quint32(little16(at)));
    }

private:
    const QByteArray &m_bytes;
};

QSize jpegSize(const HeaderBytes &bytes)
{
    constexpr int StartOfScan = 0xda;
    constexpr int EndOfImage = 0xd9;
    for (int at = 2; at + 9 < bytes.size() && bytes.byte(at) == 0xff;) {
        const int marker = bytes.byte(at + 1);
        if (marker == 0xff) { // padding
            ++at;
            continue;
        }
        const bool isFrame = marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8
                && marker != 0xcc;
        if (isFrame)
            return { bytes.big16(at + 7), bytes.big16(at + 5) };
        if (marker == StartOfScan || marker == EndOfImage)
            return {};
        at += 2 + qMax(2, bytes.big16(at + 2));
    }
    return {};
}

QSize bmpSize(const HeaderBytes &bytes)
{
    constexpr int OldHeader = 12;
    if (bytes.little32(14) == OldHeader)
        return { bytes.little16(18), bytes.little16(20) };
    const int height = bytes.little32(22); // negative if the top row comes first
    return { bytes.little32(18), height > std::numeric_limits<int>::min() ? qAbs(height) : 0 };
}

QSize webpSize(const HeaderBytes &bytes)
{
    const auto little24 = [&](int at) { return bytes.little16(at) | bytes.byte(at + 2) << 16; };
    if (bytes.has(12, "VP8X"))
        return { little24(24) + 1, little24(27) + 1 };
    constexpr int Mask = 0x3fff;
    if (bytes.has(12, "VP8L")) {
        const quint32 packed = quint32(bytes.little32(21));
        return { int(packed & Mask) + 1, int(packed >> 14 & Mask) + 1 };
    }
    if (bytes.has(12, "VP8 "))
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

} // namespace

HVPictureHeader readPictureHeader(const QByteArray &start)
{
    const HeaderBytes bytes(start);
    if (bytes.has(0, "\x89PNG\r\n\x1a\n") && bytes.has(12, "IHDR"))
        return { "png", { bytes.big32(16), bytes.big32(20) } };
    if (bytes.has(0, "\xff\xd8\xff"))
        return { "jpeg", jpegSize(bytes) };
    if (bytes.has(0, "GIF87a") || bytes.has(0, "GIF89a"))
        return { "gif", { bytes.little16(6), bytes.little16(8) } };
    if (bytes.has(0, "RIFF") && bytes.has(8, "WEBP"))
        return { "webp", webpSize(bytes) };
    if (bytes.has(0, "BM"))
        return { "bmp", bmpSize(bytes) };
    if (start.contains("<svg") && !start.contains("<!ENTITY"))
        return { "svg", svgSize(start) };
    return {};
}

int jpegScans(const QByteArray &file)
{
    return file.count("\xff\xda");
}

} // namespace Hovlets
