// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "ClipPictures.h"
#include "TestMain.h"

#include <atomic>
#include <climits>
#include <cstdarg>

using namespace ClipPictures;
using namespace Hovlets;

namespace {

const QString Sound = QStringLiteral("-f lavfi -i sine=duration=0.4"); // makes it

const QString Square = QStringLiteral(
        "-f lavfi -i color=size=%1x8192:rate=25 -frames:v 1 -c:v ffv1 -pix_fmt gray");

/// Lets memory run out when a decoder logs a message, which it does even if nobody reads it.
class MemoryUntilLine
{
    Q_DISABLE_COPY_MOVE(MemoryUntilLine)

public:
    explicit MemoryUntilLine(int line)
    {
        s_left = line;
        av_log_set_callback(&MemoryUntilLine::count);
    }

    ~MemoryUntilLine()
    {
        av_log_set_callback(av_log_default_callback);
        av_max_alloc(INT_MAX);
    }

    bool hasRunOut() const { return s_left <= 0; }

private:
    static void count(void *, int, const char *, va_list)
    {
        if (--s_left == 0)
            av_max_alloc(64);
    }

    static inline std::atomic<int> s_left { 0 };
};

} // namespace

/// Tests what an opened clip reports about itself, and which files cannot be opened.
class tst_HVClipOpening : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }

    void shouldReportTheFramesPerSecond_data();
    void shouldReportTheFramesPerSecond();
    void shouldGiveAStillPictureAUsableRate();
    void shouldAverageAnAbsurdRate();
    void shouldReportItsTimes_data();
    void shouldReportItsTimes();
    void shouldReportWhyItCannotOpen_data();
    void shouldReportWhyItCannotOpen();
    void shouldOpenTheLargestPicture();
    void shouldFailToOpenWhenInterrupted();
    void shouldFailToOpenWithoutMemory();
    void shouldFailToOpenWithoutMemoryForAPicture();

private:
    QString withoutCodec() const;
    QString withoutFirstPicture() const;
    QString withoutPictures() const;

    ClipFolder m_clips;
};

void tst_HVClipOpening::shouldReportTheFramesPerSecond_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::addColumn<double>("rate");
    QTest::newRow("usual") << "rate.mp4"
                           << "-c:v mpeg4" << 25.0;
    QTest::newRow("NTSC") << "ntsc.mp4"
                          << "-r 30000/1001 -c:v mpeg4" << 30000.0 / 1001;
    QTest::newRow("slow") << "rate2.avi"
                          << "-r 2 -t 2 -c:v mpeg4" << 2.0;
    QTest::newRow("very slow") << "rate05.avi"
                               << "-r 0.5 -t 4 -c:v mjpeg" << 0.5;
    QTest::newRow("fast") << "rate60.mp4"
                          << "-r 60 -c:v mpeg4" << 60.0;
    QTest::newRow("fastest") << "rate240.mp4"
                             << "-r 240 -c:v mpeg4" << 240.0;
    QTest::newRow("raw") << "rate.h264"
                         << "-c:v libx264" << 25.0;
    QTest::newRow("absurd, without one") << "rate1000.mkv"
                                         << "-r 1000 -t 0.05 -c:v ffv1" << 25.0;
    QTest::newRow("absurd, with an absurd one")
            << "rate500.mov"
            << "-r 500 -c:v mjpeg -video_track_timescale 500" << 25.0;
}

void tst_HVClipOpening::shouldReportTheFramesPerSecond()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    QFETCH(double, rate);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(name, QStringLiteral("64x48"), options)), nullptr);
    QCOMPARE(clip->frameRate(), rate);
}

void tst_HVClipOpening::shouldGiveAStillPictureAUsableRate()
{
    // FFmpeg's rate of a single frame differs between versions: 10, or 100 with FFmpeg 7.
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(QStringLiteral("rate.gif"), QStringLiteral("64x48"),
                                     QStringLiteral("-frames:v 1"))),
             nullptr);
    QVERIFY2(clip->frameRate() >= 1.0 && clip->frameRate() <= 100.0,
             qPrintable(QString::number(clip->frameRate())));
}

