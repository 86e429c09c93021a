// SPDX-License-Identifier: Apache-2.0
#include "Forest.h"
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

using namespace Hovlets;

namespace {

/// The key of the element that QML sees as "hovlet".
QString keyInQml(HVView *view)
{
    const QVariant hovlet = view->engine()->rootContext()->contextProperty(text("hovlet"));
    const auto *element = qobject_cast<HVXmlElement *>(hovlet.value<QObject *>());
    return element ? element->attribute(text("key")) : QString();
}

} // namespace

/// Tests which content is shown, and who deletes it when.
class tst_HVManagerContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReportTheTimeOfALookUp()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        const QStringList messages = scene.host().messagesOf(HVMessageInformation);
        QCOMPARE(messages.size(), 2);
        QCOMPARE(messages.at(0), text("looking for Hovlet for key:a"));
        const QRegularExpression pattern(text("^Retrieved a in \\d+(\\.\\d+)? seconds$"));
        QVERIFY2(pattern.match(messages.at(1)).hasMatch(), qPrintable(messages.at(1)));
    }

    void shouldReportTheTimeOfBothLookUpsInSeconds()
    {
        MadeUpIndex index;
        index.answer = [&index](const QString &key, QString &, int &, HVXmlElement *&root) {
            QThread::msleep(20);
            if (index.asked.size() == 1)
                return static_cast<HVXmlElement *>(nullptr);
            root = new HVXmlElement;
            return MadeUpIndex::entry(key, root);
        };
        HoverScene scene;
        scene.start(&index);
        QVERIFY(scene.show(text("x")));
        QCOMPARE(index.asked.size(), 2);
        const QString told = scene.host().messagesOf(HVMessageInformation).value(1);
        QVERIFY2(told.startsWith(text("Retrieved x in 0.")), qPrintable(told));
        QVERIFY2(told.section(QLatin1Char(' '), 3, 3).toDouble() >= 0.04, qPrintable(told));
    }

    void shouldNotInterpretPercentSignsInKeys()
    {
        HoverScene scene;
        scene.start();
        QVERIFY(!scene.show(text("%1 %2")));
        QCOMPARE(scene.host().messagesOf(HVMessageInformation),
                 QStringList { text("looking for Hovlet for key:%1 %2") });
        MadeUpIndex index;
        scene.start(&index);
        QVERIFY(scene.show(text("%2")));
        QVERIFY(scene.host()
                        .messagesOf(HVMessageInformation)
                        .at(1)
                        .startsWith(text("Retrieved %2 in 0")));
    }

    void shouldFindContentByLocale_data()
    {
        QTest::addColumn<QString>("preferred");
        QTest::addColumn<QString>("fallback");
        QTest::addColumn<bool>("byLanguage");
        QTest::addColumn<QStringList>("asked");
        QTest::newRow("default") << QString() << QString() << false
                                 << QStringList { text("x en_US"), text("x en_US") };
        QTest::newRow("preferred") << text("de_DE") << QString() << false
                                   << QStringList { text("x de_DE"), text("x en_US") };
        QTest::newRow("fallback") << QString() << text("fr_FR") << false
                                  << QStringList { text("x en_US"), text("x fr_FR") };
        QTest::newRow("both") << text("de_DE") << text("fr_FR") << false
                              << QStringList { text("x de_DE"), text("x fr_FR") };
        QTest::newRow("a country") << text("fr_CA") << QString() << false
                                   << QStringList { text("x fr_CA"), text("x en_US") };
        QTest::newRow("its language")
                << text("fr_CA") << QString() << true
                << QStringList { text("x fr_CA"), text("x fr_FR"), text("x en_US") };
        QTest::newRow("the language itself") << text("fr") << QString() << true
                                             << QStringList { text("x fr_FR"), text("x en_US") };
        QTest::newRow("the same script")
                << text("zh_HK") << QString() << true
                << QStringList { text("x zh_HK"), text("x zh_TW"), text("x en_US") };
        QTest::newRow("no language")
                << text("C") << QString() << true << QStringList { text("x C"), text("x en_US") };
    }

    void shouldFindContentByLocale()
    {
        QFETCH(QString, preferred);
        QFETCH(QString, fallback);
        QFETCH(bool, byLanguage);
        MadeUpIndex index([](const QString &, QString &, int &, HVXmlElement *&) {
            return static_cast<HVXmlElement *>(nullptr);
        });
        HoverScene scene;
        scene.start(&index);
        if (!preferred.isNull())
            scene.context().set(HVKeyLocale, preferred);
        if (!fallback.isNull())
            scene.context().set(HVKeyFallbackLocale, fallback);
        if (byLanguage)
            scene.context().set(HVKeyLanguageFallback, true);
        QString path = text("path");
        int depth = 7;
        HVXmlElement *root = nullptr;
        QCOMPARE(scene.manager().retrieve(text("x"), path, depth, root), nullptr);
        QTEST(index.asked, "asked");
        QVERIFY(scene.host().messages.isEmpty());
    }

    void shouldTakeTheFirstLocaleThatHasContent()
    {
        MadeUpIndex index;
        HoverScene scene;
        scene.start(&index);
        scene.context().set(HVKeyLocale, text("de_DE"));
        scene.context().set(HVKeyFallbackLocale, text("fr_FR"));
        QString path;
        int depth = 0;
        HVXmlElement *root = nullptr;
        HVXmlElement *element = scene.manager().retrieve(text("x"), path, depth, root);
        QVERIFY(element);
        QCOMPARE(element->parent(), root);
        QCOMPARE(index.asked, QStringList { text("x de_DE") });
        QCOMPARE(path, QDir::tempPath());
        QCOMPARE(depth, 1);
        delete root;
    }

    void shouldShowTheFallbackContentInTheFallbackLocale()
    {
        HoverScene scene;
        scene.packages.addControlFile(
                text("Scene"), text("german"),
                "<hovlets locale=\"de_DE\"><hovlet key=\"generic\"/></hovlets>");
        scene.context().set(HVKeyLocale, text("fr_FR"));
        scene.start();
        QVERIFY(!scene.show(text("unknown")));
        scene.context().set(HVKeyFallbackKey, text("generic"));
        QVERIFY(!scene.show(text("unknown"))); // English, the default, has no such entry
        scene.context().set(HVKeyFallbackLocale, text("de_DE"));
        scene.host().forgetMessages();
        QVERIFY(scene.show(text("unknown")));
        QCOMPARE(scene.shownKey(), text("generic"));
        QCOMPARE(scene.host().messagesOf(HVMessageInformation),
                 QStringList { text("looking for Hovlet for key:unknown") });
    }

    void shouldFindTheFallbackContentInEnglishByDefault()
    {
        MadeUpIndex index([](const QString &, QString &, int &, HVXmlElement *&) {
            return static_cast<HVXmlElement *>(nullptr);
        });
        HoverScene scene;
        scene.start(&index);
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(!scene.show(text("x")));
        QCOMPARE(index.asked, (QStringList { text("x de_DE"), text("x en_US") }));
        index.asked.clear();
        scene.context().set(HVKeyFallbackKey, text("y"));
        QVERIFY(!scene.show(text("x")));
        QCOMPARE(index.asked, (QStringList { text("x de_DE"), text("x en_US"), text("y en_US") }));
        index.asked.clear();
        scene.context().set(HVKeyFallbackKey, text("")); // empty, but set
        QVERIFY(!scene.show(text("x")));
        QCOMPARE(index.asked, (QStringList { text("x de_DE"), text("x en_US"), text(" en_US") }));
    }

    void shouldLeaveFallbackContentWhereItIs()
    {
        HoverScene scene;
        scene.start();
        scene.context().set(HVKeyFallbackKey, text("b"));
        QVERIFY(scene.show(text("unknown")));
        const HVXmlElement *content = scene.view()->content();
        const QPoint position = scene.popup()->pos();
        QVERIFY(scene.show(text("another"), { 100, 100 }));
        QCOMPARE(scene.view()->content(), content);
        QCOMPARE(scene.popup()->pos(), position);
        scene.popup()->hide();
        QVERIFY(scene.show(text("another"), { 100, 100 }));
        QVERIFY(scene.popup()->pos() != position);
    }

    // The package's folder

    void shouldTakeThePackageFolderAboveTheControlFile_data()
    {
        QTest::addColumn<int>("depth");
        QTest::addColumn<QString>("folder");
        QTest::newRow("0") << 0 << "/a/b/c";
        QTest::newRow("1") << 1 << "/a/b/c";
        QTest::newRow("2") << 2 << "/a/b";
        QTest::newRow("3") << 3 << "/a";
        QTest::newRow("negative") << -5 << "/a/b/c";
    }

    void shouldTakeThePackageFolderAboveTheControlFile()
    {
        QFETCH(int, depth);
        QFETCH(QString, folder);
        HoverScene scene;
        const QString base = scene.packages.path();
        QVERIFY(QDir(base).mkpath(text("a/b/c")));
        QVERIFY(QFile::link(base + text("/a"), base + text("/link")));
        MadeUpIndex index([&](const QString &key, QString &path, int &found, HVXmlElement *&root) {
            path = base + text("/link/b/c");
            found = depth;
            root = new HVXmlElement;
            return MadeUpIndex::entry(key, root);
        });
        scene.start(&index);
        QVERIFY(scene.show(text("x")));
        QCOMPARE(scene.view()->packageRoot().path(), base + folder);
        QCOMPARE(scene.view()->engine()->rootContext()->contextProperty(text("dataLocation")),
                 QVariant(base + folder));
    }

    // Replaced content

    void shouldDeleteReplacedContentOnce_data()
    {
        QTest::addColumn<Forest::Shape>("shape");
        QTest::newRow("entry below the root") << Forest::EntryBelowRoot;
        QTest::newRow("entry beside the root") << Forest::EntryBesideRoot;
        QTest::newRow("entry further below") << Forest::EntryBelowAnother;
    }

    void shouldDeleteReplacedContentOnce()
    {
        QFETCH(Forest::Shape, shape);
        Forest forest;
        MadeUpIndex index([&](const QString &key, QString &, int &, HVXmlElement *&root) {
            return forest.make(key, shape, root);
        });
        {
            HoverScene scene;
            scene.start(&index);
            QVERIFY(scene.show(text("x")));
            QVERIFY(scene.show(text("x")));
            QCOMPARE(forest.deleted, 0);
            QVERIFY(scene.show(text("y")));
            QCOMPARE(forest.deleted, 2);
            QVERIFY(!forest.alive.at(0) && !forest.alive.at(1));
            QVERIFY(forest.alive.at(2) && forest.alive.at(3));
            QCOMPARE(scene.shownKey(), text("y"));

            // A hidden popup keeps its content until the next show.
            scene.popup()->hide();
            QCOMPARE(forest.deleted, 2);
            QVERIFY(scene.show(text("y")));
            QCOMPARE(forest.deleted, 4);
        }
        QCOMPARE(forest.deleted, 6);
    }

    void shouldShowQmlTheNewContentBeforeTheOldGoes()
    {
        HoverScene scene;
        scene.packages.add(
                text("Scene.hovlets/ui/HovletsUI.qml"),
                PackageFolder::userInterface(
                        200, 100,
                        "property string key: hovlet.attribute(\"key\")\n"
                        "property string title: hovlet.childElement(\"title\").content"));
        QVERIFY(scene.show(text("a")));
        QCOMPARE(scene.view()->rootObject()->property("key").toString(), text("a"));
        QStringList seen;
        connect(scene.view()->content(), &QObject::destroyed, this,
                [&] { seen += keyInQml(scene.view()); });
        QVERIFY(scene.show(text("b")));
        QCOMPARE(seen, QStringList { text("b") });
        QCOMPARE(scene.view()->rootObject()->property("key").toString(), text("b"));
        QCOMPARE(scene.view()->rootObject()->property("title").toString(), text("Title of b"));
        QVERIFY(scene.host().messagesOf(HVMessageDebug).isEmpty()); // the QML reports nothing
    }

    void shouldKeepContentThatTheIndexReturnsAgain()
    {
        Forest forest;
        HVXmlElement *root = nullptr;
        HVXmlElement *entry = forest.make(text("x"), Forest::EntryBelowRoot, root);
        MadeUpIndex index([&](const QString &, QString &, int &, HVXmlElement *&found) {
            found = root;
            return entry;
        });
        {
            HoverScene scene;
            scene.start(&index);
            QVERIFY(scene.show(text("x")));
            const QPoint position = scene.popup()->pos();
            scene.host().shortcutsAskedFor.clear();
            QVERIFY(scene.show(text("y"), { 100, 100 })); // the popup is visible already
            QCOMPARE(scene.popup()->pos(), position);
            QVERIFY(scene.host().shortcutsAskedFor.isEmpty());
            scene.popup()->hide();
            QVERIFY(scene.show(text("y"), { 100, 100 }));
            QVERIFY(scene.isShowing());
            QVERIFY(scene.popup()->pos() != position);
            QCOMPARE(scene.view()->content(), entry);
            QCOMPARE(forest.deleted, 0);
        }
        QCOMPARE(forest.deleted, 2);
    }

    void shouldTreatContentWithoutARootAsMissing()
    {
        HoverScene scene;
        int deleted = 0;
        MadeUpIndex index([&](const QString &key, QString &, int &, HVXmlElement *&root) {
            HVXmlElement *entry = MadeUpIndex::entry(key);
            connect(entry, &QObject::destroyed, this, [&deleted] { ++deleted; });
            root = key == text("good") ? new HVXmlElement : nullptr;
            return entry;
        });
        scene.start(&index);
        scene.context().set(HVKeyFallbackKey, text("good")); // unused, because the look-up succeeds
        QVERIFY(!scene.show(text("bad")));
        QCOMPARE(deleted, 1);
        QVERIFY(!scene.isShowing());
        QVERIFY(scene.show(text("good")));
        Control other;
        QVERIFY(scene.manager().show(text("bad"), scene.popup()->geometry().center(), &other));
        QVERIFY(!scene.manager().show(text("bad"), { 700, 700 }, &other));
        QVERIFY(!scene.isShowing());
        QCOMPARE(scene.shownKey(), text("good"));
        QCOMPARE(deleted, 3);
    }

    void shouldIgnoreTheRootOfAFailedLookUp()
    {
        // An index may leave anything in the root when it finds nothing.
        HVXmlElement stale;
        HoverScene scene;
        MadeUpIndex index([&](const QString &key, QString &, int &, HVXmlElement *&root) {
            if (key == text("generic"))
                return MadeUpIndex::entry(key);
            root = &stale;
            return static_cast<HVXmlElement *>(nullptr);
        });
        scene.start(&index);
        scene.context().set(HVKeyFallbackKey, text("generic"));
        QVERIFY(!scene.show(text("x")));
        QCOMPARE(scene.manager().hovletAttribute(text("x"), text("key"), text("none")),
                 text("none"));
    }

    void shouldKeepTheUserInterfaceWhenContentHasNone()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        QFile::remove(scene.packages.path() + text("/Scene.hovlets/ui/HovletsUI.qml"));
        QVERIFY(scene.show(text("b")));
        QVERIFY(scene.view()->rootObject());
        QCOMPARE(keyInQml(scene.view()), text("b"));
        QCOMPARE(scene.host().messagesOf(HVMessageDebug).size(), 1);
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerContent)
#include "tst_hvmanager_content.moc"
