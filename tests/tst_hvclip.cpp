// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "HVClip.h"
#include "TestMain.h"

#include <QtCore/QtEndian>

#include <climits>
#include <memory>

using namespace Hovlets;

namespace {

const QString Sound = QStringLiteral("-f lavfi -i sine=duration=0.4"); // makes it
const QString Square = QStringLiteral(
        "-f lavfi -i color=size=%1x8192:rate=25 -frames:v 1 -c:v ffv1 -pix_fmt gray");

/// The rows of a 32-bit picture without their padding.
QByteArray packed(const QImage &image)
{
    QByteArray bytes;
    for (int y = 0; y < image.height(); ++y)
        bytes.append(reinterpret_cast<const char *>(image.constScanLine(y)), image.width() * 4);
    return bytes;
}

QByteArray opaque(QByteArray pixels)
{
    for (int i = 3; i < pixels.size(); i += 4)
        pixels[i] = char(0xFF);
    return pixels;
}

std::unique_ptr<HVClip> newClip()
{
    return std::make_unique<HVClip>([] { return false; });
}

/// Where the first difference is; empty for none.
QString difference(const QByteArray &is, const QByteArray &should)
{
    const auto size = std::min(is.size(), should.size());
    for (int i = 0; i < size; ++i) {
        if (is[i] != should[i])
            return QStringLiteral("byte %1 is %2 instead of %3")
                    .arg(i)
                    .arg(int(quint8(is[i])))
                    .arg(int(quint8(should[i])));
    }
    if (is.size() != should.size())
        return QStringLiteral("%1 bytes instead of %2").arg(is.size()).arg(should.size());
    return {};
}

} // namespace

/// What is decoded, against the ffmpeg program.
class tst_HVClip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }

    void shouldDecodeWhatTheProgramDecodes_data();
    void shouldDecodeWhatTheProgramDecodes();
    void shouldScaleToTheFirstSizeOfTheStream_data();
    void shouldScaleToTheFirstSizeOfTheStream();
    void shouldSkipWhatIsDamaged_data();
    void shouldSkipWhatIsDamaged();
    void shouldEndATruncatedFileWhereItEnds();
    void shouldTellThePicturesPerSecond_data();
    void shouldTellThePicturesPerSecond();
    void shouldAverageAnAbsurdRate();
    void shouldTellItsTimes_data();
    void shouldTellItsTimes();
    void shouldTellWhyItCannotOpen_data();
    void shouldTellWhyItCannotOpen();
    void shouldOpenTheLargestPicture();
    void shouldFailToOpenWhenInterrupted();
    void shouldFailToOpenWithoutMemory();
    void shouldStopDecodingWhenInterrupted();
    void shouldEndWhereThereIsNoMemory_data();
    void shouldEndWhereThereIsNoMemory();
    void shouldEndAStreamThatNeverYieldsAPicture();
    void shouldDecodeOnAfterASeek_data();
    void shouldDecodeOnAfterASeek();

private:
    void compare(const QString &path);
    void compareCount(const QString &path);
    QString withoutCodec() const;
    QString withoutFirstPicture() const;
    QString withoutPictures() const;

    ClipFolder m_clips;
};

