// SPDX-License-Identifier: Apache-2.0
#include "ClipFolder.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtCore/QBuffer>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QXmlStreamReader>
#include <QtGui/QImage>
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
    void shouldFindMediaBeyondTheLimits();
    void shouldFindClipsThatCannotBeOpened();
    void shouldCheckVariantsOfPictures();
    void shouldCheckCaptions_data();
    void shouldCheckCaptions();
    void shouldFindCaptionsBeyondTheLimits_data();
    void shouldFindCaptionsBeyondTheLimits();
    void shouldCheckVariantsOfClips();
    void shouldFindKeyDataWithoutAnEntry();
    void shouldFindNothingWrongWithShippedContent_data();
    void shouldFindNothingWrongWithShippedContent();
    void shouldWriteSarif();
    void shouldWriteJunit();
    void shouldListTheCodes();
    void shouldColourLevelsOnATerminal();
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

void tst_ToolCheck::shouldFindMediaBeyondTheLimits()
{
    ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("a.mp4"), QStringLiteral("64x48"),
                                    QStringLiteral("-t 2 -c:v mpeg4"));
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4'/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), ClipFolder::read(clip));
    QCOMPARE(found({}, folder.path()), QStringList());
    QCOMPARE(found({ QStringLiteral("--max-seconds"), QStringLiteral("0.3") }, folder.path()),
             QStringList { QStringLiteral("HV304 A.xml:2") });
    QCOMPARE(found({ QStringLiteral("--max-megabytes"), QStringLiteral("0.001") }, folder.path()),
             QStringList { QStringLiteral("HV305 A.xml:2") });
}

void tst_ToolCheck::shouldFindClipsThatCannotBeOpened()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4'/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), "no clip");
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV303 A.xml:2") });
}

void tst_ToolCheck::shouldCheckVariantsOfPictures()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a'><img src='a.png'/></hovlet>"));
    const auto add = [&](const char *name, int width) {
        QImage image(width, 10 * width, QImage::Format_RGB32);
        image.fill(Qt::red);
        QBuffer file;
        image.save(&file, "PNG");
        folder.add(QStringLiteral("P.hovlets/Resources/") + QLatin1String(name), file.data());
    };
    add("a.png", 4);
    add("a@2x.png", 8);
    add("a-dark.png", 4);
    add("a-dark@2x.png", 8);
    QCOMPARE(found({}, folder.path()), QStringList());
    add("a@2x.png", 7);
    add("a-dark.png", 8);
    folder.add(QStringLiteral("P.hovlets/Resources/a-dark@2x.png"), "no picture");
    QCOMPARE(found({}, folder.path()),
             (QStringList { QStringLiteral("HV302 A.xml:2"), QStringLiteral("HV311 A.xml:2"),
                            QStringLiteral("HV311 A.xml:2"), QStringLiteral("HV311 A.xml:2") }));
}

void tst_ToolCheck::shouldCheckCaptions_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QString>("name");
    QTest::newRow("beside the clip") << QByteArray() << QStringLiteral("a.vtt");
    QTest::newRow("named") << QByteArray("captions='b.vtt'") << QStringLiteral("b.vtt");
}

void tst_ToolCheck::shouldCheckCaptions()
{
    QFETCH(QByteArray, attribute);
    QFETCH(QString, name);
    const ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("a.mp4"), QStringLiteral("64x48"),
                                    QStringLiteral("-t 0.2 -pix_fmt yuv420p"));
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4' " + attribute + "/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), ClipFolder::read(clip));
    const QString captions = QStringLiteral("P.hovlets/Resources/") + name;
    folder.add(captions, "WEBVTT\n\n00:00.000 --> 00:01.000\nA\n");
    QCOMPARE(found({}, folder.path()), QStringList());
    const QStringList unreadable { QStringLiteral("HV310 A.xml:2") };
    for (const QByteArray &content :
         { QByteArray("WEBVTT"), QByteArray("1\n"), QByteArray("WEBVTT\n\n0 --> 1\nA"),
           QByteArray("WEBVTT\n\n1\n2\n") }) {
        folder.add(captions, content);
        QCOMPARE(found({}, folder.path()), unreadable);
    }
}

void tst_ToolCheck::shouldFindCaptionsBeyondTheLimits_data()
{
    QTest::addColumn<QByteArray>("captions");
    QTest::addColumn<QStringList>("findings");
    const QByteArray times = "00:00.000 --> 00:01.000\n";
    const QStringList tooMany { QStringLiteral("HV312 A.xml:2") };
    QTest::newRow("200") << (times + "A\n\n").repeated(200) + "NOTE The end" << QStringList();
    QTest::newRow("201") << (times + "A\n\n").repeated(201) << tooMany;
    QTest::newRow("large file") << QByteArray(70000, '\n') << tooMany;
    QTest::newRow("long texts") << (times + QByteArray(250, 'x') + "\n\n").repeated(100)
                                << QStringList { QStringLiteral("HV403 A.xml:2") };
}

void tst_ToolCheck::shouldFindCaptionsBeyondTheLimits()
{
    QFETCH(QByteArray, captions);
    QFETCH(QStringList, findings);
    const ClipFolder clips;
    const QString clip = clips.clip(QStringLiteral("a.mp4"), QStringLiteral("64x48"),
                                    QStringLiteral("-t 0.2 -pix_fmt yuv420p"));
    for (const QByteArray &attribute : { QByteArray(), QByteArray(" captions='a.vtt'") }) {
        PackageFolder folder;
        folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                              control("<hovlet key='a' clip='a.mp4'" + attribute + "/>"));
        folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), ClipFolder::read(clip));
        folder.add(QStringLiteral("P.hovlets/Resources/a.vtt"), "WEBVTT\n\n" + captions);
        QCOMPARE(found({}, folder.path()), findings);
    }
}

