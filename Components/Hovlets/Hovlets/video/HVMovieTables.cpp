// SPDX-License-Identifier: Apache-2.0
#include "HVMovieTables.h"

#include "HVByteView.h"

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>

#include <algorithm>
#include <vector>

namespace Hovlets {

namespace {

constexpr int MostDepth = 10; // as in FFmpeg
constexpr qint64 MostHeader = qint64 { 64 } * 1024 * 1024; // bytes of all boxes but the media data
constexpr qint64 MostCompressed = qint64 { 128 } * 1024; // bytes; may expand a thousandfold
constexpr qint64 SamplesPerPiece = 160; // FFmpeg indexes uncompressed sound in pieces of at least

constexpr quint32 name(const char (&text)[5])
{
    return static_cast<quint32>(static_cast<uchar>(text[0])) << 24
            | static_cast<quint32>(static_cast<uchar>(text[1])) << 16
            | static_cast<quint32>(static_cast<uchar>(text[2])) << 8
            | static_cast<quint32>(static_cast<uchar>(text[3]));
}

constexpr quint32 Root = 0; // the file itself, as the parent of boxes

/// The header of a box.
struct Box
{
    quint32 type = 0;
    qint64 head = 8; // bytes
    qint64 size = 0; // of the whole box, as FFmpeg reads it

    /// \a left: the number of bytes that remain in the parent.
    static Box read(const HVByteView &bytes, qint64 left)
    {
        Box box;
        box.type = bytes.big32(4);
        box.size = bytes.big32(0);
        if (box.size == 1) {
            box.head = 16;
            box.size = static_cast<qint64>(bytes.big64(8));
        } else if (box.size == 0) {
            box.size = left;
        }
        box.size = std::min(box.size, left);
        return box;
    }

    bool isValid() const { return size >= head; }
};

/// \a begin: at least the first 8 bytes of the content.
bool mayHoldTables(quint32 type, const HVByteView &begin)
{
    switch (type) {
    case name("mdat"):
    case name("skip"):
    case name("wide"):
    case name("uuid"):
        return false;
    case name("free"):
    case name("hoov"):
        // FFmpeg also reads a header from space that a program has reserved.
        return begin.big32(4) == name("mvhd") || begin.big32(4) == name("cmov");
    default:
        return true;
    }
}

/// Counts what the boxes of a header declare.
class Tables
{
public:
    explicit Tables(qint64 most)
        : m_most(most)
    {
    }

    bool fit() const { return !m_isRefused && m_entries <= m_most; }

    void readBox(quint32 type, quint32 parent, const HVByteView &content, int depth);
    void endTrack();

private:
    struct Run
    {
        quint32 firstChunk;
        quint32 samples; // in each chunk
    };

    struct Track
    {
        qint64 samples = 0;
        qint64 edits = 0;
        int sizeTables = 0;
        int timeTables = 0;
        int handlers = 0;
        bool isSound = false;
        bool isEverySampleOneTick = false;
        qint64 chunks = 0;
        std::vector<Run> runs;

        bool isIndexedByChunk() const;
        qint64 pieces() const;
    };

    void readBoxes(const HVByteView &content, quint32 parent, int depth);
    bool readTable(quint32 type, quint32 parent, const HVByteView &content);
    void readTimes(const HVByteView &content);
    void readChunkRuns(const HVByteView &content);
    void readGroups(const HVByteView &content);
    void readMeta(const HVByteView &content, int depth);
    void readCompressed(const HVByteView &content, int depth);
    void refuseHiddenTables(const HVByteView &content);
    qint64 sumOfCounts(const HVByteView &table, qint64 entries);
    void add(qint64 entries) { m_entries = std::min(m_entries + entries, m_most + 1); }

