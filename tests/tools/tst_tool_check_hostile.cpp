// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtCore/QFile>
#include <QtCore/QtEndian>

#include <functional>

#include <sys/stat.h>

namespace {

QByteArray repeat(const QByteArray &piece, int count)
{
    return piece.repeated(count);
}

/// Repeats a piece, with "%1" replaced by the number of each.
QByteArray number(const char *piece, int count)
{
    const QString format = QString::fromLatin1(piece);
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += format.arg(i).toLatin1();
    return all;
}

QByteArray entry(const QByteArray &content, const QByteArray &attributes = {})
{
    return control("<hovlet key='a' " + attributes + ">" + content + "</hovlet>");
}

QByteArray bigEndian(quint32 number)
{
    const quint32 bytes = qToBigEndian(number);
    return { reinterpret_cast<const char *>(&bytes), sizeof bytes };
}

/// The checksum of a chunk in a PNG file.
quint32 checksum(const QByteArray &bytes)
{
    quint32 sum = 0xffffffff;
    for (const char byte : bytes) {
        sum ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xedb88320 : 0);
    }
    return ~sum;
}

/// A PNG file without pixels, which suffices to determine its size.
QByteArray pngHead(quint32 width, quint32 height)
{
    const QByteArray header =
            "IHDR" + bigEndian(width) + bigEndian(height) + QByteArray("\x01\0\0\0\0", 5);
    return "\x89PNG\r\n\x1a\n" + bigEndian(13) + header + bigEndian(checksum(header))
            + bigEndian(1000) + "IDAT";
}

/*!
 * Runs "hovlets check" with limits on CPU time and memory. CPU time, unlike elapsed time, does not
 * depend on the machine's load.
 */
ToolRun boundedCheck(const QString &path)
{
    constexpr int Seconds = 30;
    constexpr int Kilobytes = 4 * 1024 * 1024; // of address space, most of it unused
    const bool isSanitized = qstrlen(HOVLETS_SANITIZED) > 0; // sanitizers reserve far more
    const QString bounds =
            QStringLiteral("ulimit -t %1%2; exec \"$0\" \"$@\"")
                    .arg(Seconds)
                    .arg(isSanitized ? QString() : QStringLiteral(" -v %1").arg(Kilobytes));
    return ToolRun(checkArguments("json", path), {},
                   { QStringLiteral("bash"), QStringLiteral("-c"), bounds,
                     QStringLiteral(HOVLETS_PROGRAM) });
}

/// The codes of all findings, each once.
QStringList codesOf(const ToolRun &run)
{
    QStringList codes;
    const QJsonArray findings = run.json().value(QLatin1String("findings")).toArray();
    for (const auto &finding : findings)
        codes += finding.toObject().value(QLatin1String("code")).toString();
    codes.removeDuplicates();
    codes.sort();
    return codes;
}

} // namespace

/// Tests content that is made to crash the program or keep it busy forever.
class tst_ToolCheckHostile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldSurviveControlFiles_data();
    void shouldSurviveControlFiles();
    void shouldReportWhereALimitIsMet_data();
    void shouldReportWhereALimitIsMet();
    void shouldSkipFilesThatAreTooLarge();
    void shouldNotWaitForPipes();
    void shouldNotDecodeHugePictures();
    void shouldReportPicturesThatTheLibraryRefuses_data();
    void shouldReportPicturesThatTheLibraryRefuses();
    void shouldOpenNoFileThatAClipNames_data();
    void shouldOpenNoFileThatAClipNames();
    void shouldComparePackagesInLinearTime();
    void shouldEndALongSeriesOfFindings();
};

