// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"
#include "TranslationFile.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QTranslator>

using namespace Hovlets;

/// Tests the services for the texts of content.
class tst_HVManagerText : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // Messages

    void shouldPassOnMessagesUpToALevel_data()
    {
        QTest::addColumn<QVariant>("level");
        QTest::addColumn<QList<int>>("passed");
        QTest::newRow("default") << QVariant() << QList<int> { 100, 150, 200 };
        QTest::newRow("information") << QVariant(300) << QList<int> { 100, 150, 200, 300 };
        QTest::newRow("all") << QVariant(400) << QList<int> { 100, 150, 200, 300, 400 };
        QTest::newRow("between") << QVariant(199) << QList<int> { 100, 150 };
        QTest::newRow("none") << QVariant(0) << QList<int> {};
        QTest::newRow("text") << QVariant(text("100")) << QList<int> { 100 };
    }

    void shouldPassOnMessagesUpToALevel()
    {
        QFETCH(QVariant, level);
        HVContext context;
        RecordingHost host(context, {});
        if (level.isValid())
            host.manager()->context().set(HVKeyMessageLevel, level);
        for (const int type : { 100, 150, 200, 300, 400 })
            host.manager()->handleMessage(HVMessageType(type), text("%1 ") + QString::number(type));
        QList<int> types;
        for (const auto &message : std::as_const(host.messages)) {
            types += message.first;
            QCOMPARE(message.second, text("%1 ") + QString::number(message.first));
        }
        QTEST(types, "passed");
    }

    // Placeholders

    void shouldFillTextFromTheGlobalProperties()
    {
        HVContext context;
        RecordingHost host(context, {});
        HVManager &manager = *host.manager();
        QCOMPARE(manager.interpolate(text("Press %(key)s")), text("Press %(key)s"));
        manager.setGlobalProperty(text("key"), text("F1"));
        QCOMPARE(manager.interpolate(text("Press %(key)s")), text("Press F1"));
        manager.setGlobalProperty(text("key"), 2);
        QCOMPARE(manager.interpolate(text("Press %(key)s")), text("Press 2"));
        manager.setGlobalProperty(text("key"), QVariant());
        QCOMPARE(manager.interpolate(text("Press %(key)s")), text("Press %(key)s"));
        manager.setGlobalProperty(text("key"), text(""));
        QCOMPARE(manager.interpolate(text("Press %(key)s")), text("Press "));
    }

    void shouldFillTextOnlyFromGivenValues()
    {
        HVContext context;
        RecordingHost host(context, {});
        host.manager()->setGlobalProperty(text("a"), text("global"));
        QCOMPARE(host.manager()->interpolate(text("%(a)s%(b)s"), { { text("b"), text("x") } }),
                 text("%(a)sx"));
    }

    // Attributes

    void shouldAnswerFromThePopupWithoutALookUp()
    {
        MadeUpIndex index;
        HoverScene scene;
        scene.start(&index);
        QVERIFY(scene.show(text("x")));
        scene.view()->content()->setAttribute(text("title"), text("shown"));
        index.asked.clear();
        scene.host().forgetMessages();
        HVManager &manager = scene.manager();
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("shown"));
        QCOMPARE(manager.hovletAttribute(text("x"), text("other"), text("none")), text("none"));
        scene.popup()->hide(); // hiding it makes no difference
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("shown"));
        scene.view()->content()->setAttribute(text("title"), text(""));
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text(""));
        QVERIFY(index.asked.isEmpty());
        QVERIFY(scene.host().messages.isEmpty());
    }

    void shouldAnswerFromPinnedPopupsInTheirOrder()
    {
        MadeUpIndex index;
        HoverScene scene;
        scene.start(&index);
        HVManager &manager = scene.manager();
        QList<HVWidget *> pinned;
        for (const char *title : { "first", "second" }) {
            QVERIFY(scene.show(text("x")));
            scene.view()->content()->setAttribute(text("title"), text(title));
            pinned += scene.pin();
        }
        QVERIFY(scene.show(text("y")));
        index.asked.clear();
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("first"));
        QCOMPARE(manager.hovletAttribute(text("x"), text("other"), text("none")), text("none"));

        delete pinned.takeFirst(); // the user closes it
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("second"));
        QVERIFY(index.asked.isEmpty());

        QVERIFY(scene.show(text("x"))); // the current popup takes precedence
        scene.view()->content()->setAttribute(text("title"), text("current"));
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("current"));

        delete pinned.takeFirst();
        QVERIFY(scene.show(text("y")));
        index.asked.clear();
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("none"));
        QCOMPARE(index.asked, QStringList { text("x en_US") });
    }

    void shouldLookAttributesUpAndFreeWhatItFinds()
    {
        int deleted = 0;
        MadeUpIndex index([&](const QString &key, QString &, int &, HVXmlElement *&root) {
            if (key == text("nothing"))
                return static_cast<HVXmlElement *>(nullptr);
            root = new HVXmlElement;
            HVXmlElement *entry = MadeUpIndex::entry(key, root);
            for (HVXmlElement *element : { entry, root })
                connect(element, &QObject::destroyed, this, [&deleted] { ++deleted; });
            return entry;
        });
        HoverScene scene;
        scene.start(&index);
        HVManager &manager = scene.manager();
        QCOMPARE(manager.hovletAttribute(text("x"), text("key"), text("none")), text("x"));
        QCOMPARE(deleted, 2);
        const QStringList messages = scene.host().messagesOf(HVMessageInformation);
        QCOMPARE(messages.size(), 1);
        QVERIFY(messages.at(0).startsWith(text("Retrieved x in ")));
        QCOMPARE(manager.hovletAttribute(text("x"), text("title"), text("none")), text("none"));
        QCOMPARE(deleted, 4);
        QCOMPARE(manager.hovletAttribute(text("nothing"), text("key"), text("none")), text("none"));
        QCOMPARE(manager.hovletAttribute(text("nothing"), text("key"), QString()), QString());
        QCOMPARE(scene.popup(), nullptr);
    }

    // Translation

    void shouldLeaveTextUnchangedBeforeTheFirstPopup()
    {
        HoverScene scene;
        addTranslation(scene, text("Scene"), text("Hovlets_en_US"), text("x"));
        scene.context().set(HVKeyLocale, text("en_US"));
        QCOMPARE(translate(scene), text("Open"));
        QVERIFY(!scene.show(text("unknown")));
        QCOMPARE(translate(scene), text("Open")); // there is no content to translate
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

    // Resources

    void shouldDistinguishKindsOfResources_data()
    {
        QTest::addColumn<QString>("resource");
        QTest::addColumn<int>("type");
        QTest::newRow("web address")
                << "https://example.org/a b" << 3; // not valid in a URL: the space
        QTest::newRow("address") << "https://example.org/a?b=c#d" << 2;
        QTest::newRow("mail") << "mailto:a@b" << 2;
        QTest::newRow("scheme of its own") << "help:topic" << 2;
        QTest::newRow("file address") << "file:///tmp/x" << 2;
        QTest::newRow("drive letter") << "C:/x" << 2;
        QTest::newRow("relative path") << "docs/page.html" << 3;
        QTest::newRow("absolute path") << "/docs/page.html" << 3;
        QTest::newRow("host without a scheme") << "//example.org" << 3;
        QTest::newRow("percent") << "docs/100%.html" << 3;
        QTest::newRow("word") << "SomeTopic" << 1;
        QTest::newRow("words") << "some topic" << 1;
        QTest::newRow("file name") << "page.html" << 1;
        QTest::newRow("back slash") << "docs\\page" << 1;
        QTest::newRow("empty") << "" << 1;
    }

    void shouldDistinguishKindsOfResources()
    {
        QFETCH(QString, resource);
        QFETCH(int, type);
        HVContext context;
        RecordingHost host(context, {});
        QVERIFY(host.manager()->openExternalResource(resource));
        host.opens = false;
        QVERIFY(!host.manager()->openExternalResource(resource));
        QCOMPARE(host.opened.size(), 2);
        QCOMPARE(int(host.opened.at(0).first), type);
        QCOMPARE(host.opened.at(0).second, resource);

        const HVContextKey gate = type == 1 ? HVKeyDocumentationEnabled : HVKeyLinksEnabled;
        const HVContextKey other = type == 1 ? HVKeyLinksEnabled : HVKeyDocumentationEnabled;
        host.opens = true;
        host.manager()->context().set(other, false);
        QVERIFY(host.manager()->openExternalResource(resource));
        host.opened.clear();
        host.manager()->context().set(gate, false);
        QVERIFY(!host.manager()->openExternalResource(resource));
        QVERIFY(host.opened.isEmpty());
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

HOVLETS_TEST_MAIN(tst_HVManagerText)
#include "tst_hvmanager_text.moc"
