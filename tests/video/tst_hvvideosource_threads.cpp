// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "Elsewhere.h"
#include "HVIdleWait.h"
#include "Patience.h"
#include "RequestedSource.h"
#include "TestMain.h"

#include <QtCore/QSemaphore>

#include <memory>
#include <thread>
#include <vector>

using namespace Hovlets;

/// Tests the source's thread together with other threads that call it.
class tst_HVVideoSourceThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_source = std::make_unique<RequestedSource>();
        m_seen = std::make_unique<SignalOrder>();
        m_seen->note(m_source.get(), &HVVideoSource::actionChanged,
                     QStringLiteral("actionChanged"));
    }

    void cleanup()
    {
        if (m_source)
            m_source->end();
        m_seen.reset();
        m_source.reset();
    }

    void shouldHoldNoLockWhileItEmitsSignals()
    {
        std::vector<std::thread> threads;
        int answered = 0;
        const auto useElsewhere = [this, &threads, &answered] {
            if (doesElsewhere(&threads, [this] {
                    m_source->setSource(clipUrl(9));
                    m_source->getFrame(0);
                    m_source->source();
                }))
                ++answered;
        };
        connect(m_source.get(), &HVVideoSource::actionChanged, this, useElsewhere);
        connect(m_source.get(), &HVVideoSource::sourceChanged, this, useElsewhere);
        connect(m_source.get(), &HVVideoSource::streamEnded, this, useElsewhere);
        connect(m_source.get(), &HVVideoSource::sourceLoaded, this, useElsewhere);
        m_source->setAction(HVVideoSource::IdleAction);
        m_source->processActionQueue();
        m_source->setupSource();
        m_source->notifyStreamEnded();
        m_source->loadSource();
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(answered, 4);
    }

    void shouldAllowRecursiveCallsWhileItLocks()
    {
        // A subclass may hold a mutex and call back, because the mutexes are recursive.
        m_source->changeSetSource(clipUrl());
        connect(m_source.get(), &HVVideoSource::actionChanged, this, [this] {
            m_source->clearChanges();
            m_source->setSource(clipUrl(2));
        });
        m_source->setAction(HVVideoSource::IdleAction);
        m_source->processActionQueue();
        m_source->calls.take();
        m_source->processActionQueue();
        QCOMPARE(m_source->source(), clipUrl(2));
    }

    void shouldLoseNoRequestOfManyThreads()
    {
        constexpr int Threads = 4;
        constexpr int Requests = 250;
        m_source->start();
        std::vector<std::thread> threads;
        threads.reserve(Threads);
        for (int i = 0; i < Threads; ++i) {
            threads.emplace_back([this, i] {
                for (int k = 0; k < Requests; ++k) {
                    if (k % 2 == 0)
                        m_source->setAction(HVVideoSource::SeekAction);
                    else
                        m_source->setSource(clipUrl(i * Requests + k));
                    m_source->loadedFrameCount();
                    m_source->action();
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        // Without requests, it would idle for 100 s; each clip is an action as well.
        QTRY_COMPARE_WITH_TIMEOUT(m_seen->count(QStringLiteral("actionChanged")),
                                  Threads * Requests, Patience);
        QCOMPARE(m_source->calls.count(QStringLiteral("action 3")), Threads * Requests / 2);
    }

    void shouldApplyChangesOnItsOwnThread()
    {
        QThread *applier = nullptr;
        connect(
                m_source.get(), &HVVideoSource::actionChanged, this,
                [&applier] { applier = QThread::currentThread(); }, Qt::DirectConnection);
        m_source->start();
        m_source->setAction(HVVideoSource::StopAction);
        QVERIFY(m_source->wait(Patience));
        m_source->end();
        QCOMPARE(applier, m_source.get());
    }

    void shouldBeSilentWhenItQuitsInTime_data()
    {
        QTest::addColumn<bool>("isStarted");
        QTest::newRow("running") << true;
        QTest::newRow("never started") << false;
    }

    void shouldBeSilentWhenItQuitsInTime()
    {
        QFETCH(bool, isStarted);
        const DebugLog log;
        if (isStarted) {
            m_source->start();
            QTRY_VERIFY(m_source->isRunning());
        }
        m_source->quit();
        QVERIFY(m_source->shouldQuit());
        QVERIFY(!m_source->isRunning());
        QCOMPARE(m_source->isFinished(), isStarted);
        m_source->quit();
        QVERIFY(log.lines().isEmpty());
    }

    void shouldLeaveItsLoopImmediatelyWhenAskedToQuitBefore()
    {
        m_source->setAction(HVVideoSource::SeekAction);
        m_source->setShouldQuit();
        m_source->start();
        QVERIFY(m_source->wait(Patience));
        QVERIFY(m_source->calls.names().isEmpty());
    }

    void shouldWakeThreadsThatWaitForAFrame()
    {
        auto waiter = std::make_shared<HVIdleWait>();
        m_source->setupSource();
        m_source->addFrameWaiter(waiter);
        QSemaphore awake;
        std::thread thread([&waiter, &awake] {
            waiter->sleep();
            awake.release();
        });
        m_source->push();
        const bool isWoken = awake.tryAcquire(1, Patience);
        waiter->wake();
        thread.join();
        QVERIFY(isWoken);
        waiter.reset();
        m_source->push(); // there is no thread left to wake
    }

    void shouldRememberAWakeThatComesBeforeTheSleep()
    {
        HVIdleWait idleWait;
        idleWait.wake();
        idleWait.wake();
        QSemaphore first;
        QSemaphore second;
        std::thread thread([&] {
            idleWait.sleep();
            first.release();
            idleWait.sleep(); // both wakes are used up
            second.release();
        });
        const bool isFirstOver = first.tryAcquire(1, Patience);
        const bool isSecondOver = second.tryAcquire(1, 20);
        idleWait.wake();
        const bool isWoken = isSecondOver || second.tryAcquire(1, Patience);
        idleWait.wake();
        thread.join();
        QVERIFY(isFirstOver);
        QVERIFY(!isSecondOver);
        QVERIFY(isWoken);
    }

private:
    std::unique_ptr<RequestedSource> m_source;
    std::unique_ptr<SignalOrder> m_seen;
};

HOVLETS_TEST_MAIN(tst_HVVideoSourceThreads)

#include "tst_hvvideosource_threads.moc"
