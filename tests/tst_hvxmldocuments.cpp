// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "XmlReading.h"

#include <string>

using namespace Hovlets;

namespace {

int skipAll(const QString &, const QXmlAttributes &, void *)
{
    return HVXmlParser::SkipElement | HVXmlParser::SkipChildren;
}

/// "a" as often as \a times, through an entity of 2,048 of them.
QByteArray entityFlood(int times, const QByteArray &before, const QByteArray &after)
{
    return "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(2048, 'a') + "\">]>" + before
            + QByteArray("&e;").repeated(times / 2048) + QByteArray(times % 2048, 'a') + after;
}

} // namespace

/// What the parser makes of documents, those included that mean harm.
class tst_HVXmlDocuments : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadFromASourceInPieces()
    {
        QByteArray document = "<a>" + QByteArray("<b>text</b>").repeated(5000) + "</a>";
        QBuffer buffer(&document);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QXmlInputSource source(&buffer);
        HVXmlParser parser;
        const QList<QObject *> list = parser.read(&source);
        QCOMPARE(list.size(), 1);
        QCOMPARE(list.constFirst()->children().size(), 5000);
        qDeleteAll(list);
    }

    void shouldDeliverTextAsItStands()
    {
        HVXmlParser parser;
        const Objects objects =
                read(parser, "<a>\n  one<b> two </b>\n<![CDATA[<c>&]]>&lt;&#228;&#x20ac;&no;.</a>");
        QCOMPARE(element(objects)->content(), QStringLiteral("\n  one\n<c>&<\u00e4\u20ac."));
        QCOMPARE(element(objects)->childElement(QStringLiteral("b"))->content(),
                 QStringLiteral(" two "));
        QCOMPARE(element(objects)->children().size(), 1);
    }

    void shouldTakeWhiteSpaceForContent()
    {
        HVXmlParser parser;
        const Objects objects = read(parser, "<!DOCTYPE a [<!ELEMENT a (b)>]><a>\n<b/>\t</a>");
        QCOMPARE(element(objects)->content(), QStringLiteral("\n\t"));

        // Also where a reader tells the two apart.
        struct Space : HVXmlParser
        {
            bool startElement(const QString &uri, const QString &local, const QString &qName,
                              const QXmlAttributes &atts) override
            {
                return HVXmlParser::startElement(uri, local, qName, atts)
                        && ignorableWhitespace(QStringLiteral("  "));
            }
        } space;
        QCOMPARE(element(read(space, "<a/>"))->content(), QStringLiteral("  "));
    }

    void shouldReturnWhatStoodBeforeAnError_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("tree");
        QTest::newRow("empty") << QByteArray() << QString();
        QTest::newRow("no element") << QByteArray("<!-- c -->") << QString();
        QTest::newRow("text") << QByteArray("text") << QString();
        QTest::newRow("cut in a tag") << QByteArray("<a><b") << QStringLiteral("<a/>");
        QTest::newRow("cut in text") << QByteArray("<a><b>x") << QStringLiteral("<a><b/></a>");
        QTest::newRow("not closed") << QByteArray("<a><b/>") << QStringLiteral("<a><b/></a>");
        QTest::newRow("wrong end tag") << QByteArray("<a><b></a>") << QStringLiteral("<a><b/></a>");
        QTest::newRow("no quotes")
                << QByteArray("<a><b/><c k=1/></a>") << QStringLiteral("<a><b/></a>");
        QTest::newRow("two roots") << QByteArray("<a/><b/>") << QStringLiteral("<a/>");
        QTest::newRow("text behind") << QByteArray("<a/>x") << QStringLiteral("<a/>");
        QTest::newRow("not a number")
                << QByteArray("<a><b/>&#xZ;</a>") << QStringLiteral("<a><b/></a>");
    }

    void shouldReturnWhatStoodBeforeAnError()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, tree);
        HVXmlParser parser;
        DebugLog log;
        const Objects objects = read(parser, document);
        QCOMPARE(log.lines().size(), 1);
        const QRegularExpression line(QStringLiteral("^Fatal error at \\d+,\\d+ : \\S.*$"));
        QVERIFY2(line.match(log.lines().constFirst()).hasMatch(),
                 qPrintable(log.lines().constFirst()));
        QCOMPARE(flat(objects), tree);
        QCOMPARE(objects.size(), tree.isEmpty() ? 0U : 1U);
    }

    void shouldTellLineColumnAndReasonOfAnError()
    {
        HVXmlParser parser;
        QTest::ignoreMessage(QtDebugMsg, "Fatal error at 12345,678 : of %1 \"x\"");
        QVERIFY(!parser.fatalError(QXmlParseException(QStringLiteral("of %1 \"x\""), 678, 12345)));
    }

    void shouldKnowWhetherTheRootClosed()
    {
        HVXmlParser parser;
        DebugLog log;
        read(parser, "<a><b/>");
        QVERIFY(!parser.isClosed());
        read(parser, "<a><b/></a>x");
        QVERIFY(parser.isClosed());
        QCOMPARE(log.fatalErrors(), 2);
    }

    void shouldRefuseToNestDeeperThan512()
    {
        const auto nested = [](int depth) {
            return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
        };
        HVXmlParser parser;
        {
            const Objects objects = read(parser, nested(512));
            QCOMPARE(element(objects)->childElementList(QString()).size(), 511);
            QVERIFY(parser.isClosed());
        }
        for (int depth : { 513, 100000 }) {
            DebugLog log;
            const Objects objects = read(parser, nested(depth));
            QCOMPARE(log.fatalErrors(), 1);
            QCOMPARE(log.lines().size(), 1);
            QCOMPARE(element(objects)->childElementList(QString()).size(), 511);
            QVERIFY(!parser.isClosed());
        }

        // Elements that nobody builds take up the reader's stack just as well.
        HVXmlParser skipping(&skipAll);
        DebugLog log;
        QVERIFY(read(skipping, nested(513)).empty());
        QCOMPARE(log.fatalErrors(), 1);
    }

    void shouldStopAfter64MiCharacters_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("text") << QByteArray("<a><b>") << QByteArray("</b></a>");
        QTest::newRow("attribute") << QByteArray("<a><b k=\"") << QByteArray("\"/></a>");
    }

    void shouldStopAfter64MiCharacters()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        constexpr int Most = 64 * 1024 * 1024;
        HVXmlParser parser(&skipAll); // what counts is delivered text, kept or not
        read(parser, entityFlood(Most, before, after));
        QVERIFY(parser.isClosed());
        // The count begins anew with each read.
        read(parser, entityFlood(Most, before, after));
        QVERIFY(parser.isClosed());

        DebugLog log;
        read(parser, entityFlood(Most + 1, before, after));
        QVERIFY(!parser.isClosed());
        QCOMPARE(log.fatalErrors(), 1);
    }

    void shouldRefuseAFloodOfReferencesToEntities()
    {
        HVXmlParser parser;
        const QByteArray body = "<a>" + QByteArray("&e;").repeated(70000) + "</a>";

        const QByteArray parameters = QByteArray("<!-- %e; -->").repeated(70000) + "<a/>";
        const QByteArray declared = "<!DOCTYPE a [<!ENTITY e 'x'>";
        QList<QByteArray> floods { declared + "]>" + body, declared + "]>" + parameters };
        for (const char *spelled : { "&#38;e;", "&#x26;e;", "&#037;e;", "&#x0025;e;" }) {
            const QByteArray value = QByteArray(spelled).repeated(70000);
            floods += declared + "<!ENTITY f '" + value + "'>]><a/>";
        }
        for (const QByteArray &flood : std::as_const(floods)) {
            DebugLog log;
            QVERIFY(read(parser, flood).empty());
            QCOMPARE(log.lines(),
                     QStringList {
                             QStringLiteral("Fatal error at 1,1 : too many entity references") });
        }
    }

    void shouldNotTakeSignsOfTextForReferencesToEntities()
    {
        const QByteArray content =
                "<a>" + QByteArray("100 %, %(n)s &amp; &lt;&gt;&quot;&apos;").repeated(20000);
        HVXmlParser parser;
        // Those that XML declares itself keep their meaning.
        const QByteArray declared = "<!DOCTYPE a [<!ENTITY e '" + QByteArray(20000, 'x')
                + "'><!ENTITY gt '" + QByteArray(20000, 'x') + "'>]>";
        const auto objects = read(parser, declared + content + "&e;</a>");
        QCOMPARE(objects.size(), size_t(1));
        QCOMPARE(element(objects)->content().size(), 20000 * 19 + 20000);
    }

    void shouldReadWhatGrowsLittleByItsEntities_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<int>("length");
        const QByteArray large =
                "<!DOCTYPE a [<!ENTITY e '" + QByteArray(30000, 'x') + "'><!ENTITY f 'y'>]><a>&e;";
        const QByteArray day = QByteArray("&#x65E5;").repeated(70000);
        QTest::newRow("none declared")
                << QByteArray("<a><!-- <!ENTITY is not used here -->" + day + "</a>") << 70000;
        QTest::newRow("none declared, unknown ones")
                << QByteArray("<a><!-- <!ENTITY is not used here -->x"
                              + QByteArray("&nbsp;").repeated(70000) + "</a>")
                << 1;
        QTest::newRow("one, used once, and characters by number")
                << QByteArray("<!DOCTYPE a [<!ENTITY f 'y'>]><a>&f;" + day + "</a>") << 70001;
        QTest::newRow("a large one, used once, and characters by number")
                << QByteArray(large + QByteArray("&#228;").repeated(3000) + "</a>") << 33000;
        QTest::newRow("a large one, used once, and a small one")
                << QByteArray(large + QByteArray("&f;").repeated(3000) + "</a>") << 33000;
        QTest::newRow("signs of text")
                << QByteArray(large + QByteArray("100%done ").repeated(70000) + "</a>") << 660000;
    }

    void shouldReadWhatGrowsLittleByItsEntities()
    {
        QFETCH(QByteArray, document);
        QFETCH(int, length);
        HVXmlParser parser;
        const auto objects = read(parser, document);
        QCOMPARE(objects.size(), size_t(1));
        QCOMPARE(element(objects)->content().size(), length);
    }

    void shouldCountHowFarAllEntitiesGrow()
    {
        // Each of them alone would do.
        QByteArray document = "<!DOCTYPE a [";
        QByteArray references;
        for (const char *name : { "e", "f" }) {
            document += "<!ENTITY " + QByteArray(name) + " '" + QByteArray(50000, 'x') + "'>";
            references += QByteArray("&" + QByteArray(name) + ";").repeated(1000);
        }
        DebugLog log;
        HVXmlParser parser(&skipAll);
        read(parser, document + "]><a><b k=\"" + references + "\"/></a>");
        QCOMPARE(log.fatalErrors(), 1);
        QVERIFY2(log.lines().constFirst().startsWith(QLatin1String("Fatal error at 1,1000")),
                 qPrintable(log.lines().constFirst()));
    }

    void shouldTakeTextWithEntitiesInPieces()
    {
        // A flood is then stopped on its way instead of gathered first.
        struct Pieces : HVXmlParser
        {
            bool characters(const QString &ch) override
            {
                longest = qMax(longest, int(ch.size()));
                return HVXmlParser::characters(ch);
            }
            int longest = 0;
        } parser;
        const int size = 100 * 2048;
        QCOMPARE(element(read(parser, entityFlood(size, "<a>", "</a>")))->content().size(), size);
        QVERIFY2(parser.longest < 10000, qPrintable(QString::number(parser.longest)));
    }

    void shouldRefuseAnEntityThatGrowsByItsReferences_data()
    {
        QTest::addColumn<QByteArray>("document"); // %1: the entity, %2: the references
        QTest::newRow("attribute")
                << QByteArray("<!DOCTYPE a [<!ENTITY e \"%1\">]><a><b k=\"%2\"/></a>");
        QTest::newRow("text") << QByteArray("<!DOCTYPE a [<!ENTITY e \"%1\">]><a>%2</a>");
        QTest::newRow("entity") << QByteArray(
                "<!DOCTYPE a [<!ENTITY % e \"%1\"><!ENTITY f \"%2\">]><a/>");
    }

    void shouldRefuseAnEntityThatGrowsByItsReferences()
    {
        QFETCH(QByteArray, document);
        const QByteArray reference = document.contains('f') ? "%e;" : "&e;";
        document.replace("%2", reference.repeated(1000));
        HVXmlParser parser(&skipAll);
        read(parser, QByteArray(document).replace("%1", QByteArray(50000, 'a')));
        QVERIFY(parser.isClosed());

        DebugLog log;
        read(parser, QByteArray(document).replace("%1", QByteArray(100000, 'a')));
        QCOMPARE(log.fatalErrors(), 1);
        QVERIFY2(log.lines().constFirst().startsWith(QLatin1String("Fatal error at 1,100")),
                 qPrintable(log.lines().constFirst()));
    }

    void shouldNotGrowByEntitiesOfEntities()
    {
        QByteArray document = "<!DOCTYPE a [<!ENTITY e0 \"lollollol\">";
        for (int i = 1; i < 12; ++i) {
            const QByteArray before = QByteArray::number(i - 1);
            document += "<!ENTITY e" + QByteArray::number(i) + " \""
                    + QByteArray("&e" + before + ";").repeated(10) + "\">";
        }
        DebugLog log;
        HVXmlParser parser;
        const Objects objects = read(parser, document + "]><a>&e11;</a>");
        QVERIFY(objects.empty() || element(objects)->content().size() < 64 * 1024 * 1024);
        QCOMPARE(log.fatalErrors(), 1);
    }

    void shouldNotReadOtherFilesForADocument_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("entity") << QByteArray(
                "<!DOCTYPE a [<!ENTITY x SYSTEM \"%1\">]><a>[&x;]</a>");
        QTest::newRow("public entity")
                << QByteArray("<!DOCTYPE a [<!ENTITY x PUBLIC \"-//x\" \"%1\">]><a>[&x;]</a>");
        QTest::newRow("parameter entity")
                << QByteArray("<!DOCTYPE a [<!ENTITY % p SYSTEM \"%1\">%p;]><a>[&x;]</a>");
        QTest::newRow("document type") << QByteArray("<!DOCTYPE a SYSTEM \"%1\"><a>[&x;]</a>");
        QTest::newRow("attribute")
                << QByteArray("<!DOCTYPE a [<!ENTITY x SYSTEM \"%1\">]><a><b k=\"&x;\"/>[]</a>");
    }

    void shouldNotReadOtherFilesForADocument()
    {
        QFETCH(QByteArray, document);
        const PackageFolder folder;
        const QString path =
                folder.add(QStringLiteral("canary.txt"), "<!ENTITY x \"CANARY\">CANARY");
        const QByteArray url = QUrl::fromLocalFile(path).toEncoded();
        for (const QByteArray &name : { url, path.toUtf8() }) {
            HVXmlParser parser;
            DebugLog log;
            const Objects objects = read(parser, QByteArray(document).replace("%1", name));
            if (objects.empty())
                continue;
            QVERIFY(!element(objects)->content().contains(QLatin1String("CANARY")));
            const auto *child = element(objects)->childElement(QStringLiteral("b"));
            QVERIFY(!child || !child->attribute(QStringLiteral("k")).contains(QLatin1Char('C')));
        }
    }

    void shouldReadEncodings_data()
    {
        QTest::addColumn<QByteArray>("document");
        const QByteArray latin1 = "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><a>\xe4</a>";
        const QByteArray utf8 = "<a>\xc3\xa4</a>";
        QTest::newRow("UTF-8") << utf8;
        QTest::newRow("UTF-8 with a mark") << "\xef\xbb\xbf" + utf8;
        QTest::newRow("ISO-8859-1") << latin1;

        QByteArray little;
        QByteArray big;
        QByteArray wide;
        for (char16_t unit : std::u16string(u"<a>\u00e4</a>")) {
            const char low = char(unit & 0xff);
            little += low;
            little += '\0';
            big += '\0';
            big += low;
            wide += QByteArray(3, '\0') + low;
        }
        QTest::newRow("UTF-16, little") << "\xff\xfe" + little;
        QTest::newRow("UTF-16, big") << "\xfe\xff" + big;
        QTest::newRow("UTF-16, little, no mark") << little;
        QTest::newRow("UTF-16, big, no mark") << big;
        QTest::newRow("UTF-32") << QByteArray("\0\0\xfe\xff", 4) + wide;
    }

    void shouldReadEncodings()
    {
        QFETCH(QByteArray, document);
        HVXmlParser parser;
        const Objects objects = read(parser, document);
        QVERIFY(element(objects));
        QCOMPARE(element(objects)->content(), QStringLiteral("\u00e4"));
    }

    void shouldReadBrokenUtf8AsTheReplacementCharacter()
    {
        HVXmlParser parser;
        const Objects objects = read(parser, "<a k=\"\xff\">x\xe4y</a>");
        QCOMPARE(element(objects)->content(), QStringLiteral("x\ufffdy"));
        QCOMPARE(element(objects)->attribute(QStringLiteral("k")), QStringLiteral("\ufffd"));
    }
};

HOVLETS_TEST_MAIN(tst_HVXmlDocuments)
#include "tst_hvxmldocuments.moc"
