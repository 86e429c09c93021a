// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "ClipPictures.h"
#include "TestMain.h"

using namespace ClipPictures;
using namespace Hovlets;

/// Compares the decoded frames with those of the ffmpeg program.
class tst_HVClip : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }

    void shouldDecodeTheSameFramesAsTheProgram_data();
    void shouldDecodeTheSameFramesAsTheProgram();
    void shouldScaleToTheFirstSizeOfTheStream_data();
    void shouldScaleToTheFirstSizeOfTheStream();
    void shouldSkipDamagedFrames_data();
    void shouldSkipDamagedFrames();
    void shouldEndATruncatedFileWhereItEnds();

private:
    void compare(const QString &path);
    void compareCount(const QString &path);

    ClipFolder m_clips;
};

void tst_HVClip::shouldDecodeTheSameFramesAsTheProgram_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("geometry");
    QTest::addColumn<QString>("options");
    QTest::addColumn<int>("count"); // 0: as many as the program finds

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
        "-vf select=not(mod(n\\,3))+lt(n\\,5) -fps_mode vfr -c:v libx264 -pix_fmt yuv420p", 0);
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

void tst_HVClip::shouldDecodeTheSameFramesAsTheProgram()
{
    QFETCH(QString, name);
    QFETCH(QString, geometry);
    QFETCH(QString, options);
    QFETCH(int, count);
    // The options may add an input, which comes after the one with the frames.
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

/// Fails unless the clip's frames equal the program's, with every pixel opaque.
void tst_HVClip::compare(const QString &path)
{
    const QByteArray should = ClipFolder::pictures(path);
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    const qint64 bytes = 4LL * clip->size().width() * clip->size().height();
    int index = 0;
    for (QImage image = clip->nextFrame(); !image.isNull(); image = clip->nextFrame()) {
        QCOMPARE(image.format(), QImage::Format_RGB32);
        QCOMPARE(image.size(), clip->size());
        const QString wrong = difference(packed(image), opaque(should.mid(index * bytes, bytes)));
        QVERIFY2(wrong.isEmpty(),
                 qPrintable(QStringLiteral("picture %1: %2").arg(index).arg(wrong)));
        ++index;
    }
    QCOMPARE(index * bytes, qint64(should.size()));
    QVERIFY(index > 0);
    QVERIFY(clip->nextFrame().isNull()); // it remains at the end
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

void tst_HVClip::shouldSkipDamagedFrames_data()
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

void tst_HVClip::shouldSkipDamagedFrames()
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

/// For clips with damaged frames at the end, which a decoder may decode differently each time.
void tst_HVClip::compareCount(const QString &path)
{
    constexpr int Size = 176 * 144 * 4;
    const QByteArray should = opaque(ClipFolder::pictures(path));
    const auto clip = newClip();
    QCOMPARE(clip->open(path), nullptr);
    QCOMPARE(difference(packed(clip->nextFrame()), should.left(Size)), QString());
    int count = 1;
    while (!clip->nextFrame().isNull())
        ++count;
    QCOMPARE(count, int(should.size()) / Size);
}

HOVLETS_TEST_MAIN(tst_HVClip)

#include "tst_hvclip.moc"