void tst_HVClipOpening::shouldAverageAnAbsurdRate()
{
    // Two bursts of frames, a second apart: r_frame_rate is the tick rate of their clock.
    const QString path = m_clips.clip(
            QStringLiteral("burst.mov"), QStringLiteral("64x48"),
            QStringLiteral("-vf settb=1/1000,setpts=N*2+gt(N\\,5)*1000 -fps_mode passthrough "
                           "-enc_time_base 1/1000 -c:v mjpeg -video_track_timescale 1000"));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    QVERIFY2(clip->frameRate() > 5.0 && clip->frameRate() < 12.0,
             qPrintable(QString::number(clip->frameRate())));
}

void tst_HVClipOpening::shouldReportItsTimes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::addColumn<double>("duration");
    QTest::newRow("of the stream") << "times.mp4"
                                   << "-c:v mpeg4" << 0.4;
    QTest::newRow("only of the file") << "times.mkv"
                                      << "-c:v mpeg4" << 0.4;
    QTest::newRow("untold") << "times.h264"
                            << "-c:v libx264" << 0.0;
}

void tst_HVClipOpening::shouldReportItsTimes()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    QFETCH(double, duration);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(name, QStringLiteral("64x48"), options)), nullptr);
    QCOMPARE(clip->duration(), duration);
    QCOMPARE(clip->timeBase(), 0.04);
}

void tst_HVClipOpening::shouldReportWhyItCannotOpen_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("message");
    const QByteArray noMedia = "Could not open media at: %1";
    const QByteArray noStream = "Could not find a video stream in %1";
    const QByteArray noCodec = "Could not open codec for stream in: %1";
    const QByteArray noPicture = "Could not allocate rgb frame in %1";
    const QByteArray noConversion = "Could not get a swscale context for %1";

    QTest::newRow("no path") << QString() << noMedia;
    QTest::newRow("missing file") << m_clips.filePath(QStringLiteral("missing.mp4")) << noMedia;
    QTest::newRow("folder") << m_clips.filePath(QString()) << noMedia;
    QTest::newRow("empty file") << m_clips.write(QStringLiteral("empty.mp4"), {}) << noMedia;
    QTest::newRow("text") << m_clips.write(QStringLiteral("text.mp4"), "No clip at all.\n")
                          << noMedia;
    QTest::newRow("sound alone") << m_clips.make(QStringLiteral("sound.wav"), Sound) << noStream;
    QTest::newRow("music with a cover") << m_clips.make(
            QStringLiteral("cover.mp3"),
            Sound
                    + QStringLiteral(" -f lavfi -i testsrc=size=64x48:duration=0.04 "
                                     "-map 0 -map 1 -c:v mjpeg -pix_fmt yuvj420p "
                                     "-disposition:v attached_pic"))
                                        << noStream;
    QTest::newRow("unknown codec") << withoutCodec() << noStream;
    QTest::newRow("too large") << m_clips.make(QStringLiteral("large.mkv"), Square.arg(8194))
                               << noCodec;
    QTest::newRow("too large, which only its frames show")
            << m_clips.make(QStringLiteral("large.png"),
                            QStringLiteral("-f lavfi -i color=size=8194x8192 -frames:v 1 "
                                           "-pix_fmt monob"))
            << noPicture;
    QTest::newRow("too many streams")
            << m_clips.make(QStringLiteral("many.avi"),
                            QStringLiteral("-f lavfi -i color=size=16x16:duration=0.04 -c:v mjpeg")
                                    + QStringLiteral(" -map 0").repeated(65))
            << noMedia;
    QTest::newRow("no size") << withoutFirstPicture() << noPicture;
    QTest::newRow("no pixel format") << withoutPictures() << noConversion;
}

void tst_HVClipOpening::shouldReportWhyItCannotOpen()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    const char *answer = newClip()->open(path);
    QCOMPARE(QByteArray(answer), message);
}