void tst_ToolCheckHostile::shouldSurviveControlFiles_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QStringList>("codes");
    const auto row = [](const char *name, const QByteArray &content, const char *codes) {
        QTest::newRow(name) << content
                            << QString::fromLatin1(codes).split(QLatin1Char(' '),
                                                                Qt::SkipEmptyParts);
    };
    row("content model",
        "<!DOCTYPE h [<!ELEMENT a " + repeat("(", 80000) + "a" + repeat(")", 80000) + ">]>\n"
                + entry({}),
        "HV119");
    row("namespaces",
        "<hovlets search='Default' " + number("xmlns:a%1='u' ", 900) + ">\n<hovlet key='a'>"
                + repeat("<p/>", 900) + "</hovlet></hovlets>",
        "HV403");
    row("attributes of one element", entry({}, number("a%1='' ", 100000)), "HV119");
    row("attributes of many elements", entry(repeat("<p " + number("a%1='' ", 450) + "/>", 400)),
        "HV403");
    row("search",
        "<hovlets search='" + repeat("Default,", 100000) + "'>\n<hovlet key='a'/></hovlets>", "");
    row("search for each entry",
        "<hovlets search='" + repeat("Default,", 20000) + "'>\n"
                + number("<hovlet key='%1' clip='a.mp4'/>", 1000) + "</hovlets>",
        "HV301");
    row("unknown packages",
        "<hovlets search='Default," + number("X%1,", 20000) + "'>\n<hovlet key='a'/></hovlets>",
        "HV206");
    row("links without an end", entry("<p><![CDATA[" + repeat("<a href=\"x\">", 5000) + "]]></p>"),
        "HV403");
    row("quotation marks without an end",
        entry("<p><![CDATA[" + repeat("<a href='", 10000) + "]]></p>"), "HV403");
    row("one long word", entry("<p>" + repeat("x", 1000000) + "</p>"), "HV403");
    row("placeholders without an end", entry("<p>" + repeat("%(x", 30000) + "</p>"), "HV401 HV403");
    row("placeholders in attributes", entry(repeat("<p " + number("a%1='%(x' ", 900) + "/>", 20)),
        "HV401");
    row("long placeholder", entry("<p>%(" + repeat("x", 90000) + "</p>"), "HV401 HV403");
    row("elements in an entry", entry(repeat("<p/>", 200000)), "HV119");
    row("elements in another element", control("<x>" + repeat("<p/>", 200000) + "</x>"), "HV103");
    const auto declared = [](const QByteArray &declarations) {
        return "<!DOCTYPE h [" + declarations + "]>\n" + entry({});
    };
    const QByteArray values = "<!ATTLIST a b (a" + number("|a%1", 20000) + ") #IMPLIED>";
    row("values of an attribute", declared(values), "HV119");
    row("the same value often", declared("<!ATTLIST a b (a" + repeat("|a", 20000) + ") #IMPLIED>"),
        "HV119");
    row("values of many attributes", declared(number("<!ATTLIST a%1 b (a|b|c) #IMPLIED>", 2000)),
        "HV119");
    row("external entities", declared(number("<!ENTITY e%1 SYSTEM 'x'>", 20000)), "HV119");
    row("a few declarations", declared("<!ATTLIST hovlets x (a|b) #IMPLIED><!ENTITY e SYSTEM 'x'>"),
        "");
    row("parameter entity",
        "<!DOCTYPE h [<!ENTITY % p '<!-- " + repeat("x", 60000) + " -->'>" + repeat("%p;", 1000)
                + "]>\n" + entry({}),
        "HV119");
    row("entity in an entity",
        "<!DOCTYPE h [<!ENTITY l0 'x'>"
        "<!ENTITY l1 '&l0;&l0;&l0;&l0;&l0;&l0;&l0;&l0;&l0;&l0;'>"
        "<!ENTITY l2 '&l1;&l1;&l1;&l1;&l1;&l1;&l1;&l1;&l1;&l1;'>"
        "<!ENTITY l3 '&l2;&l2;&l2;&l2;&l2;&l2;&l2;&l2;&l2;&l2;'>"
        "<!ENTITY l4 '&l3;&l3;&l3;&l3;&l3;&l3;&l3;&l3;&l3;&l3;'>"
        "<!ENTITY l5 '&l4;&l4;&l4;&l4;&l4;&l4;&l4;&l4;&l4;&l4;'>"
        "<!ENTITY l6 '&l5;&l5;&l5;&l5;&l5;&l5;&l5;&l5;&l5;&l5;'>"
        "<!ENTITY l7 '&l6;&l6;&l6;&l6;&l6;&l6;&l6;&l6;&l6;&l6;'>]>\n"
                + entry("&l7;"),
        "HV101");
    row("entity with elements",
        "<!DOCTYPE h [<!ENTITY e '" + repeat("&#60;p/>", 1000) + "'>]>\n"
                + entry(repeat("&e;", 1000)),
        "HV119");
    row("character references", entry("<p>" + repeat("&#65;", 400000) + "</p>"), "HV403");
    row("entries", control(number("<hovlet key='%1'/>\n", 100000)), "");
    row("more entries than are listed", control(number("<hovlet key='%1'/>", 210000)), "HV119");
    row("equal keys", control(repeat("<hovlet key='a'/>", 50000)), "HV202");
    row("other encoding",
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n" + entry(repeat("<p>\xf6</p>", 14000)),
        "HV403");
    row("comments", control(repeat("<!-- \n-->", 200000) + "<hovlet key='a'/>"), "");
    row("unknown elements", entry(number("<x%1/>", 5000)), "HV403 HV404");
    row("pictures", entry(number("<img src='%1.png'/>", 5000)), "HV301 HV403");
}

