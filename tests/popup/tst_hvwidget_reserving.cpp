// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"
#include "TestMain.h"

#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMainWindow>

using namespace Hovlets;

namespace {

constexpr Qt::WindowFlags Hints =
        Qt::WindowTitleHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint;

} // namespace

class tst_HVWidgetReserving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<HoverBench>(); }

    void cleanup()
    {
        delete m_bench->host->container;
        m_bench.reset();
    }

    void shouldBecomeAToolWindowOfItsControlsWindow()
    {
        const QPointer<HVWidget> popup = pin();
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->parentWidget(), &m_bench->window);
        QCOMPARE(popup->windowFlags(), QWidget(nullptr, Qt::Tool | Hints).windowFlags());
        QVERIFY(popup->testAttribute(Qt::WA_DeleteOnClose));
        QCOMPARE(popup->windowModality(), Qt::NonModal);
        QCOMPARE(popup->pos(), m_position);
        QCOMPARE(popup->size(), QSize(201, 101));
        QCOMPARE(popup->windowHandle()->transientParent(), m_bench->window.windowHandle());
        QCOMPARE(m_bench->host->windowsAskedFor, QList<HVWindowType> { HVReservedWindow });
        QVERIFY(m_bench->popup() && m_bench->popup() != popup);

        popup->close();
        QTRY_VERIFY(!popup);
    }

    void shouldBecomeAnIndependentWindowWithoutAControl()
    {
        m_bench->control.reset();
        QPointer<HVWidget> popup = pin();
        QVERIFY(popup->isVisible());
        QVERIFY(!popup->parentWidget());
        QCOMPARE(popup->windowFlags(), QWidget(nullptr, Qt::Tool | Hints).windowFlags());
        delete popup;
    }

    void shouldTakeItsTitleFromTheContent_data()
    {
        QTest::addColumn<QVariant>("property");
        QTest::addColumn<QString>("attribute");
        QTest::addColumn<QString>("expected");
        const QVariant none;
        QTest::newRow("property") << QVariant(QStringLiteral("P")) << QStringLiteral("A")
                                  << QStringLiteral("P");
        QTest::newRow("attribute") << none << QStringLiteral("A") << QStringLiteral("A");
        QTest::newRow("empty property")
                << QVariant(QString()) << QStringLiteral("A") << QStringLiteral("A");
        QTest::newRow("child") << none << QString() << QStringLiteral("Title of a");
    }

    void shouldTakeItsTitleFromTheContent()
    {
        QFETCH(QVariant, property);
        QFETCH(QString, attribute);
        const QPointer<HVWidget> popup = pin([&](HVXmlElement *content) {
            content->setProperty("title", property);
            content->setAttribute(QStringLiteral("title"), attribute);
        });
        QTEST(popup->windowTitle(), "expected");
    }

    void shouldSimplifyATitleInAnElement()
    {
        const QPointer<HVWidget> popup = pin([&](HVXmlElement *content) {
            content->childElement(QStringLiteral("title"))
                    ->setContent(QStringLiteral("\n  A\n  b "));
        });
        QCOMPARE(popup->windowTitle(), QStringLiteral("A b"));
    }

    void shouldWorkWithoutATitle()
    {
        const QPointer<HVWidget> popup = pin([&](HVXmlElement *content) {
            delete content->childElement(QStringLiteral("title"));
        });
        QCOMPARE(popup->windowTitle(), QString());
    }

    void shouldMoveIntoTheContainerOfTheHost()
    {
        auto *container = new QWidget;
        const Qt::WindowFlags flags = container->windowFlags();
        m_bench->host->container = container;
        const QPointer<HVWidget> popup = pin([](HVXmlElement *content) {
            content->setAttribute(QStringLiteral("title"), QStringLiteral("The title"));
        });
        QCOMPARE(popup->parentWidget(), container);
        QVERIFY(!popup->isWindow());
        QVERIFY(popup->isVisible());
        QVERIFY(!popup->testAttribute(Qt::WA_DeleteOnClose));
        const auto *layout = qobject_cast<QVBoxLayout *>(container->layout());
        QVERIFY(layout);
        QVERIFY(layout->contentsMargins().isNull());
        QCOMPARE(layout->indexOf(popup), 0);
        QCOMPARE(container->windowTitle(), QStringLiteral("The title"));
        QCOMPARE(container->windowFlags(), flags | Hints);
        QVERIFY(container->isVisible());
        QCOMPARE(container->pos(), m_position);
        QCOMPARE(container->size(), QSize(201, 101));
        QCOMPARE(container->minimumSize(), container->maximumSize());
        QCOMPARE(popup->size(), QSize(201, 101));
    }

    void shouldUseTheLayoutAndMarginsOfTheContainer()
    {
        auto *container = new QWidget;
        auto *layout = new QHBoxLayout(container);
        layout->setContentsMargins(1, 2, 3, 4);
        m_bench->host->container = container;
        const QPointer<HVWidget> popup = pin();
        QCOMPARE(container->layout(), layout);
        QCOMPARE(layout->indexOf(popup), 0);
        QCOMPARE(container->size(), QSize(200 + 1 + 3 + 1, 100 + 2 + 4 + 1));
        QTRY_COMPARE(popup->geometry(), QRect(1, 2, 201, 101));

        popup->view()->rootObject()->setProperty("width", 300);
        QTRY_COMPARE(container->size(), QSize(305, 107));
        QTRY_COMPARE(popup->geometry(), QRect(1, 2, 301, 101));
    }

    void shouldNotAffectOtherWindowsOfTheHost()
    {
        QMainWindow main;
        main.setGeometry(-40, 30, 400, 300); // partly off the screen, where its user left it
        auto *container = new QWidget(&main);
        main.setCentralWidget(container);
        main.show();
        QVERIFY(QTest::qWaitForWindowExposed(&main));
        const QRect geometry = main.geometry();
        const QRect inside = container->geometry();
        m_bench->host->container = container;
        const QPointer<HVWidget> popup = pin();
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->window(), &main);
        popup->view()->rootObject()->setProperty("width", 300);
        QTRY_COMPARE(popup->size(), QSize(301, 101));
        popup->reposition();
        QCOMPARE(main.geometry(), geometry);
        QCOMPARE(container->geometry(), inside);
        QCOMPARE(main.maximumWidth(), QWIDGETSIZE_MAX);
        QCOMPARE(container->maximumWidth(), QWIDGETSIZE_MAX);

        // QML closes the popup, but none of the host's windows.
        close(popup->view());
        QTRY_VERIFY(!popup->isVisible());
        QVERIFY(main.isVisible());
        QVERIFY(container->isVisible());
    }

    void shouldNotMoveAContainerInsideAWindow()
    {
        QWidget main;
        main.setGeometry(30, 30, 400, 300);
        auto *container = new QWidget(&main);
        container->setGeometry(10, 20, 300, 200);
        m_bench->host->container = container;
        main.show();
        const QPointer<HVWidget> popup = pin();
        QVERIFY(popup->isVisible());
        QCOMPARE(container->geometry(), QRect(10, 20, 300, 200));
    }

    void shouldCloseTheContainerWhenQmlClosesTheView()
    {
        auto *container = new QWidget;
        m_bench->host->container = container;
        const QPointer<HVWidget> popup = pin();
        close(popup->view());
        QTRY_VERIFY(!container->isVisible());
        QVERIFY(m_bench->window.isVisible());
        QVERIFY(popup->view()->testAttribute(Qt::WA_WState_Created));
        container->show();
        QVERIFY(popup->view()->isVisible()); // the view itself was never closed
    }

    void shouldCloseItselfWhenQmlClosesTheView()
    {
        const QPointer<HVWidget> popup = pin();
        close(popup->view());
        QTRY_VERIFY(!popup);
        QVERIFY(m_bench->window.isVisible());

        m_bench->show();
        close(m_bench->view());
        QVERIFY(!m_bench->popup()->isVisible());
        QVERIFY(m_bench->window.isVisible());
        m_bench->show();
        QVERIFY(m_bench->view()->isVisible());
    }

    void shouldNotCountDownOnceItIsPinned()
    {
        m_bench->show();
        m_bench->popup()->setTimer();
        const QPointer<HVWidget> popup = pin();
        const auto *timer = popup->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(!timer->isActive());
        popup->checkMousePosition(PopupBench::away());
        popup->setTimer();
        QVERIFY(!timer->isActive());
    }

    void shouldBeOpaqueWhenItIsPinnedDuringAFade_data()
    {
        QTest::addColumn<bool>("fadingOut");
        QTest::addColumn<bool>("withContainer");
        QTest::newRow("in") << false << false;
        QTest::newRow("out") << true << false;
        QTest::newRow("in, container") << false << true;
        QTest::newRow("out, container") << true << true;
    }

    void shouldBeOpaqueWhenItIsPinnedDuringAFade()
    {
        QFETCH(bool, fadingOut);
        QFETCH(bool, withContainer);
        if (withContainer)
            m_bench->host->container = new QWidget;
        m_bench->context().set(HVKeyShowFadeDuration, fadingOut ? 0 : 60000);
        m_bench->context().set(HVKeyHideFadeDuration, 60000);
        m_bench->show();
        if (fadingOut)
            m_bench->popup()->hideAnimated();
        auto *fade = m_bench->popup()->findChild<QPropertyAnimation *>();
        fade->setCurrentTime(30000);
        const QPointer<HVWidget> popup = m_bench->popup();
        popup->view()->setReserved(true);
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->window()->windowOpacity(), 1.0);
        QCOMPARE(fade->state(), QAbstractAnimation::Stopped);
    }

    void shouldStayWhenTheManagerDoesNotGrantIt()
    {
        PopupBench other; // its popup does not belong to the manager
        other.show();
        const Qt::WindowFlags flags = other.popup->windowFlags();
        other.view->setReserved(true);
        QCOMPARE(other.popup->windowFlags(), flags);
        QVERIFY(!other.popup->testAttribute(Qt::WA_DeleteOnClose));
        QVERIFY(other.host->windowsAskedFor.isEmpty());
        other.popup->setTimer();
        QCOMPARE(other.countdown(), 3000);
    }

    void shouldBecomeAToolWindowWhenTheContainerDiesBeforeItMoves()
    {
        m_bench->host->container = new QWidget;
        m_bench->show();
        QPointer<HVWidget> popup = m_bench->popup();
        popup->view()->setProperty("reserved", true); // set from QML, whose handler ends first
        delete m_bench->host->container;
        m_bench->host->container = nullptr;
        QTRY_COMPARE(popup->windowType(), Qt::Tool);
        QVERIFY(popup->isVisible());
        popup->close();
        QTRY_VERIFY(!popup);
    }

    void shouldDoNothingWhenItIsNoLongerReserved()
    {
        const QPointer<HVWidget> popup = pin();
        const Qt::WindowFlags flags = popup->windowFlags();
        popup->view()->setReserved(false);
        popup->view()->setReserved(true); // no longer the current popup
        QCOMPARE(popup->windowFlags(), flags);
        QVERIFY(popup->isVisible());
        QCOMPARE(m_bench->host->windowsAskedFor.size(), 1);
    }

    void shouldLetTheNextPopupShowOtherContent()
    {
        const QPointer<HVWidget> popup = pin();
        QVERIFY(m_bench->show(QStringLiteral("b")));
        QVERIFY(m_bench->popup()->isVisible());
        QVERIFY(popup->isVisible());
        const QString key = QStringLiteral("key");
        QCOMPARE(popup->view()->content()->attribute(key), QStringLiteral("a"));
        QCOMPARE(m_bench->view()->content()->attribute(key), QStringLiteral("b"));
        QVERIFY(!m_bench->popup()->parentWidget());
        QCOMPARE(m_bench->popup()->windowType(), Qt::ToolTip);
    }

    void shouldOutliveTheManagerWhenPinned()
    {
        QPointer<HVWidget> popup = pin();
        m_bench->host.reset();
        QVERIFY(popup && popup->isVisible());
        QVERIFY(!popup->manager());
        HVView *view = popup->view();
        view->debugLog(QStringLiteral("to nobody"));
        QCOMPARE(view->interpolate(QStringLiteral("%(x)s")), QStringLiteral("%(x)s"));
        QCOMPARE(view->translate(QStringLiteral("t"), QString()), QStringLiteral("t"));
        QVERIFY(!view->openExternalResource(QStringLiteral("x")));
        QVERIFY(!view->documentationAvailable());
        view->loadQML(QStringLiteral("/missing.qml"));
        view->setReserved(false);
        view->setReserved(true);
        popup->close();
        QTRY_VERIFY(!popup);
        m_bench->host = std::make_unique<RecordingHost>(m_bench->settings, QStringList());
    }

    void shouldDeleteItsContentWhenThePinnedPopupCloses()
    {
        const QPointer<HVWidget> popup = pin();
        const QPointer<HVXmlElement> content = popup->view()->content();
        const QPointer<QObject> root = content->parent();
        QVERIFY(root);
        popup->close();
        QTRY_VERIFY(!popup);
        QVERIFY(!content);
        QVERIFY(!root);
    }

private:
    template <typename Change> HVWidget *pin(Change change)
    {
        m_bench->show();
        HVWidget *popup = m_bench->popup();
        change(popup->view()->content());
        m_position = popup->pos();
        popup->view()->setReserved(true);
        return popup;
    }

    HVWidget *pin()
    {
        return pin([](HVXmlElement *) { /* as it is */ });
    }

    /// Calls the function behind "hovletView.close()" in QML.
    static void close(HVView *view) { QVERIFY(QMetaObject::invokeMethod(view, "close")); }

    std::unique_ptr<HoverBench> m_bench;
    QPoint m_position;
};

HOVLETS_TEST_MAIN(tst_HVWidgetReserving)
#include "tst_hvwidget_reserving.moc"
