// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "DebugLog.h"
#include "HVFfmpeg.h"
#include "HVVideoSourceFFMPEG.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <QtCore/QDateTime>

#include <atomic>
#include <climits>
#include <memory>
#include <mutex>
#include <vector>

using namespace Hovlets;

namespace {

constexpr int LongWait = 60000; // ms; only a failure waits so long
constexpr int Count = 10; // pictures of a usual test clip

/// A source whose run can be told what to do next, and whose signals are noted.
class Source : public HVVideoSourceFFMPEG
{
public:
    Source()
    {
        seen.note(this, &HVVideoSource::frameReady, QStringLiteral("frameReady"));
        seen.note(this, &HVVideoSource::sourceChanged, QStringLiteral("sourceChanged"));
        seen.note(this, &HVVideoSource::sourceLoaded, QStringLiteral("sourceLoaded"));
        seen.note(this, &HVVideoSource::streamEnded, QStringLiteral("streamEnded"));
        seen.note(this, &HVVideoSource::positionChanged, QStringLiteral("positionChanged"));
        seen.note(this, &HVVideoSource::loadProgressChanged, QStringLiteral("loadProgressChanged"));
        connect(
                this, &HVVideoSource::actionChanged, this,
                [this] { actions.add(QString::number(action())); }, Qt::DirectConnection);
    }
    ~Source() override
    {
        // So that thread checkers see it: QThread::wait() goes by a lock of QtCore's own.
        quit();
        const std::lock_guard<std::mutex> locker(m_running);
    }

    using HVVideoSourceFFMPEG::loadSource;

    /// Asks for a clip and waits for its last picture.
    bool decode(const QString &path)
    {
        const int ended = seen.count(QStringLiteral("streamEnded"));
        if (!setSource(QUrl::fromLocalFile(path)))
            return false;
        start();
        return QTest::qWaitFor(
                [this, ended] {
                    return seen.count(QStringLiteral("streamEnded")) == ended + 1
                            && action() == IdleAction;
                },
                LongWait);
    }

    /// Every picture in the cache, without padding.
    QByteArray pictures() const
    {
        QByteArray bytes;
        for (unsigned int i = 0; i < loadedFrameCount(); ++i) {
            const HVVideoFrame frame = getFrame(i);
            for (int y = 0; y < frame.height(); ++y)
                bytes.append(reinterpret_cast<const char *>(frame.constScanLine(y)),
                             frame.width() * 4);
        }
        return bytes;
    }

    SignalOrder seen;
    SignalOrder actions;

protected:
    void run() override
    {
        const std::lock_guard<std::mutex> locker(m_running);
        HVVideoSourceFFMPEG::run();
    }

private:
    std::mutex m_running;
};

} // namespace

class tst_HVVideoSourceFFMPEG : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void shouldBeginClosed();
    void shouldSilenceTheDecodersLog();
    void shouldTellTheTimeOfDay();

    void shouldHoldEveryPictureOfTheClip_data();
    void shouldHoldEveryPictureOfTheClip();
    void shouldTellWhatItDoesInOrder();
    void shouldTellThatItIsOpenWhileItDecodes();
    void shouldTellFromItsOwnThread();
    void shouldGoOnWithItsClockInTheNextClip();
    void shouldKeepThePicturesUntilTheNextClip();
    void shouldLoadTwiceWhatIsAskedForTwice();
    void shouldOpenFilesOfAnyName_data();
    void shouldOpenFilesOfAnyName();

    void shouldTellWhyItCannotOpen_data();
    void shouldTellWhyItCannotOpen();
    void shouldOpenAClipAfterAFailure();
    void shouldKeepTheSizeOfTheLastClipAfterAFailure();
    void shouldEndAStreamThatFindsNoMemory();

    void shouldCloseWhileItDecodes();
    void shouldCloseOnRequest();
    void shouldCloseForAnEmptySource();
    void shouldLeaveItsLoopOnRequest();
    void shouldIdleWhenItHasNothingToSeekOrDecode_data();
    void shouldIdleWhenItHasNothingToSeekOrDecode();
    void shouldSeekOnRequest();
    void shouldResetItsClockWithoutAClip();
    void shouldSetItsClockWhenItSeeks();

    void shouldFollowQuickSwitches();
    void shouldEndWhileItDecodes();
    void shouldSayNothingWhenItQuitsWhileItDecodes();
    void shouldDecodeBesideAnother();
    void shouldAnswerManyThreadsWhileItDecodes();

