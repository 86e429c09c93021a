// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "IndexTest.h"
#include "OpenCounter.h"
#include "TestMain.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>

using namespace Hovlets;

namespace {

const QLocale englishLocale(QStringLiteral("en_US"));

} // namespace

/// Tests how the index looks entries up by key and locale.
class tst_HVRetrieval : public IndexTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFindAnEntryWithItsSubtree()
    {
        const QString path = index(
                "Foo", "a",
                "<?xml version=\"1.0\"?>\n<hovlets search=\"Bar\" v=\"1\">root text\n"
                "<hovlet key=\"no\"><title>No</title></hovlet><other><title/></other>\n"
                "<hovlet key=\"a\" HVLocation=\"x\" HVPackagName=\"y\">text<title id=\"1\">T&amp;"
                "<b>o</b></title><hovlet key=\"no\"/><HVXmlElement/><hovlets/></hovlet></hovlets>");
        const Found found(*m_index, "a");
        QVERIFY(found.entry());
        QCOMPARE(found.tree.root()->toXml(),
                 QStringLiteral("<hovlets search=\"Bar\" v=\"1\">\n"
                                "  <hovlet HVLocation=\"%1\" HVPackagName=\"Foo\" key=\"a\">\n"
                                "    <title id=\"1\">\n"
                                "      <b/>\n"
                                "    </title>\n"
                                "    <hovlet key=\"no\"/>\n"
                                "    <HVXmlElement/>\n"
                                "    <hovlets/>\n"
                                "  </hovlet>\n"
                                "</hovlets>")
                         .arg(path));
        QCOMPARE(found.entry()->content(), QStringLiteral("text"));
        QCOMPARE(found.entry()->childElement(QStringLiteral("title"))->content(),
                 QStringLiteral("T&"));
        QCOMPARE(found.entry()->parent(), found.tree.root());
        QCOMPARE(found.tree.root()->parent(), nullptr);
        QCOMPARE(found.path, package("Foo") + QStringLiteral("/Control"));
        QCOMPARE(found.depth, 2);
    }

    void shouldDeleteTheEntryWithItsRoot()
    {
        const QString path = index("Foo", "a", "<hovlets>" + entry("a", "x") + "</hovlets>");
        HVXmlElement *root = nullptr;
        const QPointer<HVXmlElement> found(
                m_index->load(QStringLiteral("a"), path, englishLocale, root));
        QVERIFY(found);
        delete root;
        QVERIFY(!found);
    }

    void shouldLeaveTheResultUnchangedWhenNothingIsFound()
    {
        const QString path =
                index("Foo", "a", "<hovlets locale=\"de_DE\">" + entry("a", "x") + "</hovlets>");
        HVXmlElement mine;
        for (const char *key : { "a", "b", "A", "" }) {
            const Found found(*m_index, key);
            QVERIFY(!found.entry());
            QCOMPARE(found.path, QStringLiteral("untouched"));
            QCOMPARE(found.depth, 77);

            HVXmlElement *root = &mine;
            QVERIFY(!m_index->load(QString::fromUtf8(key), path, englishLocale, root));
            QCOMPARE(root, &mine);
        }
    }

    void shouldPreferTheFileThatWasIndexedLast()
    {
        const QString old = index("Foo", "a", "<hovlets>" + entry("a", "old") + "</hovlets>");
        index("Foo", "b", "<hovlets>" + entry("a", "new") + entry("b", "b") + "</hovlets>");
        const QString stored = m_folder->add(QStringLiteral("x/s.xml"),
                                             "<hovlets>" + entry("a", "stored")
                                                     + entry("s", "stored") + "</hovlets>");
        m_index->store(nullptr, QLocale::c(), stored, 5);
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("new"));

        const Found behind(*m_index, "s");
        QCOMPARE(behind.attribute("name"), QStringLiteral("stored"));
        QCOMPARE(behind.depth, 5);
        QCOMPARE(behind.path, m_folder->path() + QStringLiteral("/x"));
        QCOMPARE(behind.attribute("HVPackagName"), QString());
        QVERIFY(QFile::remove(package("Foo") + QStringLiteral("/Control/b.xml")));
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("old"));
        QCOMPARE(Found(*m_index, "a").attribute("HVLocation"), old);
    }

    void shouldTreatADepthOfZeroAsOne()
    {
        const QString path = m_folder->add(QStringLiteral("s.xml"),
                                           "<hovlets>" + entry("a", "x") + "</hovlets>");
        m_index->store(nullptr, QLocale::c(), path, 0);
        QCOMPARE(Found(*m_index, "a").depth, 1);
    }

    void shouldUseTheLocaleOfTheFile_data()
    {
        QTest::addColumn<QByteArray>("locale");
        QTest::addColumn<QString>("wanted");
        QTest::addColumn<bool>("serves");
        const QString us = QStringLiteral("en_US");
        const QString german = QStringLiteral("de_DE");
        QTest::newRow("absent") << QByteArray() << us << true;
        QTest::newRow("empty") << QByteArray("locale=\"\"") << german << true;
        QTest::newRow("same") << QByteArray("locale=\"en_US\"") << us << true;
        QTest::newRow("language only") << QByteArray("locale=\"en\"") << us << true;
        QTest::newRow("hyphen") << QByteArray("locale=\"en-US\"") << us << true;
        QTest::newRow("other") << QByteArray("locale=\"de_DE\"") << us << false;
        QTest::newRow("other country") << QByteArray("locale=\"en_GB\"") << us << false;
        QTest::newRow("wanted") << QByteArray("locale=\"de_DE\"") << german << true;
        QTest::newRow("no locale") << QByteArray("locale=\"?\"") << us << false;
        QTest::newRow("no locale is C")
                << QByteArray("locale=\"?\"") << QStringLiteral("C") << true;
        QTest::newRow("not the root's") << QByteArray("lang=\"de_DE\"") << us << true;
    }

    void shouldUseTheLocaleOfTheFile()
    {
        QFETCH(QByteArray, locale);
        QFETCH(QString, wanted);
        index("Foo", "a", "<hovlets " + locale + ">" + entry("a", "x") + "</hovlets>");
        const Found found(*m_index, "a", QLocale(wanted));
        QTEST(found.entry() != nullptr, "serves");
        QCOMPARE(found.path != QStringLiteral("untouched"), found.entry() != nullptr);
    }

    void shouldContinueToTheFileOfTheRequestedLocale()
    {
        index("Foo", "en",
              "<hovlets locale=\"en_US\">" + entry("a", "englishLocale") + "</hovlets>");
        index("Foo", "de", "<hovlets locale=\"de_DE\">" + entry("a", "german") + "</hovlets>");
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("englishLocale"));
        QCOMPARE(Found(*m_index, "a", QLocale(QStringLiteral("de_DE"))).attribute("name"),
                 QStringLiteral("german"));
    }

    void shouldReportTheEntriesThatAFileServes_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QString>("tag"); // the entry's tag; null: none

        const QString hovlet = QStringLiteral("hovlet");
        const QByteArray one = entry("a", "x");
        QTest::newRow("one") << QByteArray("<hovlets>" + one + "</hovlets>") << QByteArray("a")
                             << hovlet;
        QTest::newRow("two of a key") << QByteArray("<hovlets>" + one + one + "</hovlets>")
                                      << QByteArray("a") << QString();
        QTest::newRow("two keys") << QByteArray("<hovlets>" + one + entry("b", "") + "</hovlets>")
                                  << QByteArray("b") << hovlet;
        QTest::newRow("below another") << QByteArray("<hovlets><x>" + one + "</x></hovlets>")
                                       << QByteArray("a") << QString();
        QTest::newRow("below another entry")
                << QByteArray("<hovlets><hovlet key=\"b\">" + one + "</hovlet></hovlets>")
                << QByteArray("a") << QString();
        QTest::newRow("other root")
                << QByteArray("<x>" + one + "</x>") << QByteArray("a") << QString();
        QTest::newRow("prefix") << QByteArray("<hovlets xmlns:h=\"h\"><h:hovlet key=\"a\"/>"
                                              "<hovlet h:key=\"a\"/></hovlets>")
                                << QByteArray("a") << QString();
        QTest::newRow("no key is the empty key")
                << QByteArray("<hovlets>" + one + "<hovlet/></hovlets>") << QByteArray() << hovlet;
        QTest::newRow("the empty key") << QByteArray("<hovlets>" + entry("", "x") + "</hovlets>")
                                       << QByteArray() << hovlet;
        QTest::newRow("reference") << QByteArray("<hovlets>" + entry("&#97;", "x") + "</hovlets>")
                                   << QByteArray("a") << hovlet;
        QTest::newRow("a root in a root")
                << QByteArray("<hovlets><hovlets>" + one + "</hovlets></hovlets>")
                << QByteArray("b") << QStringLiteral("hovlets");
        QTest::newRow("an entry as the root") << QByteArray("<hovlet key=\"a\"><title/></hovlet>")
                                              << QByteArray("a") << QStringLiteral("title");
        QTest::newRow("by an entity") << QByteArray("<!DOCTYPE hovlets [<!ENTITY e '" + one
                                                    + "'>]><hovlets>&e;</hovlets>")
                                      << QByteArray("a") << hovlet;
        QTest::newRow("text after the root")
                << QByteArray("<hovlets>" + one + "</hovlets>x") << QByteArray("a") << hovlet;
        QTest::newRow("root not closed")
                << QByteArray("<hovlets>" + one) << QByteArray("a") << QString();
    }

    void shouldReportTheEntriesThatAFileServes()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, key);
        QFETCH(QString, tag);
        const QString path = m_folder->add(QStringLiteral("a.xml"), content);
        DebugLog log;
        HVXmlElement *root = nullptr;
        HVXmlElement *found = m_index->load(QString::fromUtf8(key), path, englishLocale, root);
        const HVContentTree tree(found, root);
        QCOMPARE(found ? found->getTagName() : QString(), tag);
        QCOMPARE(found ? found->parent() : nullptr, root);
    }

    void shouldSkipAFileThatServesNothing_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<int>("fatalErrors");
        const QByteArray good = entry("a", "bad");
        const QByteArray latin1 = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("malformed before") << QByteArray("<hovlets></b>" + good + "</hovlets>") << 1;
        QTest::newRow("malformed after") << QByteArray("<hovlets>" + good + "</b></hovlets>") << 1;
        QTest::newRow("cut in the entry") << QByteArray("<hovlets><hovlet key=\"a\"><title>") << 1;
        QTest::newRow("cut in a tag") << QByteArray("<hovlets><hovlet key=\"a\"") << 1;
        QTest::newRow("cut after it") << QByteArray("<hovlets>" + good) << 1;
        QTest::newRow("cut, without the key") << QByteArray("<hovlets><hovlet key=\"b\">") << 0;
        QTest::newRow("not XML") << QByteArray("\x89PNG\r\n\x1a\n\0\0", 10) << 1;
        QTest::newRow("wrong encoding") << QByteArray(
                "<?xml version=\"1.0\" encoding=\"UTF-16\"?><hovlets>" + good + "</hovlets>")
                                        << 1;
        QTest::newRow("broken UTF-8")
                << QByteArray(latin1 + "<hovlets>\n" + entry("a\xe4", "x") + "</hovlets>") << 0;
        QTest::newRow("nested too deep")
                << QByteArray("<hovlets>" + good + QByteArray("<x>").repeated(50000)
                              + QByteArray("</x>").repeated(50000) + "</hovlets>")
                << 1;
        QTest::newRow("entry nested too deep")
                << QByteArray("<hovlets><hovlet key=\"a\">" + QByteArray("<x>").repeated(50000)
                              + QByteArray("</x>").repeated(50000) + "</hovlet></hovlets>")
                << 1;
        QTest::newRow("too large") << QByteArray(
                "<hovlets>" + good + QByteArray(64LL * 1024 * 1024, 'x') + "x</hovlets>")
                                   << 0;
        QTest::newRow("too large, without the key")
                << QByteArray("<hovlets>" + QByteArray(64LL * 1024 * 1024, 'x') + "x</hovlets>")
                << 0;
    }

    void shouldSkipAFileThatServesNothing()
    {
        QFETCH(QByteArray, content);
        QFETCH(int, fatalErrors);
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString bad = index("Foo", "bad", "<hovlets/>"); // read first
        m_folder->addControlFile(QStringLiteral("Foo"), QStringLiteral("bad"), content);
        DebugLog log;
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QCOMPARE(log.fatalErrors(), fatalErrors);
        QCOMPARE(log.lines().size(), fatalErrors);
    }

    void shouldSkipAFileThatCannotBeRead()
    {
        index("Foo", "good", "<hovlets>" + entry("a", "good") + "</hovlets>");
        const QString bad = index("Foo", "bad", "<hovlets/>");
        QVERIFY(QFile::remove(bad));
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QVERIFY(QFile::link(m_folder->path() + QStringLiteral("/gone"), bad));
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
        QVERIFY(QFile::remove(bad));
        QVERIFY(QDir().mkdir(bad));
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("good"));
    }

    void shouldServeALargeFile()
    {
        QByteArray content = "<hovlets>";
        for (int i = 0; i < 200000; ++i)
            content += "<hovlet key=\"k" + QByteArray::number(i)
                    + "\"><title>Title and text that "
                      "is longer</title></hovlet>\n";
        index("Foo", "a", content + "</hovlets>");
        QVERIFY(Found(*m_index, "k199999").entry());
        QVERIFY(!Found(*m_index, "k200000").entry());
    }

    void shouldReadEachFileThatChangedAndOnce()
    {
        const QString a = index("Foo", "a", "<hovlets>" + entry("a", "1") + "</hovlets>");
        const QString b = index("Foo", "b", "<hovlets>" + entry("b", "1") + "</hovlets>");
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("1"));
        m_folder->add(QStringLiteral("Foo.hovlets/Control/a.xml"),
                      "<hovlets>" + entry("a", "2") + "</hovlets>");
        OpenCounter openedA(a);
        OpenCounter openedB(b);
        QCOMPARE(Found(*m_index, "a").attribute("name"), QStringLiteral("2"));
        QCOMPARE(openedA.take(), 1);
        QCOMPARE(openedB.take(), 1);
        QVERIFY(Found(*m_index, "b").entry());
        QCOMPARE(openedA.take(), 0);
        QCOMPARE(openedB.take(), 1);
    }

    void shouldOpenNoFileAgainForKeysThatItDoesNotHold()
    {
        const QString a = index("Foo", "a", "<hovlets>" + entry("a", "1") + "</hovlets>");
        const QString b =
                index("Foo", "b", "<hovlets locale=\"de_DE\">" + entry("b", "1") + "</hovlets>");
        QTest::qWait(150); // a change within the grain of the time stamps could go unseen
        OpenCounter openedA(a);
        OpenCounter openedB(b);
        for (const char *key : { "label", "", "frame", "", "window" })
            QVERIFY(!Found(*m_index, key).entry());
        QVERIFY(!Found(*m_index, "b").entry()); // in another locale
        QVERIFY(!Found(*m_index, "label").entry());
        QCOMPARE(openedA.take(), 1);
        QCOMPARE(openedB.take(), 2); // the locale is learnt when an entry is parsed
        QVERIFY(!Found(*m_index, "b").entry());
        QCOMPARE(openedB.take(), 0);
        QVERIFY(Found(*m_index, "b", QLocale(QStringLiteral("de_DE"))).entry());
        QVERIFY(Found(*m_index, "a").entry());
    }

    void shouldSeeEveryChangeToAFileThatDidNotHoldTheKey()
    {
        QFETCH(QByteArray, changed);
        const QByteArray content = "<hovlets locale=\"de_DE\">" + entry("b", "1") + "</hovlets>";
        const QString path = index("Foo", "a", content);
        QTest::qWait(150);
        QVERIFY(!Found(*m_index, "a").entry());
        QVERIFY(!Found(*m_index, "b").entry());

        const QDateTime modified = QFileInfo(path).lastModified();
        m_folder->add(QStringLiteral("Foo.hovlets/Control/a.xml"), changed);
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(modified, QFileDevice::FileModificationTime));
        file.close();
        QVERIFY(Found(*m_index, changed.contains("\"a\"") ? "a" : "b").entry());
    }

    void shouldSeeEveryChangeToAFileThatDidNotHoldTheKey_data()
    {
        QTest::addColumn<QByteArray>("changed");
        QTest::newRow("key, same size")
                << "<hovlets locale=\"en_US\">" + entry("a", "1") + "</hovlets>";
        QTest::newRow("locale, same size")
                << "<hovlets locale=\"en_US\">" + entry("b", "1") + "</hovlets>";
        QTest::newRow("larger") << "<hovlets>" + entry("b", "1") + entry("a", "1") + "</hovlets>";
    }
};

HOVLETS_TEST_MAIN(tst_HVRetrieval)
#include "tst_hvretrieval.moc"
