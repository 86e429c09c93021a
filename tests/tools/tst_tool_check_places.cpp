// SPDX-License-Identifier: Apache-2.0
#include "OtherUser.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtTest/QtTest>

/// Tests the lines and columns of findings.
class tst_ToolCheckPlaces : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldPointToTheMistake_data();
    void shouldPointToTheMistake();
    void shouldKeepMessagesToALine();
    void shouldPointToTheRootOfKeyData();
    void shouldReportKeyDataWithoutAName();
    void shouldReportReferencesThatQt5Misreads();
    void shouldCountColumnsInAnyEncoding();
    void shouldKnowPackagesByTheirControlFiles();
    void shouldNotSearchPackagesThatTheLibraryIgnores();
    void shouldReportMediaThatMayNotBeRead();
    void shouldReportProgressOnATerminal();
    void shouldRefuseMissingFilesOfTheHost_data();
    void shouldRefuseMissingFilesOfTheHost();
};

void tst_ToolCheckPlaces::shouldPointToTheMistake_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &content, const QStringList &expected) {
        QTest::newRow(name) << content << expected;
    };
    row("behind a value with >",
        control("<hovlet key='a'\n title=\"File > Save\"\n shortcut='S'\n  clip='a.mp4'/>"),
        { QStringLiteral("HV301 A.xml:5:3") });
    row("behind its name in a value", control("<hovlet title=' clip=' key='a' clip = 'a.mp4'/>"),
        { QStringLiteral("HV301 A.xml:2:32") });
    row("user interface of an entry",
        control("<hovlet key='a'/>\n<hovlet key='b' ui='gone.qml'/>\n<hovlet key='c' "
                "ui='Control'/>"),
        { QStringLiteral("HV306 A.xml:3:17"), QStringLiteral("HV307 A.xml:4:17") });
    row("user interface of all entries",
        control("<hovlet key='a'/><hovlet key='b'/>", "\n ui='gone.qml'"),
        { QStringLiteral("HV306 A.xml:2:2") });
    row("simple user interface", control("<hovlet key='a'\n simple='gone.qml'/>"),
        { QStringLiteral("HV306 A.xml:3:2") });
    row("element that the schema does not know", control("\n <hovlet key='a'/> <hovlt/>"),
        { QStringLiteral("HV103 A.xml:3:20") });
    row("beyond line 65535", control(QByteArray(70000, '\n') + " <hovlt/>"),
        { QStringLiteral("HV103 A.xml:70002:2") });
    row("placeholders in a value", control("<hovlet key='a' title='%(ok)s %(b %(c)'/>"),
        { QStringLiteral("HV401 A.xml:2:31"), QStringLiteral("HV401 A.xml:2:35") });
    row("placeholders in a text",
        control("<hovlet key='a'>\n<p>%(ok)s %(b\n<!-- %(not --><p>x</p>\n %(c</p></hovlet>"),
        { QStringLiteral("HV401 A.xml:3:11"), QStringLiteral("HV401 A.xml:5:2") });
    row("misspelt attribute", control("<hovlet key='a'\n clip='' tilte='A'/>"),
        { QStringLiteral("HV404 A.xml:3:10") });
    row("markup as an element", control("<hovlet key='a'><p>A\n<b>b</b></p></hovlet>"),
        { QStringLiteral("HV405 A.xml:3:1") });
    row("placeholder of an entity",
        "<!DOCTYPE hovlets [<!ENTITY e '&#37;(x'>]>\n"
                + control("<hovlet key='a'><p>&e;</p></hovlet>"),
        { QStringLiteral("HV401 A.xml:3:17") });
    const auto nested = [](int levels) { // nested below the root and the entry
        QByteArray open, close;
        for (int i = 0; i < levels; ++i) {
            open += "<p>";
            close += "</p>";
        }
        return control("<hovlet key='a'>" + open + close + "</hovlet>");
    };
    row("300 levels", nested(298), {});
    row("512 levels", nested(510), { QStringLiteral("HV403 A.xml:2:1") });
    row("513 levels", nested(511), { QStringLiteral("HV105 A.xml:2:1547") });
}

void tst_ToolCheckPlaces::shouldPointToTheMistake()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), content);
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", folder.path())), true), expected);
}

void tst_ToolCheckPlaces::shouldKeepMessagesToALine()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' title='\xe4 b'/>"));
    const ToolRun run({ QStringLiteral("check"), folder.path() });
    QVERIFY2(run.output.contains("HV101"), run.output.constData());
    QCOMPARE(run.output.count('\n'), 1);
}

void tst_ToolCheckPlaces::shouldPointToTheRootOfKeyData()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet key='a'/>"));
    const QString data = folder.add(QStringLiteral("keys.xml"), "<!-- a -->\n <keys/>");
    const ToolRun run(checkArguments("json", folder.path())
                      + QStringList { QStringLiteral("--key-data"), data });
    QCOMPARE(findingsOf(run, true), QStringList { QStringLiteral("HV104 keys.xml:2:2") });
    QVERIFY2(run.output.contains("make \\\"hovletkeys\\\" the root"), run.output.constData());
}

void tst_ToolCheckPlaces::shouldReportKeyDataWithoutAName()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet key='a'/>"));
    const QString data =
            folder.add(QStringLiteral("keys.xml"), "<hovletkeys>\n<key/></hovletkeys>");
    QCOMPARE(found({ QStringLiteral("--key-data"), data }, folder.path()),
             QStringList { QStringLiteral("HV210 keys.xml:2") });
}