void tst_HVClip::shouldDecodeWhatTheProgramDecodes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("geometry");
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("count"); // 0: what the program makes of it

    const auto add = [](const char *row, const char *name, const char *geometry,
                        const char *options, int count = 10) {
        QTest::newRow(row) << QString::fromLatin1(name) << QString::fromLatin1(geometry)
                           << QString::fromLatin1(options) << count;
    };
    add("H.264 with B-frames", "b.mp4", "176x144", "-c:v libx264 -bf 3 -pix_fmt yuv420p");
    add("H.264, open GOP", "gop.mkv", "64x48",
        "-c:v libx264 -bf 3 -g 4 -x264-params open-gop=1 -pix_fmt yuv420p");
    add("H.264, raw", "raw.h264", "64x48", "-c:v libx264 -bf 2 -pix_fmt yuv420p");
    add("H.265", "h265.mp4", "64x48", "-c:v libx265 -x265-params log-level=none");
    add("MPEG-4", "mpeg4.avi", "176x144", "-c:v mpeg4 -bf 2");
    add("MPEG-2, interlaced", "mpeg2.mpg", "176x144", "-c:v mpeg2video -flags +ilme+ildct -bf 2");
    add("VP9", "vp9.webm", "176x144", "-c:v libvpx-vp9 -deadline realtime -cpu-used 8");
    add("VP9, odd", "odd.webm", "333x187", "-c:v libvpx-vp9 -deadline realtime -cpu-used 8");
    add("MJPEG", "m.avi", "176x144", "-c:v mjpeg -pix_fmt yuvj420p");
    add("GIF", "g.gif", "176x144", "");
    add("APNG", "a.apng", "33x17", "-f apng");
    add("ProRes", "p.mov", "64x48", "-c:v prores_ks");
    add("333 x 187, 4:4:4", "o1.mp4", "333x187", "-c:v libx264 -pix_fmt yuv444p");
    add("333 x 187, 4:2:0", "o2.mkv", "333x187", "-c:v ffv1 -pix_fmt yuv420p");
    add("333 x 187, 4:2:2", "o3.mkv", "333x187", "-c:v ffv1 -pix_fmt yuv422p");
    add("333 x 187, 4:1:0", "o4.mkv", "333x187", "-c:v ffv1 -pix_fmt yuv410p");
    add("333 x 187, RGB", "o5.mov", "333x187", "-c:v png");
    add("1 x 1", "1.mkv", "1x1", "-c:v ffv1 -pix_fmt yuv444p");
    add("1 x 1, RGB", "1.mov", "1x1", "-c:v png");
    add("2 x 2", "2.mkv", "2x2", "-c:v ffv1 -pix_fmt yuv420p");
    add("17 x 9", "17.mkv", "17x9", "-c:v ffv1 -pix_fmt yuv420p");
    add("17 x 9, raw", "17.avi", "17x9", "-c:v rawvideo -pix_fmt bgr24");
    add("1 x 90", "1x90.mkv", "1x90", "-c:v ffv1 -pix_fmt yuv422p");
    add("BT.709", "709.mp4", "64x48",
        "-vf scale=out_color_matrix=bt709 -c:v libx264 -pix_fmt yuv420p -colorspace bt709");
    add("BT.2020", "2020.mkv", "64x48",
        "-vf scale=out_color_matrix=bt2020 -c:v libx264 -pix_fmt yuv420p10 -colorspace bt2020nc");
    add("full range", "full.mp4", "64x48",
        "-vf scale=out_range=full -c:v libx264 -pix_fmt yuv420p -color_range pc");
    add("BT.709, full range", "full709.mp4", "64x48",
        "-vf scale=out_color_matrix=bt709:out_range=full -c:v libx264 -pix_fmt yuv420p "
        "-color_range pc -colorspace bt709");
    add("2 a second", "slow.mp4", "64x48", "-vf fps=2 -c:v libx264 -pix_fmt yuv420p", 0);
    add("60 a second", "fast.mp4", "64x48", "-vf fps=60 -c:v libx264 -pix_fmt yuv420p", 24);
    add("variable rate", "vfr.mkv", "64x48",
        "-vf select=not(mod(n\\,3))+lt(n\\,5) -vsync vfr -c:v libx264 -pix_fmt yuv420p", 0);
    add("one picture", "one.mp4", "64x48", "-frames:v 1 -c:v libx264 -pix_fmt yuv420p", 1);
    add("one picture, still", "one.png", "64x48", "-frames:v 1", 1);
    add("alpha, YUV", "alpha.mkv", "65x47", "-vf format=yuva420p,geq=lum=p(X\\,Y):a=X*4 -c:v ffv1");
    add("alpha, RGB", "alpha.mov", "65x47", "-vf format=rgba,geq=r=p(X\\,Y):a=X*3 -c:v png");
    add("transparent GIF", "alpha.gif", "65x47", "-vf format=rgba,geq=r=200:g=Y:a=255*gt(X\\,9)");
    add("palette", "pal.mov", "65x47", "-pix_fmt pal8 -c:v png");
    add("10 bits", "10.mkv", "65x47", "-c:v ffv1 -pix_fmt yuv420p10");
    add("10 bits, H.264", "10.mp4", "64x48", "-c:v libx264 -pix_fmt yuv420p10");
    add("16 bits", "16.mkv", "65x47", "-c:v ffv1 -pix_fmt yuv444p16");
    add("16 bits, grey", "g16.mkv", "65x47", "-c:v ffv1 -pix_fmt gray16");
    add("10 bits, RGB", "rgb10.mkv", "65x47", "-c:v ffv1 -pix_fmt gbrp10");
    add("16 bits, RGB", "rgb48.mov", "65x47", "-c:v png -pix_fmt rgb48");
    add("16 bits, RGB with alpha", "rgb64.mov", "65x47", "-c:v png -pix_fmt rgba64");
    add("planar RGB", "gbr.mp4", "65x47", "-c:v libx264rgb -pix_fmt bgr24");
    add("unused fourth byte", "bgr0.mkv", "65x47", "-c:v ffv1 -pix_fmt bgr0");
    add("black and white", "mono.mov", "65x47", "-c:v png -pix_fmt monob");
    add("grey", "grey.mkv", "65x47", "-c:v ffv1 -pix_fmt gray");
    add("with sound", "sound.mp4", "64x48",
        "-f lavfi -i sine=duration=0.4 -c:v libx264 -pix_fmt yuv420p -c:a aac");
}

