// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVClipOpening.h"
#include "DecodingSource.h"
#include "Elsewhere.h"
#include "TestMain.h"

#include <atomic>
#include <memory>
#include <vector>

using namespace Hovlets;

/// Tests closing, seeking and other requests while the source decodes, from any thread.
class tst_HVVideoSourceFFMPEGRequests : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void shouldWaitForTheOpeningOnlyAsLongAsAsked();
    void shouldCloseWhileItDecodes();
    void shouldCloseOnRequest();
    void shouldCloseForAnEmptySource();
    void shouldLeaveItsLoopOnRequest();
    void shouldIdleWhenItHasNothingToSeekOrDecode_data();
    void shouldIdleWhenItHasNothingToSeekOrDecode();
    void shouldSeekOnRequest();
    void shouldResetItsClockWithoutAClip();
    void shouldSetItsClockWhenItSeeks();
    void shouldSeekInTheDirectionOfTheClock_data();
    void shouldSeekInTheDirectionOfTheClock();
    void shouldFollowQuickSwitches();
    void shouldEndWhileItDecodes();
    void shouldBeSilentWhenItQuitsWhileItDecodes();
    void shouldDecodeBesideAnother();
    void shouldAnswerManyThreadsWhileItDecodes();
    void shouldAnswerOthersWhileItEmitsSignals();

private:
    DecodedClips m_clips;
};

void tst_HVVideoSourceFFMPEGRequests::initTestCase()
{
    QVERIFY(!m_clips.usual().isEmpty());
    QVERIFY(!m_clips.other().isEmpty());
    QVERIFY(!m_clips.endless().isEmpty());
}

void tst_HVVideoSourceFFMPEGRequests::shouldWaitForTheOpeningOnlyAsLongAsAsked()
{
    using State = HVClipOpening::State;
    const DebugLog log;
    DecodingSource source;
    const QUrl clip = QUrl::fromLocalFile(m_clips.usual());
    QVERIFY(source.setSource(clip));
    QVERIFY(source.opening().wait(clip, 1) == State::Pending); // nobody opens it
    source.start();
    QVERIFY(source.opening().wait(clip, Patience) == State::Opened);

    QSignalSpy failed(&source.opening(), &HVClipOpening::failed);
    const QUrl other = QUrl::fromLocalFile(QCoreApplication::applicationFilePath());
    QVERIFY(source.setSource(other));
    QVERIFY(source.opening().wait(other, Patience) == State::Failed);
    QTRY_COMPARE(failed.count(), 1);
    QCOMPARE(log.lines().size(), 1);
}

void tst_HVVideoSourceFFMPEGRequests::shouldCloseWhileItDecodes()
{
    const DebugLog log;
    DecodingSource source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.endless())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(2), Patience);
    source.close();
    QVERIFY(!source.isOpen());
    QTRY_COMPARE_WITH_TIMEOUT(source.action(), HVVideoSource::IdleAction, Patience);
    QVERIFY(source.isFrameAvailable(2));
    QVERIFY(source.loadedFrameCount() < 200000);
    QCOMPARE(source.seen.count(QStringLiteral("streamEnded")), 0);
    QVERIFY(source.decode(m_clips.usual()));
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEGRequests::shouldCloseOnRequest()
{
    DecodingSource source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.endless())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(0), Patience);
    source.setAction(HVVideoSource::CloseAction);
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > 0, Patience);
    QVERIFY(!source.isOpen());
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.actions.count(QStringLiteral("2")), 1);
}

void tst_HVVideoSourceFFMPEGRequests::shouldCloseForAnEmptySource()
{
    DecodingSource source; // not started: this thread does its work
    source.changeSetSource(QUrl::fromLocalFile(m_clips.usual()));
    QVERIFY(source.loadSource());
    QVERIFY(source.isOpen());
    source.changeSetSource(QUrl());
    source.seen.take();
    QVERIFY(!source.loadSource());
    QVERIFY(!source.isOpen());
    QVERIFY(source.seen.names().isEmpty());
}

void tst_HVVideoSourceFFMPEGRequests::shouldLeaveItsLoopOnRequest()
{
    DecodingSource source;
    source.start();
    source.setAction(HVVideoSource::StopAction);
    QVERIFY(source.wait(Patience));
    QVERIFY(!source.shouldQuit());
}