private:
    QString usual() const;
    QString other() const;
    QString endless() const;

    ClipFolder m_clips;
};

void tst_HVVideoSourceFFMPEG::initTestCase()
{
    QVERIFY(!usual().isEmpty());
    QVERIFY(!other().isEmpty());
    QVERIFY(!endless().isEmpty());
}

/// Ten pictures of 64 x 48 at 25 a second.
QString tst_HVVideoSourceFFMPEG::usual() const
{
    return m_clips.clip(QStringLiteral("usual.mp4"), QStringLiteral("64x48"),
                        QStringLiteral("-c:v libx264 -bf 3 -pix_fmt yuv420p"));
}

/// Twenty pictures of 32 x 18 at 50 a second.
QString tst_HVVideoSourceFFMPEG::other() const
{
    return m_clips.clip(QStringLiteral("other.avi"), QStringLiteral("32x18"),
                        QStringLiteral("-vf fps=50 -c:v mjpeg -pix_fmt yuvj420p"));
}

/// Many more pictures than a test waits for; a small file and small pictures.
QString tst_HVVideoSourceFFMPEG::endless() const
{
    return m_clips.make(QStringLiteral("endless.avi"),
                        QStringLiteral("-f lavfi -i color=size=16x16:rate=25:duration=8000 "
                                       "-c:v mpeg4 -g 100"));
}

void tst_HVVideoSourceFFMPEG::shouldBeginClosed()
{
    HVVideoSourceFFMPEG source;
    QCOMPARE(source.objectName(), QStringLiteral("FFMPEG"));
    QVERIFY(!source.isRunning());
    QVERIFY(!source.isOpen());
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.frameWidth(), 200.0);
    QCOMPARE(source.frameHeight(), 150.0);
    QCOMPARE(source.duration(), 0.0);
    QCOMPARE(source.timeBase(), 0.0);
    QCOMPARE(source.frameRate(), 0.0);
    QCOMPARE(source.progress(), 0.0);
    QCOMPARE(source.position(), quint64(0));
    QCOMPARE(source.loadedFrameCount(), quint64(0));
    QCOMPARE(HVVideoSourceFFMPEG::staticMetaObject.methodCount(),
             HVVideoSource::staticMetaObject.methodCount()); // no signals of its own

    QObject parent;
    QCOMPARE((new HVVideoSourceFFMPEG(&parent))->parent(), &parent);
}

void tst_HVVideoSourceFFMPEG::shouldSilenceTheDecodersLog()
{
    const HVVideoSourceFFMPEG source;
    QCOMPARE(av_log_get_level(), -8);
    av_log_set_level(AV_LOG_FATAL);
    const HVVideoSourceFFMPEG second; // once per process: a host may have asked for more
    QCOMPARE(av_log_get_level(), AV_LOG_FATAL);
    av_log_set_level(AV_LOG_QUIET);
}

void tst_HVVideoSourceFFMPEG::shouldTellTheTimeOfDay()
{
    HVVideoSourceFFMPEG source;
    const double before = double(QDateTime::currentMSecsSinceEpoch()) / 1000.0;
    const double time = source.getTime();
    const double after = double(QDateTime::currentMSecsSinceEpoch() + 1) / 1000.0;
    QVERIFY(before <= time && time <= after);
}

void tst_HVVideoSourceFFMPEG::shouldHoldEveryPictureOfTheClip_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("count");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("rate");
    QTest::newRow("last pictures held back by the decoder")
            << usual() << Count << QSizeF(64, 48) << 25.0;
    QTest::newRow("faster") << other() << 20 << QSizeF(32, 18) << 50.0;
}

