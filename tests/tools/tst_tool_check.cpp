// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtTest/QtTest>

class tst_ToolCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFindOneMistakeInAControlFile_data();
    void shouldFindOneMistakeInAControlFile();
    void shouldPermitAttributesOfTheHost();
    void shouldReportWhyAFileIsNotIndexed_data();
    void shouldReportWhyAFileIsNotIndexed();
    void shouldReportAFolderWithoutPackages();
    void shouldFindSymbolicLinks();
    void shouldFindEntriesThatAnotherFileHides_data();
    void shouldFindEntriesThatAnotherFileHides();
    void shouldFindLocalesWithoutEntries();
    void shouldFindKeyDataWithoutAnEntry();
    void shouldFindNothingWrongWithShippedContent_data();
    void shouldFindNothingWrongWithShippedContent();
};

void tst_ToolCheck::shouldFindOneMistakeInAControlFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("expected");
    const auto row = [](const char *name, const QByteArray &content, const char *expected) {
        QTest::newRow(name) << content
                            << QString::fromUtf8(expected).split(QLatin1Char(','),
                                                                 Qt::SkipEmptyParts);
    };
    row("nothing",
        control("<hovlet key='a' title='%(name)s'><p>100 % (of it)</p>"
                "<link href='https://example.org'/><link href='help/a.html'/>"
                "<link href='Topic'/></hovlet>",
                "locale='en_US'"),
        "");
    row("not well-formed", control("<hovlet key='a'><p></hovlet>"), "HV101 File.xml:2");
    row("an end tag is missing", control("\n<hovlet key='a'>"), "HV101 File.xml:4");
    row("other element in the root", control("<hovlet key='a'/>\n<hovlt key='b'/>"),
        "HV103 File.xml:3");
    row("text in the root", control("text"), "HV103 File.xml:1");
    row("entry in an entry", control("<hovlet key='a'><hovlet/><any/></hovlet>"),
        "HV404 File.xml:2,HV404 File.xml:2");
    row("no key", control("<hovlet title='a'/>"), "HV201 File.xml:2");
    row("key twice", control("<hovlet key='a'/>\n<hovlet key='a'/>"), "HV202 File.xml:3");
    row("nonsense as locale", control("<hovlet key='a'/>", "locale='nonsense'"),
        "HV204 File.xml:1,HV207 File.xml:2");
    row("locale of no territory", control("<hovlet key='a'/>", "locale='en_QQ'"),
        "HV204 File.xml:1");
    row("location", control("<hovlet key='a' HVLocation='x'/>"), "HV205 File.xml:2");
    row("package name", control("<hovlet key='a'\n HVPackagName='x'/>"), "HV205 File.xml:3");
    row("unknown package", "<hovlets search='Default; Elsewhere'>\n<hovlet key='a'/></hovlets>",
        "HV206 File.xml:1");
    row("missing clip", control("<hovlet key='a' clip='a.mp4'/>"), "HV301 File.xml:2");
    row("missing picture", control("<hovlet key='a'>\n<img src='a.png'/></hovlet>"),
        "HV301 File.xml:3");
    row("picture without a name", control("<hovlet key='a'>\n<img src=''/></hovlet>"),
        "HV301 File.xml:3");
    row("broken picture", control("<hovlet key='a'><img src='broken.png'/></hovlet>"),
        "HV302 File.xml:2");
    row("no user interface", "<hovlets >\n<hovlet key='a'/><hovlet key='b'/></hovlets>",
        "HV306 File.xml:1");
    row("user interface is a folder", control("<hovlet key='a'/>", "ui='Resources'"),
        "HV307 File.xml:1");
    row("placeholder in an attribute", control("<hovlet key='a' title='%(name)'/>"),
        "HV401 File.xml:2");
    row("placeholder in a text", control("<hovlet key='a'>\n<p>%(na me)s</p></hovlet>"),
        "HV401 File.xml:3");
    row("no link", control("<hovlet key='a'><link>a</link></hovlet>"), "HV402 File.xml:2");
    row("drive", control("<hovlet key='a'><link href='C:/a'/></hovlet>"), "HV402 File.xml:2");
    row("no scheme", control("<hovlet key='a'><link href='www.example.org'/></hovlet>"),
        "HV402 File.xml:2");
    row("blank in an address",
        control("<hovlet key='a'><link href='https://exa mple.org'/></hovlet>"),
        "HV402 File.xml:2");
    row("link in a text",
        control("<hovlet key='a'><p><![CDATA[<a href='C:\\x'>x</a>]]></p></hovlet>"),
        "HV402 File.xml:2");
    row("button that opens nothing", control("<hovlet key='a'><button>a</button></hovlet>"),
        "HV402 File.xml:2");
    row("misspelt attribute of a picture",
        control("<hovlet key='a'><img src='a.png' captoin='B'/></hovlet>"),
        "HV301 File.xml:2,HV404 File.xml:2");
    row("missing captions", control("<hovlet key='a' captions='a.vtt'\n clip='a.mp4'/>"),
        "HV301 File.xml:3");
    row("misspelt element", control("<hovlet key='a'>\n<titel>A</titel></hovlet>"),
        "HV404 File.xml:3");
    row("element of HTML", control("<hovlet key='a'>\n<h5>A</h5>\n<h5>B</h5></hovlet>"),
        "HV404 File.xml:3");
    row("misspelt attribute of an entry", control("<hovlet key='a'\n titel='A'/>"),
        "HV404 File.xml:3");
    row("misspelt long attribute of an entry", control("<hovlet key='a'\n shrotcutt='A'/>"),
        "HV404 File.xml:3");
    row("attribute of the host", control("<hovlet key='a' category='A'/>"), "");
    for (const char *name : { "single", "uid", "loop" })
        row(name, control(QByteArray("<hovlet key='a' ") + name + "='A'/>"), "");
    row("misspelt attribute of a link",
        control("<hovlet key='a'><link href='A' herf='B'/></hovlet>"), "HV404 File.xml:2");
    row("unknown element for another user interface",
        control("<hovlet key='a'><titel>A</titel></hovlet>", "ui='ui/Own.qml'"), "");
    row("structure",
        control("<hovlet key='a'><button "
                "href='app:run'>G</button><h2>A</h2><ul><li>B</li></ul><pre>C</pre><note>D</note>"
                "<table><tr><th>E</th><td>F</td></tr></table></hovlet>"),
        "");
    row("markup as an element", control("<hovlet key='a'><p>Draw <b>free</b> lines</p></hovlet>"),
        "HV405 File.xml:2");
    row("markup in CDATA",
        control("<hovlet key='a'><p><![CDATA[Draw <b>free</b> lines]]></p></hovlet>"), "");
    row("table in a text",
        control("<hovlet key='a'><p><![CDATA[<table><tr>A</tr></table>]]></p></hovlet>"),
        "HV406 File.xml:2,HV406 File.xml:2");
    row("name in angle brackets", control("<hovlet key='a'><p>git add &lt;file&gt;</p></hovlet>"),
        "");
}

