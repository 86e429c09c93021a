// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "HVClip.h"
#include "HVDecoderMemory.h"
#include "HVLimits.h"
#include "TestMain.h"
#include "Text.h"

#include <chrono>
#include <future>

using namespace Hovlets;

namespace {

constexpr int Width = 320;
constexpr int Height = 192;
constexpr int Frames = 30;
constexpr qint64 Pixels = qint64 { Width } * Height;
constexpr qint64 Picture = 4 * Pixels + HVFrameMemory::Overhead; // of a converted frame

void limitDecoder(qint64 bytes)
{
    HVLimits limits;
    limits.clipDecoderMemory = bytes;
    HVLimits::setCurrent(limits);
}

HVFrameMemory::Claim noClaim(qint64)
{
    return {};
}

} // namespace

/// Tests the memory that decoding a clip takes, before its frames are stored.
class tst_HVClipMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { av_log_set_level(AV_LOG_QUIET); }
    void cleanup()
    {
        HVLimits::setCurrent({});
        QCOMPARE(HVFrameMemory::used(), qint64(0));
    }

    void shouldDecodeAsManyFramesAsTheReferencesFit_data()
    {
        QTest::addColumn<int>("references");
        QTest::addColumn<bool>("fits");
        QTest::newRow("one reference") << 1 << true;
        QTest::newRow("as many as possible") << 16 << false;
    }

    void shouldDecodeAsManyFramesAsTheReferencesFit()
    {
        QFETCH(int, references);
        QFETCH(bool, fits);
        const QString path = clip(references);
        QCOMPARE(decode(path), Frames); // within the usual limit

        limitDecoder(16 * Pixels); // about ten frames
        HVClip opened([] { return false; });
        QCOMPARE(opened.open(path), nullptr);
        const int decoded = decode(opened);
        QCOMPARE(decoded == Frames, fits);
        QVERIFY(fits || decoded > 0);
        QCOMPARE(opened.isOutOfMemory(), !fits);
    }

    void shouldEndAClipBeforeAFrameThatDoesNotFit()
    {
        limitDecoder(Pixels); // a frame takes half as much again
        HVClip opened([] { return false; });
        QCOMPARE(opened.open(clip(1)), nullptr);
        QCOMPARE(opened.size(), QSize(Width, Height));
        QCOMPARE(decode(opened), 0);
        QVERIFY(opened.isOutOfMemory());
    }

    void shouldLimitTheSizeOfFramesThatItCannotCount()
    {
        const AVCodec *decoder = avcodec_find_decoder(AV_CODEC_ID_H264);
        AVCodec external = *decoder;
        external.capabilities &= ~AV_CODEC_CAP_DR1;
        HVDecoderMemory memory(12 * Pixels);
        QCOMPARE(memory.mostUncountedPixels(), Pixels);
        for (const bool isExternal : { false, true }) {
            const HVFfmpegPtr<AVCodecContext> codec(avcodec_alloc_context3(decoder));
            codec->max_pixels = 10 * Pixels;
            memory.attach(codec.get(), isExternal ? external : *decoder);
            QCOMPARE(codec->max_pixels, isExternal ? Pixels : 10 * Pixels);
        }
    }

    void shouldClaimMemoryBeforeAFrameIsConverted()
    {
        constexpr int Fit = 3;
        HVLimits limits;
        limits.clipMemory = Fit * Picture;
        HVLimits::setCurrent(limits);
        HVFrameMemory memory([] { return nullptr; });
        HVClip opened([] { return false; },
                      [&memory](qint64 bytes) { return memory.claim(bytes); });
        QCOMPARE(opened.open(clip(1)), nullptr);
        for (int i = 1; i <= Fit; ++i) {
            QVERIFY(!opened.nextFrame().isNull());
            memory.keep(opened.takeClaim());
            // The clip converts the next frame meanwhile, from the second one on.
            QCOMPARE(HVFrameMemory::used(), std::min(i == 1 ? 1 : i + 1, Fit) * Picture);
        }
        QVERIFY(opened.nextFrame().isNull());
        QVERIFY(opened.isOutOfMemory());
        QCOMPARE(HVFrameMemory::used(), Fit * Picture);
    }

    void shouldReturnTheMemoryOfFramesThatNobodyTook()
    {
        HVFrameMemory memory([] { return nullptr; });
        HVClip opened([] { return false; },
                      [&memory](qint64 bytes) { return memory.claim(bytes); });
        QCOMPARE(opened.open(clip(1)), nullptr);
        for (int i = 0; i < 3; ++i)
            QVERIFY(!opened.nextFrame().isNull());
        QCOMPARE(HVFrameMemory::used(), 2 * Picture); // returned, and being converted
    }

    void shouldConvertNoFrameWithoutMemory()
    {
        HVClip opened([] { return false; }, &noClaim);
        QCOMPARE(opened.open(clip(1)), nullptr);
        QVERIFY(opened.nextFrame().isNull());
        QVERIFY(opened.isOutOfMemory());
    }

    void shouldDecodeLargeFramesOfOneClipAtATime()
    {
        limitDecoder(4 * Pixels); // less than three frames
        const QString path = m_clips.clip(text("intra.avi"), text("320x192"),
                                          text("-c:v mjpeg -pix_fmt yuvj420p"));
        auto first = std::make_unique<HVClip>([] { return false; });
        QCOMPARE(first->open(path), nullptr);
        QVERIFY(!first->nextFrame().isNull());

        HVClip second([] { return false; });
        QCOMPARE(second.open(path), nullptr);
        auto decoding = std::async(std::launch::async, [&] { return second.nextFrame(); });
        QCOMPARE(decoding.wait_for(std::chrono::milliseconds(200)), std::future_status::timeout);
        first.reset();
        QVERIFY(!decoding.get().isNull());

        HVClip third([] { return false; });
        QCOMPARE(third.open(path), nullptr);
        QVERIFY(!third.nextFrame().isNull()); // although the second has not ended
    }

    void shouldUseFewerThreadsForLargeFrames_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::addColumn<int>("most");
        QTest::newRow("1080p") << QSize(1920, 1080) << 4;
        QTest::newRow("4K") << QSize(3840, 2160) << 2;
        QTest::newRow("two in 4K side by side") << QSize(8192, 2160) << 1;
        QTest::newRow("too large") << QSize(20000, 20000) << 1;
        QTest::newRow("unknown") << QSize() << 4;
    }

    void shouldUseFewerThreadsForLargeFrames()
    {
        QFETCH(QSize, size);
        QFETCH(int, most);
        const AVCodec *decoder = avcodec_find_decoder(AV_CODEC_ID_H264);
        QVERIFY(decoder);
        const HVFfmpegPtr<AVCodecContext> codec(avcodec_alloc_context3(decoder));
        codec->width = size.width();
        codec->height = size.height();
        codec->pix_fmt = AV_PIX_FMT_YUV420P;
        HVDecoderMemory memory(HVLimits().clipDecoderMemory);
        memory.attach(codec.get(), *decoder);
        QCOMPARE(codec->thread_count, std::min(most, std::max(QThread::idealThreadCount(), 1)));
    }

private:
    QString clip(int references) const
    {
        return m_clips.make(text("references-%1.mkv").arg(references),
                            text("-f lavfi -i testsrc2=size=%1x%2:rate=25 -frames:v %3 -c:v "
                                 "libx264 -pix_fmt yuv420p -bf 3 -refs %4")
                                    .arg(Width)
                                    .arg(Height)
                                    .arg(Frames)
                                    .arg(references));
    }

    static int decode(HVClip &opened)
    {
        int frames = 0;
        while (!opened.nextFrame().isNull())
            ++frames;
        return frames;
    }

    static int decode(const QString &path)
    {
        HVClip opened([] { return false; });
        return opened.open(path) ? -1 : decode(opened);
    }

    ClipFolder m_clips;
};

HOVLETS_TEST_MAIN(tst_HVClipMemory)
#include "tst_hvclip_memory.moc"
