// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "SmallStack.h"
#include "TestMain.h"
#include "XmlReading.h"

using namespace Hovlets;

/// Tests documents that make the XML reader recurse, once per level and without a limit.
class tst_Hostile_Recursion : public QObject
{
    Q_OBJECT

private:
    /// Reads a document on a small stack. Returns whether all of it was read.
    static bool isRead(const QByteArray &document, QString *limit = nullptr)
    {
        bool closed = false;
        onSmallStack([&] {
            HVXmlParser parser;
            closed = !read(parser, document).empty() && parser.isClosed();
            if (limit)
                *limit = parser.limitMet();
        });
        return closed;
    }

private Q_SLOTS:
    void shouldReadNestedContentModels_data()
    {
        QTest::addColumn<QByteArray>("declarations");
        const QByteArray nested =
                QByteArray("(").repeated(256) + "b" + QByteArray(")").repeated(256);
        QTest::newRow("nested") << QByteArray("<!ELEMENT a " + nested + ">");
        QTest::newRow("nested, many times")
                << QByteArray("<!ELEMENT a " + nested + ">").repeated(100);
        QTest::newRow("side by side")
                << QByteArray("<!ELEMENT a (" + QByteArray("(b,c)|").repeated(2000) + "(d))>");
        QTest::newRow("other parentheses")
                << QByteArray("<!-- " + QByteArray(":(").repeated(200) + " -->"
                              + QByteArray("<!ATTLIST a k (x|y) #IMPLIED>").repeated(1000)
                              + "<!ENTITY e \"" + QByteArray("(").repeated(200) + "\">");
        QTest::newRow("a parameter entity")
                << QByteArray("<!ENTITY % p \"<!ELEMENT a (b,(c|d))>\">%p;%p;");
    }

    void shouldReadNestedContentModels()
    {
        QFETCH(QByteArray, declarations);
        QString limit;
        QVERIFY2(isRead("<!DOCTYPE a [" + declarations + "]><a>" + QByteArray("(").repeated(9999)
                                + "</a>",
                        &limit),
                 qPrintable(limit));
    }

    void shouldRefuseDeeperContentModels_data()
    {
        QTest::addColumn<QByteArray>("declarations");
        const QByteArray many = QByteArray("(").repeated(80000);
        QTest::newRow("one level too many")
                << QByteArray("<!ELEMENT a " + QByteArray("(").repeated(257) + "b"
                              + QByteArray(")").repeated(257) + ">");
        QTest::newRow("never closed") << QByteArray("<!ELEMENT a " + many);
        QTest::newRow("spaced") << QByteArray("<!ELEMENT a " + QByteArray("( ").repeated(80000));
        QTest::newRow("choices") << QByteArray("<!ELEMENT a " + QByteArray("(b|").repeated(80000));
        QTest::newRow("sequences")
                << QByteArray("<!ELEMENT a " + QByteArray("((b)?,").repeated(80000));
        QTest::newRow("a parameter entity")
                << QByteArray("<!ENTITY % p \"<!ELEMENT a " + many + "\">%p;");
        QTest::newRow("a parameter entity, spelled") << QByteArray(
                "<!ENTITY % p \"<!ELEMENT a " + QByteArray("&#40;").repeated(80000) + "\">%p;");
        QTest::newRow("begun in a parameter entity")
                << QByteArray("<!ENTITY % p \"<!ELEMENT a (((\">%p;" + many);
        QTest::newRow("multiplied by parameter entities") << QByteArray(
                "<!ENTITY % p \"" + QByteArray("(").repeated(250) + "\"><!ENTITY % q \"<!ELEMENT a "
                + QByteArray("%p;").repeated(400) + "\">%q;");
        QTest::newRow("an entity that includes itself") << QByteArray(
                "<!ENTITY % p \"&#37;p;<!ELEMENT a " + QByteArray("(").repeated(200) + "\">%p;");
    }

    void shouldRefuseDeeperContentModels()
    {
        QFETCH(QByteArray, declarations);
        DebugLog log;
        QString limit;
        QVERIFY(!isRead("<!DOCTYPE a [" + declarations + "]><a/>", &limit));
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(log.lines().size(), 1);
        if (qstrcmp(QTest::currentDataTag(), "an entity that includes itself") != 0)
            QCOMPARE(limit, QStringLiteral("content models nest deeper than 256 levels"));
    }

    void shouldRefuseDeeperElements_data()
    {
        QTest::addColumn<QByteArray>("document");
        const QByteArray many = QByteArray("<a>").repeated(100000);
        QTest::newRow("elements") << many;
        QTest::newRow("from an entity")
                << QByteArray("<!DOCTYPE a [<!ENTITY e '" + QByteArray("<a>").repeated(500)
                              + "'>]><a>" + QByteArray("&e;").repeated(1000) + "</a>");
        QTest::newRow("with all that an element may have")
                << QByteArray("<a k='&amp;' xmlns:x='u'><!-- --><?p?><![CDATA[]]>&lt;")
                           .repeated(2000);
    }

    void shouldRefuseDeeperElements()
    {
        QFETCH(QByteArray, document);
        DebugLog log;
        QString limit;
        QVERIFY(!isRead(document, &limit));
        QCOMPARE(log.fatalErrors(), 1);
        QCOMPARE(limit, QStringLiteral("elements nest deeper than 512 levels"));
    }
};

HOVLETS_TEST_MAIN(tst_Hostile_Recursion)
#include "tst_hostile_recursion.moc"