void tst_ToolCheck::shouldFindOneMistakeInAControlFile()
{
    QFETCH(QByteArray, content);
    QFETCH(QStringList, expected);
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("Package"), QStringLiteral("File"), content);
    folder.add(QStringLiteral("Package.hovlets/Resources/broken.png"), "no picture");
    folder.add(QStringLiteral("Package.hovlets/ui/Own.qml"), "import QtQuick 2.15\nItem {}");
    QCOMPARE(found({}, folder.path()), expected);
}

void tst_ToolCheck::shouldPermitAttributesOfTheHost()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("P"),
                          control("<hovlet key='a' sample='B' tilte='C'/>"));
    const QStringList both { QStringLiteral("HV404 P.xml:2"), QStringLiteral("HV404 P.xml:2") };
    QCOMPARE(found({}, folder.path()), both);
    QCOMPARE(found({ QStringLiteral("--host-attribute"), QStringLiteral("sample") }, folder.path()),
             both.mid(1));
}

void tst_ToolCheck::shouldReportWhyAFileIsNotIndexed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    const QByteArray good = control("<hovlet key='b'/>");
    QTest::newRow("wrong root") << "P.hovlets/Control/A.xml" << QByteArray("\n<hovlet key='a'/>")
                                << "HV102 A.xml:2";
    QTest::newRow("empty") << "P.hovlets/Control/A.xml" << QByteArray() << "HV101 A.xml:1";
    QTest::newRow("below the control folder")
            << "P.hovlets/Control/more/A.xml" << good << "HV110 A.xml:1";
    QTest::newRow("beside the control folder") << "P.hovlets/A.xml" << good << "HV110 A.xml:1";
    QTest::newRow("other ending") << "P.hovlets/Control/A.txt" << good << "HV111 A.txt:1";
    QTest::newRow("package suffix") << "Other/Control/A.xml" << good << "HV112 Other:1";
    QTest::newRow("hidden") << "P.hovlets/Control/.A.xml" << good << "HV113 .A.xml:1";
    QTest::newRow("line end") << "P.hovlets/Control/A.xml"
                              << QByteArray("<?xml version='1.0'?>\n<hovlets\nsearch='Default'/>")
                              << "HV114 A.xml:2";
    QTest::newRow("UTF-16") << "P.hovlets/Control/A.xml"
                            << QByteArray("\xff\xfe<\0h\0o\0v\0l\0e\0t\0s\0 \0/\0>\0", 24)
                            << "HV115 A.xml:1";
}

void tst_ToolCheck::shouldReportWhyAFileIsNotIndexed()
{
    QFETCH(QString, path);
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("P"), control("<hovlet key='a'/>"));
    folder.add(path, content);
    QCOMPARE(found({}, folder.path()), QStringList { expected });
}