void tst_HVVideoSourceFFMPEG::shouldHoldEveryPictureOfTheClip()
{
    QFETCH(QString, path);
    QFETCH(int, count);
    QFETCH(QSizeF, size);
    QFETCH(double, rate);
    Source source;
    QVERIFY(source.decode(path));

    QCOMPARE(source.loadedFrameCount(), quint64(count));
    QCOMPARE(source.totalFrameCount(), quint64(count));
    QVERIFY(source.pictures() == ClipFolder::pictures(path));
    for (unsigned int k = 0; k < unsigned(count); ++k) {
        const HVVideoFrame frame = source.getFrame(k);
        QCOMPARE(frame.format(), QImage::Format_RGB32);
        QVERIFY(qAbs(frame.pts() - k / rate) < 1e-9);
    }

    QVERIFY(!source.isOpen());
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.frameWidth(), size.width());
    QCOMPARE(source.frameHeight(), size.height());
    QCOMPARE(source.frameRate(), rate);
    QCOMPARE(source.duration(), 0.4);
    QCOMPARE(source.timeBase(), 1.0 / rate);
    QCOMPARE(source.position(), quint64(0));
    QVERIFY(qAbs(source.progress() - (count - 1) / rate / 0.4) < 1e-9);
    QCOMPARE(source.seen.count(QStringLiteral("streamEnded")), 1);
}

void tst_HVVideoSourceFFMPEG::shouldTellWhatItDoesInOrder()
{
    const DebugLog log;
    Source source;
    QVERIFY(source.decode(usual()));
    source.quit();
    QCOMPARE(source.seen.names(),
             QStringList({ QStringLiteral("sourceChanged"), QStringLiteral("sourceLoaded"),
                           QStringLiteral("streamEnded") }));
    // Both the new cache and the opened file ask for the decoding.
    const QStringList actions = source.actions.names();
    QCOMPARE(actions.mid(0, 4),
             QStringList({ QStringLiteral("1"), QStringLiteral("4"), QStringLiteral("4"),
                           QStringLiteral("5") }));
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldTellThatItIsOpenWhileItDecodes()
{
    Source source;
    std::atomic<bool> isOpen { false };
    std::atomic<double> width { 0.0 };
    std::atomic<bool> isStillOpen { true };
    connect(
            &source, &HVVideoSource::sourceLoaded, &source,
            [&] {
                isOpen = source.isOpen();
                width = source.frameWidth();
            },
            Qt::DirectConnection);
    connect(
            &source, &HVVideoSource::streamEnded, &source, [&] { isStillOpen = source.isOpen(); },
            Qt::DirectConnection);
    QVERIFY(source.decode(usual()));
    QVERIFY(isOpen);
    QCOMPARE(double(width), 64.0);
    QVERIFY(!isStillOpen);
}

void tst_HVVideoSourceFFMPEG::shouldTellFromItsOwnThread()
{
    Source source;
    std::atomic<int> elsewhere { 0 };
    std::atomic<int> there { 0 };
    const auto count = [&] { ++(QThread::currentThread() == &source ? there : elsewhere); };
    connect(&source, &HVVideoSource::sourceChanged, &source, count, Qt::DirectConnection);
    connect(&source, &HVVideoSource::sourceLoaded, &source, count, Qt::DirectConnection);
    connect(&source, &HVVideoSource::streamEnded, &source, count, Qt::DirectConnection);
    QVERIFY(source.decode(usual()));
    QCOMPARE(int(there), 3);
    QCOMPARE(int(elsewhere), 0);
}

void tst_HVVideoSourceFFMPEG::shouldGoOnWithItsClockInTheNextClip()
{
    Source source;
    QVERIFY(source.decode(usual()));
    QVERIFY(source.decode(other()));
    QCOMPARE(source.loadedFrameCount(), quint64(20));
    QVERIFY(qAbs(source.getFrame(0).pts() - 0.4) < 1e-9);
    QVERIFY(qAbs(source.getFrame(19).pts() - 0.4 - 19 / 50.0) < 1e-9);
}

void tst_HVVideoSourceFFMPEG::shouldKeepThePicturesUntilTheNextClip()
{
    Source source;
    QVERIFY(source.decode(usual()));
    source.close();
    QCOMPARE(source.loadedFrameCount(), quint64(Count));
    QCOMPARE(source.frameWidth(), 64.0);
    QVERIFY(!source.setSource(QUrl::fromLocalFile(usual()))); // it is the current one
    QVERIFY(source.decode(other()));
    QVERIFY(source.pictures() == ClipFolder::pictures(other()));
    QCOMPARE(source.frameWidth(), 32.0);
}

void tst_HVVideoSourceFFMPEG::shouldLoadTwiceWhatIsAskedForTwice()
{
    Source source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(usual())));
    QVERIFY(source.setSource(QUrl::fromLocalFile(usual())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")) > 0
                                     && source.action() == HVVideoSource::IdleAction,
                             LongWait);
    QCOMPARE(source.seen.count(QStringLiteral("sourceLoaded")), 2);
    QCOMPARE(source.seen.count(QStringLiteral("sourceChanged")), 2);
    QCOMPARE(source.loadedFrameCount(), quint64(Count));
    QVERIFY(source.pictures() == ClipFolder::pictures(usual()));
}

