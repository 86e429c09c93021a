// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "IndexTest.h"
#include "OpenCounter.h"
#include "TestMain.h"

#include <QXmlAttributes>

using namespace Hovlets;

namespace {

/// Records which operations are called.
class NotingIndex : public HVIndex
{
public:
    using HVIndex::HVIndex;
    using HVIndex::isInUpdate;

    bool open() override { return note("open"); }
    bool clear() override { return note("clear"); }
    bool close() override { return note("close"); }
    bool remove() override { return note("remove"); }
    bool setup() override
    {
        note("setup");
        return HVIndex::setup();
    }
    HVXmlElement *retrieve(const QString &, const QLocale &, QString &, int &,
                           HVXmlElement *&) override
    {
        note("retrieve");
        return nullptr;
    }
    bool store(HVXmlElement *, const QLocale &, const QString &, int) override
    {
        return note("store");
    }
    void startUpdate() override
    {
        note("startUpdate");
        HVIndex::startUpdate();
    }
    void endUpdate() override
    {
        note("endUpdate");
        HVIndex::endUpdate();
    }
    QStringList keys() override
    {
        note("keys");
        return {};
    }
    void indexControlFile(const QString &, const QString &) override { note("indexControlFile"); }

    QStringList noted;

private:
    bool note(const char *name)
    {
        noted += QLatin1String(name);
        return false;
    }
};

QByteArray entries(const QByteArray &keys)
{
    QByteArray content = "<hovlets>";
    for (const QByteArray &key : keys.split(' '))
        content += "<hovlet key=\"" + key + "\"/>";
    return content + "</hovlets>";
}

} // namespace

class tst_HVIndex : public IndexTest
{
    Q_OBJECT

private:
    static QStringList list(const char *words)
    {
        return QString::fromLatin1(words).split(QLatin1Char(' '));
    }

private Q_SLOTS:
    void shouldLetASubclassTakeOverEveryOperation()
    {
        NotingIndex noting(m_context.get(), {});
        HVIndex &index = noting;
        QString path;
        int depth = 0;
        HVXmlElement *root = nullptr;
        index.open();
        index.setup();
        index.clear();
        index.close();
        index.remove();
        index.retrieve(QStringLiteral("a"), QLocale::c(), path, depth, root);
        index.store(nullptr, QLocale::c(), path, depth);
        index.startUpdate();
        index.endUpdate();
        index.keys();
        index.indexControlFile(path, path);
        QCOMPARE(noting.noted,
                 list("open setup clear clear close remove retrieve store "
                      "startUpdate endUpdate keys indexControlFile"));
    }

    void shouldStartEmpty()
    {
        QCOMPARE(m_index->parent(), nullptr);
        QVERIFY(m_index->keys().isEmpty());
        QVERIFY(m_index->componentPathsForPackageNamed(QString()).isEmpty());
    }

