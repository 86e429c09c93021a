// SPDX-License-Identifier: Apache-2.0
#include "DecodingSource.h"
#include "HVVideoController.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <memory>

using namespace Hovlets;

namespace {

constexpr int IdleTime = 2000; // ms; a thread that polls would wake often meanwhile

/// The number of sleeps and wakes of the clips' threads so far; -1 unless there are \a count of
/// them.
int wakes(int count)
{
    int total = 0;
    const QStringList tasks =
            QDir(text("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &task : tasks) {
        const QString status = readText(text("/proc/self/task/%1/status").arg(task));
        if (!status.contains(text("Name:\tFFMPEG\n"))
            && !status.contains(text("Name:\tController\n")))
            continue;
        const QString label = text("\nvoluntary_ctxt_switches:\t");
        const auto at = status.indexOf(label) + label.size();
        total += status.mid(at, status.indexOf(QLatin1Char('\n'), at) - at).toInt();
        --count;
    }
    return count == 0 ? total : -1;
}

} // namespace

/// Tests the threads of a clip that does not play.
class tst_HVVideoIdle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_source = std::make_unique<DecodingSource>();
        m_controller = std::make_unique<HVVideoController>(m_source.get(), nullptr);
        disconnect(m_controller.get(), &QThread::finished, m_controller.get(),
                   &QObject::deleteLater);
        m_controller->start();
        m_source->start();
    }

    void cleanup()
    {
        m_controller->quit();
        m_controller.reset();
        m_source.reset();
    }

    void shouldNotWake_data()
    {
        QTest::addColumn<bool>("isLoaded");
        QTest::addColumn<bool>("isPlayed");
        QTest::newRow("no clip") << false << false;
        QTest::newRow("a clip that was loaded") << true << false;
        QTest::newRow("a clip that was played") << true << true;
    }

    void shouldNotWake()
    {
        QFETCH(bool, isLoaded);
        QFETCH(bool, isPlayed);
        if (isLoaded)
            QVERIFY(m_source->decode(m_clips.usual()));
        if (isPlayed) {
            m_controller->play();
            QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
        }
        QTest::qWait(200); // lets pending requests finish

        const int before = wakes(2);
        QVERIFY(before >= 0);
        QTest::qWait(IdleTime);
        QCOMPARE(wakes(2) - before, 0);
    }

    void shouldPlayAgainAfterTheSleep()
    {
        QVERIFY(m_source->decode(m_clips.usual()));
        QTest::qWait(200); // the end of the stream reaches this thread and pauses the clip
        for (int i = 0; i < 3; ++i) {
            m_controller->play();
            QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
            QCOMPARE(m_controller->position(), quint64(DecodedClips::Count));
        }
        QVERIFY(m_source->decode(m_clips.other()));
        QTest::qWait(200);
        m_controller->play();
        QTRY_COMPARE(m_controller->state(), HVVideoController::Paused);
    }

private:
    DecodedClips m_clips;
    std::unique_ptr<DecodingSource> m_source;
    std::unique_ptr<HVVideoController> m_controller;
};

HOVLETS_TEST_MAIN(tst_HVVideoIdle)
#include "tst_hvvideo_idle.moc"
