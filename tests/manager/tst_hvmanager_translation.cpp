// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"
#include "TranslationFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTranslator>

using namespace Hovlets;

/// Tests the translation of content.
class tst_HVManagerTranslation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldLeaveTextUnchangedBeforeTheFirstPopup()
    {
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_en_US"), text("x"));
        scene.context().set(HVKeyLocale, text("en_US"));
        QCOMPARE(translate(scene), text("Open"));
        QVERIFY(!scene.show(text("unknown")));
        QCOMPARE(translate(scene), text("Open")); // no content translates it
        QVERIFY(scene.show(text("a")));
        QCOMPARE(translate(scene), text("x"));
    }

    void shouldTranslateWithTheFileOfTheLocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("fallback");
        QTest::addColumn<QString>("expected");
        QTest::newRow("preferred") << "de_DE"
                                   << "fr_FR"
                                   << "deutsch";
        QTest::newRow("fallback") << QString() << "fr_FR"
                                  << QString::fromUtf8("fran\xc3\xa7"
                                                       "ais");
        QTest::newRow("no such file") << "it_IT"
                                      << "fr_FR"
                                      << "Open";
    }

    void shouldTranslateWithTheFileOfTheLocale()
    {
        QFETCH(QString, locale);
        QFETCH(QString, fallback);
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("deutsch"));
        addTranslation(scene, text("Scene"), text("Hovlets_fr_FR"),
                       text("fran\xe7"
                            "ais"));
        scene.context().set(HVKeyLocale, locale);
        scene.context().set(HVKeyFallbackLocale, fallback);
        QVERIFY(scene.show(text("a")));
        QTEST(translate(scene), "expected");
    }

    void shouldTranslateByLanguage_data()
    {
        QTest::addColumn<QString>("written"); // locale of the control file
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("expected");
        QTest::newRow("the country") << "" << QStringList { text("fr_CA"), text("fr") } << "fr_CA";
        QTest::newRow("the language") << "" << QStringList { text("fr"), text("en_US") } << "fr";
        QTest::newRow("the language's own country")
                << "" << QStringList { text("fr_FR"), text("fr") } << "fr_FR";
        QTest::newRow("another country") << "" << QStringList { text("fr_BE") } << "Open";
        QTest::newRow("the fallback") << "" << QStringList { text("en_US") } << "en_US";
        QTest::newRow("written in the language") << "fr" << QStringList { text("en_US") } << "Open";
        QTest::newRow("written in the fallback") << "en_US" << QStringList { text("fr") } << "fr";
    }

    void shouldTranslateByLanguage()
    {
        QFETCH(QString, written);
        QFETCH(QStringList, files);
        HoverScene scene;
        scene.packages.addControlFile(
                text("Scene"), text("c"),
                QStringLiteral("<hovlets locale=\"%1\"><hovlet key=\"c\"/></hovlets>")
                        .arg(written)
                        .toUtf8());
        for (const QString &locale : std::as_const(files))
            addTranslation(scene, text("Scene"), text("Hovlets_") + locale, locale);
        scene.context().set(HVKeyLocale, text("fr_CA"));
        scene.context().set(HVKeyLanguageFallback, true);
        QVERIFY(scene.show(text("c")));
        QTEST(translate(scene), "expected");
    }

    void shouldLookUpByLanguageWhatAFileLacks()
    {
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_fr_CA"), text("canada"));
        scene.packages.add(text("Scene.hovlets/l10n/Hovlets_fr.qm"),
                           translationFile("Menu", "Close", text("france")));
        scene.context().set(HVKeyLocale, text("fr_CA"));
        QVERIFY(scene.show(text("a")));
        HVManager &manager = scene.manager();
        QCOMPARE(manager.translateString(text("Close"), text("Menu")), QString());
        scene.context().set(HVKeyLanguageFallback, true);
        QCOMPARE(manager.translateString(text("Close"), text("Menu")), text("france"));
        QCOMPARE(manager.translateString(text("Quit"), text("Menu")), QString());
        QCOMPARE(translate(scene), text("canada"));
    }

    void shouldGiveAnEmptyTextWhenTheFileLacksTheEntry()
    {
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("deutsch"));
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(scene.show(text("a")));
        HVManager &manager = scene.manager();
        QCOMPARE(manager.translateString(text("Close"), text("Menu")), QString());
        QCOMPARE(manager.translateString(text("Open"), text("Other")), QString());
        QCOMPARE(translate(scene), text("deutsch"));
    }

    void shouldPassTextAndContextAsUtf8()
    {
        HoverScene scene;
        scene.packages.add(text("Scene.hovlets/l10n/Hovlets_de_DE.qm"),
                           translationFile("Men\xc3\xbc",
                                           "\xc3\x96"
                                           "ffnen",
                                           QString(QChar(0x6253))));
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(scene.show(text("a")));
        QCOMPARE(scene.manager().translateString(text("\xd6"
                                                      "ffnen"),
                                                 text("Men\xfc")),
                 QString(QChar(0x6253)));
    }

    void shouldTryAgainAfterAFailure()
    {
        HoverScene scene;
        scene.context().set(HVKeyLocale, text("de_DE"));
        const QString path =
                scene.packages.add(text("Scene.hovlets/l10n/Hovlets_de_DE.qm"), "no such thing");
        QVERIFY(scene.show(text("a")));
        QCOMPARE(translate(scene), text("Open"));
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("deutsch"));
        QCOMPARE(translate(scene), text("deutsch"));
        QVERIFY(QFile::remove(path));
        QCOMPARE(translate(scene), text("Open")); // for the bare folder name
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("neu"));
        QCOMPARE(translate(scene), text("neu"));
    }

    void shouldKeepAFileThatItHasLoaded()
    {
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("deutsch"));
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(scene.show(text("a")));
        QCOMPARE(translate(scene), text("deutsch"));
        const QString path = scene.packages.path() + text("/Scene.hovlets/l10n/Hovlets_de_DE.qm");
        QVERIFY(QFile::remove(path)); // not overwritten, because the loaded file may be mapped
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("neu"));
        QCOMPARE(translate(scene), text("deutsch"));
    }

    void shouldUseTheFileOfTheContentsPackage()
    {
        HoverScene scene;
        scene.packages.addPackage(text("Other"), { text("c"), text("d") });
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("scene"));
        addTranslation(scene, text("Other"), text("Hovlets_de_DE"), text("other"));
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(scene.show(text("a")));
        QCOMPARE(translate(scene), text("scene"));
        QVERIFY(scene.show(text("c")));
        QCOMPARE(translate(scene), text("other"));
        QVERIFY(scene.show(text("b")));
        QCOMPARE(translate(scene), text("scene"));
    }

    void shouldFindTheFileBySettingsAndContent()
    {
        HoverScene scene;
        scene.packages.addControlFile(text("Scene"), text("attribute"),
                                      "<hovlets><hovlet key=\"c\" l10n_name=\"words\"/></hovlets>");
        scene.packages.add(text("Scene.hovlets/texts/App_de_DE.qm"),
                           translationFile("Menu", "Open", text("by setting")));
        scene.packages.add(text("Scene.hovlets/words/App_de_DE.qm"),
                           translationFile("Menu", "Open", text("by attribute")));
        scene.context().set(HVKeyLocale, text("de_DE"));
        scene.context().set(HVKeyTranslationName, text("App"));
        scene.context().set(HVKeyTranslationFolder, text("texts"));
        QVERIFY(scene.show(text("a")));
        QCOMPARE(translate(scene), text("by setting"));
        QVERIFY(scene.show(text("c")));
        QCOMPARE(translate(scene), text("by attribute"));
        scene.context().set(HVKeyTranslationFolder, text(""));
        QVERIFY(scene.show(text("b")));
        QCOMPARE(translate(scene), text("Open")); // no folder, hence no file
        QCOMPARE(translate(scene), text("Open")); // nor the next time
    }

    void shouldNotTranslateForTheApplication()
    {
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_de_DE"), text("deutsch"));
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(scene.show(text("a")));
        QCOMPARE(translate(scene), text("deutsch"));
        QCOMPARE(QCoreApplication::translate("Menu", "Open"), text("Open"));

        QTranslator hosts;
        QVERIFY(hosts.load(scene.packages.path() + text("/Scene.hovlets/l10n/Hovlets_de_DE.qm")));
        QVERIFY(QCoreApplication::installTranslator(&hosts));
        QVERIFY(scene.show(text("b")));
        scene.context().set(HVKeyLocale, text("it_IT"));
        QCOMPARE(translate(scene), text("Open"));
    }

private:
    static void addTranslation(const HoverScene &scene, const QString &package, const QString &name,
                               const QString &translation)
    {
        scene.packages.add(text("%1.hovlets/l10n/%2.qm").arg(package, name),
                           translationFile("Menu", "Open", translation));
    }

    static QString translate(HoverScene &scene)
    {
        return scene.manager().translateString(text("Open"), text("Menu"));
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerTranslation)
#include "tst_hvmanager_translation.moc"