void tst_ToolCheckHostile::shouldSurviveControlFiles()
{
    QFETCH(QByteArray, content);
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), content);
    const ToolRun run = boundedCheck(folder.path());
    QCOMPARE(run.error, QByteArray());
    QTEST(codesOf(run), "codes");
    QCOMPARE(run.status, codesOf(run).isEmpty() ? 0 : 1);
}

void tst_ToolCheckHostile::shouldReportWhereALimitIsMet_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    QTest::newRow("attributes") << "<hovlets search='Default'>\n <hovlet key='a' "
                    + number("a%1='' ", 1001) + "/></hovlets>"
                                << QStringLiteral("HV119 A.xml:2:2");
    QTest::newRow("elements of an entry")
            << control("\n  <hovlet key='a'>" + repeat("<p/>", 50000) + "</hovlet>")
            << QStringLiteral("HV119 A.xml:3:3");
    const QByteArray large = repeat("x", 5000000);
    QTest::newRow("text of an entry")
            << control("<hovlet key='b'/>\n <hovlet key='a'><p>" + large + "</p></hovlet>")
            << QStringLiteral("HV119 A.xml:3:2");
    QTest::newRow("text around the entries") << control("<hovlet key='a'/>\n<!--" + large + "-->\n")
                                             << QStringLiteral("HV119 A.xml:3:5");
    QTest::newRow("large file that is parsed as a whole")
            << "<!DOCTYPE hovlets>\n" + control("<hovlet key='a'/><!--" + large + "-->")
            << QStringLiteral("HV119 A.xml:1:1");
    QTest::newRow("elements of a popup")
            << control("<hovlet key='b'/><hovlet key='a'>" + repeat("<p/>", 1001) + "</hovlet>")
            << QStringLiteral("HV403 A.xml:2:18");
}

void tst_ToolCheckHostile::shouldReportWhereALimitIsMet()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), content);
    QCOMPARE(findingsOf(boundedCheck(folder.path()), true), QStringList { expected });
}

void tst_ToolCheckHostile::shouldSkipFilesThatAreTooLarge()
{
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("Good"),
                          control("<hovlet key='a'/>"));
    const QString large = folder.addControlFile(QStringLiteral("P"), QStringLiteral("Large"),
                                                control("<hovlet key='b'/>"));
    QVERIFY(QFile::resize(large, qint64 { 3 } * 1024 * 1024 * 1024)); // a hole takes up no space
    QCOMPARE(findingsOf(boundedCheck(folder.path())),
             QStringList { QStringLiteral("HV119 Large.xml:1") });
}

void tst_ToolCheckHostile::shouldNotWaitForPipes()
{
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          entry("\n<img src='pipe.png'/>", "clip='pipe.mp4'"));
    folder.add(QStringLiteral("P.hovlets/Resources/file"), "content");
    for (const char *name : { "Resources/pipe.mp4", "Resources/pipe.png", "Control/B.xml" }) {
        const QString pipe = folder.path() + QStringLiteral("/P.hovlets/") + QLatin1String(name);
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    }
    QCOMPARE(findingsOf(boundedCheck(folder.path())),
             (QStringList { QStringLiteral("HV301 A.xml:2"), QStringLiteral("HV301 A.xml:3"),
                            QStringLiteral("HV113 B.xml:1") }));
}

