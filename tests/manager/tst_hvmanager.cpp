// SPDX-License-Identifier: Apache-2.0
#include "HVXmlElement.h"
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>

using namespace Hovlets;

namespace {

/// Gives tests access to the manager's protected operations.
class OpenManager : public HVManager
{
    Q_OBJECT

public:
    using HVManager::HVManager;
    using HVManager::initializeTooltipWindow;
};

} // namespace

class tst_HVManager : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_context = std::make_unique<HVContext>();
        m_context->set(HVKeyMessageLevel, HVMessageInformation);
        m_packages = std::make_unique<PackageFolder>();
    }

    // Parts

    void shouldStoreWhatItWasGiven()
    {
        const QStringList paths { text("/no/such/folder"), text("relative") };
        HVIndex index(nullptr, {});
        RecordingHost host(*m_context, paths, &index);
        HVManager &manager = *host.manager();
        QCOMPARE(manager.index(), &index);
        QCOMPARE(manager.interface(), &host);
        QCOMPARE(manager.searchPaths(), paths);
        QCOMPARE(manager.widget(), nullptr);
        QCOMPARE(manager.parent(), nullptr);
        manager.loadDataPath({ m_packages->path() });
        QCOMPARE(manager.searchPaths(), paths);
    }

    void shouldWorkOnACopyOfTheSettings()
    {
        m_context->set(HVKeyLocale, text("de_DE"));
        RecordingHost host(*m_context, {});
        HVManager &manager = *host.manager();
        QVERIFY(&manager.context() != m_context.get());
        QCOMPARE(&std::as_const(manager).context(), &manager.context());
        m_context->set(HVKeyLocale, text("fr_FR"));
        QCOMPARE(manager.context().get(HVKeyLocale, {}).toString(), text("de_DE"));
        manager.context().set(HVKeyLocale, text("it_IT"));
        QCOMPARE(m_context->get(HVKeyLocale, {}).toString(), text("fr_FR"));
    }

    void shouldMakeAnIndexOverItsOwnSettings()
    {
        QPointer<HVIndex> index;
        {
            m_packages->addPackage(text("P"), { text("a"), text("b") });
            RecordingHost host(*m_context, { m_packages->path() });
            index = host.manager()->index();
            QVERIFY(index);
            QCOMPARE(&index->context(), &host.manager()->context());
            QCOMPARE(host.manager()->keys(), (QStringList { text("a"), text("b") }));
        }
        QVERIFY(!index);
    }

    // Changes to the application

    void shouldHaveToolTipsShownAlwaysWhenToldTo_data()
    {
        QTest::addColumn<bool>("set");
        QTest::newRow("told") << true;
        QTest::newRow("not told") << false;
    }

    void shouldHaveToolTipsShownAlwaysWhenToldTo()
    {
        QFETCH(bool, set);
        QWidget window;
        QWidget child(&window);
        if (set)
            m_context->set(HVKeyAlwaysShowTooltips, true);
        {
            RecordingHost host(*m_context, {});
            QCOMPARE(window.testAttribute(Qt::WA_AlwaysShowToolTips), set);
            QVERIFY(!child.testAttribute(Qt::WA_AlwaysShowToolTips));
            QWidget later;
            QVERIFY(!later.testAttribute(Qt::WA_AlwaysShowToolTips));
            QWidget laterChild(&later);
            later.show();
            QCOMPARE(later.testAttribute(Qt::WA_AlwaysShowToolTips), set);
            QVERIFY(!laterChild.testAttribute(Qt::WA_AlwaysShowToolTips));
        }
        QVERIFY(!window.testAttribute(Qt::WA_AlwaysShowToolTips));
    }

    void shouldStopShowingToolTipsInInactiveWindows()
    {
        QWidget window;
        QWidget child(&window);
        for (QWidget *widget : { &window, &child })
            widget->setAttribute(Qt::WA_AlwaysShowToolTips);
        {
            RecordingHost host(*m_context, {});
            QVERIFY(window.testAttribute(Qt::WA_AlwaysShowToolTips));
        }
        QVERIFY(!window.testAttribute(Qt::WA_AlwaysShowToolTips));
        QVERIFY(child.testAttribute(Qt::WA_AlwaysShowToolTips));
    }

    void shouldOfferContentElementsToQml()
    {
        RecordingHost host(*m_context, {});
        QQmlEngine engine;
        QQmlComponent component(&engine);
        component.setData("import com.zandor.hovlets.qml 1.0\n"
                          "HVXmlElement { tagName: \"made\" }",
                          QUrl());
        const std::unique_ptr<QObject> made(component.create());
        QVERIFY2(made, qPrintable(component.errorString()));
        const auto *element = qobject_cast<HVXmlElement *>(made.get());
        QVERIFY(element);
        QCOMPARE(element->getTagName(), text("made"));
    }

    void shouldWatchTheMouseUntilItIsDeleted()
    {
        m_packages->addPackage(text("P"), { text("a") });
        m_context->set(HVKeyTrackHover, true);
        Control control(text("a"));
        {
            RecordingHost host(*m_context, { m_packages->path() });
            QVERIFY(HoverScene::rest(control));
            host.manager()->context().set(HVKeyTrackHover, false); // read once, at the start
            QVERIFY(HoverScene::rest(control));
        }
        QVERIFY(!HoverScene::rest(control));
    }

    // Locale of translations

    void shouldChooseTheLocale_data()
    {
        QTest::addColumn<QString>("preferred");
        QTest::addColumn<QString>("fallback");
        QTest::addColumn<QLocale>("expected");
        const QLocale german(QLocale::German, QLocale::Germany);
        const QLocale french(QLocale::French, QLocale::France);
        QTest::newRow("neither") << QString() << QString() << QLocale::system();
        QTest::newRow("empty") << text("") << text("") << QLocale::system();
        QTest::newRow("fallback") << QString() << text("de_DE") << german;
        QTest::newRow("preferred") << text("fr_FR") << QString() << french;
        QTest::newRow("both") << text("fr_FR") << text("de_DE") << french;
        QTest::newRow("an empty one") << text("") << text("de_DE") << german;
    }

    void shouldChooseTheLocale()
    {
        QFETCH(QString, preferred);
        QFETCH(QString, fallback);
        const QLocale before;
        QLocale::setDefault(QLocale(QLocale::Japanese));
        if (!preferred.isNull())
            m_context->set(HVKeyLocale, preferred);
        if (!fallback.isNull())
            m_context->set(HVKeyFallbackLocale, fallback);
        RecordingHost host(*m_context, {});
        const QLocale found = host.manager()->currentLocale();
        QLocale::setDefault(before);
        QTEST(found, "expected");
    }

    // Popup

    void shouldMakeThePopupOnceAndMoveItToTheGivenParent()
    {
        RecordingHost host(*m_context, {});
        OpenManager manager(&host, *m_context, {}, nullptr);
        QWidget parent;
        manager.initializeTooltipWindow(nullptr);
        HVWidget *popup = manager.widget();
        QVERIFY(popup && popup->view());
        QCOMPARE(popup->manager(), &manager);
        QCOMPARE(popup->referenceWidget(), nullptr);
        QCOMPARE(popup->view()->parentWidget(), popup);
        QVERIFY(popup->isWindow() && !popup->isVisible());
        manager.initializeTooltipWindow(&parent);
        QCOMPARE(manager.widget(), popup);
        QCOMPARE(popup->parentWidget(), &parent);
        manager.show(text("unknown"), {}, nullptr);
        QCOMPARE(manager.widget(), popup);
        QCOMPARE(popup->parentWidget(), nullptr);
        delete popup;
        QCOMPARE(manager.widget(), nullptr);
    }

    void shouldMakeThePopupBelowTheGivenParent()
    {
        RecordingHost host(*m_context, {});
        OpenManager manager(&host, *m_context, {}, nullptr);
        QWidget parent;
        manager.initializeTooltipWindow(&parent);
        QCOMPARE(manager.widget()->parentWidget(), &parent);
        manager.initializeTooltipWindow(nullptr);
        QCOMPARE(manager.widget()->parentWidget(), nullptr);
    }

    void shouldMakeThePopupWithTheFirstShow()
    {
        RecordingHost host(*m_context, {});
        QVERIFY(!host.manager()->show(text("unknown"), {}, nullptr));
        QVERIFY(host.manager()->widget());
        QVERIFY(host.manager()->widget()->view());
    }

    void shouldDeleteThePopupLater()
    {
        auto scene = std::make_unique<HoverScene>();
        QVERIFY(scene->show(text("a")));
        QPointer<HVWidget> popup = scene->popup();
        QPointer<HVXmlElement> content = scene->view()->content();
        auto host = std::make_unique<RecordingHost>(scene->context(), QStringList());
        host->manager()->show(text("unknown"), {}, nullptr);
        QPointer<HVWidget> another = host->popup();
        host.reset();
        QVERIFY(another);
        QCoreApplication::sendPostedEvents(another, QEvent::DeferredDelete);
        QVERIFY(!another);
        QVERIFY(popup);
        scene.reset();
        QVERIFY(!popup);
        QVERIFY(!content);
    }

private:
    std::unique_ptr<HVContext> m_context;
    std::unique_ptr<PackageFolder> m_packages;
};

HOVLETS_TEST_MAIN(tst_HVManager)
#include "tst_hvmanager.moc"
