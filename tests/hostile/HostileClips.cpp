// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "HostileInputs.h"
#include "MovieBytes.h"

#include <QtCore/QFile>

using namespace MovieBytes;

namespace {

QString name(const QByteArray &suffix)
{
    return QStringLiteral("x.") + QString::fromLatin1(suffix);
}

HostileInput clip(const QByteArray &what, const QByteArray &suffix,
                  const std::function<QByteArray(const HostilePackage &)> &bytes)
{
    return { "clip", suffix + " " + what, [=](const HostilePackage &package) {
                package.write(QStringLiteral("Resources/") + name(suffix), bytes(package));
                package.entry("title=\"t\" clip=\"x." + suffix + "\"", "<p>x</p>");
            } };
}

HostileInput plain(const QByteArray &what, const QByteArray &suffix,
                   const std::function<QByteArray()> &bytes)
{
    return clip(what, suffix, [=](const HostilePackage &) { return bytes(); });
}

void addPlaylists(QList<HostileInput> &inputs)
{
    const auto playlist = [&](const char *suffix, const char *before, const char *after,
                              const QByteArray &target) {
        inputs += clip("to " + target, suffix, [=](const HostilePackage &package) {
            const QByteArray self =
                    QFile::encodeName(package.path(QStringLiteral("Resources/") + name(suffix)));
            return before + (target == "itself" ? self : target) + after;
        });
    };
    for (const char *target : { "itself", "/dev/zero", "http://127.0.0.1:9/x.mp4", "x.%d.png" }) {
        playlist("m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n", "\n", target);
        playlist("m3u8", "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=1\n", "\n", target);
        playlist("ffconcat", "ffconcat version 1.0\nfile '", "'\n", target);
        playlist("mpd", "<MPD type=\"dynamic\"><Period><BaseURL>", "</BaseURL></Period></MPD>",
                 target);
        playlist("sdp", "v=0\nc=IN IP4 127.0.0.1\nm=video 9 RTP/AVP 96\na=control:", "\n", target);
        playlist("asx", "<asx><entry><ref href=\"", "\"/></entry></asx>", target);
        playlist("mp4", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n", "\n", target);
    }
}

QByteArray movieWithEdits(int count)
{
    Tables edited(equalSizes(30));
    edited.edits =
            box("edts",
                box("elst",
                    numbers({ 0, quint32(count) }) + numbers({ 40, 0, 0x10000 }).repeated(count)));
    return movie(track(edited));
}

QByteArray movieWithTimes(const QByteArray &times)
{
    Tables tables(equalSizes(100));
    tables.times = box("stts", times);
    return movie(track(tables));
}

QByteArray movieWithTable(const char *name, quint32 count)
{
    Tables tables(equalSizes(100));
    tables.more = box(name, numbers({ 0, count, count, 1 }));
    return movie(track(tables));
}

QByteArray movieWithEdit(quint32 count)
{
    Tables tables(equalSizes(100));
    tables.edits = box("edts", box("elst", numbers({ 0, count, count, 0, 0x10000 })));
    return movie(track(tables));
}

QByteArray nestedBoxes(int count)
{
    QByteArray nested;
    for (int i = 0; i < count; ++i)
        nested = box("moov", nested);
    return box("ftyp", "isom") + nested;
}

void addTables(QList<HostileInput> &inputs)
{
    const auto add = [&](const QByteArray &what, const std::function<QByteArray()> &bytes) {
        inputs += plain(what, "mp4", bytes);
        inputs += plain(what, "mov", bytes);
    };
    const auto tracks = [](int samples, int count) {
        return movie(track(Tables(equalSizes(quint32(samples)))).repeated(count));
    };
    for (const quint32 count : { 4000000u, 40000000u, 0x7fffffffu, 0xffffffffu }) {
        const QByteArray number = QByteArray::number(count);
        add("six tracks of " + number,
            [=] { return movie(track(Tables(equalSizes(count))).repeated(6)); });
        add("times of " + number, [=] { return movieWithTimes(numbers({ 0, 1, count, 1 })); });
        add("time table of " + number, [=] { return movieWithTimes(numbers({ 0, count, 1, 1 })); });
        for (const char *table : { "ctts", "stss", "stsc", "stco", "co64", "sbgp", "sdtp" })
            add(QByteArray(table) + " of " + number, [=] { return movieWithTable(table, count); });
        add("edits of " + number, [=] { return movieWithEdit(count); });
    }
    for (const int count : { 100, 10000 }) {
        const QByteArray number = QByteArray::number(count);
        add("tracks, " + number, [=] { return tracks(10, count); });
        add("tracks without samples, " + number, [=] { return tracks(0, count); });
        add("repeated edits, " + number, [=] { return movieWithEdits(count); });
        add("nested boxes, " + number, [=] { return nestedBoxes(count); });
    }
    add("box of no size", [] { return box("ftyp", "isom") + QByteArray(1000000, '\0'); });
    add("endless boxes", [] { return box("ftyp", "isom") + box("free", {}).repeated(500000); });
}

QByteArray manyStreams()
{
    QByteArray bytes;
    for (int id = 0; id < 8000; ++id) {
        QByteArray packet(188, '\xff');
        packet[0] = 0x47;
        packet[1] = char(0x40 | id >> 8);
        packet[2] = char(id);
        packet[3] = 0x10;
        packet.replace(4, 9, QByteArray::fromHex("000001e00000800000"));
        bytes += packet.repeated(3);
    }
    return bytes;
}

/// Clips that the ffmpeg program makes: large, long, damaged.
void addEncoded(QList<HostileInput> &inputs)
{
    struct Encoding
    {
        const char *what;
        const char *suffix;
        const char *arguments;
    };
    static constexpr Encoding Encodings[] = {
        { "20 s in 4K", "mp4",
          "-f lavfi -i color=size=3840x2160:rate=25 -t 20 -c:v libx264 -preset ultrafast" },
        { "8000 x 8000", "mp4",
          "-f lavfi -i color=size=8000x8000:rate=5 -t 1 -c:v mpeg4 -strict -2" },
        { "8192 x 8192", "mov",
          "-f lavfi -i color=size=8192x8192:rate=5 -t 1 -c:v libx264 -preset ultrafast" },
        { "4096 x 2160", "mkv",
          "-f lavfi -i color=size=4096x2160:rate=10 -t 2 -c:v libx264 -preset ultrafast "
          "-x264-params ref=16:bframes=3" },
        { "4096 x 2160, 4:4:4", "mp4",
          "-f lavfi -i color=size=4096x2160:rate=10 -t 2 -c:v libx264 -pix_fmt yuv444p10 "
          "-preset ultrafast -x264-params ref=16:bframes=3" },
        { "4096 x 2160", "gif", "-f lavfi -i color=size=4096x2160:rate=5 -t 2" },
        { "8000 x 8000", "gif", "-f lavfi -i color=size=8000x8000:rate=5 -t 1" },
        { "4K", "webm", "-f lavfi -i color=size=3840x2160:rate=10 -t 1 -c:v libvpx -cpu-used 8" },
        { "4K", "mkv",
          "-f lavfi -i color=size=3840x2160:rate=10 -t 1 -c:v libx264 -preset ultrafast "
          "-x264-params ref=16:bframes=3" },
        { "1 x 1", "avi", "-f lavfi -i color=size=16x16:rate=1000 -t 30 -c:v mpeg4" },
        { "mono, long", "mkv",
          "-f lavfi -i color=size=16x16:rate=60 -t 600 -c:v libx264 -preset ultrafast" },
    };
    for (const Encoding &encoding : Encodings) {
        inputs += clip(encoding.what, encoding.suffix, [=](const HostilePackage &) {
            const ClipFolder clips;
            const QByteArray bytes = ClipFolder::read(
                    clips.make(name(encoding.suffix), QString::fromLatin1(encoding.arguments)));
            if (bytes.isEmpty())
                qFatal("ffmpeg could not make the clip");
            return bytes;
        });
    }
    for (const char *suffix : { "mp4", "mkv", "webm", "avi", "gif", "ogv", "mpg", "ts", "flv" }) {
        for (int damage = 0; damage < 6; ++damage) {
            inputs += clip(
                    "damage " + QByteArray::number(damage), suffix, [=](const HostilePackage &) {
                        const ClipFolder clips;
                        QByteArray bytes = ClipFolder::read(clips.make(
                                name(suffix),
                                QStringLiteral("-f lavfi -i testsrc=size=160x90:rate=25 -t 1")));
                        quint32 state = quint32(damage) + 1;
                        for (int i = 0; damage && i < 20 * damage && !bytes.isEmpty(); ++i) {
                            state = state * 1664525 + 1013904223;
                            bytes[int(state >> 8)
                                  % (damage % 2 ? qMin(600, int(bytes.size()))
                                                : int(bytes.size()))] = char(state >> 24);
                        }
                        return damage == 5 ? bytes.left(bytes.size() / 2) : bytes;
                    });
        }
        inputs += plain("zeros", suffix, [] { return QByteArray(3000000, '\0'); });
        inputs += plain("ones", suffix, [] { return QByteArray(3000000, '\xff'); });
    }
    inputs += plain("streams", "ts", manyStreams);
}

} // namespace

QList<HostileInput> hostileClips()
{
    QList<HostileInput> inputs;
    addPlaylists(inputs);
    addTables(inputs);
    addEncoded(inputs);
    return inputs;
}