void tst_HVVideoSourceFFMPEG::shouldOpenFilesOfAnyName_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << QStringLiteral("a clip with blanks.mp4");
    QTest::newRow("letters") << QStringLiteral("Übergröße – クリップ.mp4");
    QTest::newRow("place holder") << QStringLiteral("100%1 %2.mp4");
    QTest::newRow("pattern") << QStringLiteral("clip%03d[*]?.mp4");
    QTest::newRow("protocol") << QStringLiteral("concat:a|b#c?d.mp4");
    QTest::newRow("no ending") << QStringLiteral("clip");
}

void tst_HVVideoSourceFFMPEG::shouldOpenFilesOfAnyName()
{
    QFETCH(QString, name);
    Source source;
    QVERIFY(source.decode(m_clips.write(name, ClipFolder::read(usual()))));
    QCOMPARE(source.loadedFrameCount(), quint64(Count));
}

void tst_HVVideoSourceFFMPEG::shouldTellWhyItCannotOpen_data()
{
    QTest::addColumn<QUrl>("url");
    QTest::addColumn<QString>("line");
    const QString noMedia = QStringLiteral("Could not open media at: ");
    const auto add = [](const char *row, const QString &path, const QString &message) {
        QTest::newRow(row) << QUrl::fromLocalFile(path) << QString(message + path);
    };
    add("missing", m_clips.filePath(QStringLiteral("missing.mp4")), noMedia);
    add("place holder in the name", m_clips.filePath(QStringLiteral("%1 %2 ü.mp4")), noMedia);
    add("empty", m_clips.write(QStringLiteral("empty.mp4"), {}), noMedia);
    add("text", m_clips.write(QStringLiteral("text.mp4"), "No clip.\n"), noMedia);
    add("sound alone",
        m_clips.make(QStringLiteral("s.wav"), QStringLiteral("-f lavfi -i sine=duration=0.2")),
        QStringLiteral("Could not find a video stream in "));
    QTest::newRow("not local") << QUrl(QStringLiteral("http://localhost/clip.mp4")) << noMedia;
    QTest::newRow("relative") << QUrl(QStringLiteral("clip.mp4")) << noMedia;
}

void tst_HVVideoSourceFFMPEG::shouldTellWhyItCannotOpen()
{
    QFETCH(QUrl, url);
    QFETCH(QString, line);
    const DebugLog log;
    Source source;
    QVERIFY(source.setSource(url));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > 0, LongWait);
    source.quit();
    QCOMPARE(log.lines(), QStringList(line));
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.seen.names(), QStringList(QStringLiteral("sourceChanged")));
    QCOMPARE(source.source(), url);
    QVERIFY(!source.isOpen());
    QCOMPARE(source.loadedFrameCount(), quint64(0));
    QCOMPARE(source.frameWidth(), 200.0);
    QCOMPARE(source.frameHeight(), 150.0);
}

void tst_HVVideoSourceFFMPEG::shouldOpenAClipAfterAFailure()
{
    const DebugLog log;
    Source source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.filePath(QStringLiteral("missing")))));
    QVERIFY(source.decode(usual()));
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(source.loadedFrameCount(), quint64(Count));
}

void tst_HVVideoSourceFFMPEG::shouldKeepTheSizeOfTheLastClipAfterAFailure()
{
    const DebugLog log;
    Source source;
    QVERIFY(source.decode(usual()));
    const int idled = source.actions.count(QStringLiteral("5"));
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.filePath(QStringLiteral("missing")))));
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > idled, LongWait);
    QCOMPARE(source.frameWidth(), 64.0);
    QCOMPARE(source.loadedFrameCount(), quint64(0)); // its cache is the new clip's
    QCOMPARE(source.seen.count(QStringLiteral("sourceLoaded")), 1);
}