void tst_ToolCheck::shouldCheckVariantsOfClips()
{
    const ClipFolder clips;
    const auto clip = [&](const char *name, const char *size) {
        return ClipFolder::read(clips.clip(QLatin1String(name), QLatin1String(size),
                                           QStringLiteral("-t 0.2 -pix_fmt yuv420p")));
    };
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control("<hovlet key='a' clip='a.mp4'/>"));
    const QString dense = QStringLiteral("P.hovlets/Resources/a@2x.mp4");
    folder.add(QStringLiteral("P.hovlets/Resources/a.mp4"), clip("a.mp4", "64x48"));
    folder.add(dense, clip("double.mp4", "128x96"));
    QCOMPARE(found({}, folder.path()), QStringList());
    folder.add(dense, clip("wrong.mp4", "128x80"));
    QCOMPARE(found({}, folder.path()), QStringList { QStringLiteral("HV311 A.xml:2") });
    folder.add(dense, clip("double.mp4", "128x96") + QByteArray(2000000, '\0'));
    QCOMPARE(found({ QStringLiteral("--max-megabytes"), QStringLiteral("1") }, folder.path()),
             QStringList { QStringLiteral("HV305 A.xml:2") });
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

void tst_ToolCheck::shouldWriteSarif()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet/>"));
    const ToolRun run(checkArguments("sarif", folder.path()));
    QCOMPARE(run.status, 1);
    QCOMPARE(run.json().value(QLatin1String("version")).toString(), QStringLiteral("2.1.0"));
    const QJsonObject log = run.json().value(QLatin1String("runs")).toArray().first().toObject();
    const QJsonObject result = log.value(QLatin1String("results")).toArray().first().toObject();
    QCOMPARE(result.value(QLatin1String("ruleId")).toString(), QStringLiteral("HV201"));
    QCOMPARE(result.value(QLatin1String("level")).toString(), QStringLiteral("error"));
    const QJsonObject place = result.value(QLatin1String("locations"))
                                      .toArray()
                                      .first()
                                      .toObject()
                                      .value(QLatin1String("physicalLocation"))
                                      .toObject();
    QCOMPARE(place.value(QLatin1String("region"))
                     .toObject()
                     .value(QLatin1String("startLine"))
                     .toInt(),
             2);
    const QString uri = place.value(QLatin1String("artifactLocation"))
                                .toObject()
                                .value(QLatin1String("uri"))
                                .toString();
    QVERIFY2(uri.startsWith(QLatin1String("file:///")) && uri.endsWith(QLatin1String("A.xml")),
             qPrintable(uri));
}

void tst_ToolCheck::shouldWriteJunit()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet/><hovlet/>"));
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("B"), control("<hovlet key='a'/>"));
    const ToolRun run(checkArguments("junit", folder.path()));
    QXmlStreamReader xml(run.output);
    QStringList names;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement)
            names += xml.name().toString();
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(names.mid(0, 2),
             (QStringList { QStringLiteral("testsuites"), QStringLiteral("testsuite") }));
    QCOMPARE(names.count(QStringLiteral("testcase")), 2);
    QCOMPARE(names.count(QStringLiteral("failure")), 2);
    QVERIFY2(run.output.contains("tests=\"2\" failures=\"1\""), run.output.constData());
    QVERIFY(run.output.contains("HV201"));
}

void tst_ToolCheck::shouldColourLevelsOnATerminal()
{
    const QString script = QStandardPaths::findExecutable(QStringLiteral("script"));
    if (script.isEmpty())
        QSKIP("no program that provides a terminal is installed");
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet/>"));
    const auto output = [&](bool hasTerminal, const QString &noColour) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("NO_COLOR"), noColour);
        process.setProcessEnvironment(environment);
        const QString program = QStringLiteral(HOVLETS_PROGRAM);
        if (hasTerminal)
            process.start(
                    script,
                    { QStringLiteral("-qc"),
                      QStringLiteral("'%1' check '%2' 2>/dev/null").arg(program, folder.path()),
                      QStringLiteral("/dev/null") });
        else
            process.start(program, { QStringLiteral("check"), folder.path() });
        process.waitForFinished();
        return process.readAllStandardOutput();
    };
    const QByteArray coloured = output(true, {});
    QVERIFY2(coloured.contains("\x1b[1;31merror\x1b[0m"), coloured.constData());
    for (const QByteArray &plain : { output(true, QStringLiteral("1")), output(false, {}) }) {
        QVERIFY2(plain.contains("error"), plain.constData());
        QVERIFY2(!plain.contains('\x1b'), plain.constData());
    }
}

void tst_ToolCheck::shouldListTheCodes()
{
    const ToolRun run({ QStringLiteral("check"), QStringLiteral("--list-codes") });
    QCOMPARE(run.status, 0);
    QVERIFY2(run.output.startsWith("HV101\terror\t"), run.output.constData());
}

HOVLETS_TEST_MAIN(tst_ToolCheck)
#include "tst_tool_check.moc"
