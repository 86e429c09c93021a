// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "ClipPictures.h"
#include "HVLimits.h"
#include "HVResidentMemory.h"
#include "MatroskaBytes.h"
#include "MovieBytes.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QElapsedTimer>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace ClipPictures;
using namespace Hovlets;
using namespace MovieBytes;

namespace {

const QByteArray NoMedia = "Could not open media at: %1";

/// The most memory that the process has held so far, in bytes.
qint64 peakMemory()
{
    rusage usage = {};
    ::getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024;
}

int openFiles()
{
    return int(
            QDir(text("/proc/self/fd")).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size());
}

} // namespace

/// Tests files that would make FFmpeg open others, wait forever or run out of memory.
class tst_HVClipHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }
    void cleanup() { HVLimits::setCurrent({}); }

    void shouldRefuseFilesThatNameOtherFiles_data();
    void shouldRefuseFilesThatNameOtherFiles();
    void shouldRefuseIrregularFiles_data();
    void shouldRefuseIrregularFiles();
    void shouldOpenALinkToAClip();
    void shouldRefuseTablesThatDeclareTooMuch_data();
    void shouldRefuseTablesThatDeclareTooMuch();
    void shouldOpenOrdinaryTables_data();
    void shouldOpenOrdinaryTables();
    void shouldCountSamplesOverAllTracks();
    void shouldStopReadingAHeaderThatFillsTheMemory();
    void shouldStopOpeningWhenTheTimeIsUp();
    void shouldSurviveDamage_data();
    void shouldSurviveDamage();

private:
    QString clip() const
    {
        return m_clips.clip(text("clip.mp4"), text("64x48"), text("-c:v mpeg4"));
    }

    ClipFolder m_clips;
};

void tst_HVClipHostile::shouldRefuseFilesThatNameOtherFiles_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray clipPath = QFile::encodeName(clip());
    const auto path = [this](const char *name) {
        return QFile::encodeName(m_clips.filePath(text(name)));
    };
    QCOMPARE(::mkfifo(path("fifo.ts").constData(), 0600), 0);

    const auto add = [](const char *row, const char *name, const QByteArray &bytes) {
        QTest::newRow(row) << text(name) << bytes;
    };
    const QByteArray playlist = "#EXTM3U\n#EXT-X-TARGETDURATION:9\n#EXTINF:9,\n";
    const QByteArray playlistEnd = "\n#EXT-X-ENDLIST\n";
    add("playlist that names itself", "self.m3u8", playlist + "self.m3u8\n");
    add("master playlist that names itself", "master.m3u8",
        "#EXTM3U\n#EXT-X-STREAM-INF:BANDWIDTH=1\nmaster.m3u8\n");
    add("playlist that names a fifo", "fifo.m3u8", playlist + path("fifo.ts") + playlistEnd);
    add("playlist that names a clip", "list.m3u8", playlist + clipPath + playlistEnd);
    add("playlist that calls itself a clip", "list.mp4", playlist + clipPath + playlistEnd);
    add("list that names itself", "self.ffconcat", "ffconcat version 1.0\nfile self.ffconcat\n");
    add("list that names a clip", "list.ffconcat", "ffconcat version 1.0\nfile clip.mp4\n");
    add("manifest", "manifest.mpd",
        "<?xml version='1.0'?><MPD xmlns='urn:mpeg:dash:schema:mpd:2011' type='static' "
        "profiles='urn:mpeg:dash:profile:isoff-main:2011' mediaPresentationDuration='PT1S'>"
        "<Period><AdaptationSet contentType='video'><Representation id='1' bandwidth='1' "
        "mimeType='video/mp4'><BaseURL>clip.mp4</BaseURL></Representation></AdaptationSet>"
        "</Period></MPD>");
    add("session description", "session.sdp",
        "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=-\nc=IN IP4 127.0.0.1\nt=0 0\n"
        "m=video 49170 RTP/AVP 26\n");
    add("pattern of pictures", "%d.png", "no picture");
    add("script", "script.avs", "ColorBars()\n");
    add("drawing", "drawing.svg", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
}

void tst_HVClipHostile::shouldRefuseFilesThatNameOtherFiles()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    const QString path = m_clips.write(name, bytes);
    const int before = openFiles();
    QCOMPARE(QByteArray(newClip()->open(path)), NoMedia);
    QCOMPARE(openFiles(), before);
}