void tst_HVClip::shouldDecodeWhatTheProgramDecodes()
{
    QFETCH(QString, name);
    QFETCH(QString, geometry);
    QFETCH(QString, options);
    QFETCH(int, count);
    // The options may bring an input of their own: it comes behind the picture.
    const QString path = m_clips.clip(name, geometry, options);
    QVERIFY(!path.isEmpty());
    const QStringList size = geometry.split(QLatin1Char('x'));

    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    QCOMPARE(clip->size(), QSize(size[0].toInt(), size[1].toInt()));
    if (count > 0) {
        const int pictures = int(ClipFolder::pictures(path).size())
                / (clip->size().width() * clip->size().height() * 4);
        QCOMPARE(pictures, count);
    }
    compare(path);
}

/// Fails unless the clip's pictures are the program's, with every pixel opaque.
void tst_HVClip::compare(const QString &path)
{
    const QByteArray should = ClipFolder::pictures(path);
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    const int bytes = clip->size().width() * clip->size().height() * 4;
    int index = 0;
    for (QImage image = clip->nextPicture(); !image.isNull(); image = clip->nextPicture()) {
        QCOMPARE(image.format(), QImage::Format_RGB32);
        QCOMPARE(image.size(), clip->size());
        const QString wrong = difference(packed(image), opaque(should.mid(index * bytes, bytes)));
        QVERIFY2(wrong.isEmpty(),
                 qPrintable(QStringLiteral("picture %1: %2").arg(index).arg(wrong)));
        ++index;
    }
    QCOMPARE(index * bytes, int(should.size()));
    QVERIFY(index > 0);
    QVERIFY(clip->nextPicture().isNull()); // the end stays the end
}

void tst_HVClip::shouldScaleToTheFirstSizeOfTheStream_data()
{
    QTest::addColumn<QString>("second");
    QTest::addColumn<QString>("options");
    QTest::newRow("larger") << "160x120"
                            << "-c:v libx264 -pix_fmt yuv420p -bf 0";
    QTest::newRow("smaller") << "32x18"
                             << "-c:v libx264 -pix_fmt yuv420p -bf 0";
    QTest::newRow("other format") << "64x48"
                                  << "-c:v libx264 -pix_fmt yuv444p -bf 0";
}

