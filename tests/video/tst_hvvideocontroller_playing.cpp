// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "FakeVideoSource.h"
#include "HVVideoController.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <QtCore/QElapsedTimer>

#include <cmath>
#include <ctime>
#include <limits>
#include <memory>

using namespace Hovlets;

namespace {

constexpr quint64 LastPosition = std::numeric_limits<quint64>::max();

/// CPU time of the process so far, in seconds.
double computed()
{
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// Counts tenths of a second in a thread, which a busy machine slows down like any other.
class Tenths : public QThread
{
public:
    ~Tenths() override
    {
        requestInterruption();
        wait();
    }

    void run() override
    {
        while (!isInterruptionRequested()) {
            msleep(100);
            ++passed;
        }
    }

    std::atomic<int> passed { 0 };
};

} // namespace

/// Tests the controller's running thread.
class tst_HVVideoControllerPlaying : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_source = std::make_unique<FakeVideoSource>();
        m_source->begin();
        m_log = std::make_unique<DebugLog>();
        start(m_source.get());
    }

    void cleanup()
    {
        m_controller->quit();
        QCOMPARE(m_log->lines(), QStringList()); // no thread had to be terminated
        m_controller.reset();
        m_seen.reset();
        m_log.reset();
    }

    void shouldDeliverTheFirstFrameWhilePaused()
    {
        m_controller->start(QThread::InheritPriority);
        QTest::qWait(0);
        QCOMPARE(m_seen->names(), QStringList());
        m_source->push();
        QTRY_COMPARE(m_seen->names(), QStringList { QStringLiteral("display 0") });
    }

    void shouldDeliverOnRequestWhilePaused()
    {
        m_source->push(5);
        m_controller->start();
        QTRY_COMPARE(m_seen->names(), QStringList { QStringLiteral("display 0") });
        m_seen->take();
        m_controller->setPosition(3);
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 3")), 1);
        QCOMPARE(m_seen->count(QStringLiteral("position 3")), 1);
        QCOMPARE(m_seen->take().size(), 2);
        m_controller->setNeedFrame(true);
        QTRY_COMPARE(m_seen->names(), QStringList { QStringLiteral("display 3") });
        m_seen->take();
        m_controller->streamEnded();
        QTRY_COMPARE(m_seen->names(),
                     QStringList({ QStringLiteral("state"), QStringLiteral("display 3") }));
        m_seen->take();
    }

    void shouldWaitForTheFrameAtThePosition()
    {
        m_controller->setPosition(2);
        m_seen->take();
        m_controller->start();
        m_source->push(2);
        waitForPasses();
        QCOMPARE(m_seen->names(), QStringList());
        m_source->push();
        QTRY_COMPARE(m_seen->names(), QStringList { QStringLiteral("display 2") });
    }

    void shouldNotDeliverWithoutNeed()
    {
        m_source->push();
        m_controller->setNeedFrame(false);
        m_controller->start();
        waitForPasses();
        QCOMPARE(m_seen->names(), QStringList());
    }

    void shouldNotDeliverWhenTheFirstFrameIsNull()
    {
        m_source->pushFrame(HVVideoFrame());
        m_source->push();
        m_controller->setPosition(1);
        m_seen->take();
        m_controller->start();
        waitForPasses();
        QCOMPARE(m_seen->names(), QStringList());
        m_source->begin();
        m_source->push(2);
        QTRY_COMPARE(m_seen->names(), QStringList { QStringLiteral("display 1") }); // still needed
    }

    void shouldNotSleepThroughARequest()
    {
        constexpr int Requests = 40;
        m_source->push(Requests + 1);
        Tenths tenths;
        m_controller->start();
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 0")), 1);
        tenths.start();
        for (int i = 1; i <= Requests; ++i) {
            m_controller->setPosition(quint64(i));
            const QString display = QStringLiteral("display %1").arg(i);
            while (m_seen->count(display) == 0)
                QThread::yieldCurrentThread();
        }
        // A sleeping thread would take a tenth of a second for each.
        QVERIFY2(tenths.passed < Requests / 2, qPrintable(QString::number(tenths.passed)));
    }

    void shouldNotSleepThroughAFrame()
    {
        constexpr int Clips = 40;
        Tenths tenths;
        m_controller->start();
        tenths.start();
        for (int i = 1; i <= Clips; ++i) {
            m_source->begin();
            m_controller->setNeedFrame(true);
            m_source->push();
            while (m_seen->count(QStringLiteral("display 0")) < i)
                QThread::yieldCurrentThread();
        }
        QVERIFY2(tenths.passed < Clips / 2, qPrintable(QString::number(tenths.passed)));
    }

    void shouldShowEachFrameOnceAndPauseAtTheEnd()
    {
        m_source->push(5);
        m_controller->start();
        QTRY_COMPARE(m_seen->names(), QStringList { QStringLiteral("display 0") });
        m_seen->take();
        m_controller->currentFrame();
        m_controller->play();
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        QTRY_COMPARE(m_seen->count(QStringLiteral("state")), 2);
        QStringList pictures = m_seen->take();
        pictures.removeAll(QStringLiteral("state")); // two threads emit it, at any time
        QStringList expected;
        for (int i = 1; i <= 5; ++i)
            expected << QStringLiteral("display %1").arg(i) << QStringLiteral("position %1").arg(i);
        QCOMPARE(pictures, expected);
        QCOMPARE(m_controller->progress(), 1.0);
    }

    void shouldPlayAgainFromTheBeginning()
    {
        m_source->push(3);
        m_controller->start();
        m_controller->play();
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 3")), 1);
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        m_controller->play();
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 3")), 2);
        QCOMPARE(m_seen->count(QStringLiteral("display 1")), 2);
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
    }

    void shouldNotWaitForTheDecoder()
    {
        m_source->push(2);
        m_controller->start();
        m_controller->play();
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        QCOMPARE(m_controller->position(), quint64(2));
        m_source->push(2);
        waitForPasses();
        QCOMPARE(m_controller->state(), HVVideoController::Paused);
        QCOMPARE(m_controller->position(), quint64(2));
        m_controller->play(); // continues from the current position
        QTRY_COMPARE(m_controller->position(), quint64(4));
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
    }

    void shouldPauseWithoutAnyFrame()
    {
        m_controller->setState(HVVideoController::Playing);
        m_controller->start();
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        QTRY_COMPARE(m_seen->names(),
                     QStringList({ QStringLiteral("state"), QStringLiteral("state") }));
    }

    void shouldContinuePlayingAtAPositionFarPastTheEnd()
    {
        m_source->push(2);
        m_controller->setPosition(LastPosition);
        m_controller->setState(HVVideoController::Playing);
        m_controller->start();
        waitForPasses();
        QCOMPARE(m_controller->state(), HVVideoController::Playing);
    }

    void shouldNotRequestAFrameThatPlayingHasDelivered()
    {
        m_source->push(3);
        m_controller->setState(HVVideoController::Playing);
        m_controller->setNeedFrame(true);
        m_controller->start();
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        m_seen->take();
        m_source->push(3);
        waitForPasses();
        QCOMPARE(m_seen->names(), QStringList());
    }

    void shouldRestBetweenTwoFrames_data()
    {
        QTest::addColumn<double>("rate");
        QTest::addColumn<int>("rest"); // ms
        QTest::newRow("10 a second") << 10.0 << 100;
        QTest::newRow("no rate") << 0.0 << 40;
        QTest::newRow("negative") << -5.0 << 40;
        QTest::newRow("not a number") << std::nan("") << 40;
        QTest::newRow("infinite") << HUGE_VAL << 40;
    }

    void shouldRestBetweenTwoFrames()
    {
        QFETCH(double, rate);
        QFETCH(int, rest);
        m_source->rate = rate;
        m_source->push(3);
        QElapsedTimer timer;
        timer.start();
        std::atomic<qint64> times[4] = {};
        connect(
                m_controller.get(), &HVVideoController::displayFrame, m_controller.get(),
                [&] { times[m_controller->position()] = timer.elapsed(); }, Qt::DirectConnection);
        m_controller->setState(HVVideoController::Playing);
        m_controller->start();
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        m_controller->quit();
        // A sleep is never shorter; how much longer it is depends on the machine.
        QVERIFY(times[2] - times[1] >= rest - 1);
        QVERIFY(times[3] - times[2] >= rest - 1);
    }

    void shouldEndItsRestEarly_data()
    {
        QTest::addColumn<QDateTime>("last");
        QTest::newRow("a slow clip") << QDateTime();
        QTest::newRow("a clock that was set back") << QDateTime::currentDateTime().addYears(1);
    }

    /// If a rest of 1000 s could not be interrupted, quitting would have to terminate the thread.
    void shouldEndItsRestEarly()
    {
        QFETCH(QDateTime, last);
        m_source->rate = 0.001;
        m_source->push(5);
        m_controller->setLastFrameDisplayTime(last);
        m_controller->setState(HVVideoController::Playing);
        m_controller->start();
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 1")), 1);
        m_controller->pause();
        m_controller->setPosition(4);
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 4")), 1);
        m_controller->play();
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 5")), 1);
    }

    void shouldNotStopForAClockThatWasSetBack()
    {
        m_source->push(3);
        m_controller->setLastFrameDisplayTime(QDateTime::currentDateTime().addSecs(3600));
        m_controller->setState(HVVideoController::Playing);
        m_controller->start();
        QTRY_COMPARE(m_seen->count(QStringLiteral("display 3")), 1);
    }

    void shouldNotComputeWhileThereIsNothingToDo_data()
    {
        QTest::addColumn<bool>("hasSource");
        QTest::addColumn<int>("pictures");
        QTest::addColumn<quint64>("position");
        QTest::addColumn<bool>("playing");
        QTest::newRow("no source") << false << 0 << quint64(0) << false;
        QTest::newRow("no picture") << true << 0 << quint64(0) << false;
        QTest::newRow("paused") << true << 3 << quint64(0) << false;
        QTest::newRow("playing far past the end") << true << 3 << LastPosition << true;
        QTest::newRow("resting") << true << 3 << quint64(0) << true;
    }

    void shouldNotComputeWhileThereIsNothingToDo()
    {
        QFETCH(bool, hasSource);
        QFETCH(int, pictures);
        QFETCH(quint64, position);
        QFETCH(bool, playing);
        if (!hasSource)
            start(nullptr);
        m_source->rate = 0.001;
        m_source->push(pictures);
        m_controller->setPosition(position);
        m_controller->setState(playing ? HVVideoController::Playing : HVVideoController::Paused);
        m_controller->start();
        const double before = computed();
        QElapsedTimer timer;
        timer.start();
        waitForPasses();
        // A busy loop uses all the CPU time it gets; the test itself uses almost none.
        QVERIFY(computed() - before < 0.5e-3 * double(timer.elapsed()));
    }