void tst_HVClipHostile::shouldRefuseIrregularFiles_data()
{
    QTest::addColumn<QString>("path");
    const QString fifo = m_clips.filePath(text("clip.fifo"));
    QCOMPARE(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    QTest::newRow("fifo") << fifo;
    QTest::newRow("device without an end") << text("/dev/zero");
    QTest::newRow("folder") << m_clips.filePath(QString());
    const QString link = m_clips.filePath(text("link.fifo"));
    QVERIFY(QFile::link(fifo, link));
    QTest::newRow("link to a fifo") << link;
    QTest::newRow("protocol") << text("file:") + clip();
    QTest::newRow("device of FFmpeg") << text("lavfi:testsrc");
    QTest::newRow("standard input") << text("pipe:0");
}

void tst_HVClipHostile::shouldRefuseIrregularFiles()
{
    QFETCH(QString, path);
    QCOMPARE(QByteArray(newClip()->open(path)), NoMedia);
}

void tst_HVClipHostile::shouldOpenALinkToAClip()
{
    const QString link = m_clips.filePath(text("link.mp4"));
    QVERIFY(QFile::link(clip(), link));
    QCOMPARE(newClip()->open(link), nullptr);
}

void tst_HVClipHostile::shouldRefuseTablesThatDeclareTooMuch_data()
{
    QTest::addColumn<QByteArray>("bytes");
    constexpr quint32 Many = 8000000;
    Tables sizes(equalSizes(Many));
    QTest::newRow("samples") << movie(track(sizes));
    QTest::newRow("samples of six tracks") << movie(track(sizes).repeated(6));
    QTest::newRow("more samples than 31 bits hold") << movie(track(Tables(equalSizes(0xf0000000))));

    QByteArray aside = movie(track(sizes));
    QTest::newRow("header set aside") << aside.replace("moov", "free");
    QTest::newRow("compressed header") << box("mdat", QByteArray(64, '\0'))
                    + box("moov",
                          box("cmov",
                              box("dcom", "zlib") + box("cmvd", qCompress(header(track(sizes))))));
    Tables hidden(equalSizes(1));
    hidden.format = description(equalSizes(Many));
    hidden.sizes = QByteArray();
    QTest::newRow("tables after a description") << movie(track(hidden));

    Tables edits(equalSizes(10000));
    edits.times = box("stts", numbers({ 0, 1, 10000, 512 }));
    edits.edits = box(
            "edts",
            box("elst", number(0) + number(1000) + numbers({ 400000, 0, 0x10000 }).repeated(1000)));
    QTest::newRow("edits") << movie(track(edits));

    Tables offsets(equalSizes(4));
    offsets.more = box("ctts", numbers({ 0, 1, 0x7fffffff, 1 }));
    QTest::newRow("offsets in time") << movie(track(offsets));
    Tables groups(equalSizes(4));
    groups.more = box("sbgp", numbers({ 0, 0x73796e63, 1, 0x7fffffff, 1 }));
    QTest::newRow("groups") << movie(track(groups));

    Tables sound(equalSizes(0xffffff00));
    sound.handler = "soun";
    sound.times = box("stts", numbers({ 0, 1, 1, 1 }));
    QTest::newRow("pieces of sound") << movie(track(sound));
    sound.times = box("stts", numbers({ 0, 1, 1, 1 })).repeated(2);
    sound.samplesPerChunk = 1;
    QTest::newRow("samples of sound") << movie(track(sound));

    const QByteArray fragment =
            box("traf", box("tfhd", numbers({ 0x20000, 1 })) + box("trun", numbers({ 0, Many })));
    QTest::newRow("fragment") << box("ftyp", "isom")
                    + header(track(Tables(equalSizes(0)))
                             + box("mvex", box("trex", numbers({ 0, 1, 1, 512, 10, 0 }))))
                    + box("moof", box("mfhd", numbers({ 0, 1 })) + fragment)
                    + box("mdat", QByteArray(64, '\0'));
}

void tst_HVClipHostile::shouldRefuseTablesThatDeclareTooMuch()
{
    QFETCH(QByteArray, bytes);
    QVERIFY(bytes.size() < 20000);
    const QString path = m_clips.write(text("tables.mp4"), bytes);
    const qint64 before = residentMemory();
    QCOMPARE(QByteArray(newClip()->open(path)), NoMedia);
    QVERIFY2(peakMemory() - before < (qint64(64) << 20), "it took more than 64 MB");
}

void tst_HVClipHostile::shouldOpenOrdinaryTables_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::newRow("fragments") << text("fragments.mp4")
                               << text("-c:v mpeg4 -g 2 -movflags frag_keyframe+empty_moov");
    QTest::newRow("reordered frames")
            << text("reordered.mp4") << text("-c:v libx264 -bf 3 -pix_fmt yuv420p");
    QTest::newRow("header first") << text("first.mov")
                                  << text("-c:v mjpeg -pix_fmt yuvj420p -movflags faststart");
    QTest::newRow("minutes of uncompressed sound")
            << text("sound.mov")
            << text("-f lavfi -i anullsrc=r=48000 -t 300 -map 0 -map 1 -c:v mjpeg -pix_fmt "
                    "yuvj420p "
                    "-c:a pcm_s16le");
}