void tst_HVClip::shouldScaleToTheFirstSizeOfTheStream()
{
    QFETCH(QString, second);
    QFETCH(QString, options);
    const QString row = QString::fromLatin1(QTest::currentDataTag());
    const QString first = m_clips.clip(QStringLiteral("first.ts"), QStringLiteral("64x48"),
                                       QStringLiteral("-c:v libx264 -pix_fmt yuv420p -bf 0"));
    const QString other = m_clips.clip(row + QLatin1String(".ts"), second, options);
    const QString path = m_clips.write(QStringLiteral("both.ts"),
                                       ClipFolder::read(first) + ClipFolder::read(other));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    QCOMPARE(clip->size(), QSize(64, 48));
    compare(path);
    QCOMPARE(ClipFolder::pictures(path).size(), 20 * 64 * 48 * 4);
}

void tst_HVClip::shouldSkipWhatIsDamaged_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::newRow("MJPEG") << "damaged.avi"
                           << "-c:v mjpeg -pix_fmt yuvj420p";
    QTest::newRow("H.264") << "damaged.ts"
                           << "-c:v libx264 -g 3 -pix_fmt yuv420p";
    QTest::newRow("MPEG-4") << "damaged4.avi"
                            << "-c:v mpeg4 -g 3";
    QTest::newRow("PNG") << "damaged.mov"
                         << "-c:v png";
    QTest::newRow("VP9") << "damaged.webm"
                         << "-c:v libvpx-vp9 -deadline realtime -cpu-used 8 -g 3";
}

void tst_HVClip::shouldSkipWhatIsDamaged()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    const QString whole =
            m_clips.clip(QLatin1String("whole-") + name, QStringLiteral("176x144"), options);
    QByteArray bytes = ClipFolder::read(whole);
    for (int i = int(bytes.size()) * 4 / 10; i < bytes.size() * 7 / 10; i += 37)
        bytes[i] = char(~bytes[i]);
    const QString path = m_clips.write(name, bytes);

    compareCount(path);
}

void tst_HVClip::shouldEndATruncatedFileWhereItEnds()
{
    const QString whole = m_clips.clip(QStringLiteral("whole.ts"), QStringLiteral("176x144"),
                                       QStringLiteral("-c:v libx264 -g 3 -pix_fmt yuv420p"));
    const QByteArray bytes = ClipFolder::read(whole);
    const QString path =
            m_clips.write(QStringLiteral("truncated.ts"), bytes.left(int(bytes.size()) / 2));
    compareCount(path);
    QVERIFY(ClipFolder::pictures(path).size() < ClipFolder::pictures(whole).size());
}

/// For clips whose last pictures are damaged: what a decoder makes of one may differ each time.
void tst_HVClip::compareCount(const QString &path)
{
    constexpr int Size = 176 * 144 * 4;
    const QByteArray should = opaque(ClipFolder::pictures(path));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    QCOMPARE(difference(packed(clip->nextPicture()), should.left(Size)), QString());
    int count = 1;
    while (!clip->nextPicture().isNull())
        ++count;
    QCOMPARE(count, int(should.size()) / Size);
}

void tst_HVClip::shouldTellThePicturesPerSecond_data()
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
    QTest::newRow("still picture") << "rate.gif"
                                   << "-frames:v 1" << 10.0;
    QTest::newRow("absurd, without one") << "rate1000.mkv"
                                         << "-r 1000 -t 0.05 -c:v ffv1" << 25.0;
    QTest::newRow("absurd, with an absurd one")
            << "rate500.mov"
            << "-r 500 -c:v mjpeg -video_track_timescale 500" << 25.0;
}

void tst_HVClip::shouldTellThePicturesPerSecond()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    QFETCH(double, rate);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(name, QStringLiteral("64x48"), options)), nullptr);
    QCOMPARE(clip->frameRate(), rate);
}

void tst_HVClip::shouldAverageAnAbsurdRate()
{
    // Two bursts a second apart: r_frame_rate tells the ticks of their clock.
    const QString path = m_clips.clip(
            QStringLiteral("burst.mov"), QStringLiteral("64x48"),
            QStringLiteral("-vf settb=1/1000,setpts=N*2+gt(N\\,5)*1000 -vsync passthrough "
                           "-enc_time_base 1/1000 -c:v mjpeg -video_track_timescale 1000"));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    QVERIFY2(clip->frameRate() > 5.0 && clip->frameRate() < 12.0,
             qPrintable(QString::number(clip->frameRate())));
}

