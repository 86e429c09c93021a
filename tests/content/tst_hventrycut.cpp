// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVEntryCut.h"
#include "HVEntryScan.h"
#include "HVLimits.h"
#include "IndexTest.h"
#include "TestMain.h"
#include "WholeParse.h"

#include <QtTest/QSignalSpy>

using namespace Hovlets;

namespace {

constexpr int Depth = 512;

QByteArray cut(const QByteArray &file, const char *key = "a")
{
    return withoutOtherEntries(file, QString::fromUtf8(key), Depth, file.size()).bytes;
}

/// The state with a limit of \a most bytes.
HVEntryCut::State stateOf(const QByteArray &file, qint64 most)
{
    return withoutOtherEntries(file, QStringLiteral("a"), Depth, most).state;
}

/// The result of a look-up that parses all of \a file.
QString found(const QByteArray &file)
{
    const DebugLog silence;
    const WholeParse parse(file, QStringLiteral("a"));
    const HVXmlElement *entry = parse.entry();
    return entry ? parse.root()->toXml() + parse.root()->content() + entry->content() : QString();
}

} // namespace

class tst_HVEntryCut : public IndexTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        IndexTest::cleanup();
        HVLimits::setCurrent({});
    }

    void shouldLeaveOtherEntriesOut_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QByteArray>("remaining");
        const auto row = [](const char *name, const char *file, const char *remaining) {
            QTest::newRow(name) << QByteArray(file) << QByteArray(remaining);
        };
        row("others",
            "<hovlets> <hovlet key=\"b\"/> <hovlet key=\"a\"/> <hovlet key='c'></hovlet> "
            "</hovlets>",
            "<hovlets>  <hovlet key=\"a\"/>  </hovlets>");
        row("nested",
            "<hovlets><hovlet key=\"b\"><p>x<q/></p></hovlet><hovlet key=\"a\"/></hovlets>",
            "<hovlets><hovlet key=\"a\"/></hovlets>");
        row("no entries", "<hovlets><p><q/></p>t<hovlet/></hovlets>", "<hovlets>t<?x ?></hovlets>");
        row("around the root",
            "<?xml version=\"1.0\"?><!-- a --><?b c?>\n<hovlets></hovlets>\n<!-- -->",
            "<?xml version=\"1.0\"?><!-- a --><?b c?>\n<hovlets></hovlets>\n<!-- -->");
        row("sections in entries",
            "<hovlets><hovlet key=\"b\"><![CDATA[</hovlet><]]><!-- < --><?p < "
            "?></hovlet></hovlets>",
            "<hovlets></hovlets>");
        row("references", "<hovlets><hovlet key=\"b\" c='&lt;&#228;'>&amp;</hovlet></hovlets>",
            "<hovlets></hovlets>");
        row("hexadecimal references",
            "<hovlets><hovlet key=\"b\" c='&#x2014;'>&#xcfff;</hovlet></hovlets>",
            "<hovlets></hovlets>");
        row("a reference in a key", "<hovlets><hovlet key=\"&#98;\"/></hovlets>",
            "<hovlets><hovlet key=\"&#98;\"/></hovlets>");
        row("references in three keys",
            "<hovlets><hovlet key=\"&lt;b\"/><hovlet key=\"c&#45;\"/><hovlet key=\"&gt;\"/>"
            "<hovlet key=\"b\"/><hovlet key=\"a\"/></hovlets>",
            "<hovlets><hovlet key=\"&lt;b\"/><hovlet key=\"c&#45;\"/><hovlet key=\"&gt;\"/>"
            "<hovlet key=\"a\"/></hovlets>");
        row("a third entry with the key",
            "<hovlets><hovlet key=\"a\"/><hovlet key=\"a\"/><hovlet key=\"a\"/></hovlets>",
            "<hovlets><hovlet key=\"a\"/><hovlet key=\"a\"/></hovlets>");
        row("text that would join", "<hovlets>]]<hovlet/>></hovlets>",
            "<hovlets>]]<?x ?>></hovlets>");
        row("line ends that would join", "<hovlets>\r<hovlet/>\n<hovlet key=\"a\"/></hovlets>",
            "<hovlets>\r<?x ?>\n<hovlet key=\"a\"/></hovlets>");
        row("beyond ASCII",
            "<hovlets><hovlet key=\"b\">\xc3\xa4\xe2\x82\xac\xf0\x9f\x98\x80</hovlet></hovlets>",
            "<hovlets></hovlets>");
        row("the first key counts", "<hovlets><hovlet key=\"b\" key=\"a\"/></hovlets>",
            "<hovlets></hovlets>");
    }

    void shouldLeaveOtherEntriesOut()
    {
        QFETCH(QByteArray, file);
        QTEST(cut(file), "remaining");
        QCOMPARE(found(cut(file)), found(file));
    }

    void shouldLeaveDoubtfulFilesAlone_data()
    {
        QTest::addColumn<QByteArray>("file");
        const auto row = [](const char *name, const QByteArray &file) {
            QTest::newRow(name) << file;
        };
        const auto inEntry = [](const QByteArray &text) {
            return "<hovlets><hovlet key=\"b\">" + text + "</hovlet><hovlet key=\"a\"/></hovlets>";
        };
        row("empty", "");
        row("another root", "<x><hovlet key=\"b\"/></x>");
        row("root in the root", "<hovlets><hovlets/></hovlets>");
        row("no end", "<hovlets><hovlet key=\"b\"/>");
        row("something after the root", "<hovlets/>x");
        row("another root after it", "<hovlets/><hovlets/>");
        row("end tag of another", inEntry("<p></q>"));
        row("end tag too many", inEntry("</p>"));
        row("end tag missing", inEntry("<p>"));
        row("prefix", inEntry("<x:p/>"));
        row("prefix of an attribute", inEntry("<p xml:lang=\"de\"/>"));
        row("no space before an attribute", inEntry("<p a=\"\"b=\"\"/>"));
        row("attribute without a value", inEntry("<p a/>"));
        row("attribute without quotes", inEntry("<p a=b/>"));
        row("less-than in an attribute", inEntry("<p a=\"<\"/>"));
        row("space after a slash", inEntry("<p/ >"));
        row("name with a digit", inEntry("<1/>"));
        row("name beyond ASCII", inEntry("<\xc3\xa4/>"));
        row("entity", inEntry("&x;"));
        row("ampersand", inEntry("&"));
        row("reference to nothing", inEntry("&#0;"));
        row("reference to a large number", inEntry("&#65535;"));
        row("hexadecimal reference", inEntry("&#xffff;"));
        row("hexadecimal reference to a surrogate", inEntry("&#xd83d;"));
        row("end of a section in text", inEntry("]]>"));
        row("hyphens in a comment", inEntry("<!-- -- -->"));
        row("short comment", inEntry("<!-->"));
        row("instruction called xml", inEntry("<?XML x?>"));
        row("instruction without a name", inEntry("<? x?>"));
        row("declaration", inEntry("<!ENTITY a 'b'>"));
        row("document type", "<!DOCTYPE hovlets><hovlets><hovlet key=\"b\"/></hovlets>");
        row("section without an end", inEntry("<![CDATA["));
        row("control character", inEntry("\x01"));
        row("control character in CDATA", inEntry("<![CDATA[\x1f]]>"));
        row("zero", inEntry(QByteArray(1, '\0')));
        row("half a character", inEntry("\xc3"));
        row("overlong", inEntry("\xc0\x80"));
        row("surrogate", inEntry("\xed\xa0\x80"));
        row("end of the document as the reader sees it", inEntry("\xef\xbf\xbf"));
        row("deep", inEntry(QByteArray("<x>").repeated(600) + QByteArray("</x>").repeated(600)));
    }

    void shouldLeaveDoubtfulFilesAlone()
    {
        QFETCH(QByteArray, file);
        QVERIFY(cut(file).isNull());
    }

    /// Damages ordinary files at random: what is cut finds the same, and many are still cut.
    void shouldNeverChangeWhatIsFound()
    {
        const QByteArray file = "<?xml version='1.0'?>\n<!-- c --><hovlets search=\"D\">t\r\n"
                                "<hovlet key=\"b\"><p c=\"d\">x &lt;</p><![CDATA[<y>]]></hovlet>]]"
                                "<hovlet key='a' title=\"T\"><p>&#228;</p></hovlet><?p q?>"
                                "<hovlet key=\"c\"/>\n<p><hovlet key=\"a\"/></p></hovlets>\n";
        const QByteArray bytes = "<>/&;\"'= \r\n!-?[]ax#1\x01\xc3\xa4\xef";
        quint32 state = 1;
        const auto random = [&](qsizetype most) {
            state = state * 1664525 + 1013904223;
            return int((state >> 8) % quint32(most));
        };
        int cuts = 0;
        for (int round = 0; round < 20000; ++round) {
            QByteArray damaged = file;
            for (int i = random(3); i >= 0; --i) {
                const int at = random(damaged.size());
                if (random(2))
                    damaged.insert(at, bytes.at(random(bytes.size())));
                else
                    damaged.remove(at, 1 + random(6));
            }
            const QByteArray remaining = cut(damaged);
            if (remaining.isNull())
                continue;
            ++cuts;
            if (found(remaining) != found(damaged))
                QFAIL(damaged.toPercentEncoding(" <>=\"'/&;?![]-:#\n").constData());
        }
        QVERIFY2(cuts > 1000, qPrintable(QString::number(cuts)));
    }

    void shouldStopWhereTooMuchWouldRemain_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("text") << QByteArray("<hovlets>") << QByteArray("</hovlets>");
        QTest::newRow("comment") << QByteArray("<hovlets><!--") << QByteArray("--></hovlets>");
        QTest::newRow("comment before the root")
                << QByteArray("<!--") << QByteArray("--><hovlets/>");
        QTest::newRow("instruction") << QByteArray("<hovlets><?a ") << QByteArray("?></hovlets>");
        QTest::newRow("CDATA") << QByteArray("<hovlets><![CDATA[") << QByteArray("]]></hovlets>");
        QTest::newRow("attribute of the root")
                << QByteArray("<hovlets a=\"") << QByteArray("\"></hovlets>");
        QTest::newRow("entry") << QByteArray("<hovlets><hovlet key=\"a\"><p>")
                               << QByteArray("</p></hovlet></hovlets>");
    }

    void shouldStopWhereTooMuchWouldRemain()
    {
        constexpr qint64 Most = 100000;
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        const QByteArray file = before + QByteArray(4 * Most, 'x') + after;
        QCOMPARE(stateOf(file, file.size()), HVEntryCut::Done);
        const HVEntryCut large = withoutOtherEntries(file, QStringLiteral("a"), Depth, Most);
        QCOMPARE(large.state, HVEntryCut::TooLarge);
        QVERIFY(large.offset < 2 * Most);
        // What follows is not read.
        QCOMPARE(stateOf(file + "<&", Most), HVEntryCut::TooLarge);
        QCOMPARE(stateOf(file + "<&", file.size()), HVEntryCut::InDoubt);
    }

    void shouldStopAtASecondEntryOfALargeFile()
    {
        const QByteArray twice = "<hovlets><hovlet key=\"a\"/><hovlet key=\"a\"/>";
        const QByteArray others = QByteArray("<hovlet key=\"b\"/>").repeated(100);
        QCOMPARE(stateOf(twice + others + "</hovlets>", 10000), HVEntryCut::Done);
        QCOMPARE(stateOf(twice + others + "<&", 10000), HVEntryCut::InDoubt);
        QCOMPARE(stateOf(twice + others + "<&", 100), HVEntryCut::Ambiguous);
    }

    void shouldStopAtAnElementWithTooManyAttributes()
    {
        const auto file = [](int count) {
            QByteArray attributes;
            for (int i = 0; i < count; ++i)
                attributes += " a" + QByteArray::number(i) + "=\"\"";
            return "<hovlets><hovlet" + attributes + "/></hovlets>";
        };
        QCOMPARE(stateOf(file(10000), 1000000), HVEntryCut::Done);
        QCOMPARE(stateOf(file(10001), 1000000), HVEntryCut::InDoubt);
        QVERIFY(!HVEntryScan(QStringLiteral("a")).mayHold(file(10000)));
        QVERIFY(HVEntryScan(QStringLiteral("a")).mayHold(file(10001)));
    }

    void shouldListKeysAsTheParserDoes_data()
    {
        QTest::addColumn<QByteArray>("inRoot");
        QTest::addColumn<bool>("isDoubtful");
        const auto row = [](const char *name, const char *inRoot, bool isDoubtful) {
            QTest::newRow(name) << QByteArray(inRoot) << isDoubtful;
        };
        row("none", "text", false);
        row("several",
            "<hovlet key='b'/><hovlet/><hovlet key=''/><p key='p'/><hovlet key='b'>"
            "<hovlet key='n'/></hovlet><p><hovlet key='q'/></p>",
            false);
        row("other letters", "<hovlet key='\xc3\xa4'/>", false);
        row("reference", "<hovlet key='&#228;'/>", true);
        row("white space", "<hovlet key='a\tb'/>", true);
        row("two keys", "<hovlet key='a' key='b'/>", true);
        row("root in the root", "<hovlets key='a'/>", true);
        row("not closed", "<hovlet key='a'><p></hovlet>", true);
    }

    void shouldListKeysAsTheParserDoes()
    {
        QFETCH(QByteArray, inRoot);
        QFETCH(bool, isDoubtful);
        const QByteArray file = "<hovlets>" + inRoot + "</hovlets>\n";
        QCOMPARE(!keysOfEntries(file, Depth), isDoubtful);

        // With a declaration, the parser reads the same file.
        const DebugLog silence;
        index("Plain", "a", file);
        const QStringList keys = m_index->keys();
        index("Declared", "a", "<!DOCTYPE hovlets>\n" + file);
        QCOMPARE(m_index->keys(), keys + keys);
        if (!isDoubtful)
            QCOMPARE(*keysOfEntries(file, Depth), keys);
    }

    void shouldListTheKeysOfAFileThatIsTooLargeToParse()
    {
        HVLimits limits;
        limits.parsedSize = 1000;
        HVLimits::setCurrent(limits);
        QByteArray entries;
        for (int i = 0; i < 1000; ++i)
            entries += "<hovlet key=\"" + QByteArray::number(i) + "\"/>";
        index("Foo", "a", "<hovlets>" + entries + "</hovlets>\n");
        QCOMPARE(m_index->keys().size(), 1000);

        QSignalSpy skipped(m_index.get(), &HVIndex::fileSkipped);
        const QString large =
                index("Foo", "b", "<!DOCTYPE hovlets>\n<hovlets>" + entries + "</hovlets>\n");
        QCOMPARE(m_index->keys().size(), 1000);
        QCOMPARE(skipped.size(), 1);
        QCOMPARE(skipped.constFirst().constFirst().toString(),
                 large + QStringLiteral(" is skipped: more than 1000 bytes to parse for an entry"));
    }

    void shouldFindAnEntryAmongManyWithoutParsingThem()
    {
        QByteArray file = "<hovlets>";
        for (int i = 0; i < 100000; ++i)
            file += "<hovlet key=\"k" + QByteArray::number(i)
                    + "\"><p>Some text here</p></hovlet>\n";
        QVERIFY(file.size() > HVLimits().parsedSize);
        index("Foo", "many", file + entry("a", "found") + "</hovlets>");
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("found"));
    }

    void shouldSkipWhatIsTooLargeToParse()
    {
        HVLimits limits;
        limits.parsedSize = 1000;
        HVLimits::setCurrent(limits);
        const QByteArray other = "<hovlet key=\"b\">" + QByteArray(2000, 'x') + "</hovlet>";
        const QByteArray wanted = entry("a", "1");
        index("Foo", "good", "<hovlets>" + other + wanted + "</hovlets>");
        const QSignalSpy skipped(m_index.get(), &HVIndex::fileSkipped);
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("1"));
        QCOMPARE(skipped.size(), 0);

        const QString latin = index("Foo", "latin",
                                    "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>\n<hovlets>"
                                            + other + wanted + "</hovlets>");
        const QString large =
                index("Foo", "large",
                      "<hovlets>" + QByteArray(2000, 'x') + entry("a", "2") + "</hovlets>");
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("1"));
        const QString reason =
                QStringLiteral(" is skipped: more than 1000 bytes to parse for an entry");
        QCOMPARE(skipped.size(), 2);
        QCOMPARE(skipped.at(0).constFirst().toString(), large + reason);
        QCOMPARE(skipped.at(1).constFirst().toString(), latin + reason);
    }
};

HOVLETS_TEST_MAIN(tst_HVEntryCut)
#include "tst_hventrycut.moc"
