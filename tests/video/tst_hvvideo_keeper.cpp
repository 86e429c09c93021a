// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "FakeVideoSource.h"
#include "HVThreadKeeper.h"
#include "HVVideoController.h"
#include "Patience.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QProcess>
#include <QtCore/QSemaphore>

#include <cstdlib>
#include <memory>
#include <mutex>
#include <thread>

using namespace Hovlets;

namespace {

/// A source in a step that no request to quit can end.
class StuckSource : public FakeVideoSource
{
public:
    /// \a end ends the step.
    explicit StuckSource(std::shared_ptr<QSemaphore> end)
        : m_end(std::move(end))
    {
    }

    ~StuckSource() override
    {
        quit();
        const std::lock_guard<std::mutex> locker(m_running);
    }

    void begin()
    {
        start();
        m_begun.acquire();
    }

protected:
    void run() override
    {
        const std::lock_guard<std::mutex> locker(m_running);
        m_begun.release();
        m_end->acquire();
    }

private:
    std::shared_ptr<QSemaphore> m_end;
    QSemaphore m_begun;
    std::mutex m_running; // shows thread checkers that the thread has ended
};

/// Ends the application with a clip that is stuck for \a milliseconds. If \a isLate, the clip is no
/// longer shown only when the application object is gone.
int endWithStuckClip(int argc, char **argv, int milliseconds, bool isLate)
{
    auto application = std::make_unique<QCoreApplication>(argc, argv);
    auto end = std::make_shared<QSemaphore>();
    auto *source = new StuckSource(end);
    source->begin();
    auto *controller = new HVVideoController(source, nullptr);
    controller->start();
    if (isLate)
        application.reset();
    HVThreadKeeper::keep(controller, source);
    std::thread([end, milliseconds] {
        QThread::msleep(static_cast<unsigned long>(milliseconds));
        end->release();
    }).detach();
    return EXIT_SUCCESS;
}

} // namespace

/// Tests the threads of clips that are no longer shown.
class tst_HVVideoKeeper : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldNotWaitForAThread()
    {
        const DebugLog log;
        auto end = std::make_shared<QSemaphore>();
        const QPointer<StuckSource> source = new StuckSource(end);
        source->begin();
        const QPointer<HVVideoController> controller = new HVVideoController(source, nullptr);
        controller->start();

        QElapsedTimer timer;
        timer.start();
        HVThreadKeeper::keep(controller, source);
        QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(HVThreadKeeper::count(), 1);
        QTRY_VERIFY(controller->isFinished());
        QVERIFY(source && source->isRunning());
        QCOMPARE(HVThreadKeeper::count(), 1);

        end->release();
        QTRY_COMPARE_WITH_TIMEOUT(HVThreadKeeper::count(), 0, Patience);
        QVERIFY(!source);
        QVERIFY(!controller);
        QCOMPARE(log.lines(), QStringList());
    }

    void shouldFreeThreadsThatHaveAlreadyEnded()
    {
        auto end = std::make_shared<QSemaphore>(1);
        const QPointer<StuckSource> source = new StuckSource(end);
        source->begin();
        const QPointer<HVVideoController> controller = new HVVideoController(source, nullptr);
        controller->start();
        controller->quit(); // the controller has requested its deletion
        HVThreadKeeper::keep(controller, source);
        QTRY_COMPARE_WITH_TIMEOUT(HVThreadKeeper::count(), 0, Patience);
        QVERIFY(!source);
        QTRY_VERIFY(!controller);
    }

    void shouldKeepManyClipsAtOnce()
    {
        constexpr int Count = 20;
        auto end = std::make_shared<QSemaphore>();
        for (int i = 0; i < Count; ++i) {
            auto *source = new StuckSource(end);
            source->begin();
            auto *controller = new HVVideoController(source, nullptr);
            controller->start();
            HVThreadKeeper::keep(controller, source);
        }
        QCOMPARE(HVThreadKeeper::count(), Count);
        end->release(Count / 2);
        QTRY_COMPARE_WITH_TIMEOUT(HVThreadKeeper::count(), Count / 2, Patience);
        end->release(Count / 2);
        QTRY_COMPARE_WITH_TIMEOUT(HVThreadKeeper::count(), 0, Patience);
    }

    void shouldLetTheApplicationEnd_data()
    {
        QTest::addColumn<int>("milliseconds");
        QTest::addColumn<QString>("option");
        const QString early = text("--end-with-clip");
        QTest::newRow("a thread that ends soon") << 100 << early;
        QTest::newRow("a thread that does not end") << 3600000 << early;
        QTest::newRow("a thread that outlives the application")
                << 3600000 << text("--end-before-clip");
    }

    void shouldLetTheApplicationEnd()
    {
        QFETCH(int, milliseconds);
        QFETCH(QString, option);
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(QCoreApplication::applicationFilePath(),
                      { option, QString::number(milliseconds) });
        QVERIFY(process.waitForFinished(Patience));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), EXIT_SUCCESS);
        QCOMPARE(process.readAll(), QByteArray());
    }
};

int main(int argc, char **argv)
{
    const QByteArray option(argc == 3 ? argv[1] : "");
    if (option == "--end-with-clip" || option == "--end-before-clip")
        return endWithStuckClip(argc, argv, std::atoi(argv[2]), option == "--end-before-clip");
    return runTest(argc, argv, []() -> QObject * { return new tst_HVVideoKeeper; });
}

#include "tst_hvvideo_keeper.moc"