void tst_ToolCheckHostile::shouldNotDecodeHugePictures()
{
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          entry(repeat("<img src='a.png'/>", 15)));
    folder.add(QStringLiteral("P.hovlets/Resources/a.png"), pngHead(20000, 20000));
    QCOMPARE(codesOf(boundedCheck(folder.path())), QStringList { QStringLiteral("HV308") });
}

void tst_ToolCheckHostile::shouldReportPicturesThatTheLibraryRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("code");
    QTest::newRow("progressive JPEG that takes 12 bytes per pixel")
            << "a.jpg"
            << QByteArray::fromHex("ffd8 ffc2 0014 08 169e 169e 04 011100 021100 031100 041100"
                                   "ffda 0008 01 01 00 00 3f 00")
            << "HV308";
    QTest::newRow("GIF with a frame larger than the picture")
            << "a.gif"
            << QByteArray::fromHex("474946383961 0200 0200 80 0000 000000 ffffff"
                                   "2c 0000 0000 0400 0400 00 02 02 4401 00 3b")
            << "HV302";
    QTest::newRow("JPEG with a marker without a length")
            << "a.jpg" << QByteArray::fromHex("ffd8 ffd0 ffe0 0002 ffd9") << "HV302";
}

void tst_ToolCheckHostile::shouldReportPicturesThatTheLibraryRefuses()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    QFETCH(QString, code);
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          entry("<img src='" + name.toLatin1() + "'/>"));
    folder.add(QStringLiteral("P.hovlets/Resources/") + name, content);
    QCOMPARE(codesOf(boundedCheck(folder.path())), QStringList { code });
}

void tst_ToolCheckHostile::shouldOpenNoFileThatAClipNames_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("playlist that names itself")
            << "a.m3u8" << QByteArray("#EXTM3U\n#EXTINF:1,\na.m3u8\n#EXT-X-ENDLIST\n");
    QTest::newRow("live playlist")
            << "a.m3u8"
            << QByteArray("#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nhttp://192.0.2.1/a.ts\n");
    QTest::newRow("playlist of a pipe")
            << "a.m3u8" << QByteArray("#EXTM3U\n#EXTINF:1,\npipe\n#EXT-X-ENDLIST\n");
    QTest::newRow("list that names itself")
            << "a.ffconcat" << QByteArray("ffconcat version 1.0\nfile a.ffconcat\n");
    QTest::newRow("no clip") << "a.mp4" << QByteArray("no clip");
}

void tst_ToolCheckHostile::shouldOpenNoFileThatAClipNames()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, content);
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          entry({}, "clip='" + name.toLatin1() + "'"));
    const QString clip = folder.add(QStringLiteral("P.hovlets/Resources/") + name, content);
    const QString pipe = QFileInfo(clip).path() + QStringLiteral("/pipe");
    QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const ToolRun run = boundedCheck(folder.path());
    QCOMPARE(run.error, QByteArray()); // messages of the decoders are not for authors
    QCOMPARE(findingsOf(run), QStringList { QStringLiteral("HV303 A.xml:2") });
}

void tst_ToolCheckHostile::shouldComparePackagesInLinearTime()
{
    constexpr int Files = 400;
    const PackageFolder folder;
    for (int i = 0; i < Files; ++i)
        folder.addControlFile(QStringLiteral("P"), QString::number(i),
                              control(number("<hovlet key='%1'/>", 100), "locale='en_US'"));
    const ToolRun run = boundedCheck(folder.path());
    QCOMPARE(codesOf(run), QStringList { QStringLiteral("HV203") });
    QCOMPARE(findingsOf(run).size(), (Files - 1) * 100);
}

void tst_ToolCheckHostile::shouldEndALongSeriesOfFindings()
{
    constexpr int Longest = 1000;
    const PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"),
                          control(repeat("<hovlet/>", 2 * Longest)));
    const QStringList texts = messages(folder.path());
    QCOMPARE(texts.size(), Longest);
    QVERIFY2(texts.last().endsWith(QLatin1String("are not listed")), qPrintable(texts.last()));
    QVERIFY(!texts.first().contains(QLatin1String("not listed")));
}

HOVLETS_TEST_MAIN(tst_ToolCheckHostile)
#include "tst_tool_check_hostile.moc"
