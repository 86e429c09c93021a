// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "DecodingSource.h"
#include "FakeVideoSource.h"
#include "HVFrameMemory.h"
#include "HVLimits.h"
#include "HVVideoController.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QScopeGuard>

#include <chrono>
#include <memory>

using namespace Hovlets;

namespace {

constexpr qint64 FrameSize = 64LL * 48 * 4 + HVFrameMemory::Overhead; // of the usual clip, in bytes
constexpr qint64 FrameCount = DecodedClips::Count;

void limitMemory(qint64 bytes)
{
    HVLimits limits;
    limits.clipMemory = bytes;
    HVLimits::setCurrent(limits);
}

} // namespace

/// Tests the memory that all clips share.
class tst_HVVideoMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_first = m_clips.usual();
        for (QString *path : { &m_second, &m_third }) {
            const QString name = text("%1.mp4").arg(quintptr(path));
            *path = m_clips.write(name, ClipFolder::read(m_first));
        }
    }

    void cleanup()
    {
        HVLimits::setCurrent({});
        QCOMPARE(HVFrameMemory::used(), qint64(0));
    }

    void shouldEndAClipThatDoesNotFitAndReportItOnce()
    {
        limitMemory(4 * FrameSize + 1);
        const DebugLog log;
        DecodingSource source;
        QVERIFY(source.decode(m_first));
        QCOMPARE(source.loadedFrameCount(), quint64(4));
        QCOMPARE(HVFrameMemory::used(), 4 * FrameSize);
        QCOMPARE(log.lines(),
                 QStringList(text("The clip ends after 4 frames, more do not fit into the memory "
                                  "for clips: ")
                             + m_first));
        QVERIFY(!source.isOpen());
    }

    void shouldCountWhatEachFrameTakesBesidesItsPixels()
    {
        // Raw frames of four pixels.
        const QString path = m_clips.make(
                text("tiny.mkv"),
                text("-f lavfi -i color=size=2x2:rate=25:duration=40 -c:v rawvideo -pix_fmt gray"));
        constexpr quint64 Most = 200;
        limitMemory(Most * 512);
        const DebugLog log;
        DecodingSource source;
        QVERIFY(source.decode(path));
        QVERIFY(source.loadedFrameCount() > 0);
        QVERIFY2(source.loadedFrameCount() < Most,
                 qPrintable(QString::number(source.loadedFrameCount())));
        QCOMPARE(log.lines().size(), 1); // the clip ends early
    }

    void shouldTakeTheMemoryOfTheClipShownLongestAgo()
    {
        limitMemory(2 * FrameCount * FrameSize);
        DecodingSource first;
        DecodingSource second;
        DecodingSource third;
        QVERIFY(first.decode(m_first));
        QVERIFY(second.decode(m_second));
        first.getFrame(0); // shown after the second
        QVERIFY(third.decode(m_third));
        QCOMPARE(third.loadedFrameCount(), quint64(FrameCount));
        QVERIFY(first.isFrameAvailable(FrameCount - 1));
        QVERIFY(!second.isFrameAvailable(0));
        QCOMPARE(second.loadedFrameCount(), quint64(FrameCount)); // the indices remain valid
        QCOMPARE(HVFrameMemory::used(), 2 * FrameCount * FrameSize);
    }

    void shouldNotTakeTheMemoryOfAClipThatPlays()
    {
        limitMemory(FrameCount * FrameSize);
        const DebugLog log;
        DecodingSource first;
        DecodingSource second;
        QVERIFY(first.decode(m_first));
        first.setPlaying(true);
        QVERIFY(!first.releaseFrames());
        QVERIFY(second.decode(m_second));
        QCOMPARE(second.loadedFrameCount(), quint64(0));
        QVERIFY(first.isFrameAvailable(FrameCount - 1));
    }

    void shouldDecodeFreedFramesAgain()
    {
        DecodingSource source;
        QVERIFY(source.decode(m_first));
        const QByteArray pictures = source.pictures();
        const double last = source.getFrame(FrameCount - 1).pts();
        source.seen.take();
        QVERIFY(!source.awaitsFrame(0)); // it is still in memory
        QVERIFY(source.releaseFrames());
        QCOMPARE(HVFrameMemory::used(), qint64(0));
        QVERIFY(source.getFrame(0).isNull());

        QVERIFY(source.awaitsFrame(5));
        QVERIFY(!source.awaitsFrame(FrameCount));
        QTRY_VERIFY(source.isFrameAvailable(FrameCount - 1));
        QTRY_COMPARE(source.action(), HVVideoSource::IdleAction);
        QVERIFY(source.pictures() == pictures);
        QCOMPARE(source.getFrame(FrameCount - 1).pts(), last);
        QCOMPARE(source.seen.names(), QStringList());
    }

    void shouldResumeAtTheSamePosition()
    {
        DecodingSource source;
        HVVideoController controller(&source, nullptr);
        disconnect(&controller, &QThread::finished, &controller, &QObject::deleteLater);
        controller.start();
        QVERIFY(source.decode(m_first));
        controller.setPosition(4);
        QTest::qWait(50);
        QVERIFY(controller.releaseFrames());
        QCOMPARE(controller.progress(), 0.4);
        controller.play();
        QTRY_COMPARE(controller.position(), quint64(FrameCount));
        QTRY_COMPARE(controller.state(), HVVideoController::Paused);
        QVERIFY(source.isFrameAvailable(FrameCount - 1));
        controller.quit();
    }

    /// The controller must not mistake a frame that arrives between two of its questions for one
    /// that never will.
    void shouldKeepPlayingWhenTheFrameComesAtAnyMoment()
    {
        FakeVideoSource source;
        source.begin();
        source.push(2);
        HVVideoController controller(&source, nullptr);
        disconnect(&controller, &QThread::finished, &controller, &QObject::deleteLater);
        controller.start();
        const auto quit = qScopeGuard([&] { controller.quit(); });
        QRandomGenerator random(20261122);
        for (int round = 0; round < 300; ++round) {
            controller.pause();
            controller.setPosition(1);
            QVERIFY(source.releaseFrames());
            controller.play();
            QTRY_VERIFY(source.isRestoring());
            controller.setNeedFrame(true);
            const auto coming = std::chrono::steady_clock::now()
                    + std::chrono::microseconds(random.bounded(60));
            while (std::chrono::steady_clock::now() < coming) { }
            source.push(2);
            source.restoringEnded();
            QTRY_VERIFY(controller.position() == 2
                        || controller.state() != HVVideoController::Playing);
            QCOMPARE(controller.position(), quint64(2));
        }
    }

private:
    DecodedClips m_clips;
    QString m_first;
    QString m_second;
    QString m_third;
};

HOVLETS_TEST_MAIN(tst_HVVideoMemory)
#include "tst_hvvideo_memory.moc"
