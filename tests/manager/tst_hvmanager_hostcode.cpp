// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "InterruptingHost.h"
#include "TestMain.h"
#include "Text.h"

#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>

using namespace Hovlets;

namespace {

// Bindings translate texts while they run, and a click runs a signal handler.
constexpr auto Ui = R"(
import QtQuick 2.15
Rectangle {
    property string shown: hovlet ? hovletView.translate(hovlet.attribute("key"), "context") : ""
    width: 200; height: 100
    MouseArea { anchors.fill: parent; onClicked: hovletView.openExternalResource("topic") }
}
)";

} // namespace

/// Tests the host's code that runs while the popup's QML waits for it.
class tst_HVManagerHostCode : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_packages = std::make_unique<PackageFolder>();
        for (const char *name : { "P", "Q" }) {
            m_packages->addPackage(text(name), { text(name) + text("1"), text(name) + text("2") });
            m_packages->add(text(name) + text(".hovlets/ui/HovletsUI.qml"), Ui);
        }
        HVContext context;
        context.set(HVKeyHideDelay, 0);
        m_host = std::make_unique<InterruptingHost>(context, QStringList { m_packages->path() });
        m_control = std::make_unique<QWidget>();
    }

    void cleanup()
    {
        m_host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void shouldShowAnotherUserInterfaceWhileALinkIsOpened()
    {
        QVERIFY(show("P1"));
        const QPointer<HVWidget> clicked(m_host->popup());
        m_host->atLink = [&] {
            QVERIFY(show("Q1"));
            InterruptingHost::runEvents();
            QVERIFY(clicked); // the handler is still running
            QVERIFY(!clicked->isVisible());
        };
        click();
        QCOMPARE(shownText(), text("Q1"));
        QTRY_VERIFY(!clicked);
        QVERIFY(show("P2"));
        QCOMPARE(shownText(), text("P2"));
    }

    void shouldShowOtherContentWhileATextIsTranslated_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("of the same package") << text("P2");
        QTest::newRow("with another user interface") << text("Q2");
    }

    void shouldShowOtherContentWhileATextIsTranslated()
    {
        QFETCH(QString, key);
        QVERIFY(show("Q1"));
        m_host->atTranslation = [&] {
            QVERIFY(m_host->manager()->show(key, {}, m_control.get()));
            InterruptingHost::runEvents();
        };
        show("P1");
        QCOMPARE(shownText(), key);
        InterruptingHost::runEvents();
        QCOMPARE(shownText(), key);
        QCOMPARE(visiblePopups(), 1);
    }

    void shouldSurviveAPopupThatTheHostDeletesWhileATextIsTranslated()
    {
        QVERIFY(show("P1"));
        m_host->atTranslation = [&] {
            delete m_host->popup();
            InterruptingHost::runEvents();
        };
        QVERIFY(!show("P2"));
        InterruptingHost::runEvents();
        QVERIFY(show("P1"));
        QCOMPARE(shownText(), text("P1"));
    }

    void shouldSurviveAPopupThatTheHostDeletesWhileALinkIsOpened()
    {
        QVERIFY(show("P1"));
        const QPointer<HVView> clicked(m_host->view());
        m_host->atLink = [&] {
            delete m_host->popup();
            InterruptingHost::runEvents();
            QVERIFY(clicked); // the handler is still running
        };
        click();
        QTRY_VERIFY(!clicked);
        QVERIFY(show("P2"));
    }

    void shouldBelongOnlyToTheWindowOfItsControl()
    {
        m_control->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_control.get()));
        QVERIFY(show("P1"));
        QCOMPARE(m_host->popup()->windowHandle()->transientParent(), m_control->windowHandle());
        m_host->popup()->hide();
        QVERIFY(m_host->manager()->show(text("P2"), {}, nullptr));
        QCOMPARE(m_host->popup()->windowHandle()->transientParent(), nullptr);
    }

private:
    bool show(const char *key) { return m_host->manager()->show(text(key), {}, m_control.get()); }

    void click() { QTest::mouseClick(m_host->view(), Qt::LeftButton, {}, { 50, 50 }); }

    QString shownText()
    {
        const bool visible = m_host->popup() && m_host->popup()->isVisible();
        return visible ? m_host->view()->rootObject()->property("shown").toString() : QString();
    }

    static int visiblePopups()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        return static_cast<int>(std::count_if(windows.begin(), windows.end(), [](QWidget *window) {
            return qobject_cast<HVWidget *>(window) && window->isVisible();
        }));
    }

    std::unique_ptr<PackageFolder> m_packages;
    std::unique_ptr<InterruptingHost> m_host;
    std::unique_ptr<QWidget> m_control;
};

HOVLETS_TEST_MAIN(tst_HVManagerHostCode)
#include "tst_hvmanager_hostcode.moc"