void tst_HVVideoSourceFFMPEG::shouldEndAStreamThatFindsNoMemory()
{
    const QString path = m_clips.clip(QStringLiteral("memory.mov"), QStringLiteral("320x240"),
                                      QStringLiteral("-c:v png -pix_fmt rgb24"));
    Source source;
    connect(
            &source, &HVVideoSource::sourceLoaded, &source, [] { av_max_alloc(250000); },
            Qt::DirectConnection);
    const bool isEnded = source.decode(path);
    av_max_alloc(INT_MAX);
    QVERIFY(isEnded);
    QCOMPARE(source.loadedFrameCount(), quint64(0));
    QVERIFY(!source.isOpen());

    source.seen.take();
    source.disconnect(&source); // every connection of the test
    QVERIFY(source.setSource(QUrl::fromLocalFile(usual())));
    QTRY_COMPARE_WITH_TIMEOUT(source.loadedFrameCount(), quint64(Count), LongWait);
}

void tst_HVVideoSourceFFMPEG::shouldCloseWhileItDecodes()
{
    const DebugLog log;
    Source source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(endless())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(2), LongWait);
    source.close();
    QVERIFY(!source.isOpen());
    QTRY_COMPARE_WITH_TIMEOUT(source.action(), HVVideoSource::IdleAction, LongWait);
    QVERIFY(source.isFrameAvailable(2));
    QVERIFY(source.loadedFrameCount() < 200000);
    QCOMPARE(source.seen.count(QStringLiteral("streamEnded")), 0);
    QVERIFY(source.decode(usual()));
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldCloseOnRequest()
{
    Source source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(endless())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(0), LongWait);
    source.setAction(HVVideoSource::CloseAction);
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > 0, LongWait);
    QVERIFY(!source.isOpen());
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.actions.count(QStringLiteral("2")), 1);
}

