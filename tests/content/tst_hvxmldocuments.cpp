// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVLimits.h"
#include "TestMain.h"
#include "XmlReading.h"

using namespace Hovlets;

namespace {

/// An element as a reader reports it.
QString describe(const QString &uri, const QString &local, const QString &qName,
                 const QXmlAttributes &atts)
{
    QStringList words { uri, local, qName };
    for (int i = 0; i < atts.count(); ++i)
        words << atts.uri(i) << atts.localName(i) << atts.qName(i) << atts.value(i);
    return words.join(QLatin1Char('|'));
}

} // namespace

/// Tests the parser with whole documents, malicious ones included.
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

    void shouldDeliverTextUnchanged()
    {
        HVXmlParser parser;
        const Objects objects =
                read(parser, "<a>\n  one<b> two </b>\n<![CDATA[<c>&]]>&lt;&#228;&#x20ac;&no;.</a>");
        QCOMPARE(element(objects)->content(), QStringLiteral("\n  one\n<c>&<\u00e4\u20ac."));
        QCOMPARE(element(objects)->childElement(QStringLiteral("b"))->content(),
                 QStringLiteral(" two "));
        QCOMPARE(element(objects)->children().size(), 1);
    }

    void shouldTreatWhiteSpaceAsContent()
    {
        HVXmlParser parser;
        const Objects objects = read(parser, "<!DOCTYPE a [<!ELEMENT a (b)>]><a>\n<b/>\t</a>");
        QCOMPARE(element(objects)->content(), QStringLiteral("\n\t"));

        // Holds for a reader that distinguishes the two as well.
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

    void shouldReturnWhatPrecededAnError_data()
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

    void shouldReturnWhatPrecededAnError()
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

    void shouldReportLineColumnAndReasonOfAnError()
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

        // Elements that are skipped use the reader's stack, too.
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
        HVLimits limits;
        QCOMPARE(limits.parsedCharacters, qint64(64) << 20);
        limits.parsedCharacters = 10000;
        HVLimits::setCurrent(limits);
        HVXmlParser parser(&skipAll); // delivered text counts, whether it is kept or not
        read(parser, before + QByteArray(10000, 'a') + after);
        QVERIFY(parser.isClosed());
        DebugLog log;
        read(parser, before + QByteArray(10001, 'a') + after);
        HVLimits::setCurrent({});
        QVERIFY(!parser.isClosed());
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(parser.limitMet(), QStringLiteral("more than 10000 characters of text"));
    }

    void shouldStopAfter15000Elements()
    {
        HVXmlParser parser;
        DebugLog log;
        read(parser, "<a>" + QByteArray("<b/>").repeated(14999) + "</a>");
        QVERIFY(parser.isClosed());
        read(parser, "<a>" + QByteArray("<b/>").repeated(15000) + "</a>");
        QVERIFY(!parser.isClosed());
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(parser.limitMet(), QStringLiteral("more than 15000 elements"));

        HVXmlParser skipping(&skipAll); // builds no elements
        read(skipping, "<a>" + QByteArray("<b/>").repeated(15000) + "</a>");
        QVERIFY(skipping.isClosed());
    }

    void shouldResolveNamespacesAsTheReaderDoes_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::newRow("default") << QByteArray("<a xmlns='u'><b/><x:c/></a>");
        QTest::newRow("prefix") << QByteArray("<x:a xmlns:x='u'><b/><x:c/></x:a>");
        QTest::newRow("of one element")
                << QByteArray("<a><b xmlns='u'/><c/><d xmlns='v'></d><e/></a>");
        QTest::newRow("declared again") << QByteArray(
                "<a xmlns='u' xmlns:x='x'><b xmlns='v' xmlns:x='y'><x:c/></b><x:d/><e/></a>");
        QTest::newRow("taken back") << QByteArray("<a xmlns='u'><b xmlns=''><c/></b></a>");
        QTest::newRow("twice in one tag") << QByteArray("<a xmlns='u' xmlns='v'><b/></a>");
        QTest::newRow("an empty prefix") << QByteArray("<a xmlns:='u' xmlns::x='v'><b/><:c/></a>");
        QTest::newRow("the prefix of XML") << QByteArray("<xml:a xml:lang='en'><xmlns/></xml:a>");
        QTest::newRow("two colons") << QByteArray("<x:y:a xmlns:x='u' x:y:k='1' xmlns:z:w='2'/>");
        QTest::newRow("attributes") << QByteArray(
                "<x:a x:k='1' xmlns:x='u' x:l='2' m='3' xmlns='d' m='4'><b n='5'/></x:a>");
        QTest::newRow("in entities") << QByteArray(
                "<!DOCTYPE a [<!ENTITY e '<x:b xmlns:x=\"u\"/>'>]><a><x:b/>&e;<x:b/></a>");
    }

    void shouldResolveNamespacesAsTheReaderDoes()
    {
        struct Reader : QXmlDefaultHandler
        {
            bool startElement(const QString &uri, const QString &local, const QString &qName,
                              const QXmlAttributes &atts) override
            {
                found += describe(uri, local, qName, atts);
                return true;
            }
            bool endElement(const QString &uri, const QString &local, const QString &qName) override
            {
                found += describe(uri, local, qName, QXmlAttributes());
                return true;
            }
            QStringList found;
        } expected;
        struct Parser : HVXmlParser
        {
            bool startElement(const QString &uri, const QString &local, const QString &qName,
                              const QXmlAttributes &atts) override
            {
                found += describe(uri, local, qName, atts);
                return HVXmlParser::startElement(uri, local, qName, atts);
            }
            bool endElement(const QString &uri, const QString &local, const QString &qName) override
            {
                found += describe(uri, local, qName, QXmlAttributes());
                return HVXmlParser::endElement(uri, local, qName);
            }
            QStringList found;
        } parser;

        QFETCH(QByteArray, document);
        QXmlInputSource source;
        source.setData(document);
        QXmlSimpleReader reader;
        reader.setContentHandler(&expected);
        QVERIFY(reader.parse(&source));
        read(parser, document);
        QCOMPARE(parser.found, expected.found);
    }

    void shouldReadCharactersBeyondThe16BitOnes_data()
    {
        QTest::addColumn<QByteArray>("document");
        QTest::addColumn<QString>("text"); // "!" marks the character
        QTest::newRow("hexadecimal") << QByteArray("<a>&#x1F600;</a>") << QStringLiteral("!");
        QTest::newRow("lower case") << QByteArray("<a>&#x1f600;.</a>") << QStringLiteral("!.");
        QTest::newRow("decimal") << QByteArray("<a>x&#128512;</a>") << QStringLiteral("x!");
        QTest::newRow("zeros") << QByteArray("<a>&#x00001F600;</a>") << QStringLiteral("!");
        QTest::newRow("two of them")
                << QByteArray("<a>&#x1F600;&#x1F600;</a>") << QStringLiteral("!!");
        QTest::newRow("others") << QByteArray("<a>&#65;&lt;&#x1F600;&amp;&no;</a>")
                                << QStringLiteral("A<!&");
        QTest::newRow("an entity") << QByteArray("<!DOCTYPE a [<!ENTITY e '&#x1F600;'>]><a>&e;</a>")
                                   << QStringLiteral("!");
        QTest::newRow("CDATA") << QByteArray("<a><![CDATA[&#x1F600;]]>&#x1F600;</a>")
                               << QStringLiteral("&#x1F600;!");
        QTest::newRow("after CDATA-like text")
                << QByteArray("<a>]]<![CDATA[]]]]>&#x1F600;</a>") << QStringLiteral("]]]]!");
        QTest::newRow("after a comment")
                << QByteArray("<a><!--> <? &#x1F600; -->&#x1F600;</a>") << QStringLiteral("!");
        QTest::newRow("after an instruction")
                << QByteArray("<a><?p <!-- ?>&#x1F600;</a>") << QStringLiteral("!");
    }

    void shouldReadCharactersBeyondThe16BitOnes()
    {
        QFETCH(QByteArray, document);
        QFETCH(QString, text);
        HVXmlParser parser;
        text.replace(QLatin1Char('!'), QString::fromUtf8("\xf0\x9f\x98\x80"));
        const Objects objects = read(parser, document);
        QCOMPARE(element(objects)->content(), text);
        QVERIFY(parser.isClosed());
    }

    void shouldReadTheseCharactersInAttributes()
    {
        HVXmlParser parser;
        const Objects objects = read(parser, "<a k='&#x1F600;'/>");
        QCOMPARE(element(objects)->attribute(QStringLiteral("k")),
                 QString::fromUtf8("\xf0\x9f\x98\x80"));
    }

    void shouldRefuseInvalidReferences_data()
    {
        QTest::addColumn<QByteArray>("document");
        for (const char *reference : { "&#x0x1F600;", "&#X1F600;", "&#1F600;", "&#x1F600 ;",
                                       "&#x1F600", "&#;", "&#x;", "&", "&#xFFFFFFFFF;" })
            QTest::newRow(reference) << "<a>" + QByteArray(reference) + "</a>";
    }

    void shouldRefuseInvalidReferences()
    {
        QFETCH(QByteArray, document);
        HVXmlParser parser;
        DebugLog log;
        read(parser, document);
        QVERIFY(!parser.isClosed());
        QCOMPARE(log.fatalErrors(), 1);
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
