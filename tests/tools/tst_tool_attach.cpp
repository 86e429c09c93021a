// SPDX-License-Identifier: Apache-2.0
#include "ImportReading.h"
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

ToolRun import(const QStringList &arguments)
{
    return ToolRun(QStringList(text("import")) + arguments,
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

    void shouldImportTheControlsOfARunningProgram()
    {
        const PackageFolder folder;
        const QString package = folder.path() + text("/Strange.hovlets");
        const ToolRun run =
                import(QStringList { text("-o"), package, text("--from-running") }
                       + stranger({ text("--controls"), text("1"), text("--wait"), text("1500") }));
        QCOMPARE(complaints(run), QByteArray());
        QCOMPARE(run.status, 0);
        const auto texts = [&](const char *key) {
            return textsOf(package, QString::fromUtf8(key), QLocale(text("en_US")));
        };
        QCOMPARE(texts("actionSave"),
                 (QStringList { text("Save"),
                                text("Writes the file to the disk. Asks for a name first."),
                                text("Write the file"), text("Keeps a <b>copy</b>."), QString() }));
        QCOMPARE(texts("actionOpen"), QStringList { text("Open") });
        QCOMPARE(texts("File"), QStringList { text("File") });
        QCOMPARE(texts("File/Open Recent"), QStringList { text("Open Recent") });
        QCOMPARE(texts("File/Open Recent/Clear List"), QStringList { text("Clear List") });
        QCOMPARE(texts("paper"), QStringList { text("Paper") });
        QCOMPARE(texts("width"), QStringList { text("Width") });
        QCOMPARE(texts("name"), QStringList { text("Name of the paper") });
        QCOMPARE(texts("paper/Keep ratio"), QStringList { text("Keep ratio") });
        QCOMPARE(texts("table/Name"), QStringList { text("Name") });
        QCOMPARE(texts("table/Size"), QStringList { text("Size in bytes") });
        QCOMPARE(texts("tabs/Colours"), QStringList { text("Colours of the lines") });
        QCOMPARE(texts("dockLayers"), QStringList { text("Layers") });
        QCOMPARE(texts("Options/buttonBox/Ok"), QStringList { text("OK") });
        const QString file = readText(package + text("/Control/Strange.xml"));
        QVERIFY(file.contains(text("shortcut=\"Ctrl+S\"")));
        QVERIFY(file.contains(text("<img src=\"icons/actionSave.png\" alt=\"Save\"/>")));
        QCOMPARE(texts(QByteArray(300, 'x').constData()),
                 (QStringList { text("Long"), QString() }));
        const QString shortened =
                QStringLiteral("/Resources/icons/%1.png").arg(QString(100, QLatin1Char('x')));
        QVERIFY(QFile::exists(package + shortened));
        QVERIFY(!file.contains(text("typed")));
        QVERIFY(!file.contains(text("Only words")));
        QCOMPARE(QImage(package + text("/Resources/icons/actionSave.png")).pixelColor(4, 4),
                 QColor(Qt::red));
        const ToolRun check({ text("check"), package });
        QCOMPARE(check.output + check.error, QByteArray());
        QCOMPARE(check.status, 0);
    }

    void shouldRefuseToImport_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("error");
        QTest::newRow("a program that ends at once")
                << stranger({ text("--exit"), text("0") })
                << QByteArray("the program ended before its controls could be read");
        QTest::newRow("a program without Qt")
                << QStringList { text("--"), text("true") } << QByteArray("names no Qt; use --qt");
        QTest::newRow("translations") << QStringList { text("--ts"), text("a.ts") } + stranger()
                                      << QByteArray("--ts and --report are for forms");
        for (const char *option : { "--unfinished", "--qualified" })
            QTest::newRow(option) << QStringList { text(option) } + stranger()
                                  << QByteArray("--unfinished and --qualified are for forms");
    }

    void shouldRefuseToImport()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, error);
        const PackageFolder folder;
        const QString package = folder.path() + text("/Strange.hovlets");
        const ToolRun run =
                import(QStringList { text("-o"), package, text("--from-running") } + arguments);
        QCOMPARE(run.status, 2);
        QVERIFY2(run.error.contains(error), run.error.constData());
        QVERIFY(!QFile::exists(package));
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
