// SPDX-License-Identifier: Apache-2.0
#include "HVMatroskaTracks.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>

#include <algorithm>
#include <string_view>

namespace Hovlets {

namespace {

using Bytes = std::string_view;

constexpr Bytes TracksId = "\x16\x54\xAE\x6B";
constexpr qint64 PieceSize = qint64 { 256 } * 1024; // bytes
constexpr Bytes AttachmentsId = "\x19\x41\xA4\x69";
constexpr qint64 MostLoaded = qint64 { 16 } * 1024 * 1024; // bytes of all tracks and attachments
constexpr std::size_t MostRemoved = 64; // bytes; each frame of a few bytes grows by as many

Bytes bytesOf(const QByteArray &array)
{
    return { array.constData(), static_cast<std::size_t>(array.size()) };
}

enum Id : quint32 {
    TrackEntry = 0xAE,
    ContentEncodings = 0x6D80,
    ContentEncoding = 0x6240,
    ContentEncodingType = 0x5033,
    ContentCompression = 0x5034,
    ContentCompAlgo = 0x4254,
    ContentCompSettings = 0x4255,
};

constexpr quint64 HeaderStripping = 3; // the only algorithm that does not inflate

/// Reads the elements of a list one by one, as far as they can be read.
class Elements
{
public:
    explicit Elements(Bytes bytes)
        : m_rest(bytes)
    {
    }

    /// Moves to the first element or the next one. Returns false at the end.
    bool next()
    {
        constexpr int LongestId = 4; // bytes
        constexpr int LongestSize = 8;
        const int idLength = numberLength();
        if (idLength > LongestId || !take(idLength, m_id))
            return false;
        const int sizeLength = numberLength();
        quint64 size = 0;
        if (sizeLength > LongestSize || !take(sizeLength, size))
            return false;
        // The first bit that is set only marks the length.
        size &= (quint64 { 1 } << 7 * sizeLength) - 1;
        m_size = static_cast<qint64>(size);
        m_headSize = idLength + sizeLength;
        // One that claims more than its parent has may still be read in part.
        m_content =
                m_rest.substr(0, static_cast<std::size_t>(std::min<quint64>(size, m_rest.size())));
        m_rest.remove_prefix(m_content.size());
        return true;
    }

    quint64 id() const { return m_id; }
    Bytes content() const { return m_content; }

    /// The size of the content as it is declared, in bytes.
    qint64 size() const { return m_size; }

    /// Bytes before the content.
    int headSize() const { return m_headSize; }

    /// The content as a number. FFmpeg rejects longer ones, which then leaves the default: 0.
    quint64 number() const
    {
        quint64 number = 0;
        if (m_content.size() > sizeof number)
            return number;
        for (const char c : m_content)
            number = number << 8 | static_cast<uchar>(c);
        return number;
    }

private:
    /// Bytes in the number that comes next: one more than the zero bits that it starts with.
    int numberLength() const
    {
        int length = 1;
        if (m_rest.empty())
            return length;
        for (int bits = static_cast<uchar>(m_rest[0]); length <= 8 && (bits & 0x80) == 0;
             bits <<= 1)
            ++length;
        return length;
    }

    bool take(int length, quint64 &number)
    {
        if (static_cast<std::size_t>(length) > m_rest.size())
            return false;
        number = 0;
        for (int i = 0; i < length; ++i)
            number = number << 8 | static_cast<uchar>(m_rest[static_cast<std::size_t>(i)]);
        m_rest.remove_prefix(static_cast<std::size_t>(length));
        return true;
    }

