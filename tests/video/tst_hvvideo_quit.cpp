// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "FakeVideoSource.h"
#include "HVVideoController.h"
#include "Patience.h"
#include "TestMain.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QSemaphore>

#include <mutex>
#include <thread>

using namespace Hovlets;

namespace {

constexpr qint64 ThreadWait = 10000; // ms, of each wait for a thread

/// Work that keeps a thread running when it should quit, and that must not be terminated.
class Busy
{
public:
    void run()
    {
        const std::lock_guard<std::mutex> locker(m_running);
        m_begun.release();
        m_ended.tryAcquire(1, Patience);
    }

    bool hasBegun() { return m_begun.tryAcquire(1, Patience); }

    /// Ends the work and waits for it in a way that thread checkers see.
    void end()
    {
        m_ended.release();
        const std::lock_guard<std::mutex> locker(m_running);
    }

private:
    QSemaphore m_begun;
    QSemaphore m_ended;
    std::mutex m_running;
};

template <typename Thread> class BusyThread : public Thread
{
public:
    using Thread::Thread;
    ~BusyThread() override
    {
        busy.end();
        this->wait();
    }

    Busy busy;

protected:
    void run() override
    {
        Thread::setTerminationEnabled(false);
        busy.run();
    }
};

/// What \a thread logs while it quits, in \a elapsed ms. Its work ends after \a patience lines.
template <typename Thread>
QStringList linesOfQuitting(Thread *thread, int patience, qint64 *elapsed)
{
    thread->start();
    if (!thread->busy.hasBegun())
        return { QStringLiteral("The thread did not begin") };
    const DebugLog log;
    QElapsedTimer timer;
    timer.start();
    std::thread quitting([thread] { thread->quit(); });
    const bool isWritten =
            QTest::qWaitFor([&] { return log.lines().size() >= patience; }, Patience);
    *elapsed = timer.elapsed();
    thread->busy.end();
    quitting.join();
    return isWritten ? log.lines() : QStringList();
}

} // namespace

/// Tests the messages about threads that end late. They do end, so none is terminated.
class tst_HVVideoQuit : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReportAThreadThatDoesNotEnd_data();
    void shouldReportAThreadThatDoesNotEnd();
};

void tst_HVVideoQuit::shouldReportAThreadThatDoesNotEnd_data()
{
    QTest::addColumn<bool>("isController");
    QTest::addColumn<QStringList>("lines");
    const QString sourceIsLate = QStringLiteral("HVVideoSource did not quit in a timely fashion");
    const QString controllerIsLate =
            QStringLiteral("HVVideoController did not quit in a timely fashion");
    QTest::newRow("source, late") << false << QStringList { sourceIsLate };
    QTest::newRow("source, for good")
            << false
            << QStringList { sourceIsLate, QStringLiteral("HVVideoSource did not quit at all") };
    QTest::newRow("controller, late") << true << QStringList { controllerIsLate };
    QTest::newRow("controller, for good")
            << true
            << QStringList { controllerIsLate,
                             QStringLiteral("HVVideoController did not quit at all") };
}

void tst_HVVideoQuit::shouldReportAThreadThatDoesNotEnd()
{
    QFETCH(bool, isController);
    QFETCH(QStringList, lines);
    const int patience = int(lines.size());
    BusyThread<FakeVideoSource> source;
    BusyThread<HVVideoController> controller(&source, nullptr);
    qint64 elapsed = 0;
    QCOMPARE(isController ? linesOfQuitting(&controller, patience, &elapsed)
                          : linesOfQuitting(&source, patience, &elapsed),
             lines);
    // No line comes early; how late one comes depends on the machine.
    QVERIFY2(elapsed >= patience * ThreadWait - 100, qPrintable(QString::number(elapsed)));
}

HOVLETS_TEST_MAIN(tst_HVVideoQuit)

#include "tst_hvvideo_quit.moc"
