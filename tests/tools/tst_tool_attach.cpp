// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtTest/QtTest>

namespace {

/// Runs the program for authors on the offscreen platform, which counts as a display.
ToolRun attach(const QStringList &arguments)
{
    return ToolRun(QStringList(text("attach")) + arguments,
                   { { text("QT_QPA_PLATFORM"), text("offscreen") } });
}

/// What was written to standard error, without Qt's lines about the platform.
QByteArray complaints(const ToolRun &run)
{
    QByteArray complaints;
    const QList<QByteArray> lines = run.error.split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty() && !line.startsWith("QStandardPaths:")
            && !line.startsWith("This plugin does not support "))
            complaints += line + '\n';
    }
    return complaints;
}

QStringList stranger(const QStringList &arguments = {})
{
    return QStringList { text("--"), text(HOVLETS_STRANGER) } + arguments;
}

} // namespace

class tst_ToolAttach : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowHovletsInAForeignProgram()
    {
        PackageFolder folder;
        folder.addPackage(text("Pack"), { text("actionOpen") });
        const ToolRun run = attach(QStringList { text("--path"), folder.path() } + stranger());
        QCOMPARE(complaints(run), QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(run.output, QByteArray("variables: unset\n"));
    }

    void shouldFollowRulesAndSettings()
    {
        PackageFolder folder;
        folder.addPackage(text("Pack"), { text("open") });
        const QString rules = folder.add(text("rules.txt"), "action(Open) -> open\nno arrow\n");
        const ToolRun run = attach(QStringList { text("--path"), folder.path(), text("--rules"),
                                                 rules, text("--setting"), text("HVKeyNone=1"),
                                                 text("--setting"), text("HVKeyHideDelay=1000") }
                                   + stranger());
        QCOMPARE(complaints(run),
                 "hovlets: unknown setting \"HVKeyNone\"\nhovlets: " + rules.toUtf8()
                         + ":2: no \"->\" between the expression and the key\n");
        QCOMPARE(run.status, 0);
    }

    void shouldReturnTheStatusOfTheProgram()
    {
        const ToolRun run = attach(stranger({ text("--exit"), text("7") }));
        QCOMPARE(complaints(run), QByteArray());
        QCOMPARE(run.status, 7);
    }

    void shouldAcceptAPackageWithASlashAtItsEnd()
    {
        const QString package = PackageFolder().path() + text("/Mine.hovlets/");
        const ToolRun run = attach(QStringList { text("--record"), package }
                                   + stranger({ text("--exit"), text("7") }));
        QCOMPARE(complaints(run), QByteArray());
        QCOMPARE(run.status, 7);
    }

    void shouldEndWithTheProgramThatLeavesItsEventLoop()
    {
        PackageFolder folder;
        folder.addPackage(text("Pack"), { text("actionOpen") });
        const ToolRun run = attach(QStringList { text("--path"), folder.path(), text("--record"),
                                                 folder.path() + text("/Mine.hovlets") }
                                   + stranger({ text("--leave"), text("5") }));
        QCOMPARE(complaints(run), QByteArray());
        QCOMPARE(run.status, 5);
    }

    void shouldChangeNothingWithoutTheVariable()
    {
        const ToolRun run({ text("--wait"), text("2500") },
                          { { text("QT_QPA_PLATFORM"), text("offscreen") },
                            { text("QT_QPA_GENERIC_PLUGINS"), text("hovlets") },
                            { text("QT_PLUGIN_PATH"), text(HOVLETS_PLUGINS) } },
                          { text(HOVLETS_STRANGER) });
        QCOMPARE(run.status, 3); // no hovlet
        QCOMPARE(complaints(run), QByteArray());
    }

    void shouldRefuse_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("error");
        const QString other = text(HOVLETS_QT_MAJOR) == text("6") ? text("5") : text("6");
        QTest::newRow("a missing program")
                << QStringList { text("--"), text("no-such-program") }
                << QByteArray("the program no-such-program was not found");
        QTest::newRow("a file that is not a program")
                << QStringList { text("--"), text(HOVLETS_SOURCE_DIR "/README.md") }
                << QByteArray(HOVLETS_SOURCE_DIR "/README.md cannot be executed");
        QTest::newRow("a program without Qt")
                << QStringList { text("--"), text("true") } << QByteArray("names no Qt; use --qt");
        QTest::newRow("the wrong Qt")
                << QStringList { text("--qt"), other } + stranger() << QByteArray(" uses Qt ");
        QTest::newRow("a Qt without a plug-in")
                << QStringList { text("--qt"), other, text("--"), text("true") }
                << QByteArray(" has no plug-in for it; install Hovlets for Qt " + other.toUtf8());
        QTest::newRow("a missing folder") << QStringList { text("--path"), text("/nonexistent") }
                        + stranger() << QByteArray("--path /nonexistent is not a folder");
        QTest::newRow("a setting without a value")
                << QStringList { text("--setting"), text("HVKeyLocale") } + stranger()
                << QByteArray("--setting HVKeyLocale: use NAME=VALUE");
        QTest::newRow("a package with another suffix")
                << QStringList { text("--record"), text("/tmp/Mine") } + stranger()
                << QByteArray("--record /tmp/Mine: the name of a package ends in \".hovlets\"");
    }

    void shouldRefuse()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, error);
        const ToolRun run = attach(arguments);
        QCOMPARE(run.status, 2);
        QVERIFY2(run.error.contains(error), run.error.constData());
    }
};

HOVLETS_TEST_MAIN(tst_ToolAttach)
#include "tst_tool_attach.moc"