void tst_ToolCheck::shouldReportAFolderWithoutPackages()
{
    const PackageFolder folder;
    const QString name = QFileInfo(folder.path()).fileName();
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV117 %1:1").arg(name) });
}

void tst_ToolCheck::shouldFindSymbolicLinks()
{
    PackageFolder folder;
    const QString file = folder.addControlFile(QStringLiteral("P"), QStringLiteral("P"),
                                               control("<hovlet key='a'/>"));
    QVERIFY(QFile::link(file, QFileInfo(file).path() + QStringLiteral("/A.xml")));
    QVERIFY(QFile::link(folder.path() + QStringLiteral("/P.hovlets"),
                        folder.path() + QStringLiteral("/Q.hovlets")));
    QCOMPARE(
            found({}, folder.path()),
            (QStringList { QStringLiteral("HV113 A.xml:1"), QStringLiteral("HV113 Q.hovlets:1") }));
}

void tst_ToolCheck::shouldFindEntriesThatAnotherFileHides_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("later");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("same locale") << QByteArray("locale='en_US'") << QByteArray("locale='en_US'")
                                 << true;
    QTest::newRow("same locale in other words")
            << QByteArray("locale='en'") << QByteArray("locale='en_US'") << true;
    QTest::newRow("all locales later") << QByteArray("locale='en_US'") << QByteArray() << true;
    QTest::newRow("all locales first") << QByteArray() << QByteArray("locale='en_US'") << false;
    QTest::newRow("other locale") << QByteArray("locale='en_US'") << QByteArray("locale='de_DE'")
                                  << false;
}

void tst_ToolCheck::shouldFindEntriesThatAnotherFileHides()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, later);
    QFETCH(bool, hidden);
    PackageFolder folder;
    const QString package = QStringLiteral("P");
    folder.addControlFile(package, QStringLiteral("A"), control("<hovlet key='a'/>", first));
    folder.addControlFile(package, QStringLiteral("B"), control("<hovlet key='a'/>", later));
    const QStringList expected =
            hidden ? QStringList { QStringLiteral("HV203 A.xml:2") } : QStringList();
    QCOMPARE(found({}, folder.path()), expected);
}

void tst_ToolCheck::shouldFindLocalesWithoutEntries()
{
    PackageFolder folder;
    const QString package = QStringLiteral("P");
    folder.addControlFile(package, QStringLiteral("A"),
                          control("<hovlet key='a'/>", "locale='en_US'"));
    folder.addControlFile(package, QStringLiteral("B"),
                          control("<hovlet key='b'/>", "locale='de_DE'"));
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV207 B.xml:2") });
    QCOMPARE(found({ QStringLiteral("--fallback-locale"), QStringLiteral("de_DE"),
                     QStringLiteral("--locale"), QStringLiteral("en_US") },
                   folder.path()),
             (QStringList { QStringLiteral("HV207 A.xml:2"), QStringLiteral("HV208 B.xml:2") }));
}

void tst_ToolCheck::shouldFindKeyDataWithoutAnEntry()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet key='a'/>"));
    const QString data = folder.add(QStringLiteral("keys.xml"),
                                    "<hovletkeys>\n<key name='a' since='1'/>\n"
                                    "<key name='b' HVLocation='x'/></hovletkeys>");
    QCOMPARE(found({ QStringLiteral("--key-data"), data }, folder.path()),
             (QStringList { QStringLiteral("HV209 keys.xml:3"),
                            QStringLiteral("HV205 keys.xml:3") }));
    const QString other =
            folder.add(QStringLiteral("other.xml"), "<hovletkeys>\n<clef name='a'/></hovletkeys>");
    QCOMPARE(found({ QStringLiteral("--key-data"), other }, folder.path()),
             QStringList { QStringLiteral("HV103 other.xml:2") });
    const ToolRun missing(
            QStringList(checkArguments("text", folder.path()))
            + QStringList { QStringLiteral("--key-data"), QStringLiteral("none.xml") });
    QCOMPARE(missing.status, 2);
    QVERIFY2(missing.error.contains("none.xml"), missing.error.constData());
}

void tst_ToolCheck::shouldFindNothingWrongWithShippedContent_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : { "Components/Hovlets/Packages", "examples/minimal/content",
                              "examples/drawing/packages", "docs/images" })
        QTest::newRow(path) << QStringLiteral(HOVLETS_SOURCE_DIR "/") + QLatin1String(path);
}

void tst_ToolCheck::shouldFindNothingWrongWithShippedContent()
{
    QFETCH(QString, path);
    QStringList options;
    if (QFile::exists(path + QStringLiteral("/keys.xml")))
        options = QStringList { QStringLiteral("--key-data"), path + QStringLiteral("/keys.xml") };
    QCOMPARE(found(options, path), QStringList());
}

HOVLETS_TEST_MAIN(tst_ToolCheck)
#include "tst_tool_check.moc"
