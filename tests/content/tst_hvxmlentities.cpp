// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "XmlReading.h"

using namespace Hovlets;

namespace {

constexpr int Most = 1024 * 1024; // characters that entities may add

/// Text of \a size characters from an entity of 2,048, whose declaration counts, too.
QByteArray entityText(int size, const QByteArray &before, const QByteArray &after)
{
    return "<!DOCTYPE a [<!ENTITY e \"" + QByteArray(2048, 'a') + "\">]>" + before
            + QByteArray("&e;").repeated(size / 2048 - 1) + after;
}

} // namespace

/// Tests how much documents may grow by the entities that they declare.
class tst_HVXmlEntities : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldStopWhereEntitiesAddMoreThan1MiCharacters_data()
    {
        QTest::addColumn<QByteArray>("before");
        QTest::addColumn<QByteArray>("after");
        QTest::newRow("text") << QByteArray("<a><b>") << QByteArray("</b></a>");
        QTest::newRow("attribute") << QByteArray("<a><b k=\"") << QByteArray("\"/></a>");
    }

    void shouldStopWhereEntitiesAddMoreThan1MiCharacters()
    {
        QFETCH(QByteArray, before);
        QFETCH(QByteArray, after);
        HVXmlParser parser(&skipAll); // expanded text counts, whether it is kept or not
        read(parser, entityText(Most - 2048, before, after));
        QVERIFY(parser.isClosed());
        // Each read starts counting at zero.
        read(parser, entityText(Most - 2048, before, after));
        QVERIFY(parser.isClosed());
        QCOMPARE(parser.limitMet(), QString());

        DebugLog log;
        read(parser, entityText(Most + 2048, before, after));
        QVERIFY(!parser.isClosed());
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(parser.limitMet(),
                 QStringLiteral("its entities add more than 1048576 characters"));
    }

    void shouldRefuseAFloodOfReferencesToEntities_data()
    {
        QTest::addColumn<QByteArray>("document");
        const QByteArray declared = "<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY % p ''>";
        QTest::newRow("text") << QByteArray(declared + "]><a>" + QByteArray("&e;").repeated(70000)
                                            + "</a>");
        QTest::newRow("document type")
                << QByteArray(declared + QByteArray("%p;").repeated(70000) + "]><a/>");
        QTest::newRow("entity") << QByteArray(declared + "<!ENTITY f '"
                                              + QByteArray("%p;").repeated(70000) + "'>]><a/>");
        for (const char *spelled : { "&#38;e;", "&#x26;e;", "&#037;p;", "&#x0025;p;" }) {
            QTest::newRow(spelled)
                    << QByteArray(declared + "<!ENTITY f '" + QByteArray(spelled).repeated(70000)
                                  + "'><!ENTITY % q '" + QByteArray(spelled).repeated(70000)
                                  + "'>%q;]><a>&f;</a>");
        }
    }

    void shouldRefuseAFloodOfReferencesToEntities()
    {
        QFETCH(QByteArray, document);
        HVXmlParser parser;
        DebugLog log;
        read(parser, document);
        QVERIFY(!parser.limitMet().isEmpty());
        QCOMPARE(log.fatalErrors(), 1);
        QVERIFY2(log.lines().constFirst().contains(QLatin1String("references to entities"))
                         || log.lines().constFirst().contains(QLatin1String("entities add")),
                 qPrintable(log.lines().constFirst()));
    }

    void shouldNotMistakeAmpersandsInTextForReferences()
    {
        const QByteArray content =
                "<a>" + QByteArray("100 %, %(n)s &amp; &lt;&gt;&quot;&apos;").repeated(20000);
        HVXmlParser parser;
        // The entities that XML predefines keep their meaning.
        const QByteArray declared = "<!DOCTYPE a [<!ENTITY e '" + QByteArray(20000, 'x')
                + "'><!ENTITY gt '" + QByteArray(20000, 'x') + "'>]>";
        const auto objects = read(parser, declared + content + "&e;</a>");
        QCOMPARE(objects.size(), size_t(1));
        QCOMPARE(element(objects)->content().size(), 20000 * 19 + 20000);
    }

    void shouldReadFilesThatGrowLittleByTheirEntities_data()
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

    void shouldReadFilesThatGrowLittleByTheirEntities()
    {
        QFETCH(QByteArray, document);
        QFETCH(int, length);
        HVXmlParser parser;
        const auto objects = read(parser, document);
        QCOMPARE(objects.size(), size_t(1));
        QCOMPARE(element(objects)->content().size(), length);
    }

    void shouldCountWhatAllEntitiesAdd()
    {
        // Each declaration would suffice by itself.
        QByteArray document = "<!DOCTYPE a [";
        QByteArray references;
        for (const char *name : { "e", "f" }) {
            document += "<!ENTITY " + QByteArray(name) + " '" + QByteArray(50000, 'x') + "'>";
            references += QByteArray("&" + QByteArray(name) + ";").repeated(15);
        }
        DebugLog log;
        HVXmlParser parser(&skipAll);
        read(parser, document + "]><a><b k=\"" + references + "\"/></a>");
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(parser.limitMet(),
                 QStringLiteral("its entities add more than 1048576 characters"));
    }

    void shouldReadTheNamedCharactersOfHtml()
    {
        QByteArray document = "<!DOCTYPE a [";
        QByteArray references;
        for (int i = 0; i < 253; ++i) {
            const QByteArray name = "name" + QByteArray::number(i);
            document += "<!ENTITY " + name + " \"&#" + QByteArray::number(200 + i) + ";\">";
            references += "&" + name + ";";
        }
        HVXmlParser parser;
        const Objects objects = read(parser, document + "]><a>" + references.repeated(20) + "</a>");
        QCOMPARE(element(objects)->content().size(), 253 * 20);
    }

    void shouldRefuseToDeclareEntitiesWithoutEnd()
    {
        // The reader compares each entity with every entity name.
        for (const QByteArray &value : { QByteArray(), QByteArray(100, 'x') }) {
            QByteArray document = "<!DOCTYPE a [";
            for (int i = 0; i < 20000; ++i)
                document += "<!ENTITY e" + QByteArray::number(i) + " '" + value + "'>";
            HVXmlParser parser;
            DebugLog log;
            QVERIFY(read(parser, document + "]><a/>").empty());
            QCOMPARE(log.fatalErrors(), 1);
            QCOMPARE(parser.limitMet(),
                     QStringLiteral("its entities add more than 1048576 characters"));
        }
    }

    void shouldAcceptTextWithEntitiesInPieces()
    {
        // Expansion stops early instead of collecting everything first.
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
        QCOMPARE(element(read(parser, entityText(size + 2048, "<a>", "</a>")))->content().size(),
                 size);
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
        document.replace("%2", reference.repeated(50));
        HVXmlParser parser(&skipAll);
        read(parser, QByteArray(document).replace("%1", QByteArray(9000, 'a')));
        QVERIFY(parser.isClosed());

        DebugLog log;
        read(parser, QByteArray(document).replace("%1", QByteArray(50000, 'a')));
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(parser.limitMet(),
                 QStringLiteral("its entities add more than 1048576 characters"));
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
        QVERIFY(objects.empty() || element(objects)->content().size() < 64LL * 1024 * 1024);
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
};

HOVLETS_TEST_MAIN(tst_HVXmlEntities)
#include "tst_hvxmlentities.moc"
