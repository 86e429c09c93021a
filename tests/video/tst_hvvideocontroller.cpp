// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "FakeVideoSource.h"
#include "HVVideoController.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <cmath>
#include <limits>
#include <memory>

#include <chrono>
#include <future>
#include <thread>

using namespace Hovlets;

Q_DECLARE_METATYPE(Hovlets::HVVideoController::State)

namespace {

constexpr quint64 AllBits = std::numeric_limits<quint64>::max();

} // namespace

class tst_HVVideoController : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_source = std::make_unique<FakeVideoSource>();
        m_source->begin();
        m_controller = new HVVideoController(m_source.get(), nullptr);
        watch();
    }

    void cleanup()
    {
        if (m_controller) {
            m_controller->quit();
            delete m_controller.data();
        }
        m_source.reset();
        m_seen.reset();
    }

    void shouldListItsSignalsAndSlotsInOrder()
    {
        const QMetaObject &type = HVVideoController::staticMetaObject;
        const QStringList signalNames {
            QStringLiteral("displayFrame()"),    QStringLiteral("stateChanged()"),
            QStringLiteral("positionChanged()"), QStringLiteral("widthChanged()"),
            QStringLiteral("heightChanged()"),   QStringLiteral("loadProgressChanged()")
        };
        QCOMPARE(ownMethods(type, QMetaMethod::Signal), signalNames);
        QCOMPARE(
                ownMethods(type, QMetaMethod::Slot),
                QStringList({ QStringLiteral("streamEnded()"), QStringLiteral("sourceLoaded()") }));
        QCOMPARE(int(HVVideoController::Paused), 0);
        QCOMPARE(int(HVVideoController::Playing), 1);
    }

    void shouldBeginPausedAtTheStart()
    {
        QCOMPARE(m_controller->objectName(), QStringLiteral("Controller"));
        QCOMPARE(m_controller->state(), HVVideoController::Paused);
        QCOMPARE(m_controller->position(), quint64(0));
        QVERIFY(!m_controller->isScrubbing());
        QVERIFY(!m_controller->shouldQuit());
        QVERIFY(m_controller->lastFrameDisplayTime().isNull());
        QVERIFY(!m_controller->isRunning());
        QVERIFY(m_controller->source().isEmpty());
    }

    void shouldAnnounceEachChangeOfState_data()
    {
        QTest::addColumn<HVVideoController::State>("state");
        QTest::newRow("playing") << HVVideoController::Playing;
        QTest::newRow("paused, as before") << HVVideoController::Paused;
    }

    void shouldAnnounceEachChangeOfState()
    {
        QFETCH(HVVideoController::State, state);
        m_controller->setState(state);
        QCOMPARE(m_controller->state(), state);
        QCOMPARE(m_seen->take(), QStringList { QStringLiteral("state") });
    }

    void shouldPause()
    {
        m_controller->setState(HVVideoController::Playing);
        m_seen->take();
        m_controller->pause();
        QCOMPARE(m_controller->state(), HVVideoController::Paused);
        QCOMPARE(m_seen->take(), QStringList { QStringLiteral("state") });
    }

    void shouldPlayFromTheCurrentPosition()
    {
        m_source->push(4);
        m_controller->setPosition(3);
        m_seen->take();
        m_controller->play();
        QCOMPARE(m_controller->state(), HVVideoController::Playing);
        QCOMPARE(m_controller->position(), quint64(3));
        QCOMPARE(m_seen->take(), QStringList { QStringLiteral("state") });
    }

    void shouldPlayAFinishedClipFromTheBeginning_data()
    {
        QTest::addColumn<quint64>("position");
        QTest::newRow("end") << quint64(4);
        QTest::newRow("far past the end") << AllBits;
    }

    void shouldPlayAFinishedClipFromTheBeginning()
    {
        QFETCH(quint64, position);
        m_source->push(4);
        m_controller->setPosition(position);
        m_seen->take();
        m_controller->play();
        QCOMPARE(m_controller->position(), quint64(0));
        QCOMPARE(m_seen->take(),
                 QStringList({ QStringLiteral("position"), QStringLiteral("state") }));
    }

    void shouldCloseTheSource()
    {
        m_controller->close();
        QCOMPARE(m_source->closed.load(), 1);
    }

    void shouldBePausedAtTheStartOfANewClip()
    {
        m_source->push(4);
        m_controller->setPosition(2);
        m_controller->setState(HVVideoController::Playing);
        m_seen->take();
        const QUrl url(QStringLiteral("file:///clip"));
        QVERIFY(m_controller->setSource(url));
        QCOMPARE(m_controller->position(), quint64(0));
        QCOMPARE(m_controller->state(), HVVideoController::Paused);
        QCOMPARE(m_seen->take(),
                 QStringList({ QStringLiteral("state"), QStringLiteral("loadProgress"),
                               QStringLiteral("position"), QStringLiteral("state") }));
        QVERIFY(m_controller->source().isEmpty()); // until the source has processed the request
        m_source->changeSetSource(url);
        QCOMPARE(m_controller->source(), url);
    }

    void shouldPauseAtTheStartEvenWhenTheSourceRefuses()
    {
        m_source->push(4);
        m_controller->setPosition(2);
        m_controller->setState(HVVideoController::Playing);
        QVERIFY(!m_controller->setSource(QUrl()));
        QCOMPARE(m_controller->position(), quint64(0));
        QCOMPARE(m_controller->state(), HVVideoController::Paused);
    }

    void shouldPauseForANewClipEvenWhileScrubbing()
    {
        m_controller->setState(HVVideoController::Playing);
        m_controller->setScrubbing(true);
        m_seen->take();
        QVERIFY(m_controller->setSource(QUrl(QStringLiteral("file:///clip"))));
        QCOMPARE(m_controller->state(), HVVideoController::Paused);
        QCOMPARE(m_seen->take(),
                 QStringList({ QStringLiteral("loadProgress"), QStringLiteral("position"),
                               QStringLiteral("state") }));
    }

    void shouldTruncateWhatItIsSetTo_data()
    {
        QTest::addColumn<double>("progress");
        QTest::addColumn<quint64>("position");
        QTest::newRow("start") << 0.0 << quint64(0);
        QTest::newRow("truncated") << 0.5999 << quint64(5);
        QTest::newRow("end, past the last frame") << 1.0 << quint64(10);
        QTest::newRow("beyond") << 1.5 << quint64(15);
        QTest::newRow("before") << -1.0 << quint64(0);
        QTest::newRow("no number") << std::nan("") << quint64(0);
        QTest::newRow("infinite") << HUGE_VAL << quint64(4294967295);
    }

    void shouldTruncateWhatItIsSetTo()
    {
        QFETCH(double, progress);
        m_source->push(10);
        m_controller->setProgress(progress);
        QTEST(m_controller->position(), "position");
        QCOMPARE(m_seen->take(), QStringList { QStringLiteral("position") });
    }

    void shouldReportItsProgress()
    {
        m_controller->setPosition(3);
        QCOMPARE(m_controller->progress(), 0.0);
        QVERIFY(std::isnan(m_controller->loadProgress()));
        QCOMPARE(m_controller->frameCount(), quint64(0));
        m_source->push(12);
        QCOMPARE(m_controller->progress(), 0.25);
        QCOMPARE(m_controller->loadProgress(), 1.0);
        QCOMPARE(m_controller->frameCount(), quint64(12));
        QCOMPARE(m_controller->frameWidth(), 64.0);
        QCOMPARE(m_controller->frameHeight(), 48.0);
    }

    void shouldDeliverTheFrames()
    {
        m_source->push(3);
        QCOMPARE(m_controller->currentFrame().width(), 1);
        m_controller->setPosition(2);
        QCOMPARE(m_controller->currentFrame().width(), 3);
        QCOMPARE(m_controller->getFrame(1).width(), 2);
        QVERIFY(m_controller->getFrame(3).isNull());
        QCOMPARE(m_controller->getFrame(quint64(1) << 32).width(), 1); // only 32 bits count
        m_controller->setPosition((quint64(1) << 32) + 1);
        QCOMPARE(m_controller->currentFrame().width(), 2);
    }

    void shouldDoNothingWithoutASource()
    {
        HVVideoController controller(nullptr, nullptr);
        controller.play();
        QCOMPARE(controller.state(), HVVideoController::Playing);
        controller.close();
        QVERIFY(!controller.setSource(QUrl(QStringLiteral("file:///clip"))));
        QVERIFY(controller.source().isEmpty());
        QCOMPARE(controller.loadProgress(), 0.0);
        QCOMPARE(controller.progress(), 0.0);
        QVERIFY(controller.currentFrame().isNull());
    }

    void shouldPauseAtTheEndOfTheStream_data()
    {
        QTest::addColumn<bool>("scrubbing");
        QTest::newRow("playing") << false;
        QTest::newRow("scrubbing") << true;
    }

    void shouldPauseAtTheEndOfTheStream()
    {
        QFETCH(bool, scrubbing);
        m_controller->setState(HVVideoController::Playing);
        m_controller->setScrubbing(scrubbing);
        QCOMPARE(m_controller->isScrubbing(), scrubbing);
        m_seen->take();
        m_source->notifyStreamEnded();
        QStringList expected { QStringLiteral("loadProgress") };
        if (!scrubbing)
            expected.prepend(QStringLiteral("state"));
        QCOMPARE(m_seen->take(), expected);
        QCOMPARE(m_controller->state(),
                 scrubbing ? HVVideoController::Playing : HVVideoController::Paused);
    }

    void shouldAnnounceThatTheSourceIsLoaded()
    {
        m_source->load();
        QCOMPARE(m_seen->take(),
                 QStringList({ QStringLiteral("width"), QStringLiteral("height"),
                               QStringLiteral("loadProgress") }));
    }

    void shouldPassOnTheProgressOfLoading()
    {
        Q_EMIT m_source->loadProgressChanged();
        QCOMPARE(m_seen->take(), QStringList { QStringLiteral("loadProgress") });
    }

    void shouldListenToItsSourceInItsOwnThread_data()
    {
        QTest::addColumn<QString>("told");
        QTest::newRow("end of the stream") << QStringLiteral("end");
        QTest::newRow("loaded") << QStringLiteral("load");
        QTest::newRow("progress of loading") << QStringLiteral("progress");
    }

    void shouldListenToItsSourceInItsOwnThread()
    {
        QFETCH(QString, told);
        m_controller->setState(HVVideoController::Playing);
        m_seen->take();
        QList<QThread *> threads;
        const auto note = [&threads] { threads += QThread::currentThread(); };
        HVVideoController *c = m_controller;
        connect(c, &HVVideoController::stateChanged, this, note, Qt::DirectConnection);
        connect(c, &HVVideoController::widthChanged, this, note, Qt::DirectConnection);
        connect(c, &HVVideoController::loadProgressChanged, this, note, Qt::DirectConnection);
        std::thread([this, told] {
            if (told == QLatin1String("end"))
                m_source->notifyStreamEnded();
            else if (told == QLatin1String("load"))
                m_source->load();
            else
                Q_EMIT m_source->loadProgressChanged();
        }).join();
        QCOMPARE(m_seen->take(), QStringList());
        QCOMPARE(m_controller->state(), HVVideoController::Playing);
        QTRY_COMPARE(m_seen->count(QStringLiteral("loadProgress")), 1);
        QCOMPARE(m_controller->state() == HVVideoController::Paused, told == QLatin1String("end"));
        QVERIFY(!threads.isEmpty());
        QCOMPARE(threads.count(c->thread()), threads.size());
    }

    void shouldAnswerQuicklyWhetherItShouldQuit()
    {
        m_source->push(2);
        m_controller->setPosition(2);
        std::future<bool> answer;
        bool isAnswered = false;
        connect(
                m_controller.data(), &HVVideoController::positionChanged, this,
                [&] {
                    answer = std::async(std::launch::async,
                                        [this] { return m_controller->shouldQuit(); });
                    isAnswered =
                            answer.wait_for(std::chrono::seconds(30)) == std::future_status::ready;
                },
                Qt::DirectConnection);
        m_controller->play(); // from the start, which it announces while it holds its lock
        QVERIFY(answer.valid());
        QVERIFY(isAnswered);
        QVERIFY(!answer.get());
    }

    void shouldQuitSilently()
    {
        const DebugLog log;
        m_controller->start();
        m_controller->quit();
        QVERIFY(m_controller->isFinished());
        QVERIFY(m_controller->shouldQuit());
        QCOMPARE(log.lines(), QStringList());
    }

    void shouldNotStartAfterQuitting()
    {
        m_source->push();
        m_controller->setShouldQuit();
        m_controller->start();
        QVERIFY(m_controller->wait());
        QCOMPARE(m_seen->take(), QStringList());
    }

    void shouldDeleteItselfWhenTheThreadIsDone()
    {
        m_controller->start();
        m_controller->quit();
        QTRY_VERIFY(!m_controller);
    }

private:
    void watch()
    {
        m_seen = std::make_unique<SignalOrder>();
        HVVideoController *c = m_controller;
        m_seen->note(c, &HVVideoController::displayFrame, QStringLiteral("display"));
        m_seen->note(c, &HVVideoController::stateChanged, QStringLiteral("state"));
        m_seen->note(c, &HVVideoController::positionChanged, QStringLiteral("position"));
        m_seen->note(c, &HVVideoController::widthChanged, QStringLiteral("width"));
        m_seen->note(c, &HVVideoController::heightChanged, QStringLiteral("height"));
        m_seen->note(c, &HVVideoController::loadProgressChanged, QStringLiteral("loadProgress"));
    }

    std::unique_ptr<FakeVideoSource> m_source;
    QPointer<HVVideoController> m_controller;
    std::unique_ptr<SignalOrder> m_seen;
};

HOVLETS_TEST_MAIN(tst_HVVideoController)
#include "tst_hvvideocontroller.moc"
