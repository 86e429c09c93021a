// SPDX-License-Identifier: Apache-2.0
#include "HVPictureCheck.h"

#include "HVPictureHeader.h"
#include "HVSvgCheck.h"

#include <QtCore/QtEndian>

#include <algorithm>
#include <cstring>
#include <iterator>

namespace Hovlets {

namespace {

bool isNeededPngChunk(const char *name)
{
    static constexpr const char *Names[] = { "IHDR", "PLTE", "tRNS", "IDAT", "IEND",
                                             "pHYs", "gAMA", "cHRM", "sRGB" };
    return std::any_of(std::begin(Names), std::end(Names),
                       [name](const char *needed) { return std::memcmp(name, needed, 4) == 0; });
}

/// Removes the chunks that the picture does not need, in place.
void stripPng(QByteArray &file)
{
    constexpr qint64 Signature = 8;
    constexpr qint64 ChunkFrame = 12; // length, name and checksum
    const qint64 size = file.size();
    char *bytes = file.data();
    qint64 kept = Signature;
    for (qint64 at = Signature; at + ChunkFrame <= size;) {
        const qint64 length = qFromBigEndian<quint32>(bytes + at);
        const qint64 next = std::min(size, at + ChunkFrame + length);
        if (isNeededPngChunk(bytes + at + 4)) {
            std::memmove(bytes + kept, bytes + at, static_cast<size_t>(next - at));
            kept += next - at;
        }
        at = next;
    }
    file.truncate(static_cast<int>(kept));
}

/// Each scan takes as long to decode as a whole picture.
QString jpegProblem(const QByteArray &file)
{
    constexpr int MostScans = 64;
    return file.count("\xff\xda") > MostScans
            ? QStringLiteral("it has more than %1 scans").arg(MostScans)
            : QString();
}

/// Whether the first frame of a GIF picture is within the size in the header. Qt makes room for a
/// larger one.
bool isGifFrameInside(const QByteArray &file, const QSize &size)
{
    const auto byte = [&](qint64 at) {
        return at < file.size() ? quint8(file.at(static_cast<int>(at))) : 0;
    };
    const auto number = [&](qint64 at) { return byte(at + 1) << 8 | byte(at); };
    const auto tableSize = [](int flags) { return flags & 0x80 ? 3 << ((flags & 7) + 1) : 0; };
    qint64 at = 13 + tableSize(byte(10));
    while (byte(at) == 0x21) { // extensions
        at += 2;
        while (byte(at) != 0)
            at += 1 + byte(at);
        ++at;
    }
    return byte(at) == 0x2c && number(at + 1) + number(at + 5) <= size.width()
            && number(at + 3) + number(at + 7) <= size.height();
}

QString svgProblem(const QByteArray &file, const QSize &size)
{
    // A few seconds, if each element covers the picture.
    constexpr qint64 MostWork = 4000000000;
    const HVSvgCheck check(file);
    if (!check.problem().isEmpty())
        return check.problem();
    return qint64 { size.width() } * size.height() * check.elements() > MostWork
            ? QStringLiteral("it has too many elements for its size")
            : QString();
}

} // namespace

HVPictureCheck::HVPictureCheck(const HVPictureHeader &header, QByteArray file, const QSize &size)
    : m_bytes(std::move(file))
{
    if (header.format == "png")
        stripPng(m_bytes);
    else if (header.format == "jpeg")
        m_problem = jpegProblem(m_bytes);
    else if (header.format == "svg")
        m_problem = svgProblem(m_bytes, size);
    else if (header.format == "gif" && !isGifFrameInside(m_bytes, header.size))
        m_problem = QStringLiteral("its first frame is larger than the picture");
}

} // namespace Hovlets
