// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVLimits.h"
#include "IndexTest.h"
#include "TestMain.h"

using namespace Hovlets;

/// Tests what the index adds to an entry: its own data, its key's data and its components' folders.
class tst_HVEntryData : public IndexTest
{
    Q_OBJECT

private:
    void setKeyData(const QByteArray &content)
    {
        m_context->set(HVKeyKeyDataFile, m_folder->add(QStringLiteral("keys.xml"), content));
    }

private Q_SLOTS:
    void shouldAddTheDataOfTheKey_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<QString>("attributes");
        const QString none = QStringLiteral("key=a name=x");
        const QString added = QStringLiteral("key=a name=x shortcut=S");
        const auto record = [](const QByteArray &name, const QByteArray &rest) {
            return QByteArray("<key name=\"" + name + "\" " + rest + "/>");
        };
        const QByteArray good = record("a", "shortcut=\"S\"");
        const auto rows = [](const QByteArray &body) {
            return QByteArray("<hovletkeys>\n" + body + "\n</hovletkeys>");
        };
        QTest::newRow("record") << rows(good) << added;
        QTest::newRow("among others")
                << rows("<x name=\"a\" y=\"1\"/>" + record("b", "y=\"1\"") + good) << added;
        QTest::newRow("the first of two") << rows(good + record("a", "y=\"1\"")) << added;
        QTest::newRow("overwrites")
                << rows(record("a", "key=\"K\"")) << QStringLiteral("key=K name=x");
        QTest::newRow("with content")
                << rows("<key shortcut=\"S\" name=\"a\"><x y=\"1\"/></key>") << added;
        QTest::newRow("not the library's own")
                << rows(record("a", "HVLocation=\"L\" HVPackagName=\"P\"")) << none;
        QTest::newRow("other case") << rows(record("A", "y=\"1\"")) << none;
        QTest::newRow("nested") << rows("<x>" + good + "</x>") << none;
        QTest::newRow("other root") << QByteArray("<keys>" + good + "</keys>") << none;
        QTest::newRow("no root") << good << none;
        QTest::newRow("cut") << QByteArray("<hovletkeys>" + good + "<key") << added;
        QTest::newRow("cut before") << QByteArray("<hovletkeys><key") << none;
        QTest::newRow("empty") << QByteArray() << none;
    }

    void shouldAddTheDataOfTheKey()
    {
        QFETCH(QByteArray, data);
        const QString path = index("Foo", "a", "<hovlets>" + entry("a", "x") + "</hovlets>");
        setKeyData(data);
        DebugLog log;
        const Found found(*m_index, "a");
        QVERIFY(found.entry());
        QStringList attributes;
        const QStringList names = found.entry()->attributeNames();
        for (const QString &name : names) {
            if (!name.startsWith(QLatin1String("HV")))
                attributes += name + QLatin1Char('=') + found.entry()->attribute(name);
        }
        QTEST(attributes.join(QLatin1Char(' ')), "attributes");
        QCOMPARE(found.attribute("HVLocation"), path);
        QCOMPARE(found.attribute("HVPackagName"), QStringLiteral("Foo"));
        QCOMPARE(log.fatalErrors(), data.endsWith('>') ? 0 : 1);
    }

    void shouldWorkWithoutAKeyDataFile()
    {
        index("Foo", "a", "<hovlets>" + entry("a", "x") + "</hovlets>");
        for (const QString &path : { QString(), m_folder->path() + QStringLiteral("/no.xml") }) {
            m_context->set(HVKeyKeyDataFile, path);
            QCOMPARE(Found(*m_index, "a").entry()->attributeNames().size(), 4);
        }
    }

    void shouldAddKeyDataToAnyElement()
    {
        setKeyData("<hovletkeys><key name=\"a\" shortcut=\"S\"/></hovletkeys>");
        HVXmlElement element;
        m_index->loadKeyData(QStringLiteral("a"), QStringLiteral("not looked at"), &element);
        QCOMPARE(element.attributeNames(), QStringList { QStringLiteral("shortcut") });
    }

    void shouldNotParseALargeKeyDataFile()
    {
        HVLimits limits;
        limits.parsedSize = 100;
        HVLimits::setCurrent(limits);
        QSignalSpy skipped(m_index.get(), &HVIndex::fileSkipped);
        const QByteArray start = "<hovletkeys><key name=\"a\" shortcut=\"S\"/>";
        const QByteArray end = "</hovletkeys>";
        const auto space = int(limits.parsedSize - start.size() - end.size());
        for (const bool fits : { true, false }) {
            setKeyData(start + QByteArray(fits ? space : space + 1, ' ') + end);
            HVXmlElement element;
            m_index->loadKeyData(QStringLiteral("a"), QString(), &element);
            QCOMPARE(element.hasAttribute(QStringLiteral("shortcut")), fits);
            QCOMPARE(skipped.count(), fits ? 0 : 1);
        }
        QVERIFY(skipped.constFirst().constFirst().toString().endsWith(
                QLatin1String("more than 100 bytes to parse for an entry")));
        HVLimits::setCurrent({});
    }

    void shouldEndThePathsOfAPackageWithTheExtraPath()
    {
        index("Foo", "a", "<hovlets/>");
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")),
                 QStringList { package("Foo") });
        m_context->set(HVKeyExtraComponentPath, QString());
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")).size(), 1);
        m_context->set(HVKeyExtraComponentPath, QStringLiteral("/extra"));
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("Foo")),
                 (QStringList { package("Foo"), QStringLiteral("/extra") }));
        QCOMPARE(m_index->componentPathsForPackageNamed(QStringLiteral("No")),
                 QStringList { QStringLiteral("/extra") });
    }

    void shouldSearchTheOwnPackageThenTheExtraPathThenOthers_data()
    {
        QTest::addColumn<QString>("search");
        QTest::addColumn<QString>("packages");
        QTest::newRow("absent") << QString() << QString();
        QTest::newRow("one") << QStringLiteral("Q") << QStringLiteral("Q");
        QTest::newRow("in the order written") << QStringLiteral("R;Q") << QStringLiteral("RQ");
        QTest::newRow("any run") << QStringLiteral(" ,R; ,\n\tQ,") << QStringLiteral("RQ");
        QTest::newRow("other spaces") << QStringLiteral("Q\u00a0\u3000R") << QStringLiteral("QR");
        QTest::newRow("unknown") << QStringLiteral("X Q q") << QStringLiteral("Q");
        QTest::newRow("twice") << QStringLiteral("Q Q P") << QStringLiteral("QQP");
        const QString many = QStringLiteral("x,").repeated(8191); // with two more, the longest used
        QTest::newRow("last of many") << many + QStringLiteral(",Q") << QStringLiteral("Q");
        QTest::newRow("after too many")
                << QStringLiteral("R,") + many + QStringLiteral("Q") << QStringLiteral("R");
        QTest::newRow("part of a name") << many + QStringLiteral(",Qx") << QString();
    }

    void shouldSearchTheOwnPackageThenTheExtraPathThenOthers()
    {
        QFETCH(QString, search);
        QFETCH(QString, packages);
        for (const char *name : { "P", "Q", "R" })
            index(name, "a", "<hovlets/>");
        m_context->set(HVKeyExtraComponentPath, QStringLiteral("/extra"));
        HVXmlElement root;
        HVXmlElement element(&root);
        element.setAttribute(QStringLiteral("HVPackagName"), QStringLiteral("P"));
        element.setAttribute(QStringLiteral("search"), QStringLiteral("R"));
        if (!search.isNull())
            root.setAttribute(QStringLiteral("search"), search);

        QStringList folders { package("P"), QStringLiteral("/extra") };
        for (QChar name : std::as_const(packages))
            folders += package(QString(name).toLatin1().constData());
        QCOMPARE(m_index->componentPathsForElement(&element, QString()), folders);

        QStringList files;
        for (const QString &folder : std::as_const(folders))
            files += folder + QStringLiteral("/ui/a.qml");
        QCOMPARE(m_index->componentPathsForElement(&element, QStringLiteral("ui/a.qml")), files);
        const QStringList absolute =
                m_index->componentPathsForElement(&element, QStringLiteral("/a.qml"));
        QCOMPARE(absolute.count(QStringLiteral("/a.qml")), folders.size());
    }

    void shouldUseAnEmptyNameForFoldersOutsidePackages()
    {
        index("Q", "a", "<hovlets/>");
        m_index->mapControlFile(QString(), m_folder->path());
        HVXmlElement root;
        HVXmlElement element(&root);
        element.setAttribute(QStringLiteral("HVPackagName"), QStringLiteral("Q"));
        root.setAttribute(QStringLiteral("search"), QStringLiteral("Q ,; Q"));
        QCOMPARE(m_index->componentPathsForElement(&element, QString()),
                 (QStringList { package("Q"), package("Q"), package("Q") }));
        root.setAttribute(QStringLiteral("search"), QStringLiteral(", Q"));
        QCOMPARE(m_index->componentPathsForElement(&element, QString()),
                 (QStringList { package("Q"), m_folder->path(), package("Q") }));
    }

    void shouldFindNoPathsForAnElementWithoutAPackage()
    {
        index("P", "a", "<hovlets/>");
        HVXmlElement element;
        QVERIFY(m_index->componentPathsForElement(&element, QStringLiteral("a.qml")).isEmpty());
        QObject parent;
        HVXmlElement child(&parent);
        child.setAttribute(QStringLiteral("HVPackagName"), QStringLiteral("P"));
        QCOMPARE(m_index->componentPathsForElement(&child, QString()),
                 QStringList { package("P") });
        QVERIFY(m_index->componentPathsForElement(nullptr, QString()).isEmpty());
    }
};

HOVLETS_TEST_MAIN(tst_HVEntryData)
#include "tst_hventrydata.moc"