    void shouldKeepItsContentForAnyRequest()
    {
        index("Foo", "a", entries("a"));
        QVERIFY(m_index->open());
        QVERIFY(m_index->setup());
        QVERIFY(m_index->clear());
        QVERIFY(m_index->close());
        QVERIFY(m_index->remove());
        QCOMPARE(m_index->keys(), list("a"));
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")),
                 QStringList { package("Foo") });
    }

    void shouldClearItselfOnSetupByDefault_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::addColumn<bool>("clears");
        QTest::newRow("unset") << QVariant() << true;
        QTest::newRow("true") << QVariant(true) << true;
        QTest::newRow("false") << QVariant(false) << false;
        QTest::newRow("as text") << QVariant(QStringLiteral("false")) << false;
    }

    void shouldClearItselfOnSetupByDefault()
    {
        QFETCH(QVariant, setting);
        QFETCH(bool, clears);
        if (setting.isValid())
            m_context->set(HVKeyClearIndexOnSetup, setting);
        NotingIndex index(m_context.get(), {});
        QVERIFY(index.setup());
        QCOMPARE(index.noted.contains(QStringLiteral("clear")), clears);
    }

    void shouldKnowThatItIsBeingUpdated()
    {
        NotingIndex index(m_context.get(), {});
        QVERIFY(!index.isInUpdate());
        index.startUpdate();
        QVERIFY(index.isInUpdate());
        index.startUpdate();
        index.endUpdate();
        QVERIFY(!index.isInUpdate());
    }

    void shouldPutTheNewestFileFirstAndStoredOnesLast()
    {
        const QString p = index("Foo", "p", entries("P"));
        const QString q = index("Foo", "q", entries("Q"));
        QCOMPARE(m_index->keys(), list("Q P"));

        const QString r = m_folder->add(QStringLiteral("r.xml"), entries("R"));
        QVERIFY(m_index->store(nullptr, QLocale::c(), r, 2));
        QCOMPARE(m_index->keys(), list("Q P R"));

        // Indexing again changes neither the list nor its order.
        m_index->indexControlFile(p, package("Foo"));
        QVERIFY(m_index->store(nullptr, QLocale::c(), q, 2));
        QVERIFY(m_index->store(nullptr, QLocale(QStringLiteral("de_DE")), r, 2));
        QCOMPARE(m_index->keys(), list("Q P R"));
        QVERIFY(m_index->store(nullptr, QLocale::c(), r, 3));
        QCOMPARE(m_index->keys(), list("Q P R R"));

        // Nor does a known file map a package again.
        const QString s =
                m_folder->addControlFile(QStringLiteral("Bar"), QStringLiteral("s"), entries("S"));
        QVERIFY(m_index->store(nullptr, QLocale::c(), s, 2));
        m_index->indexControlFile(s, package("Bar"));
        QVERIFY(m_index->componentPathsForPackageNamed(QStringLiteral("Bar")).isEmpty());
    }

    void shouldIndexOnlyControlFilesBelowTheirPackage()
    {
        index("Foo", "declared", "<?xml version=\"1.0\"?>\n<hovlets><hovlet key=\"a\"/></hovlets>");
        index("Foo", "entry", "<hovlet key=\"b\"/>");
        index("Foo", "empty", "");
        const QString outside =
                m_folder->addControlFile(QStringLiteral("FooX"), QStringLiteral("a"), entries("c"));
        const QString prefix =
                m_folder->add(QStringLiteral("Foo.hovletsX/Control/a.xml"), entries("d"));
        OpenCounter opened(outside);
        OpenCounter openedPrefix(prefix);
        m_index->indexControlFile(outside, package("Foo"));
        m_index->indexControlFile(prefix, package("Foo"));
        m_index->indexControlFile(package("Foo") + QStringLiteral("/Control/no.xml"),
                                  package("Foo"));
        QCOMPARE(opened.take() + openedPrefix.take(), 0);
        QCOMPARE(m_index->keys(), list("a"));
    }

    void shouldMapAPackageToAllFoldersOfItsName()
    {
        const PackageFolder other;
        index("Foo", "a", entries("a"));
        index("Foo", "b", entries("b"));
        const QString second =
                other.addControlFile(QStringLiteral("Foo"), QStringLiteral("c"), entries("c"));
        const QString secondPackage = other.path() + QStringLiteral("/Foo.hovlets");
        m_index->indexControlFile(second, secondPackage);
        const QStringList folders { package("Foo"), secondPackage };
        m_index->mapControlFile(QString(), package("Foo"));
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")), folders);

        // A file that is rejected does not register its package either.
        index("Bar", "a", "<html/>");
        QVERIFY(m_index->componentPathsForPackageNamed(QStringLiteral("Bar")).isEmpty());
        m_index->mapControlFile(QStringLiteral("not looked at"), package("Bar"));
        m_index->mapControlFile(QString(), package("Bar"));
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Bar")),
                 QStringList { package("Bar") });
        QVERIFY(m_index->componentPathsForPackageNamed(QStringLiteral("bar")).isEmpty());
    }

    void shouldMapAPackageByItsCurrentName()
    {
        m_context->set(HVKeyPackageSuffix, QStringLiteral("other"));
        m_index->mapControlFile(QString(), package("Foo"));
        m_context->set(HVKeyPackageSuffix, QStringLiteral("hovlets"));
        m_index->mapControlFile(QString(), package("Foo"));
        QVERIFY(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")).isEmpty());

        m_folder->addControlFile(QStringLiteral("Foo"), QStringLiteral("a"), {});
        m_index->mapControlFile(QString(), package("Foo"));
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")),
                 QStringList { package("Foo") });

        m_folder->add(QStringLiteral("Out.other/In.hovlets/a.xml"), {});
        const QString inner = m_folder->path() + QStringLiteral("/Out.other/In.hovlets");
        m_context->set(HVKeyPackageSuffix, QStringLiteral("other"));
        m_index->mapControlFile(QString(), inner);
        m_context->set(HVKeyPackageSuffix, QStringLiteral("hovlets"));
        m_index->mapControlFile(QString(), inner);
        for (const char *name : { "Out", "In" }) {
            QCOMPARE(m_index->componentPathsForPackageNamed(QLatin1String(name)),
                     QStringList { inner });
        }
    }

    void shouldNameThePackageOfALocation_data()
    {
        QTest::addColumn<QString>("location");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<QString>("name"); // null: none

        const QString usual;
        QTest::newRow("package") << QStringLiteral("/Modeling.hovlets") << usual
                                 << QStringLiteral("Modeling");
        QTest::newRow("control file") << QStringLiteral("/Modeling.hovlets/Control/a.xml") << usual
                                      << QStringLiteral("Modeling");
        QTest::newRow("separator")
                << QStringLiteral("/Modeling.hovlets/") << usual << QStringLiteral("Modeling");
        QTest::newRow("no such file") << QStringLiteral("/Modeling.hovlets/x/y/z.xml") << usual
                                      << QStringLiteral("Modeling");
        QTest::newRow("dots") << QStringLiteral("/a.b.hovlets") << usual << QStringLiteral("a.b");
        QTest::newRow("innermost")
                << QStringLiteral("/a.b.hovlets/In.hovlets/a.xml") << usual << QStringLiteral("In");
        QTest::newRow("a file of that suffix") << QStringLiteral("/Modeling.hovlets/file.hovlets")
                                               << usual << QStringLiteral("Modeling");
        QTest::newRow("no such package") << QStringLiteral("/No.hovlets") << usual << QString();
        QTest::newRow("other case") << QStringLiteral("/Upper.Hovlets/a.xml") << usual << QString();
        QTest::newRow("longer") << QStringLiteral("/Foo.hovletsX/a.xml") << usual << QString();
        QTest::newRow("no package") << QString(QLatin1Char('/')) << usual << QString();
        QTest::newRow("suffix of the host") << QStringLiteral("/Upper.Hovlets/a.xml")
                                            << QStringLiteral("Hovlets") << QStringLiteral("Upper");
        QTest::newRow("not that suffix")
                << QStringLiteral("/Modeling.hovlets") << QStringLiteral("Hovlets") << QString();
    }

    void shouldNameThePackageOfALocation()
    {
        QFETCH(QString, location);
        QFETCH(QString, suffix);
        QFETCH(QString, name);
        for (const char *path :
             { "Modeling.hovlets/Control/a.xml", "a.b.hovlets/In.hovlets/a.xml",
               "Modeling.hovlets/file.hovlets", "Upper.Hovlets/a.xml", "Foo.hovletsX/a.xml" })
            m_folder->add(QLatin1String(path), entries("a"));
        if (!suffix.isNull())
            m_context->set(HVKeyPackageSuffix, suffix);
        const QString result = m_index->packageNameForLocation(m_folder->path() + location);
        QCOMPARE(result, name);
        QCOMPARE(result.isNull(), name.isNull());
    }

    void shouldNameNoPackageOutsidePackages_data()
    {
        QTest::addColumn<QString>("location");
        QTest::newRow("null") << QString();
        QTest::newRow("empty") << QString(QLatin1String(""));
        QTest::newRow("root") << QStringLiteral("/");
        QTest::newRow("relative") << QStringLiteral("a/b.xml");
    }

    void shouldNameNoPackageOutsidePackages()
    {
        QFETCH(QString, location);
        QVERIFY(m_index->packageNameForLocation(location).isNull());
    }

    void shouldListKeysInFileAndDocumentOrder()
    {
        index("Foo", "a", entries("b a b"));
        index("Foo", "b",
              "<hovlets><hovlet/><hovlet key=\"\"/><!-- <hovlet key=\"no\"/> -->"
              "<other key=\"no\"><hovlet key=\"no\"/></other><x:hovlet key=\"no\" xmlns:x=\"x\"/>"
              "<hovlet name=\"n\" key=\"&#228;\"><hovlet key=\"no\"/><title key=\"no\"/></hovlet>"
              "</hovlets>");
        QCOMPARE(m_index->keys(),
                 (QStringList { QString(), QStringLiteral("\u00e4"), QStringLiteral("b"),
                                QStringLiteral("a"), QStringLiteral("b") }));
    }

    void shouldListTheKeysOfTheFilesThatCanBeRead()
    {
        const QString gone = index("Foo", "gone", entries("x"));
        index("Foo", "good", entries("good"));
        index("Foo", "cut", "<hovlets><hovlet key=\"before\"/><hovlet key=\"in\">");
        index("Foo", "wrong",
              "<hovlets><hovlet key=\"kept\"/></hovlet><hovlet key=\"x\"/></hovlets>");
        QVERIFY(QFile::remove(gone));
        m_index->store(nullptr, QLocale::c(), m_folder->path(), 2); // a folder

        DebugLog log;
        QCOMPARE(m_index->keys(), list("kept before in good"));
        QCOMPARE(log.fatalErrors(), 2);
        QCOMPARE(log.lines().size(), 2);
    }

    void shouldSkipAFileWithoutARoot()
    {
#ifndef QT_NO_DEBUG
        QSKIP("debug builds of the library end here: they assert that a file has a root");
#else
        m_index->store(nullptr, QLocale::c(), m_folder->add(QStringLiteral("e.xml"), {}), 2);
        index("Foo", "a", entries("a"));
        m_index->store(nullptr, QLocale::c(), m_folder->add(QStringLiteral("b.xml"), entries("b")),
                       2);
        DebugLog log;
        QCOMPARE(m_index->keys(), list("a b"));
        QCOMPARE(log.fatalErrors(), 1);
#endif
    }

    void shouldReadTheFilesAgainForTheirKeys()
    {
        index("Foo", "a", entries("a"));
        QCOMPARE(m_index->keys(), list("a"));
        m_folder->addControlFile(QStringLiteral("Foo"), QStringLiteral("a"), entries("b c"));
        QCOMPARE(m_index->keys(), list("b c"));
    }

    void shouldAskTheParserForRootsAndEntries()
    {
        const auto ask = [](const char *tag) {
            return HVIndex::indexDataShouldGenerateElement(QLatin1String(tag), QXmlAttributes(),
                                                           nullptr);
        };
        QCOMPARE(ask("hovlet"), 1);
        QCOMPARE(ask("hovlets"), 1);
        for (const char *other : { "Hovlet", "hovletss", "x:hovlet", "title", "" })
            QCOMPARE(ask(other), 4);
    }

    void shouldUseTheContextThatItWasGiven()
    {
        QCOMPARE(&m_index->context(), m_context.get());
        QCOMPARE(&std::as_const(*m_index).context(), m_context.get());
    }

    void shouldMakeAContextWhenItsOwnIsGone()
    {
        m_context.reset();
        HVContext *made = &m_index->context();
        QCOMPARE(made->parent(), m_index.get());
        QVERIFY(made->keys().isEmpty());
        QCOMPARE(&std::as_const(*m_index).context(), made);

        const HVIndex without(nullptr, {});
        QCOMPARE(without.context().parent(), &without);
    }
};

HOVLETS_TEST_MAIN(tst_HVIndex)
#include "tst_hvindex.moc"