void tst_HVClipHostile::shouldOpenOrdinaryTables()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    const auto opened = newClip();
    QCOMPARE(opened->open(m_clips.clip(name, text("64x48"), options)), nullptr);
    QVERIFY(!opened->nextFrame().isNull());
}

void tst_HVClipHostile::shouldCountSamplesOverAllTracks()
{
    HVLimits limits;
    limits.clipSamples = 9;
    HVLimits::setCurrent(limits);
    QCOMPARE(QByteArray(newClip()->open(clip())), NoMedia);
    limits.clipSamples = 10; // as many frames as the clip has
    HVLimits::setCurrent(limits);
    QCOMPARE(newClip()->open(clip()), nullptr);
}

void tst_HVClipHostile::shouldStopReadingAHeaderThatFillsTheMemory()
{
    // A track takes more than a kilobyte of memory, but only two bytes of the file.
    const QString path = m_clips.write(text("tracks.mkv"),
                                       MatroskaBytes::matroska(MatroskaBytes::tracks(
                                               QByteArray("\xae\x80", 2).repeated(500000))));
    HVLimits limits;
    limits.clipProbeMemory = qint64(32) << 20;
    HVLimits::setCurrent(limits);
    const qint64 before = residentMemory();
    QCOMPARE(QByteArray(newClip()->open(path)), NoMedia);
#ifdef __SANITIZE_ADDRESS__
    constexpr qint64 Most = qint64(512) << 20; // sanitizers keep freed memory for a while
#else
    constexpr qint64 Most = qint64(128) << 20;
#endif
    QVERIFY2(peakMemory() - before < Most, qPrintable(QString::number(peakMemory() - before)));
}

void tst_HVClipHostile::shouldStopOpeningWhenTheTimeIsUp()
{
    HVLimits limits;
    limits.clipProbeTime = 0;
    HVLimits::setCurrent(limits);
    QCOMPARE(QByteArray(newClip()->open(clip())), NoMedia);
}

void tst_HVClipHostile::shouldSurviveDamage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::newRow("H.264 in MP4") << text("damage.mp4") << text("-c:v libx264 -pix_fmt yuv420p");
    QTest::newRow("VP9 in WebM") << text("damage.webm")
                                 << text("-c:v libvpx-vp9 -deadline realtime -cpu-used 8");
    QTest::newRow("MPEG-4 in AVI") << text("damage.avi") << text("-c:v mpeg4");
    QTest::newRow("GIF") << text("damage.gif") << text("");
}

void tst_HVClipHostile::shouldSurviveDamage()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    const QByteArray whole = ClipFolder::read(m_clips.clip(name, text("64x48"), options));
    QVERIFY(!whole.isEmpty());
    quint32 random = 1;
    const auto next = [&random] { return random = random * 1664525 + 1013904223; };
    for (int i = 0; i < 30; ++i) {
        QByteArray bytes = whole.left(int(next() % quint32(whole.size())));
        if (i % 2 == 0)
            bytes = whole;
        for (int k = 0; k < 1 + i && !bytes.isEmpty(); ++k)
            bytes[int(next() % quint32(bytes.size()))] = char(next() >> 24);
        const auto opened = newClip();
        if (opened->open(m_clips.write(text("damaged-") + name, bytes)))
            continue;
        QVERIFY(opened->frameRate() > 0.0 && opened->duration() >= 0.0);
        for (int frames = 0; frames < 100 && !opened->nextFrame().isNull(); ++frames) { }
    }
}

HOVLETS_TEST_MAIN(tst_HVClipHostile)

#include "tst_hvclip_hostile.moc"