    qint64 m_most;
    qint64 m_entries = 0;
    bool m_isRefused = false;
    Track m_track;
};

/// Sound with one tick per sample is uncompressed, or counts as uncompressed.
bool Tables::Track::isIndexedByChunk() const
{
    return isSound && handlers == 1 && timeTables == 1 && sizeTables == 1 && isEverySampleOneTick;
}

/// The number of index entries for a track that is indexed by chunk, estimated.
qint64 Tables::Track::pieces() const
{
    qint64 pieces = chunks;
    for (std::size_t i = 0; i < runs.size(); ++i) {
        const qint64 next = i + 1 < runs.size() ? qint64(runs[i + 1].firstChunk) : chunks + 1;
        const qint64 count = std::clamp<qint64>(next - runs[i].firstChunk, 0, chunks);
        pieces += count * (runs[i].samples / SamplesPerPiece);
    }
    return pieces;
}

void Tables::endTrack()
{
    const Track track = std::exchange(m_track, {});
    // Each edit may use the whole track once more.
    const qint64 entries = track.isIndexedByChunk() ? track.pieces() : track.samples;
    add(std::min(entries, m_most + 1) * std::max<qint64>(track.edits, 1));
}

void Tables::readBoxes(const HVByteView &content, quint32 parent, int depth)
{
    for (HVByteView rest = content; rest.size() >= 8 && fit();) {
        const Box box = Box::read(rest, rest.size());
        if (!box.isValid())
            return;
        readBox(box.type, parent, rest.left(box.size).from(box.head), depth);
        rest = rest.from(box.size);
    }
}

void Tables::readBox(quint32 type, quint32 parent, const HVByteView &content, int depth)
{
    if (depth > MostDepth)
        return;
    if (!mayHoldTables(type, content))
        return;
    switch (type) {
    case name("free"):
    case name("hoov"):
        readBoxes(content, name("moov"), depth + 1);
        return;
    case name("moov"):
        m_isRefused |= parent != Root;
        break;
    case name("trak"):
        m_isRefused |= parent != Root && parent != name("moov");
        endTrack();
        break;
    case name("stsd"):
        refuseHiddenTables(content);
        return;
    case name("meta"):
        readMeta(content, depth);
        return;
    case name("cmov"):
        readCompressed(content, depth);
        return;
    default:
        if (readTable(type, parent, content))
            return;
        break;
    }
    readBoxes(content, type, depth + 1);
}

/// Returns false if the box is not a table.
bool Tables::readTable(quint32 type, quint32 parent, const HVByteView &content)
{
    quint32 home = name("stbl");
    switch (type) {
    case name("stsz"):
    case name("stz2"):
        ++m_track.sizeTables;
        m_track.samples += content.big32(8);
        break;
    case name("stts"):
        readTimes(content);
        break;
    case name("ctts"):
        add(sumOfCounts(content.from(8), content.big32(4)));
        break;
    case name("stsc"):
        readChunkRuns(content);
        break;
    case name("stco"):
    case name("co64"):
        m_track.chunks += std::min<qint64>(content.big32(4), content.size() / 4);
        break;
    case name("sbgp"):
        home = parent == name("traf") ? parent : home;
        readGroups(content);
        break;
    case name("elst"):
        home = name("edts");
        m_track.edits += std::min<qint64>(content.big32(4), content.size() / 12);
        break;
    case name("trun"):
        home = name("traf");
        add(content.big32(4));
        break;
    case name("hdlr"):
        if (parent != name("mdia"))
            return true;
        home = parent;
        ++m_track.handlers;
        m_track.isSound = content.big32(8) == name("soun");
        break;
    default:
        return false;
    }
    m_isRefused |= parent != home;
    return true;
}

void Tables::readTimes(const HVByteView &content)
{
    ++m_track.timeTables;
    m_track.isEverySampleOneTick = content.big32(4) == 1 && content.big32(12) == 1;
}

void Tables::readChunkRuns(const HVByteView &content)
{
    const qint64 entries = std::min<qint64>(content.big32(4), content.size() / 12);
    for (qint64 i = 0; i < entries; ++i)
        m_track.runs.push_back({ content.big32(8 + i * 12), content.big32(12 + i * 12) });
}

void Tables::readGroups(const HVByteView &content)
{
    const bool hasParameter = content.big32(0) >> 24 == 1;
    const int table = hasParameter ? 16 : 12;
    add(sumOfCounts(content.from(table), content.big32(table - 4)));
}

/// FFmpeg starts at the first handler whose offset is a multiple of four.
void Tables::readMeta(const HVByteView &content, int depth)
{
    for (qint64 offset = 4; offset + 4 <= content.size(); offset += 4) {
        if (content.big32(offset) == name("hdlr"))
            return readBoxes(content.from(offset - 4), name("meta"), depth + 1);
    }
}

/// Reads a header in zlib's format: a box that names the format, then the size and the data.
void Tables::readCompressed(const HVByteView &content, int depth)
{
    constexpr qint64 Before = qint64 { 5 } * 4; // bytes
    if (content.size() > MostCompressed || content.big32(Before) > MostHeader) {
        m_isRefused = true;
        return;
    }
    const HVByteView data = content.from(Before);
    const QByteArray header = qUncompress(reinterpret_cast<const uchar *>(data.data()),
                                          static_cast<int>(data.size()));
    readBoxes(HVByteView(header), Root, depth + 1);
}

/// FFmpeg also reads boxes after the description of a format. Tables there are refused.
void Tables::refuseHiddenTables(const HVByteView &content)
{
    for (qint64 offset = 0; offset + 4 <= content.size(); ++offset) {
        switch (content.big32(offset)) {
        case name("trak"):
        case name("moof"):
        case name("stsz"):
        case name("stz2"):
        case name("stts"):
        case name("ctts"):
        case name("sbgp"):
        case name("elst"):
        case name("cmov"):
            m_isRefused = true;
            return;
        default:
            break;
        }
    }
}

/// The sum over a table of counts and values.
qint64 Tables::sumOfCounts(const HVByteView &table, qint64 entries)
{
    entries = std::min(entries, table.size() / 8);
    qint64 sum = 0;
    for (qint64 i = 0; i < entries && sum <= m_most; ++i)
        sum += table.big32(i * 8);
    return sum;
}

} // namespace

bool movieTablesFit(QIODevice &file, qint64 most, const std::function<bool()> &interrupted)
{
    Tables tables(most);
    qint64 headers = 0;
    const qint64 size = file.size();
    for (qint64 position = 0; size - position >= 8 && tables.fit();) {
        if (interrupted() || !file.seek(position))
            return false;
        const QByteArray head = file.read(24);
        const HVByteView begin(head);
        const Box box = Box::read(begin, size - position);
        if (!box.isValid())
            break;
        if (mayHoldTables(box.type, begin.from(box.head))) {
            headers += box.size;
            if (headers > MostHeader || !file.seek(position + box.head))
                return false;
            const QByteArray content = file.read(box.size - box.head);
            tables.readBox(box.type, Root, HVByteView(content), 0);
        }
        position += box.size;
    }
    tables.endTrack();
    return tables.fit();
}

} // namespace Hovlets