void tst_HVVideoSourceFFMPEGRequests::shouldIdleWhenItHasNothingToSeekOrDecode_data()
{
    QTest::addColumn<int>("action");
    QTest::newRow("seek") << int(HVVideoSource::SeekAction);
    QTest::newRow("decode") << int(HVVideoSource::DecodeAction);
    QTest::newRow("close") << int(HVVideoSource::CloseAction);
}

void tst_HVVideoSourceFFMPEGRequests::shouldIdleWhenItHasNothingToSeekOrDecode()
{
    QFETCH(int, action);
    DecodingSource source;
    source.start();
    source.setAction(HVVideoSource::Action(action));
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > 0, Patience);
    source.quit();
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.actions.names().first(), QString::number(action));
    QVERIFY(source.seen.names().isEmpty());
}

void tst_HVVideoSourceFFMPEGRequests::shouldSeekOnRequest()
{
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    DecodingSource source;
    source.changeSetSource(QUrl::fromLocalFile(path));
    QVERIFY(source.loadSource());
    source.clearChanges();
    // The action does not end by itself. It seeks to the start of the clip.
    source.changeSetAction(HVVideoSource::SeekAction);
    source.start();
    source.setAction(HVVideoSource::DecodeAction);
    QTRY_COMPARE_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")), 1, Patience);
    QVERIFY(source.pictures() == ClipFolder::pictures(path));
}

void tst_HVVideoSourceFFMPEGRequests::shouldResetItsClockWithoutAClip()
{
    DecodingSource source;
    QVERIFY(source.decode(m_clips.usual()));
    QVERIFY(source.progress() > 0.0);
    source.seen.take();
    source.changeSetPosition(7);
    QCOMPARE(source.seen.names(), QStringList(QStringLiteral("positionChanged")));
    QCOMPARE(source.progress(), 0.0);
    QCOMPARE(source.position(), quint64(0));
    QVERIFY(source.decode(m_clips.other()));
    QCOMPARE(source.getFrame(0).pts(), 0.0);
}

void tst_HVVideoSourceFFMPEGRequests::shouldSetItsClockWhenItSeeks()
{
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    const QByteArray pictures = ClipFolder::pictures(path);
    constexpr qsizetype Size = qsizetype { 64 } * 48 * 4;
    DecodingSource source;
    source.changeSetSource(QUrl::fromLocalFile(path));
    QVERIFY(source.loadSource());
    source.seen.take();
    source.changeSetPosition(6);
    QCOMPARE(source.seen.names(), QStringList(QStringLiteral("positionChanged")));
    source.start(); // the requests made by loading are still queued
    QTRY_COMPARE_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")), 1, Patience);
    QCOMPARE(source.loadedFrameCount(), quint64(4));
    QVERIFY(source.pictures() == pictures.mid(6 * Size));
    QVERIFY(qAbs(source.getFrame(0).pts() - 6 / 25.0) < 1e-9);
    QVERIFY(qAbs(source.getFrame(3).pts() - 9 / 25.0) < 1e-9);
}

void tst_HVVideoSourceFFMPEGRequests::shouldSeekInTheDirectionOfTheClock_data()
{
    QTest::addColumn<QList<int>>("positions");
    QTest::newRow("on, to the next key frame") << QList<int> { 3 };
    QTest::newRow("back, to the key picture before") << QList<int> { 9, 7 };
}

void tst_HVVideoSourceFFMPEGRequests::shouldSeekInTheDirectionOfTheClock()
{
    QFETCH(QList<int>, positions);
    const QString path = m_clips.clip(QStringLiteral("keys.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mpeg4 -g 5 -bf 0"));
    const QByteArray pictures = ClipFolder::pictures(path);
    constexpr qsizetype Size = qsizetype { 64 } * 48 * 4;
    constexpr int Key = 5; // the clip's second key frame
    DecodingSource source;
    source.changeSetSource(QUrl::fromLocalFile(path));
    QVERIFY(source.loadSource());
    for (const int position : positions)
        source.changeSetPosition(position);
    source.start();
    QTRY_COMPARE_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")), 1, Patience);
    QCOMPARE(source.loadedFrameCount(), quint64(10 - Key));
    QVERIFY(source.pictures() == pictures.mid(Key * Size));
}

