// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolRun.h"

#include <QtCore/QDir>
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

/// Tests where the output goes, how it shows paths, and what happens when it cannot be written.
class tst_ToolOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_folder.addPackage(QStringLiteral("Pen"), { QStringLiteral("pen") }); }
    void shouldReportLostOutput_data();
    void shouldReportLostOutput();
    void shouldBeQuietWhenTheReaderHasSeenEnough_data();
    void shouldBeQuietWhenTheReaderHasSeenEnough();
    void shouldShowPathsAsTheyWereGiven_data();
    void shouldShowPathsAsTheyWereGiven();

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

void tst_ToolOutput::shouldShowPathsAsTheyWereGiven_data()
{
    QTest::addColumn<QString>("given");
    QTest::addColumn<QString>("shown"); // the data path
    QTest::newRow("current folder") << QStringLiteral(".") << QString();
    QTest::newRow("folder") << QStringLiteral("content/") << QStringLiteral("content/");
    QTest::newRow("beside") << QStringLiteral("../%1/content") << QStringLiteral("../%1/content/");
    QTest::newRow("package") << QStringLiteral("content/Pen.hovlets") << QStringLiteral("content/");
    QTest::newRow("link") << QStringLiteral("link") << QStringLiteral("link/");
    QTest::newRow("absolute") << QStringLiteral("%2/content") << QStringLiteral("%2/content/");
}

void tst_ToolOutput::shouldShowPathsAsTheyWereGiven()
{
    QFETCH(QString, given);
    QFETCH(QString, shown);
    const PackageFolder scratch;
    const QString parent = scratch.path();
    const QString content = parent + QStringLiteral("/content");
    scratch.add(QStringLiteral("content/Pen.hovlets/Control/Pen.xml"),
                "<hovlets >\n<hovlet key='pen'/></hovlets>");
    QVERIFY(QFile::link(content, parent + QStringLiteral("/link")));
    const auto filled = [&](const QString &path) {
        QString result = path;
        return result.replace(QLatin1String("%1"), QDir(parent).dirName())
                .replace(QLatin1String("%2"), parent);
    };
    const QString folder = given == QLatin1String(".") ? content : parent;
    const QString file = filled(shown) + QStringLiteral("Pen.hovlets/Control/Pen.xml:");
    const auto outputOf = [&](const QStringList &arguments) {
        const ToolRun run(arguments + QStringList { filled(given) }, {},
                          { QStringLiteral(HOVLETS_PROGRAM) }, folder);
        return QString::fromUtf8(run.error + run.output);
    };
    QCOMPARE(outputOf({ QStringLiteral("list") }),
             QStringLiteral("Pen\tany\tpen\t") + file + QStringLiteral("2\n"));
    const QString findings = outputOf({ QStringLiteral("check") });
    QVERIFY2(findings.startsWith(file), qPrintable(findings));
    const QString entry = outputOf({ QStringLiteral("show"), QStringLiteral("pen") });
    QVERIFY2(entry.startsWith(file), qPrintable(entry));
    const QString json = outputOf(
            { QStringLiteral("list"), QStringLiteral("--format"), QStringLiteral("json") });
    QVERIFY2(json.contains(content + QStringLiteral("/Pen.hovlets/")), qPrintable(json));
}

HOVLETS_TEST_MAIN(tst_ToolOutput)
#include "tst_tool_output.moc"
