// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVFileMemory.h"
#include "HVLimits.h"
#include "HVLookUp.h"
#include "IndexTest.h"
#include "OpenCounter.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDateTime>

using namespace Hovlets;

namespace {

constexpr int Controls = 10; // that Qt offers one tooltip

const QByteArray Declaration = "<!DOCTYPE hovlets [<!ENTITY e \"x\">]>";

void setModified(const QString &path, const QDateTime &time)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
}

} // namespace

/// Tests how often the index reads control files for keys that they cannot serve.
class tst_HVFileMemory : public IndexTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadAFileOnceThatOnlyTheParserUnderstands_data();
    void shouldReadAFileOnceThatOnlyTheParserUnderstands();
    void shouldReadAFileOnceForAnEntryThatItCannotServe_data();
    void shouldReadAFileOnceForAnEntryThatItCannotServe();
    void shouldReadAFileWithManyKeysOnce();
    void shouldKnowThatARootInARootMatchesAnyKey();
    void shouldReadARecentFileOnceForATooltip();
    void shouldSeeAChangeDuringATooltip();
    void shouldReadARecentFileOnceForTwoLocales();

private:
    /// Asks for keys that no file has.
    void lookUpOthers(int from = 0)
    {
        for (int i = from; i < from + Controls; ++i)
            QVERIFY(!Found(*m_index, "control" + QByteArray::number(i)).entry());
    }
};

void tst_HVFileMemory::shouldReadAFileOnceThatOnlyTheParserUnderstands_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("key"); // of an entry that the file serves
    const QByteArray root = "<hovlets>" + entry("a", "1") + entry("b", "2") + "</hovlets>";
    QTest::newRow("document type") << Declaration + root << QByteArray("b");
    QTest::newRow("another encoding")
            << "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>" + root << QByteArray("a");
    QTest::newRow("reference in a key") << "<hovlets>" + entry("a&amp;b", "1") + entry("b", "2")
                    + "</hovlets>" << QByteArray("a&b");
    QTest::newRow("references in keys, and a key without") << "<hovlets>" + entry("&#97;", "1")
                    + entry("&#98;", "2") + entry("c", "3")
                    + "</hovlets>" << QByteArray("b");
    QTest::newRow("no key") << Declaration + "<hovlets><hovlet name=\"1\"/></hovlets>"
                            << QByteArray("");
    QTest::newRow("damage") << Declaration + "<hovlets>" + entry("a", "1") << QByteArray();
    QTest::newRow("too deep") << Declaration + "<hovlets>" + QByteArray("<x>").repeated(600)
                              << QByteArray();
    QTest::newRow("too large") << Declaration + root + QByteArray(5 << 20, ' ') << QByteArray();
}

void tst_HVFileMemory::shouldReadAFileOnceThatOnlyTheParserUnderstands()
{
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, key);
    const DebugLog log; // fatal errors
    const QString path = index("Foo", "a", content);
    QTest::qWait(150); // a change within the grain of the time stamps could go unseen
    OpenCounter opened(path);
    lookUpOthers();
    QCOMPARE(opened.take(), 1);
    if (!key.isNull()) {
        QVERIFY(Found(*m_index, key.constData()).entry());
        opened.take();
        lookUpOthers(Controls);
        QVERIFY2(opened.take() <= 1, "more than once again");
    }
}

void tst_HVFileMemory::shouldReadAFileOnceForAnEntryThatItCannotServe_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("several") << "<hovlets>" + entry("a", "1") + entry("a", "2") + "</hovlets>";
    QTest::newRow("several, with a document type")
            << Declaration + "<hovlets>" + entry("a", "1") + entry("a", "2") + "</hovlets>";
    QTest::newRow("too deep") << "<hovlets><hovlet key=\"a\">" + QByteArray("<x>").repeated(600);
}

void tst_HVFileMemory::shouldReadAFileOnceForAnEntryThatItCannotServe()
{
    QFETCH(QByteArray, content);
    const DebugLog log;
    const QString path = index("Foo", "a", content);
    QTest::qWait(150);
    OpenCounter opened(path);
    for (int i = 0; i < Controls; ++i)
        QVERIFY(!Found(*m_index, "a").entry());
    QCOMPARE(opened.take(), 1);
}

void tst_HVFileMemory::shouldReadAFileWithManyKeysOnce()
{
    QByteArray content = "<hovlets>";
    for (int i = 0; i < 70000; ++i)
        content += entry("k" + QByteArray::number(i), "1");
    const QString path = index("Foo", "a", content + "</hovlets>");
    QTest::qWait(150);
    OpenCounter opened(path);
    lookUpOthers();
    QCOMPARE(opened.take(), 1);
    QVERIFY(Found(*m_index, "k69999").entry());
}

void tst_HVFileMemory::shouldKnowThatARootInARootMatchesAnyKey()
{
    const QByteArray one = entry("a", "1");
    index("Foo", "a", "<hovlets>" + one + "<hovlets>" + one + "</hovlets></hovlets>");
    QTest::qWait(150);
    QVERIFY(!Found(*m_index, "a").entry()); // parses the file, which has two
    QVERIFY(Found(*m_index, "b").entry());
}

void tst_HVFileMemory::shouldReadARecentFileOnceForATooltip()
{
    const QString path = index("Foo", "a", "<hovlets>" + entry("a", "1") + "</hovlets>");
    setModified(path, QDateTime::currentDateTime().addDays(1)); // its age is never certain
    OpenCounter opened(path);
    const HVToolTipPass pass(HVToolTipPass::next());
    lookUpOthers();
    QCOMPARE(opened.take(), 1);
    QVERIFY(Found(*m_index, "a").entry());
    const HVToolTipPass another(HVToolTipPass::next());
    opened.take();
    lookUpOthers();
    QCOMPARE(opened.take(), 1);
}

void tst_HVFileMemory::shouldSeeAChangeDuringATooltip()
{
    const QString path = index("Foo", "a", "<hovlets>" + entry("a", "1") + "</hovlets>");
    setModified(path, QDateTime::currentDateTime().addDays(1));
    const HVToolTipPass pass(HVToolTipPass::next());
    QVERIFY(!Found(*m_index, "b").entry());
    m_folder->add(text("Foo.hovlets/Control/a.xml"), "<hovlets>" + entry("b", "1") + "</hovlets>");
    QVERIFY(Found(*m_index, "b").entry());
}

void tst_HVFileMemory::shouldReadARecentFileOnceForTwoLocales()
{
    const QString path =
            index("Foo", "a", Declaration + "<hovlets>" + entry("a", "1") + "</hovlets>");
    setModified(path, QDateTime::currentDateTime().addDays(1));
    OpenCounter opened(path);
    QString package;
    int depth = 1;
    HVXmlElement *root = nullptr;
    QVERIFY(!retrieveByLocale(*m_index, *m_context, text("b"), package, depth, root));
    QCOMPARE(opened.take(), 1);
}

HOVLETS_TEST_MAIN(tst_HVFileMemory)
#include "tst_hvfilememory.moc"