void tst_ToolCheckPlaces::shouldReportReferencesThatQt5Misreads()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' title='&#x1F600;'><!-- &#x1F600; -->\n"
                                  "<p><![CDATA[&#x1F600;]]>&#128512; &#65;</p></hovlet>"));
    const QStringList misread { QStringLiteral("HV120 A.xml:2:24"),
                                QStringLiteral("HV120 A.xml:3:25") };
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", folder.path())), true),
             QT_VERSION_MAJOR == 5 ? misread : QStringList());
}

void tst_ToolCheckPlaces::shouldCountColumnsInAnyEncoding()
{
    PackageFolder folder;
    folder.addControlFile(
            QStringLiteral("P"), QStringLiteral("A"),
            "<?xml version='1.0' encoding='ISO-8859-1'?>\n"
                    + control("<hovlet key='a' title='\xe4\xbf\xf6'><p>%(</p></hovlet>"));
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", folder.path())), true),
             QStringList { QStringLiteral("HV401 A.xml:3:32") });
}

void tst_ToolCheckPlaces::shouldKnowPackagesByTheirControlFiles()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          "<hovlets search='Default Empty Other'>\n<hovlet key='a'/></hovlets>");
    folder.addControlFile(QStringLiteral("Other"), QStringLiteral("A"),
                          control("<hovlet key='b'/>"));
    folder.add(QStringLiteral("Empty.hovlets/ui/HovletsUI.qml"), "Item {}");
    for (const char *path : { "", "/P.hovlets" })
        QCOMPARE(found({}, folder.path() + QLatin1String(path)),
                 QStringList { QStringLiteral("HV206 A.xml:1") });
}

void tst_ToolCheckPlaces::shouldNotSearchPackagesThatTheLibraryIgnores()
{
    PackageFolder folder;
    const QByteArray longest = QByteArray("Default,").repeated(2048); // the names that count
    folder.addControlFile(
            QStringLiteral("P"), QStringLiteral("A"),
            "<hovlets search='" + longest
                    + "Other'>\n<hovlet key='a'><img src='a.png'/></hovlet></hovlets>");
    folder.addControlFile(QStringLiteral("Other"), QStringLiteral("A"),
                          control("<hovlet key='b'/>"));
    folder.add(QStringLiteral("Other.hovlets/Resources/a.png"), "found, but not a picture");
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV301 A.xml:2") });
}

void tst_ToolCheckPlaces::shouldReportMediaThatMayNotBeRead()
{
    PackageFolder folder;
    OtherUser user;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          "<hovlets >\n<hovlet key='a' clip='a.mp4'>\n<img src='a.png'/></hovlet>"
                          "</hovlets>");
    folder.add(QStringLiteral("P.hovlets/ui/HovletsUI.qml"), "Item {}");
    for (const char *name : { "a.mp4", "a.png" })
        QVERIFY(QFile::setPermissions(
                folder.add(QStringLiteral("P.hovlets/Resources/") + QLatin1String(name), "data"),
                {}));
    user.admitTo(folder.path());
    if (!user.lack().isNull())
        QSKIP(qPrintable(user.lack()));
    QCOMPARE(findingsOf(ToolRun(checkArguments("json", folder.path()), {}, user.command())),
             (QStringList { QStringLiteral("HV116 A.xml:2"), QStringLiteral("HV116 A.xml:3") }));
}

void tst_ToolCheckPlaces::shouldReportProgressOnATerminal()
{
    const QString script = QStandardPaths::findExecutable(QStringLiteral("script"));
    if (script.isEmpty())
        QSKIP("no program that provides a terminal is installed");
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a'/><hovlet key='b'/>"));
    const ToolRun elsewhere({ QStringLiteral("check"), folder.path() });
    QCOMPARE(elsewhere.error, QByteArray());
    const ToolRun terminal(
            { QStringLiteral("-qc"),
              QStringLiteral("'%1' check '%2'").arg(QStringLiteral(HOVLETS_PROGRAM), folder.path()),
              QStringLiteral("/dev/null") },
            {}, { script });
    QVERIFY2(terminal.output.contains("checking A.xml 2 of 2"), terminal.output.constData());
    QVERIFY2(terminal.output.endsWith("\r\x1b[K"), terminal.output.constData());
}

void tst_ToolCheckPlaces::shouldRefuseMissingFilesOfTheHost_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("option");
    for (const char *option : { "--extra-path", "--key-data" }) {
        QTest::addRow("check %s", option)
                << QStringList { QStringLiteral("check") } << QString::fromLatin1(option);
        QTest::addRow("show %s", option)
                << QStringList { QStringLiteral("show"), QStringLiteral("a") }
                << QString::fromLatin1(option);
    }
}

void tst_ToolCheckPlaces::shouldRefuseMissingFilesOfTheHost()
{
    QFETCH(QStringList, command);
    QFETCH(QString, option);
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet key='a'/>"));
    const ToolRun run(command + QStringList { folder.path(), option, QStringLiteral("/nowhere") });
    QCOMPARE(run.status, 2);
    QVERIFY2(run.error.contains("/nowhere"), run.error.constData());
    QVERIFY2(run.error.contains(option.toUtf8()), run.error.constData());
}

HOVLETS_TEST_MAIN(tst_ToolCheckPlaces)
#include "tst_tool_check_places.moc"