void tst_HVClip::shouldTellItsTimes_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("options");
    QTest::addColumn<double>("duration");
    QTest::newRow("of the stream") << "times.mp4"
                                   << "-c:v mpeg4" << 0.4;
    QTest::newRow("of the file alone") << "times.mkv"
                                       << "-c:v mpeg4" << 0.4;
    QTest::newRow("untold") << "times.h264"
                            << "-c:v libx264" << 0.0;
}

void tst_HVClip::shouldTellItsTimes()
{
    QFETCH(QString, name);
    QFETCH(QString, options);
    QFETCH(double, duration);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(name, QStringLiteral("64x48"), options)), nullptr);
    QCOMPARE(clip->duration(), duration);
    QCOMPARE(clip->timeBase(), 0.04);
}

void tst_HVClip::shouldTellWhyItCannotOpen_data()
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
    QTest::newRow("too large, which its pictures alone tell")
            << m_clips.make(QStringLiteral("large.png"),
                            QStringLiteral("-f lavfi -i color=size=8194x8192 -frames:v 1 "
                                           "-pix_fmt monob"))
            << noPicture;
    QTest::newRow("too many streams")
            << m_clips.make(QStringLiteral("many.mkv"),
                            QStringLiteral("-f lavfi -i color=size=16x16:duration=0.04 -c:v ffv1")
                                    + QStringLiteral(" -map 0").repeated(65))
            << noMedia;
    QTest::newRow("no size") << withoutFirstPicture() << noPicture;
    QTest::newRow("no pixel format") << withoutPictures() << noConversion;
}

void tst_HVClip::shouldTellWhyItCannotOpen()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, message);
    const char *answer = newClip()->open(path);
    QCOMPARE(QByteArray(answer), message);
}

/// A file of a codec that nobody knows.
QString tst_HVClip::withoutCodec() const
{
    QByteArray bytes = ClipFolder::read(m_clips.clip(
            QStringLiteral("codec.avi"), QStringLiteral("64x48"), QStringLiteral("-c:v mpeg4")));
    return m_clips.write(QStringLiteral("nocodec.avi"), bytes.replace("FMP4", "Q?#!"));
}

/// A stream that begins behind what tells its size.
QString tst_HVClip::withoutFirstPicture() const
{
    const QByteArray bytes =
            ClipFolder::read(m_clips.clip(QStringLiteral("headless.h264"), QStringLiteral("64x48"),
                                          QStringLiteral("-c:v libx264 -bf 0 -pix_fmt yuv420p")));
    const int slice = int(bytes.indexOf(QByteArray::fromHex("00000141")));
    return m_clips.write(QStringLiteral("nosize.h264"), bytes.mid(slice));
}

/// A file whose header tells the size of pictures that are all zeros.
QString tst_HVClip::withoutPictures() const
{
    QByteArray bytes =
            ClipFolder::read(m_clips.clip(QStringLiteral("zeros.mp4"), QStringLiteral("64x48"),
                                          QStringLiteral("-c:v libx264 -pix_fmt yuv420p")));
    const int begin = int(bytes.indexOf("mdat")) + 4;
    const int end = int(bytes.indexOf("moov")) - 4;
    return m_clips.write(QStringLiteral("nopictures.mp4"),
                         bytes.replace(begin, end - begin, QByteArray(end - begin, '\0')));
}

void tst_HVClip::shouldOpenTheLargestPicture()
{
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.make(QStringLiteral("largest.mkv"), Square.arg(8192))), nullptr);
    QCOMPARE(clip->size(), QSize(8192, 8192));
}

void tst_HVClip::shouldFailToOpenWhenInterrupted()
{
    HVClip clip([] { return true; });
    const char *message = clip.open(m_clips.clip(
            QStringLiteral("stop.avi"), QStringLiteral("64x48"), QStringLiteral("-c:v mjpeg")));
    QCOMPARE(QByteArray(message), QByteArray("Could not open media at: %1"));
}

