// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "ClipPictures.h"
#include "HVLimits.h"
#include "MatroskaBytes.h"
#include "MemoryPeak.h"
#include "TestMain.h"
#include "Text.h"

using namespace ClipPictures;
using namespace Hovlets;
using namespace MatroskaBytes;

namespace {

const QByteArray NoMedia = "Could not open media at: %1";

/// Compressed data that takes a thousand times its size.
QByteArray inflating()
{
    return qCompress(QByteArray(28 << 20, '\0'), 9).mid(4); // without Qt's own length
}

QByteArray file(const QByteArray &tracksAndMore)
{
    return matroska(information() + tracksAndMore + cluster(QByteArray(100, '\0')));
}

/// A part of the segment with a file of \a size bytes.
QByteArray attachment(int size)
{
    const QByteArray description = element("466E", "x.ttf")
            + element("4660", "application/x-truetype-font") + number("46AE", 1);
    return element("1941A469",
                   element("61A7", description + element("465C", QByteArray(size, 'x'))));
}

/// An entry of the list of a segment's parts: the tracks are \a position bytes into the segment.
QByteArray listOfParts(int position)
{
    return element("114D9B74",
                   element("4DBB",
                           element("53AB", QByteArray::fromHex("1654AE6B"))
                                   + element("53AC", QByteArray(1, char(position)))));
}

} // namespace

/// Tests Matroska files that would take far more memory than their bytes.
class tst_HVClipMatroska : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }
    void cleanup() { HVLimits::setCurrent({}); }

    void shouldRefuseFilesThatTakeMuchMemory_data();
    void shouldRefuseFilesThatTakeMuchMemory();
    void shouldOpenOrdinaryTracks_data();
    void shouldOpenOrdinaryTracks();
    void shouldAcceptEncodingsThatDoNotInflate_data();
    void shouldAcceptEncodingsThatDoNotInflate();

private:
    ClipFolder m_clips;
};

void tst_HVClipMatroska::shouldRefuseFilesThatTakeMuchMemory_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray large = codecPrivate(inflating());
    const QByteArray inflate = encoding(scope(2) + compression(0));
    QTest::newRow("private data") << file(
            tracks(track(1, large + inflate) + track(2, large + inflate)));
    QTest::newRow("the compression that none named means")
            << file(tracks(track(1, large + encoding(scope(2)))));
    QTest::newRow("frames") << file(tracks(track(1, encoding(compression(0)))));
    QTest::newRow("frames, encrypted as well")
            << file(tracks(track(1, encoding(number("5033", 1) + number("5033", 0)))));
    QTest::newRow("another algorithm") << file(tracks(track(1, encoding(compression(2)))));
    QTest::newRow("many bytes before each frame")
            << file(tracks(track(1, encoding(compression(3, QByteArray(5000, 'x'))))));
    QTest::newRow("tracks that look like an entry in the list of parts") << file(
            element("EC", QByteArray::fromHex("53AB84")) + tracks(track(1, large + inflate)));
    const QByteArray bad = tracks(track(1, large + inflate));
    QTest::newRow("tracks after damage") << file(QByteArray::fromHex("0001020304") + bad);
    QTest::newRow("tracks inside something else") << matroska(
            listOfParts(56) + element("EC", bad) + information() + cluster(QByteArray(100, '\0')));
    QTest::newRow("tracks with damage at their end")
            << file(tracks(track(1, large + inflate) + QByteArray::fromHex("00")));
    QTest::newRow("much private data")
            << file(tracks(track(1, codecPrivate(QByteArray(20 << 20, 'x')))));
    QTest::newRow("a large attachment") << file(tracks(track(1)) + attachment(20 << 20));
    QTest::newRow("many attachments") << file(tracks(track(1)) + attachment(1 << 20).repeated(20));
}

void tst_HVClipMatroska::shouldRefuseFilesThatTakeMuchMemory()
{
    QFETCH(QByteArray, bytes);
    const QString path = m_clips.write(text("tracks.mkv"), bytes);
    const MemoryPeak peak;
    QCOMPARE(QByteArray(newClip()->open(path)), NoMedia);
#ifdef __SANITIZE_ADDRESS__
    constexpr qint64 Most = 32 << 20; // it keeps what was freed, which is at most the file
#else
    constexpr qint64 Most = 16 << 20;
#endif
    QVERIFY2(peak.bytes() < Most, qPrintable(QString::number(peak.bytes())));
}

void tst_HVClipMatroska::shouldOpenOrdinaryTracks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::newRow("Matroska") << text("clip.mkv") << text("-c:v mpeg4");
    QTest::newRow("WebM") << text("clip.webm")
                          << text("-c:v libvpx-vp9 -deadline realtime -cpu-used 8");
}

void tst_HVClipMatroska::shouldOpenOrdinaryTracks()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    const auto opened = newClip();
    QCOMPARE(opened->open(m_clips.clip(name, text("64x48"), options)), nullptr);
    QVERIFY(!opened->nextFrame().isNull());
}

/// These have no frame that can be decoded, but FFmpeg opens the file.
void tst_HVClipMatroska::shouldAcceptEncodingsThatDoNotInflate_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << file(tracks(track(1)));
    QTest::newRow("none, with an attachment") << file(tracks(track(1)) + attachment(100));
    QTest::newRow("the first bytes of all frames removed")
            << file(tracks(track(1, encoding(compression(3, QByteArray(4, 'x'))))));
    QTest::newRow("encryption") << file(tracks(track(1, encoding(number("5033", 1)))));
}

void tst_HVClipMatroska::shouldAcceptEncodingsThatDoNotInflate()
{
    QFETCH(QByteArray, bytes);
    const QByteArray message = newClip()->open(m_clips.write(text("tracks.mkv"), bytes));
    QVERIFY2(message != NoMedia, message.constData());
}

HOVLETS_TEST_MAIN(tst_HVClipMatroska)

#include "tst_hvclip_matroska.moc"
