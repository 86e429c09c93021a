// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "DecodingSource.h"
#include "HVFfmpeg.h"
#include "TestMain.h"

#include <QtCore/QDateTime>

#include <climits>
#include <memory>

using namespace Hovlets;

/// Tests which files can be decoded, and the result.
class tst_HVVideoSourceFFMPEG : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void shouldBeginClosed();
    void shouldSilenceTheDecodersLog();
    void shouldReturnTheTimeOfDay();
    void shouldStoreEveryFrameOfTheClip_data();
    void shouldStoreEveryFrameOfTheClip();
    void shouldReportItsStepsInOrder();
    void shouldBeOpenWhileItDecodes();
    void shouldEmitSignalsOnItsOwnThread();
    void shouldContinueItsClockInTheNextClip();
    void shouldKeepTheFramesUntilTheNextClip();
    void shouldLoadAClipTwiceWhenRequestedTwice();
    void shouldOpenFilesOfAnyName_data();
    void shouldOpenFilesOfAnyName();
    void shouldReportWhyItCannotOpen_data();
    void shouldReportWhyItCannotOpen();
    void shouldOpenAClipAfterAFailure();
    void shouldKeepTheSizeOfTheLastClipAfterAFailure();
    void shouldEndAStreamThatFindsNoMemory();

private:
    DecodedClips m_clips;
};

void tst_HVVideoSourceFFMPEG::initTestCase()
{
    QVERIFY(!m_clips.usual().isEmpty());
    QVERIFY(!m_clips.other().isEmpty());
    QVERIFY(!m_clips.endless().isEmpty());
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
             HVVideoSource::staticMetaObject.methodCount()); // it adds no signals

    QObject parent;
    QCOMPARE((new HVVideoSourceFFMPEG(&parent))->parent(), &parent);
}

void tst_HVVideoSourceFFMPEG::shouldSilenceTheDecodersLog()
{
    const HVVideoSourceFFMPEG source;
    QCOMPARE(av_log_get_level(), -8);
    av_log_set_level(AV_LOG_FATAL);
    const HVVideoSourceFFMPEG second; // only the first: a host may want more messages
    QCOMPARE(av_log_get_level(), AV_LOG_FATAL);
    av_log_set_level(AV_LOG_QUIET);
}

void tst_HVVideoSourceFFMPEG::shouldReturnTheTimeOfDay()
{
    HVVideoSourceFFMPEG source;
    // Qt rounds down, and up as well since Qt 6.8.
    const double before = double(QDateTime::currentMSecsSinceEpoch() - 1) / 1000.0;
    const double time = source.getTime();
    const double after = double(QDateTime::currentMSecsSinceEpoch() + 1) / 1000.0;
    QVERIFY(before <= time && time <= after);
}

void tst_HVVideoSourceFFMPEG::shouldStoreEveryFrameOfTheClip_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("count");
    QTest::addColumn<QSizeF>("size");
    QTest::addColumn<double>("rate");
    QTest::newRow("last pictures held back by the decoder")
            << m_clips.usual() << int(DecodedClips::Count) << QSizeF(64, 48) << 25.0;
    QTest::newRow("faster") << m_clips.other() << 20 << QSizeF(32, 18) << 50.0;
}

