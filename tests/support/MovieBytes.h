// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

#include <initializer_list>

/// Builds QuickTime and MP4 files box by box, to test what such files may declare.
namespace MovieBytes {

inline QByteArray number(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

inline QByteArray numbers(std::initializer_list<quint32> values)
{
    QByteArray bytes;
    for (const quint32 value : values)
        bytes += number(value);
    return bytes;
}

/// A box with its size and its four-letter name.
inline QByteArray box(const char *name, const QByteArray &content)
{
    return number(quint32(content.size()) + 8) + name + content;
}

/// A sample description: 320 x 240 pixels of motion JPEG, followed by \a more boxes.
inline QByteArray description(const QByteArray &more = QByteArray())
{
    return box("jpeg",
               QByteArray(6, '\0') + QByteArray::fromHex("0001") + QByteArray(16, '\0')
                       + QByteArray::fromHex("014000f0") + QByteArray(50, '\0') + more);
}

/// A table of \a count samples of the same size, which takes up no bytes for each of them.
inline QByteArray equalSizes(quint32 count, quint32 size = 1)
{
    return box("stsz", numbers({ 0, size, count }));
}

/// The tables of a track, without any samples.
struct Tables
{
    explicit Tables(const QByteArray &sizes)
        : sizes(sizes)
    {
    }

    QByteArray sizes; ///< the box with the sample sizes
    QByteArray times = box("stts", numbers({ 0, 1, 1, 512 }));
    QByteArray format = description();
    QByteArray more; ///< further boxes in the sample table
    QByteArray edits; ///< a box next to the media box
    const char *handler = "vide";
    quint32 samplesPerChunk = 0x7fffffff;
};

inline QByteArray track(const Tables &tables)
{
    const QByteArray table = box("stsd", numbers({ 0, 1 }) + tables.format) + tables.times
            + box("stsc", numbers({ 0, 1, 1, tables.samplesPerChunk, 1 })) + tables.sizes
            + box("stco", numbers({ 0, 1, 48 })) + tables.more;
    const QByteArray media = box("mdhd", numbers({ 0, 0, 0, 12800, 512, 0 }))
            + box("hdlr", numbers({ 0, 0 }) + tables.handler + QByteArray(13, '\0'))
            + box("minf", box("stbl", table));
    return box("trak",
               box("tkhd", numbers({ 7, 0, 0, 1, 0, 512 }) + QByteArray(60, '\0')) + tables.edits
                       + box("mdia", media));
}

inline QByteArray header(const QByteArray &tracks)
{
    return box("moov", box("mvhd", numbers({ 0, 0, 0, 1000, 40 }) + QByteArray(80, '\0')) + tracks);
}

/// A whole file: its type, some data and the header.
inline QByteArray movie(const QByteArray &tracks)
{
    return box("ftyp", QByteArray("isom") + number(512) + "isommp41")
            + box("mdat", QByteArray(64, '\0')) + header(tracks);
}

} // namespace MovieBytes