void tst_HVVideoSourceFFMPEG::shouldCloseForAnEmptySource()
{
    Source source; // not started: this thread plays its part
    source.changeSetSource(QUrl::fromLocalFile(usual()));
    QVERIFY(source.loadSource());
    QVERIFY(source.isOpen());
    source.changeSetSource(QUrl());
    source.seen.take();
    QVERIFY(!source.loadSource());
    QVERIFY(!source.isOpen());
    QVERIFY(source.seen.names().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldLeaveItsLoopOnRequest()
{
    Source source;
    source.start();
    source.setAction(HVVideoSource::StopAction);
    QVERIFY(source.wait(LongWait));
    QVERIFY(!source.shouldQuit());
}

void tst_HVVideoSourceFFMPEG::shouldIdleWhenItHasNothingToSeekOrDecode_data()
{
    QTest::addColumn<int>("action");
    QTest::newRow("seek") << int(HVVideoSource::SeekAction);
    QTest::newRow("decode") << int(HVVideoSource::DecodeAction);
    QTest::newRow("close") << int(HVVideoSource::CloseAction);
}

void tst_HVVideoSourceFFMPEG::shouldIdleWhenItHasNothingToSeekOrDecode()
{
    QFETCH(int, action);
    Source source;
    source.start();
    source.setAction(HVVideoSource::Action(action));
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > 0, LongWait);
    source.quit();
    QCOMPARE(source.action(), HVVideoSource::IdleAction);
    QCOMPARE(source.actions.names().first(), QString::number(action));
    QVERIFY(source.seen.names().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldSeekOnRequest()
{
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    Source source;
    source.changeSetSource(QUrl::fromLocalFile(path));
    QVERIFY(source.loadSource());
    source.clearChanges();
    // The action does not end by itself; seeking goes to the start of the clip.
    source.changeSetAction(HVVideoSource::SeekAction);
    source.start();
    source.setAction(HVVideoSource::DecodeAction);
    QTRY_COMPARE_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")), 1, LongWait);
    QVERIFY(source.pictures() == ClipFolder::pictures(path));
}

void tst_HVVideoSourceFFMPEG::shouldResetItsClockWithoutAClip()
{
    Source source;
    QVERIFY(source.decode(usual()));
    QVERIFY(source.progress() > 0.0);
    source.seen.take();
    source.changeSetPosition(7);
    QCOMPARE(source.seen.names(), QStringList(QStringLiteral("positionChanged")));
    QCOMPARE(source.progress(), 0.0);
    QCOMPARE(source.position(), quint64(0));
    QVERIFY(source.decode(other()));
    QCOMPARE(source.getFrame(0).pts(), 0.0);
}

void tst_HVVideoSourceFFMPEG::shouldSetItsClockWhenItSeeks()
{
    const QString path = m_clips.clip(QStringLiteral("seek.mov"), QStringLiteral("64x48"),
                                      QStringLiteral("-c:v mjpeg -pix_fmt yuvj420p"));
    const QByteArray pictures = ClipFolder::pictures(path);
    constexpr int Size = 64 * 48 * 4;
    Source source;
    source.changeSetSource(QUrl::fromLocalFile(path));
    QVERIFY(source.loadSource());
    source.seen.take();
    source.changeSetPosition(6);
    QCOMPARE(source.seen.names(), QStringList(QStringLiteral("positionChanged")));
    source.start(); // the requests of the loading are still queued
    QTRY_COMPARE_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")), 1, LongWait);
    QCOMPARE(source.loadedFrameCount(), quint64(4));
    QVERIFY(source.pictures() == pictures.mid(6 * Size));
    QVERIFY(qAbs(source.getFrame(0).pts() - 6 / 25.0) < 1e-9);
    QVERIFY(qAbs(source.getFrame(3).pts() - 9 / 25.0) < 1e-9);
}

void tst_HVVideoSourceFFMPEG::shouldFollowQuickSwitches()
{
    const DebugLog log;
    Source source;
    source.start();
    const QList<QUrl> urls { QUrl::fromLocalFile(usual()), QUrl::fromLocalFile(endless()),
                             QUrl::fromLocalFile(m_clips.filePath(QStringLiteral("missing"))) };
    for (int i = 0; i < 200; ++i) {
        source.setSource(urls[i % urls.size()]);
        if (i % 20 == 0)
            source.isFrameAvailable(0);
    }
    QVERIFY(source.setSource(QUrl::fromLocalFile(other())));
    QTRY_VERIFY_WITH_TIMEOUT(source.source() == QUrl::fromLocalFile(other())
                                     && source.seen.count(QStringLiteral("streamEnded")) > 0
                                     && source.action() == HVVideoSource::IdleAction,
                             LongWait);
    QVERIFY(source.pictures() == ClipFolder::pictures(other()));
}

void tst_HVVideoSourceFFMPEG::shouldEndWhileItDecodes()
{
    const DebugLog log;
    for (int i = 0; i < 50; ++i) {
        HVVideoSourceFFMPEG source;
        source.setSource(QUrl::fromLocalFile(endless()));
        source.start();
        if (i % 2 == 0)
            QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(quint64(i)), LongWait);
    }
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldSayNothingWhenItQuitsWhileItDecodes()
{
    const DebugLog log;
    Source source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(endless())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.isFrameAvailable(0), LongWait);
    source.quit();
    QVERIFY(source.isFinished());
    QVERIFY(source.loadedFrameCount() < 200000);
    QCOMPARE(source.seen.count(QStringLiteral("streamEnded")), 0);
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldDecodeBesideAnother()
{
    Source first;
    Source second;
    QVERIFY(first.setSource(QUrl::fromLocalFile(usual())));
    first.start();
    QVERIFY(second.decode(other()));
    QTRY_COMPARE_WITH_TIMEOUT(first.seen.count(QStringLiteral("streamEnded")), 1, LongWait);
    QVERIFY(first.pictures() == ClipFolder::pictures(usual()));
    QVERIFY(second.pictures() == ClipFolder::pictures(other()));
}

void tst_HVVideoSourceFFMPEG::shouldAnswerManyThreadsWhileItDecodes()
{
    Source source;
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
    const bool isDecoded = source.decode(usual());
    isOver = true;
    for (const auto &asker : askers)
        asker->wait();
    QVERIFY(isDecoded);
    QCOMPARE(int(wrong), 0);
}

HOVLETS_TEST_MAIN(tst_HVVideoSourceFFMPEG)

#include "tst_hvvideosourceffmpeg.moc"