void tst_HVClip::shouldFailToOpenWithoutMemory()
{
    const QString path = m_clips.clip(QStringLiteral("open.ts"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v libx264 -pix_fmt yuv420p"));
    // Memory runs out at one step of the opening after the other.
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

void tst_HVClip::shouldStopDecodingWhenInterrupted()
{
    bool isInterrupted = false;
    HVClip clip([&isInterrupted] { return isInterrupted; });
    QCOMPARE(clip.open(m_clips.clip(QStringLiteral("stop.avi"), QStringLiteral("64x48"),
                                    QStringLiteral("-c:v mjpeg"))),
             nullptr);
    QVERIFY(!clip.nextPicture().isNull());
    isInterrupted = true;
    QVERIFY(clip.nextPicture().isNull());
    isInterrupted = false;
    QVERIFY(!clip.nextPicture().isNull());
}

void tst_HVClip::shouldEndWhereThereIsNoMemory_data()
{
    QTest::addColumn<int>("most"); // bytes
    QTest::newRow("for a picture") << 250000; // a decoded one takes 230400, ours 307200
    QTest::newRow("to decode") << 100000;
}

void tst_HVClip::shouldEndWhereThereIsNoMemory()
{
    QFETCH(int, most);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.clip(QStringLiteral("memory.mov"), QStringLiteral("320x240"),
                                     QStringLiteral("-c:v qtrle -g 1 -pix_fmt rgb24"))),
             nullptr);
    av_max_alloc(size_t(most));
    const QImage picture = clip->nextPicture();
    av_max_alloc(INT_MAX);
    QVERIFY(picture.isNull());
    // It did not read on.
    int left = 0;
    while (!clip->nextPicture().isNull())
        ++left;
    QVERIFY2(left >= 4, qPrintable(QString::number(left)));
}

void tst_HVClip::shouldEndAStreamThatNeverYieldsAPicture()
{
    QByteArray bytes = ClipFolder::read(
            m_clips.clip(QStringLiteral("never.ivf"), QStringLiteral("64x48"),
                         QStringLiteral("-c:v libvpx -deadline realtime -cpu-used 8")));
    constexpr int Header = 32; // bytes; then each packet, after 12 bytes that begin with its size
    int packets = 0;
    for (int at = Header; at + 12 < bytes.size(); ++packets) {
        const auto size = qFromLittleEndian<quint32>(bytes.constData() + at);
        bytes.replace(at + 12, int(size), QByteArray(int(size), '\x55'));
        at += 12 + int(size);
    }
    QCOMPARE(packets, 10);
    const auto clip = newClip();
    QCOMPARE(clip->open(m_clips.write(QStringLiteral("nothing.ivf"), bytes)), nullptr);
    QVERIFY(clip->nextPicture().isNull());
}

void tst_HVClip::shouldDecodeOnAfterASeek_data()
{
    QTest::addColumn<int>("before"); // pictures
    QTest::addColumn<double>("seconds");
    QTest::addColumn<bool>("backward");
    QTest::addColumn<int>("first");
    QTest::newRow("from the end to the start") << 20 << 0.0 << true << 0;
    QTest::newRow("from the end back") << 20 << 0.2 << true << 5;
    QTest::newRow("from the start on") << 1 << 0.28 << false << 7;
    QTest::newRow("in the middle back") << 6 << 0.08 << true << 2;
}

void tst_HVClip::shouldDecodeOnAfterASeek()
{
    QFETCH(int, before);
    QFETCH(double, seconds);
    QFETCH(bool, backward);
    QFETCH(int, first);
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    const QByteArray pictures = opaque(ClipFolder::pictures(path));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    for (int i = 0; i < before; ++i)
        clip->nextPicture();

    clip->seek(seconds, backward);
    constexpr int Size = 64 * 48 * 4;
    for (int i = first; i < 10; ++i) {
        const QString wrong = difference(packed(clip->nextPicture()), pictures.mid(i * Size, Size));
        QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
    }
    QVERIFY(clip->nextPicture().isNull());
}

HOVLETS_TEST_MAIN(tst_HVClip)

#include "tst_hvclip.moc"
