// SPDX-License-Identifier: Apache-2.0
#include "FakeVideoSource.h"
#include "HVVideoController.h"
#include "Patience.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <QtCore/QElapsedTimer>

#include <chrono>
#include <future>
#include <memory>

using namespace Hovlets;

/// Tests single passes of the controller, in the test's thread.
class tst_HVVideoControllerPresenting : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_source = std::make_unique<FakeVideoSource>();
        m_source->begin();
        m_controller = std::make_unique<HVVideoController>(m_source.get(), nullptr);
        m_seen = std::make_unique<SignalOrder>();
        m_seen->note(m_controller.get(), &HVVideoController::displayFrame,
                     QStringLiteral("display"));
        m_seen->note(m_controller.get(), &HVVideoController::positionChanged,
                     QStringLiteral("position"));
    }

    void cleanup()
    {
        m_seen.reset();
        m_controller.reset();
        m_source.reset();
    }

    void shouldAnnounceTheFrameWhilePaused()
    {
        m_controller->presentFrame();
        QCOMPARE(m_seen->take(), QStringList { QStringLiteral("display") });
        QCOMPARE(m_controller->position(), quint64(0));
        QVERIFY(m_controller->lastFrameDisplayTime().isNull());
    }

    void shouldAdvanceByOneFrameWhilePlaying()
    {
        m_source->push(2);
        m_controller->play();
        m_seen->take();
        const QDateTime before = QDateTime::currentDateTime();
        m_controller->presentFrame();
        QCOMPARE(m_seen->take(),
                 QStringList({ QStringLiteral("display"), QStringLiteral("position") }));
        QCOMPARE(m_controller->position(), quint64(1));
        QVERIFY(m_controller->lastFrameDisplayTime() >= before);
        QVERIFY(m_controller->lastFrameDisplayTime() <= QDateTime::currentDateTime());
    }

    void shouldPresentNothingPastTheLastFrame_data()
    {
        QTest::addColumn<bool>("displayed");
        QTest::addColumn<bool>("lookedAt");
        QTest::addColumn<double>("rate");
        QTest::addColumn<int>("rest"); // ms
        // Otherwise the controller would rest for 1000 s.
        QTest::newRow("seen by the display") << true << false << 0.001 << 0;
        QTest::newRow("not yet seen") << false << false << 5.0 << 200;
        QTest::newRow("not yet seen, but looked at") << false << true << 5.0 << 200;
    }

    void shouldPresentNothingPastTheLastFrame()
    {
        QFETCH(bool, displayed);
        QFETCH(bool, lookedAt);
        QFETCH(double, rate);
        QFETCH(int, rest);
        m_source->rate = rate;
        m_source->push(2);
        m_controller->setPosition(2);
        if (displayed)
            QVERIFY(m_controller->currentFrame().isNull());
        if (lookedAt)
            QVERIFY(m_controller->getFrame(2).isNull());
        m_controller->setState(HVVideoController::Playing);
        m_seen->take();
        std::future<qint64> rested = std::async(std::launch::async, [this] {
            QElapsedTimer timer;
            timer.start();
            m_controller->presentFrame();
            return timer.elapsed();
        });
        const bool isOver =
                rested.wait_for(std::chrono::milliseconds(Patience)) == std::future_status::ready;
        const QStringList seen = m_seen->take();
        m_controller->pause(); // ends a rest that is too long
        // A rest is never shorter; how much longer it is depends on the machine.
        QVERIFY(rested.get() >= rest - 1);
        QVERIFY(isOver);
        QCOMPARE(seen, QStringList());
        QCOMPARE(m_controller->position(), quint64(2));
    }

    void shouldKeepTheTimeOfTheLastFrame()
    {
        const QDateTime time = QDateTime::currentDateTime().addDays(-2);
        m_controller->setLastFrameDisplayTime(time);
        QCOMPARE(m_controller->lastFrameDisplayTime(), time);
    }

    void shouldRestForBothWhenItIsTwoFramesAhead()
    {
        m_source->rate = 5;
        m_source->push(4);
        m_controller->setState(HVVideoController::Playing);
        m_controller->setPosition(0); // as if an earlier frame were on screen
        m_controller->presentFrame();
        QCOMPARE(m_controller->position(), quint64(1));
        m_controller->setLastFrameDisplayTime(QDateTime()); // no frame was displayed before
        QElapsedTimer timer;
        timer.start();
        m_controller->presentFrame();
        // A rest is never shorter; how much longer it is depends on the machine.
        QVERIFY2(timer.elapsed() >= 2 * 200 - 1, qPrintable(QString::number(timer.elapsed())));
    }

    /// Holds for any number of missed frames: 400 at 10 per second would mean a rest of 40 s.
    void shouldContinueAtTheClipsPaceAMillisecondAfterTheLastFrame()
    {
        constexpr int Pictures = 400;
        m_source->rate = 1e6; // makes rests negligible
        m_source->push(Pictures + 1);
        m_controller->setState(HVVideoController::Playing);
        for (int i = 0; i < Pictures; ++i)
            m_controller->presentFrame();
        QCOMPARE(m_controller->position(), quint64(Pictures));
        m_source->rate = 10;
        m_controller->setLastFrameDisplayTime(QDateTime::currentDateTime().addMSecs(-1));
        QElapsedTimer timer;
        timer.start();
        m_controller->presentFrame();
        QVERIFY2(timer.elapsed() < 20000, qPrintable(QString::number(timer.elapsed())));
    }

private:
    std::unique_ptr<FakeVideoSource> m_source;
    std::unique_ptr<HVVideoController> m_controller;
    std::unique_ptr<SignalOrder> m_seen;
};

HOVLETS_TEST_MAIN(tst_HVVideoControllerPresenting)
#include "tst_hvvideocontroller_presenting.moc"
