// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "InterruptingHost.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QTranslator>

using namespace Hovlets;

/// Tests hosts that call the library from within its questions to them.
class tst_HVManagerReentrancy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_packages = std::make_unique<PackageFolder>();
        m_packages->addPackage(text("P"), { text("a"), text("b") });
        HVContext context;
        context.set(HVKeyHideDelay, 0);
        context.set(HVKeyMessageLevel, HVMessageDebug);
        m_host = std::make_unique<InterruptingHost>(context, QStringList { m_packages->path() });
        m_control = new QWidget;
    }

    void cleanup()
    {
        delete m_control;
        m_host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void shouldKeepWhatTheHostShowsMeanwhile()
    {
        m_host->shortcut = text("F1");
        m_host->atShortcut = [this] { QVERIFY(show("b")); };
        QVERIFY(!show("a"));
        QCOMPARE(shownKey(), text("b"));
        QCOMPARE(m_host->shortcutsAskedFor, QStringList({ text("a"), text("b") }));
    }

    void shouldAlsoShowWhatTheHostShowsMeanwhile()
    {
        const HVXmlElement *inner = nullptr;
        m_host->shortcut = text("F1");
        m_host->atShortcut = [&] {
            QVERIFY(show("b"));
            QVERIFY(show("a"));
            inner = m_host->view()->content();
        };
        QVERIFY(show("a"));
        QCOMPARE(m_host->view()->content(), inner);
    }

    void shouldShowForAControlThatGoesMeanwhile_data()
    {
        QTest::addColumn<bool>("byMessage");
        QTest::newRow("when told of the look-up") << true;
        QTest::newRow("when asked for the shortcut") << false;
    }

    void shouldShowForAControlThatGoesMeanwhile()
    {
        QFETCH(bool, byMessage);
        (byMessage ? m_host->atMessage : m_host->atShortcut) = [this] { delete m_control; };
        QVERIFY(show("a"));
        QCOMPARE(shownKey(), text("a"));
        QCOMPARE(m_host->popup()->referenceWidget(), nullptr);
    }

    void shouldHideTheVisiblePopupWhenItsControlGoesMeanwhile()
    {
        QVERIFY(show("a"));
        m_control->setToolTip(text("ordinary"));
        m_host->atMessage = [this] { delete m_control; };
        QVERIFY(!m_host->manager()->show(text("unknown"), m_host->popup()->geometry().center(),
                                         m_control));
        QCOMPARE(shownKey(), QString());
    }

    void shouldLeaveAPopupThatIsPinnedMeanwhile()
    {
        QPointer<HVWidget> pinned;
        m_host->atShortcut = [&] {
            pinned = m_host->popup();
            m_host->view()->setReserved(true);
        };
        QVERIFY(!show("a"));
        QVERIFY(pinned);
        QCOMPARE(pinned->view()->content()->attribute(text("key")), text("a"));
        QVERIFY(m_host->popup() != pinned);
        QVERIFY(!m_host->popup()->isVisible());
        delete pinned;
    }

    void shouldNotPinAPopupThatGoesMeanwhile()
    {
        QVERIFY(show("a"));
        QPointer<HVWidget> popup = m_host->popup();
        QWidget *container = nullptr;
        m_host->atWindow = [&] { delete popup.data(); };
        QVERIFY(!m_host->manager()->reserve(popup, container));
        QCOMPARE(m_host->popup(), nullptr);
        QVERIFY(show("b"));
    }

    void shouldMakeAnotherPopupWhenItGoesDuringTheLookUp()
    {
        QPointer<HVWidget> popup;
        MadeUpIndex index([&popup](const QString &key, QString &, int &, HVXmlElement *&root) {
            delete popup.data();
            root = new HVXmlElement;
            return MadeUpIndex::entry(key, root);
        });
        HVContext context;
        RecordingHost host(context, { m_packages->path() }, &index);
        QVERIFY(host.manager()->show(text("a"), {}, m_control));
        popup = host.popup();
        QVERIFY(host.manager()->show(text("b"), {}, m_control));
        QVERIFY(!popup);
        QVERIFY(host.popup()->isVisible());
        QCOMPARE(host.view()->content()->attribute(text("key")), text("b"));
    }

    void shouldMakeItsTranslatorWithTheFirstText()
    {
        QVERIFY(show("a"));
        QVERIFY(!m_host->manager()->findChild<QTranslator *>());
        QCOMPARE(m_host->manager()->translateString(text("Cut"), text("Tools")), text("Cut"));
        QCOMPARE(m_host->manager()->findChildren<QTranslator *>().size(), 1);
        m_host->manager()->translateString(text("Copy"), text("Tools"));
        QCOMPARE(m_host->manager()->findChildren<QTranslator *>().size(), 1);
    }

    void shouldWorkWithoutAHost()
    {
        HVContext context;
        context.set(HVKeyMessageLevel, HVMessageDebug);
        HVManager manager(nullptr, context, { m_packages->path() }, nullptr);
        QCOMPARE(manager.interface(), nullptr);
        QCOMPARE(manager.keyForObject(m_control), QString());
        QVERIFY(!manager.openExternalResource(text("Topic")));
        QVERIFY(manager.show(text("a"), {}, m_control));
        const std::unique_ptr<HVWidget> popup(manager.widget());
        QWidget *container = m_control;
        QVERIFY(manager.reserve(popup.get(), container));
        QCOMPARE(container, nullptr);
    }

private:
    bool show(const char *key) { return m_host->manager()->show(text(key), {}, m_control); }

    QString shownKey()
    {
        const bool visible = m_host->popup() && m_host->popup()->isVisible();
        return visible ? m_host->view()->content()->attribute(text("key")) : QString();
    }

    std::unique_ptr<PackageFolder> m_packages;
    std::unique_ptr<InterruptingHost> m_host;
    QPointer<QWidget> m_control;
};

HOVLETS_TEST_MAIN(tst_HVManagerReentrancy)
#include "tst_hvmanager_reentrancy.moc"
