// SPDX-License-Identifier: Apache-2.0
#include "HVVideoFrame.h"
#include "HVVideoFrameCache.h"
#include "TestMain.h"

#include <limits>
#include <type_traits>

using namespace Hovlets;

static_assert(std::is_base_of_v<QImage, HVVideoFrame>);
static_assert(std::has_virtual_destructor_v<HVVideoFrame>);
static_assert(std::is_base_of_v<QObject, HVVideoFrameCache>);

namespace {

HVVideoFrame frameOf(int width, double pts)
{
    HVVideoFrame frame(width, 2, QImage::Format_RGB32, 0);
    frame.fill(Qt::red);
    frame.setPts(pts);
    return frame;
}

} // namespace

/// Tests the frame, and the cache that holds a clip's frames.
class tst_HVVideoFrame : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldStartAsANullFrameAtTimeZero()
    {
        const HVVideoFrame frame;
        QVERIFY(frame.isNull());
        QCOMPARE(frame.pts(), 0.0);
    }

    void shouldReadItsTimeAsAnUnsignedNumber_data()
    {
        QTest::addColumn<quint64>("number");
        QTest::addColumn<double>("pts");
        QTest::newRow("none") << quint64(0) << 0.0;
        QTest::newRow("small") << quint64(7) << 7.0;
        QTest::newRow("2^63") << (quint64(1) << 63) << 9223372036854775808.0;
        QTest::newRow("all bits") << std::numeric_limits<quint64>::max() << 18446744073709551616.0;
    }

    void shouldReadItsTimeAsAnUnsignedNumber()
    {
        QFETCH(quint64, number);
        QFETCH(double, pts);
        const QImage image(4, 3, QImage::Format_ARGB32);

        const HVVideoFrame copied(image, number);
        QCOMPARE(copied.pts(), pts);
        QCOMPARE(copied.size(), QSize(4, 3));
        QCOMPARE(copied.format(), QImage::Format_ARGB32);
        QCOMPARE(copied.constBits(), image.constBits()); // shared

        const HVVideoFrame made(5, 6, QImage::Format_RGB32, number);
        QCOMPARE(made.pts(), pts);
        QCOMPARE(made.size(), QSize(5, 6));
        QCOMPARE(made.format(), QImage::Format_RGB32);
    }

    void shouldChangeOnlyItsTime()
    {
        HVVideoFrame frame = frameOf(3, 0.0);
        frame.setPts(1.25);
        QCOMPARE(frame.pts(), 1.25);
        QCOMPARE(frame.size(), QSize(3, 2));
    }

    void shouldCopyPictureAndTime()
    {
        const HVVideoFrame frame = frameOf(3, 0.75);
        // NOLINTNEXTLINE(performance-unnecessary-copy-initialization): the copy is what is tested
        const HVVideoFrame copy(frame);
        HVVideoFrame assigned = frameOf(9, 4.0);
        assigned = frame;
        for (const HVVideoFrame &other : { copy, assigned }) {
            QCOMPARE(other.pts(), 0.75);
            QCOMPARE(other.constBits(), frame.constBits());
        }
    }

    void shouldNotChangeTheFrameWhenACopyIsModified()
    {
        const HVVideoFrame frame = frameOf(3, 0.75);
        HVVideoFrame copy(frame);
        copy.fill(Qt::green);
        QCOMPARE(frame.pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(copy.pixelColor(0, 0), QColor(Qt::green));
    }

    void shouldBeEmptyAtFirst()
    {
        HVVideoFrameCache cache(QStringLiteral("file:///clip.mp4"));
        QCOMPARE(cache.length(), quint64(0));
#ifdef QT_NO_DEBUG // a debug build asserts
        QVERIFY(cache.frame(0).isNull());
#endif
    }

    void shouldStoreEveryFrameInOrder()
    {
        constexpr int Count = 3000;
        HVVideoFrameCache cache(QStringLiteral("clip"));
        for (int i = 0; i < Count; ++i) {
            cache.addFrame(frameOf(i % 7 + 1, i / 25.0));
            QCOMPARE(cache.length(), quint64(i) + 1);
        }
        for (int i = 0; i < Count; ++i) {
            const HVVideoFrame frame = cache.frame(quint64(i));
            QCOMPARE(frame.width(), i % 7 + 1);
            QCOMPARE(frame.pts(), i / 25.0);
        }
    }

    void shouldReturnANullFramePastTheLast_data()
    {
        QTest::addColumn<quint64>("index");
        QTest::newRow("next") << quint64(2);
        QTest::newRow("beyond 32 bits") << (quint64(1) << 32);
        QTest::newRow("beyond 63 bits") << (quint64(1) << 63);
        QTest::newRow("all bits") << std::numeric_limits<quint64>::max();
    }

    void shouldReturnANullFramePastTheLast()
    {
        QFETCH(quint64, index);
        HVVideoFrameCache cache(QStringLiteral("clip"));
        cache.addFrame(frameOf(3, 1.0));
        cache.addFrame(frameOf(4, 2.0));
        QCOMPARE(cache.frame(1).width(), 4);
        QVERIFY(cache.frame(index).isNull());
        QCOMPARE(cache.frame(index).pts(), 0.0);
    }

    void shouldKeepItsFramesWhenCopiesAreModified()
    {
        HVVideoFrameCache cache(QStringLiteral("clip"));
        HVVideoFrame given = frameOf(3, 0.5);
        cache.addFrame(given);
        given.scanLine(0)[0] = 0;
        given.setPts(9.0);

        HVVideoFrame taken = cache.frame(0);
        taken.fill(Qt::blue);
        taken.setPts(8.0);

        QCOMPARE(cache.frame(0).pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(cache.frame(0).pixelColor(2, 1), QColor(Qt::red));
        QCOMPARE(cache.frame(0).pts(), 0.5);
    }
};

HOVLETS_TEST_MAIN(tst_HVVideoFrame)

#include "tst_hvvideoframe.moc"