/// A file with an unknown codec.
QString tst_HVClipOpening::withoutCodec() const
{
    QByteArray bytes = ClipFolder::read(m_clips.clip(
            QStringLiteral("codec.avi"), QStringLiteral("64x48"), QStringLiteral("-c:v mpeg4")));
    return m_clips.write(QStringLiteral("nocodec.avi"), bytes.replace("FMP4", "Q?#!"));
}

/// A stream that starts after the data that describes its size.
QString tst_HVClipOpening::withoutFirstPicture() const
{
    const QByteArray bytes =
            ClipFolder::read(m_clips.clip(QStringLiteral("headless.h264"), QStringLiteral("64x48"),
                                          QStringLiteral("-c:v libx264 -bf 0 -pix_fmt yuv420p")));
    const int slice = int(bytes.indexOf(QByteArray::fromHex("00000141")));
    return m_clips.write(QStringLiteral("nosize.h264"), bytes.mid(slice));
}

/// A file whose header declares the frame size, but whose frames are all zeros.
QString tst_HVClipOpening::withoutPictures() const
{
    QByteArray bytes =
            ClipFolder::read(m_clips.clip(QStringLiteral("zeros.mp4"), QStringLiteral("64x48"),
                                          QStringLiteral("-c:v libx264 -pix_fmt yuv420p")));
    const int begin = int(bytes.indexOf("mdat")) + 4;
    const int end = int(bytes.indexOf("moov")) - 4;
    return m_clips.write(QStringLiteral("nopictures.mp4"),
                         bytes.replace(begin, end - begin, QByteArray(end - begin, '\0')));
}

void tst_HVClipOpening::shouldOpenTheLargestPicture()
{
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.make(QStringLiteral("largest.mkv"), Square.arg(8192))), nullptr);
    QCOMPARE(clip->size(), QSize(8192, 8192));
}

void tst_HVClipOpening::shouldFailToOpenWhenInterrupted()
{
    HVClip clip([] { return true; });
    const char *message = clip.open(m_clips.clip(
            QStringLiteral("stop.avi"), QStringLiteral("64x48"), QStringLiteral("-c:v mjpeg")));
    QCOMPARE(QByteArray(message), QByteArray("Could not open media at: %1"));
}

void tst_HVClipOpening::shouldFailToOpenWithoutMemory()
{
    const QString path = m_clips.clip(QStringLiteral("open.ts"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v libx264 -pix_fmt yuv420p"));
    // Memory runs out at a later step of opening each time.
    QStringList messages;
    bool isOpen = false;
    for (int patience = 0; patience < 1000 && !isOpen; ++patience) {
        int questions = 0;
        HVClip clip([&questions, patience] {
            if (++questions > patience)
                av_max_alloc(64);
            return false;
        });
        const char *message = clip.open(path);
        av_max_alloc(INT_MAX);
        isOpen = message == nullptr;
        messages += QString::fromLatin1(message);
    }
    QVERIFY(isOpen);
    QVERIFY(messages.contains(QLatin1String("Could not open media at: %1")));
    QVERIFY(messages.contains(
            QLatin1String("Could not find any stream information in media at: %1")));
}

void tst_HVClipOpening::shouldFailToOpenWithoutMemoryForAPicture()
{
    // Some decoders log a message once they have allocated everything: utvideo with FFmpeg 5,
    // prores with FFmpeg 7.
    QStringList messages;
    for (const QString &codec : { QStringLiteral("utvideo"), QStringLiteral("prores") }) {
        const QString path = m_clips.clip(codec + QStringLiteral(".mkv"), QStringLiteral("64x48"),
                                          QStringLiteral("-c:v ") + codec);
        bool hasRunOut = true;
        for (int line = 1; line < 1000 && hasRunOut; ++line) {
            const MemoryUntilLine memory(line);
            messages += QString::fromLatin1(newClip()->open(path));
            hasRunOut = memory.hasRunOut();
        }
        QVERIFY(!hasRunOut);
        QCOMPARE(messages.constLast(), QString());
    }
    QVERIFY(messages.contains(QLatin1String("Could not allocate original frame in %1")));
}

HOVLETS_TEST_MAIN(tst_HVClipOpening)

#include "tst_hvclip_opening.moc"
