// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"

using namespace Hovlets;

/// Tests the services for content: messages, placeholders, attributes and resources.
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
};

HOVLETS_TEST_MAIN(tst_HVManagerText)
#include "tst_hvmanager_text.moc"