void tst_HVVideoSourceFFMPEG::shouldStoreEveryFrameOfTheClip()
{
    QFETCH(QString, path);
    QFETCH(int, count);
    QFETCH(QSizeF, size);
    QFETCH(double, rate);
    DecodingSource source;
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

void tst_HVVideoSourceFFMPEG::shouldReportItsStepsInOrder()
{
    const DebugLog log;
    DecodingSource source;
    QVERIFY(source.decode(m_clips.usual()));
    source.quit();
    QCOMPARE(source.seen.names(),
             QStringList({ QStringLiteral("sourceChanged"), QStringLiteral("sourceLoaded"),
                           QStringLiteral("streamEnded") }));
    // Both the new cache and the opened file request decoding. Both the step that finds the end of
    // the clip and the one that requested its frames then go idle. The last action is quitting.
    QCOMPARE(source.actions.names(),
             QStringList({ QStringLiteral("1"), QStringLiteral("4"), QStringLiteral("4"),
                           QStringLiteral("5"), QStringLiteral("5") }));
    QVERIFY(log.lines().isEmpty());
}

void tst_HVVideoSourceFFMPEG::shouldBeOpenWhileItDecodes()
{
    DecodingSource source;
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
    QVERIFY(source.decode(m_clips.usual()));
    QVERIFY(isOpen);
    QCOMPARE(double(width), 64.0);
    QVERIFY(!isStillOpen);
}

void tst_HVVideoSourceFFMPEG::shouldEmitSignalsOnItsOwnThread()
{
    DecodingSource source;
    std::atomic<int> elsewhere { 0 };
    std::atomic<int> there { 0 };
    const auto count = [&] { ++(QThread::currentThread() == &source ? there : elsewhere); };
    connect(&source, &HVVideoSource::sourceChanged, &source, count, Qt::DirectConnection);
    connect(&source, &HVVideoSource::sourceLoaded, &source, count, Qt::DirectConnection);
    connect(&source, &HVVideoSource::streamEnded, &source, count, Qt::DirectConnection);
    QVERIFY(source.decode(m_clips.usual()));
    QCOMPARE(int(there), 3);
    QCOMPARE(int(elsewhere), 0);
}

void tst_HVVideoSourceFFMPEG::shouldContinueItsClockInTheNextClip()
{
    DecodingSource source;
    QVERIFY(source.decode(m_clips.usual()));
    QVERIFY(source.decode(m_clips.other()));
    QCOMPARE(source.loadedFrameCount(), quint64(20));
    QVERIFY(qAbs(source.getFrame(0).pts() - 0.4) < 1e-9);
    QVERIFY(qAbs(source.getFrame(19).pts() - 0.4 - 19 / 50.0) < 1e-9);
}

void tst_HVVideoSourceFFMPEG::shouldKeepTheFramesUntilTheNextClip()
{
    DecodingSource source;
    QVERIFY(source.decode(m_clips.usual()));
    source.close();
    QCOMPARE(source.loadedFrameCount(), quint64(DecodedClips::Count));
    QCOMPARE(source.frameWidth(), 64.0);
    QVERIFY(!source.setSource(QUrl::fromLocalFile(m_clips.usual()))); // it is the current clip
    QVERIFY(source.decode(m_clips.other()));
    QVERIFY(source.pictures() == ClipFolder::pictures(m_clips.other()));
    QCOMPARE(source.frameWidth(), 32.0);
}

void tst_HVVideoSourceFFMPEG::shouldLoadAClipTwiceWhenRequestedTwice()
{
    DecodingSource source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.usual())));
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.usual())));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.seen.count(QStringLiteral("streamEnded")) > 0
                                     && source.action() == HVVideoSource::IdleAction,
                             Patience);
    QCOMPARE(source.seen.count(QStringLiteral("sourceLoaded")), 2);
    QCOMPARE(source.seen.count(QStringLiteral("sourceChanged")), 2);
    QCOMPARE(source.loadedFrameCount(), quint64(DecodedClips::Count));
    QVERIFY(source.pictures() == ClipFolder::pictures(m_clips.usual()));
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
    DecodingSource source;
    QVERIFY(source.decode(m_clips.write(name, ClipFolder::read(m_clips.usual()))));
    QCOMPARE(source.loadedFrameCount(), quint64(DecodedClips::Count));
}

void tst_HVVideoSourceFFMPEG::shouldReportWhyItCannotOpen_data()
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

void tst_HVVideoSourceFFMPEG::shouldReportWhyItCannotOpen()
{
    QFETCH(QUrl, url);
    QFETCH(QString, line);
    const DebugLog log;
    DecodingSource source;
    QVERIFY(source.setSource(url));
    source.start();
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > 0, Patience);
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
    DecodingSource source;
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.filePath(QStringLiteral("missing")))));
    QVERIFY(source.decode(m_clips.usual()));
    QCOMPARE(log.lines().size(), 1);
    QCOMPARE(source.loadedFrameCount(), quint64(DecodedClips::Count));
}

void tst_HVVideoSourceFFMPEG::shouldKeepTheSizeOfTheLastClipAfterAFailure()
{
    const DebugLog log;
    DecodingSource source;
    QVERIFY(source.decode(m_clips.usual()));
    const int idled = source.actions.count(QStringLiteral("5"));
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.filePath(QStringLiteral("missing")))));
    QTRY_VERIFY_WITH_TIMEOUT(source.actions.count(QStringLiteral("5")) > idled, Patience);
    QCOMPARE(source.frameWidth(), 64.0);
    QCOMPARE(source.loadedFrameCount(), quint64(0)); // the new clip's cache is empty
    QCOMPARE(source.seen.count(QStringLiteral("sourceLoaded")), 1);
}

void tst_HVVideoSourceFFMPEG::shouldEndAStreamThatFindsNoMemory()
{
    const QString path = m_clips.clip(QStringLiteral("memory.mov"), QStringLiteral("320x240"),
                                      QStringLiteral("-c:v png -pix_fmt rgb24"));
    DecodingSource source;
    connect(
            &source, &HVVideoSource::sourceLoaded, &source, [] { av_max_alloc(250000); },
            Qt::DirectConnection);
    const bool isEnded = source.decode(path);
    av_max_alloc(INT_MAX);
    QVERIFY(isEnded);
    QCOMPARE(source.loadedFrameCount(), quint64(0));
    QVERIFY(!source.isOpen());

    source.seen.take();
    source.disconnect(&source); // all connections of the test
    QVERIFY(source.setSource(QUrl::fromLocalFile(m_clips.usual())));
    QTRY_COMPARE_WITH_TIMEOUT(source.loadedFrameCount(), quint64(DecodedClips::Count), Patience);
}

HOVLETS_TEST_MAIN(tst_HVVideoSourceFFMPEG)

#include "tst_hvvideosourceffmpeg.moc"