private:
    void start(HVVideoSource *source)
    {
        m_controller = std::make_unique<HVVideoController>(source, nullptr);
        HVVideoController *c = m_controller.get();
        // The test owns the object, which must not delete itself.
        disconnect(c, &QThread::finished, c, &QObject::deleteLater);
        m_seen = std::make_unique<SignalOrder>();
        const auto numbered = [this, c](const char *name) {
            return [this, c, name] {
                m_seen->add(QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(c->position()));
            };
        };
        connect(c, &HVVideoController::displayFrame, c, numbered("display"), Qt::DirectConnection);
        connect(c, &HVVideoController::positionChanged, c, numbered("position"),
                Qt::DirectConnection);
        m_seen->note(c, &HVVideoController::stateChanged, QStringLiteral("state"));
    }

    /// Waits until the controller, which idles for a tenth of a second at a time, has passed a few
    /// times.
    static void waitForPasses()
    {
        Tenths tenths;
        tenths.start();
        QTRY_VERIFY(tenths.passed >= 4);
    }

    std::unique_ptr<DebugLog> m_log;
    std::unique_ptr<FakeVideoSource> m_source;
    std::unique_ptr<SignalOrder> m_seen; // outlives the controller's thread
    std::unique_ptr<HVVideoController> m_controller;
};

HOVLETS_TEST_MAIN(tst_HVVideoControllerPlaying)
#include "tst_hvvideocontroller_playing.moc"
