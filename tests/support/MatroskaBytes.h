// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

/// Builds Matroska files element by element, to test what such files may declare.
namespace MatroskaBytes {

/// An element with its size stored in eight bytes. \a id: in hexadecimal digits.
inline QByteArray element(const char *id, const QByteArray &content)
{
    QByteArray size(8, '\0');
    qToBigEndian<quint64>(quint64(content.size()) | 0x0100000000000000, size.data());
    return QByteArray::fromHex(id) + size + content;
}

/// An element that holds one small number.
inline QByteArray number(const char *id, int value)
{
    return element(id, QByteArray(1, char(value)));
}

/// The start of every file, up to the content of its only segment.
inline QByteArray matroska(const QByteArray &segment)
{
    return element("1A45DFA3", element("4282", "matroska")) + element("18538067", segment);
}

/// The properties of the file: its times are in milliseconds.
inline QByteArray information()
{
    return element("1549A966", element("2AD7B1", QByteArray::fromHex("0F4240")));
}

inline QByteArray tracks(const QByteArray &content)
{
    return element("1654AE6B", content);
}

/// A video track of MPEG-4 frames of 64 x 48 pixels. \a more: further elements.
inline QByteArray track(int index, const QByteArray &more = QByteArray())
{
    const QByteArray video = element("E0", number("B0", 64) + number("BA", 48));
    return element("AE",
                   number("D7", index) + number("73C5", index) + number("83", 1)
                           + element("86", "V_MPEG4/ISO/ASP") + video + more);
}

inline QByteArray codecPrivate(const QByteArray &bytes)
{
    return element("63A2", bytes);
}

/// How a track is encoded further. \a content: the elements of that encoding.
inline QByteArray encoding(const QByteArray &content)
{
    return element("6D80", element("6240", content));
}

/// A compression by \a algorithm: 0 is zlib's, 3 removes bytes that all frames start with.
inline QByteArray compression(int algorithm, const QByteArray &removed = QByteArray())
{
    return element("5034", number("4254", algorithm) + element("4255", removed));
}

/// What the encoding applies to: 1 is for frames, 2 for the codec's private data.
inline QByteArray scope(int scope)
{
    return number("5032", scope);
}

/// One frame of the first track.
inline QByteArray cluster(const QByteArray &frame)
{
    return element("1F43B675",
                   number("E7", 0) + element("A3", QByteArray::fromHex("81000080") + frame));
}

} // namespace MatroskaBytes
