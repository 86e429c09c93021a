// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolRun.h"

#include <QtTest/QtTest>

namespace {

struct Shell
{
    /// Runs \a script, with $hovlets set to the program and $content to a folder with a package.
    Shell(const QString &script, const QString &content)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("hovlets"), QStringLiteral(HOVLETS_PROGRAM));
        environment.insert(QStringLiteral("content"), content);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral("bash"), { QStringLiteral("-c"), script });
        if (!process.waitForFinished(60000))
            return;
        status = process.exitCode();
        error = process.readAllStandardError();
    }

    int status = -1;
    QByteArray error;
};

} // namespace

/// Tests where the output goes, and what happens when it cannot be written.
class tst_ToolOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_folder.addPackage(QStringLiteral("Pen"), { QStringLiteral("pen") }); }
    void shouldReportLostOutput_data();
    void shouldReportLostOutput();
    void shouldBeQuietWhenTheReaderHasSeenEnough_data();
    void shouldBeQuietWhenTheReaderHasSeenEnough();

private:
    const PackageFolder m_folder;
};

void tst_ToolOutput::shouldReportLostOutput_data()
{
    QTest::addColumn<QString>("command");
    QTest::newRow("list") << QStringLiteral("list \"$content\"");
    QTest::newRow("json") << QStringLiteral("list --format json \"$content\"");
    QTest::newRow("more than is buffered") << QStringLiteral("list \"$content\"{,,,,,,,,,,,,,,,}");
    QTest::newRow("codes") << QStringLiteral("check --list-codes");
    QTest::newRow("help") << QStringLiteral("--help");
    QTest::newRow("help of a command") << QStringLiteral("list --help");
    QTest::newRow("version") << QStringLiteral("--version");
}

void tst_ToolOutput::shouldReportLostOutput()
{
    if (!QFile::exists(QStringLiteral("/dev/full")))
        QSKIP("this system has no device that is always full");
    QFETCH(QString, command);
    const Shell full(QStringLiteral("\"$hovlets\" %1 >/dev/full").arg(command), m_folder.path());
    QCOMPARE(full.status, 2);
    QVERIFY2(full.error.startsWith("hovlets: the output cannot be written: "),
             full.error.constData());
    QCOMPARE(full.error.count('\n'), 1);
}

void tst_ToolOutput::shouldBeQuietWhenTheReaderHasSeenEnough_data()
{
    QTest::addColumn<QString>("disposition");
    QTest::addColumn<int>("status");
    constexpr int KilledByPipe = 128 + 13;
    QTest::newRow("as in a shell") << QString() << KilledByPipe;
    QTest::newRow("under a parent that ignores the signal") << QStringLiteral("trap '' PIPE;") << 0;
}

void tst_ToolOutput::shouldBeQuietWhenTheReaderHasSeenEnough()
{
    QFETCH(QString, disposition);
    const PackageFolder scratch;
    // The reader closes the pipe before it lets the program start.
    const Shell closed(QStringLiteral("gate='%1/gate'; mkfifo \"$gate\" && %2"
                                      "{ read -r _ <\"$gate\"; \"$hovlets\" list \"$content\"; }"
                                      " | { exec <&-; echo >\"$gate\"; }; exit ${PIPESTATUS[0]}")
                               .arg(scratch.path(), disposition),
                       m_folder.path());
    QCOMPARE(closed.error, QByteArray());
    QTEST(closed.status, "status");
}

HOVLETS_TEST_MAIN(tst_ToolOutput)
#include "tst_tool_output.moc"