void tst_HVVideoSourceFFMPEGRequests::shouldFollowQuickSwitches()
{
    const DebugLog log;
    DecodingSource source;
    source.start();
    const QList<QUrl> urls { QUrl::fromLocalFile(m_clips.usual()),
                             QUrl::fromLocalFile(m_clips.endless()),
                             QUrl::fromLocalFile(m_clips.filePath(QStringLiteral("missing"))) };
    for (int i = 0; i < 200; ++i) {
        source.setSource(urls[i % urls.size()]);
        if (i % 20 == 0)
            source.isFrameAvailable(0);
    }
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.other())));
    QTRY_VERIFY_WITH_TIMEOUT(source.source() == QUrl::fromLocalFile(m_clips.other())
                                     && source.seen.count(QStringLiteral("streamEnded")) > 0
                                     && source.action() == HVVideoSource::IdleAction,
                             Patience);
    QVERIFY(source.pictures() == ClipFolder::pictures(m_clips.other()));
}

void tst_HVVideoSourceFFMPEGRequests::shouldEndWhileItDecodes()
{
    const DebugLog log;
    for (int i = 0; i < 50; ++i) {
        HVVideoSourceFFMPEG source;
        source.setSource(QUrl::fromLocalFile(m_clips.endless()));
        source.start();
        if (i % 2 == 0)
            QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(quint64(i)), Patience);
    }
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEGRequests::shouldBeSilentWhenItQuitsWhileItDecodes()
{
    const DebugLog log;
    DecodingSource source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.endless())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(0), Patience);
    source.quit();
    QVERIFY(source.isFinished());
    QVERIFY(source.loadedFrameCount() < 200000);
    QCOMPARE(source.seen.count(QStringLiteral("streamEnded")), 0);
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEGRequests::shouldDecodeBesideAnother()
{
    DecodingSource first;
    DecodingSource second;
    QVERIFY(first.setSource(QUrl::fromLocalFile(m_clips.usual())));
    first.start();
    QVERIFY(second.decode(m_clips.other()));
    QTRY_COMPARE_WITH_TIMEOUT(first.seen.count(QStringLiteral("streamEnded")), 1, Patience);
    QVERIFY(first.pictures() == ClipFolder::pictures(m_clips.usual()));
    QVERIFY(second.pictures() == ClipFolder::pictures(m_clips.other()));
}

void tst_HVVideoSourceFFMPEGRequests::shouldAnswerManyThreadsWhileItDecodes()
{
    DecodingSource source;
    std::atomic<bool> isOver { false };
    std::atomic<int> wrong { 0 };
    std::vector<std::unique_ptr<QThread>> askers;
    for (int i = 0; i < 3; ++i) {
        askers.emplace_back(QThread::create([&] {
            while (!isOver) {
                const quint64 count = source.loadedFrameCount();
                if (count > 0 && source.getFrame(unsigned(count - 1)).isNull())
                    ++wrong;
                source.frameWidth();
                source.frameHeight();
                source.frameRate();
                source.duration();
                source.timeBase();
                source.progress();
                source.position();
                source.isOpen();
                source.source();
                source.action();
                QThread::yieldCurrentThread();
            }
        }));
        askers.back()->start();
    }
    const bool isDecoded = source.decode(m_clips.usual());
    isOver = true;
    for (const auto &asker : askers)
        asker->wait();
    QVERIFY(isDecoded);
    QCOMPARE(int(wrong), 0);
}

void tst_HVVideoSourceFFMPEGRequests::shouldAnswerOthersWhileItEmitsSignals()
{
    DecodingSource source;
    std::vector<std::thread> threads;
    SignalOrder answered;
    const auto askElsewhere = [&](const char *signal) {
        return [&, signal] {
            if (doesElsewhere(&threads, [&source] { source.isOpen(); }))
                answered.add(QString::fromLatin1(signal));
        };
    };
    connect(&source, &HVVideoSource::sourceChanged, &source, askElsewhere("sourceChanged"),
            Qt::DirectConnection);
    connect(&source, &HVVideoSource::sourceLoaded, &source, askElsewhere("sourceLoaded"),
            Qt::DirectConnection);
    connect(&source, &HVVideoSource::streamEnded, &source, askElsewhere("streamEnded"),
            Qt::DirectConnection);
    connect(&source, &HVVideoSource::positionChanged, &source, askElsewhere("positionChanged"),
            Qt::DirectConnection);
    const bool isDecoded = source.decode(m_clips.usual());
    source.changeSetPosition(3);
    source.quit();
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(isDecoded);
    QCOMPARE(answered.names(), source.seen.names());
    QCOMPARE(answered.names().size(), 4);
}

HOVLETS_TEST_MAIN(tst_HVVideoSourceFFMPEGRequests)

#include "tst_hvvideosourceffmpeg_requests.moc"
