// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "RecordedFile.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtTest/QtTest>

using namespace Hovlets;

namespace {

QByteArray bytesOf(const RecordedFile &file)
{
    QFile source(file.path());
    return source.open(QIODevice::ReadOnly) ? source.readAll() : QByteArray();
}

constexpr auto Written = R"(<?xml version="1.0" encoding="UTF-8"?>
<!-- mine -->
<hovlets locale="de_DE" search="Default">

    <hovlet key="a" title="A"><p>first</p></hovlet> <!-- between -->
    <hovlet title='Old' shortcut="Ctrl+B" key='b'>
        <p>old <![CDATA[<b>text</b>]]></p>
        <img src="b.png" alt="B"/>
        <!-- why -->
        <link href="topic">More</link>
    </hovlet>
</hovlets>
)";

} // namespace

class tst_RecordedFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldCreateAFileWithFolders()
    {
        const PackageFolder folder;
        const RecordedFile file(folder.path() + text("/Mine.hovlets/Control/Recorded_en_US.xml"));
        QCOMPARE(file.create(text("en_US")), QString());
        QCOMPARE(file.write({ text("a<b"),
                              text("\"A\" & B"),
                              { text("x > 1 & y"), text("<b>c</b>") } }),
                 QString());
        QCOMPARE(bytesOf(file),
                 QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                            "<hovlets locale=\"en_US\" search=\"Default\">\n\n"
                            "    <hovlet key=\"a&lt;b\" title=\"&quot;A&quot; &amp; B\">\n"
                            "        <p>x &gt; 1 &amp; y</p>\n"
                            "        <p><![CDATA[<b>c</b>]]></p>\n"
                            "    </hovlet>\n"
                            "</hovlets>\n"));
        QCOMPARE(file.create(text("de_DE")), QString()); // leaves it
        const auto found = file.find(text("a<b"));
        QVERIFY(found);
        QCOMPARE(found->entry.title, text("\"A\" & B"));
        QCOMPARE(found->entry.paragraphs, QStringList({ text("x > 1 & y"), text("<b>c</b>") }));
        QCOMPARE(found->line, 4);
        QCOMPARE(found->locale, text("en_US"));
    }

    void shouldReplaceOnlyTitleAndParagraphs()
    {
        const PackageFolder folder;
        const RecordedFile file(folder.add(text("file.xml"), Written));
        const auto before = file.find(text("b"));
        QVERIFY(before);
        QCOMPARE(before->line, 6);
        QCOMPARE(before->entry.paragraphs, QStringList(text("old <b>text</b>")));
        QCOMPARE(file.write({ text("b"), text("New"), { text("one"), text("two") } }), QString());
        QByteArray expected(Written);
        const auto begin = expected.indexOf("<hovlet title='Old'");
        const auto end = expected.indexOf("</hovlets>");
        expected.replace(begin, end - begin,
                         "<hovlet key=\"b\" title=\"New\" shortcut=\"Ctrl+B\">\n"
                         "        <p>one</p>\n"
                         "        <p>two</p>\n"
                         "        <img src=\"b.png\" alt=\"B\"/>\n"
                         "        <!-- why -->\n"
                         "        <link href=\"topic\">More</link>\n"
                         "    </hovlet>\n");
        QCOMPARE(bytesOf(file), expected);
    }

    void shouldReplaceAnEmptyEntry()
    {
        const PackageFolder folder;
        const RecordedFile file(
                folder.add(text("file.xml"), "<hovlets locale='de'><hovlet key='k'/></hovlets>"));
        QCOMPARE(file.write({ text("k"), text("K"), {} }), QString());
        QCOMPARE(bytesOf(file),
                 QByteArray("<hovlets locale='de'><hovlet key=\"k\" title=\"K\">\n"
                            "    </hovlet></hovlets>"));
    }

    void shouldKeepACDataEndInText()
    {
        const PackageFolder folder;
        const RecordedFile file(folder.add(text("file.xml"), "<hovlets locale='de'></hovlets>"));
        QCOMPARE(file.write({ text("k"), text("K"), { text("<b>]]></b>") } }), QString());
        QCOMPARE(file.find(text("k"))->entry.paragraphs, QStringList(text("<b>]]></b>")));
    }

    void shouldLeaveAFileThatCannotHoldTheEntry_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("message");
        const QByteArray sound = "<hovlets locale='de'></hovlets>";
        QTest::newRow("a root without an end tag") << QByteArray("<hovlets locale='de'/>")
                                                   << text("K") << text("cannot hold the entry");
        QTest::newRow("a control character")
                << sound << text("K\x01") << text("cannot hold the entry");
        QTest::newRow("a form feed") << sound << text("K\x0c") << text("cannot hold the entry");
        QTest::newRow("another encoding")
                << QByteArray("<?xml version='1.0' encoding='ISO-8859-1'?>\n"
                              "<hovlets locale='de'><hovlet key='a' title='\xc4'/></hovlets>")
                << text("K") << text("is not in UTF-8");
    }

    void shouldLeaveAFileThatCannotHoldTheEntry()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, title);
        QFETCH(QString, message);
        const PackageFolder folder;
        const RecordedFile file(folder.add(text("file.xml"), content));
        const QString failure = file.write({ text("k"), title, {} });
        QVERIFY2(failure.contains(message), qPrintable(failure));
        QCOMPARE(bytesOf(file), content);
    }

    void shouldLeaveADamagedFile()
    {
        const PackageFolder folder;
        const QByteArray damaged = "<hovlets locale='de'><hovlet key='k'></hovlets>";
        const RecordedFile file(folder.add(text("file.xml"), damaged));
        QVERIFY(file.write({ text("k"), text("K"), {} }).contains(text("is not well-formed")));
        QCOMPARE(bytesOf(file), damaged);
        QVERIFY(!RecordedFile(text("/nonexistent/file.xml")).find(text("k")));
        QVERIFY(!RecordedFile(text("/nonexistent/file.xml")).write({}).isEmpty());
    }
};

HOVLETS_TEST_MAIN(tst_RecordedFile)
#include "tst_recordedfile.moc"