    Bytes m_rest;
    Bytes m_content;
    quint64 m_id = 0;
    qint64 m_size = 0;
    int m_headSize = 0;
};

/// Whether a compression removes only a few bytes from each frame.
bool isSmallCompression(Bytes compression)
{
    bool isNamed = false; // otherwise, it is zlib's
    for (Elements elements(compression); elements.next();) {
        if (elements.id() == ContentCompAlgo && elements.number() != HeaderStripping)
            return false;
        if (elements.id() == ContentCompSettings && elements.content().size() > MostRemoved)
            return false;
        isNamed |= elements.id() == ContentCompAlgo;
    }
    return isNamed;
}

/// Whether an encoding does not inflate anything. One that says nothing is a compression by zlib.
bool isSmallEncoding(Bytes encoding)
{
    bool hasCompression = false;
    bool isEncryption = false; // which FFmpeg leaves as it is
    bool isNoEncryption = false; // the type may be named more than once
    for (Elements elements(encoding); elements.next();) {
        if (elements.id() == ContentEncodingType)
            (elements.number() != 0 ? isEncryption : isNoEncryption) = true;
        if (elements.id() != ContentCompression)
            continue;
        if (!isSmallCompression(elements.content()))
            return false;
        hasCompression = true;
    }
    return hasCompression || (isEncryption && !isNoEncryption);
}

bool areSmallEncodings(Bytes encodings)
{
    for (Elements elements(encodings); elements.next();) {
        if (elements.id() == ContentEncoding && !isSmallEncoding(elements.content()))
            return false;
    }
    return true;
}

bool isSmallTrack(Bytes track)
{
    for (Elements elements(track); elements.next();) {
        if (elements.id() == ContentEncodings && !areSmallEncodings(elements.content()))
            return false;
    }
    return true;
}

bool areSmallTracks(Bytes tracks)
{
    for (Elements elements(tracks); elements.next();) {
        if (elements.id() == TrackEntry && !isSmallTrack(elements.content()))
            return false;
    }
    return true;
}

/// Finds all places that may hold tracks or attachments, one after the other.
class LoadedParts
{
public:
    LoadedParts(QIODevice &file, const std::function<bool()> &interrupted)
        : m_file(file)
        , m_interrupted(interrupted)
    {
    }

    /// Reads a piece of the file and checks what starts there.
    bool checkPiece(qint64 position)
    {
        constexpr qint64 Overlap = 3; // an identifier may end in the next piece
        const QByteArray piece = read(position, PieceSize + Overlap);
        return !piece.isEmpty() && check(TracksId, bytesOf(piece), position)
                && check(AttachmentsId, bytesOf(piece), position);
    }

private:
    /// Nothing if the file cannot be read there.
    QByteArray read(qint64 position, qint64 most)
    {
        return !m_interrupted() && m_file.seek(position) ? m_file.read(most) : QByteArray();
    }

    bool check(Bytes id, Bytes piece, qint64 position)
    {
        for (std::size_t at = 0; (at = piece.find(id, at)) != Bytes::npos; ++at) {
            if (!checkAt(position + static_cast<qint64>(at), id == TracksId))
                return false;
        }
        return true;
    }

    bool checkAt(qint64 position, bool isTracks)
    {
        constexpr qint64 LongestHead = 12; // bytes of an identifier and a size
        const QByteArray head = read(position, LongestHead);
        if (head.isEmpty())
            return false;
        Elements element(bytesOf(head));
        if (!element.next())
            return true; // damaged, or only the same bytes
        const qint64 start = position + element.headSize();
        const qint64 size = std::min(element.size(), m_file.size() - start);
        m_loaded += size;
        if (m_loaded > MostLoaded)
            return false;
        if (!isTracks)
            return true;
        const QByteArray content = read(start, size);
        return content.size() == size && areSmallTracks(bytesOf(content));
    }

    QIODevice &m_file;
    const std::function<bool()> &m_interrupted;
    qint64 m_loaded = 0; // bytes
};

} // namespace

bool matroskaTracksFit(QIODevice &file, const std::function<bool()> &interrupted)
{
    LoadedParts parts(file, interrupted);
    for (qint64 position = 0; position < file.size(); position += PieceSize) {
        if (!parts.checkPiece(position))
            return false;
    }
    return true;
}

} // namespace Hovlets
