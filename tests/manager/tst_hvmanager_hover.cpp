// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "OpenCounter.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QDateTime>
#include <QtCore/QFileInfo>

using namespace Hovlets;

namespace {

QMouseEvent mouseMove(const QPoint &global)
{
    return QMouseEvent(QEvent::MouseMove, QPointF(), QPointF(global), Qt::NoButton, Qt::NoButton,
                       Qt::NoModifier);
}

/// Whether the popup's countdown to hiding runs.
bool countsDown(const HVWidget *popup)
{
    return popup->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly)->isActive();
}

} // namespace

class tst_HVManagerHover : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    // The application's events

    void shouldShowThePopupInPlaceOfTheTooltip()
    {
        HoverScene scene;
        scene.start();
        QVERIFY(HoverScene::rest(*scene.control));
        QVERIFY(scene.isShowing());
        QCOMPARE(scene.shownKey(), text("a"));
        QCOMPARE(scene.popup()->pos(), HoverScene::Position + QPoint(35, 30));
        QCOMPARE(scene.popup()->referenceWidget(), scene.control);
    }

    void shouldLetTheTooltipThroughWithoutContent()
    {
        HoverScene scene;
        scene.start();
        scene.control->setObjectName(text("unknown"));
        QVERIFY(!HoverScene::rest(*scene.control));
        QVERIFY(!scene.isShowing());
        QCOMPARE(scene.host().messagesOf(HVMessageInformation).value(0),
                 text("looking for Hovlet for key:unknown"));
        QVERIFY(scene.host().messagesOf(HVMessageError).isEmpty());
        QVERIFY(scene.host().messagesOf(HVMessageWarning).isEmpty());
    }

    /// Qt offers the tooltip of the label to each of its parents.
    void shouldOpenEachFileOnceForTheTooltipOfAControlAndItsParents()
    {
        HoverScene scene;
        QWidget *parent = scene.control;
        for (int depth = 0; depth < 8; ++depth)
            parent = new QWidget(parent);
        auto *label = new Control(text("label"), parent);
        scene.window.setObjectName(text("window"));
        scene.control->setObjectName(QString());
        scene.start();
        const QString file = scene.packages.path() + text("/Scene.hovlets/Control/content.xml");
        QTRY_VERIFY(QFileInfo(file).lastModified().msecsTo(QDateTime::currentDateTime()) > 150);

        OpenCounter opened(file);
        QVERIFY(!HoverScene::rest(*label));
        const QStringList asked = scene.host().messagesOf(HVMessageInformation);
        QCOMPARE(asked.filter(text("looking for Hovlet")).size(), 11);
        QCOMPARE(opened.take(), 1);

        scene.window.setObjectName(text("a")); // the file holds this one
        HoverScene::rest(*label);
        QCOMPARE(scene.shownKey(), text("a"));
        QCOMPARE(opened.take(), 1);
    }

    void shouldAskTheHostForTheKey()
    {
        class Host : public RecordingHost
        {
        public:
            using RecordingHost::RecordingHost;
            QString keyForObject(QObject *object) override
            {
                return text("b") + object->property("suffix").toString();
            }
        };
        PackageFolder packages;
        packages.addPackage(text("P"), { text("b!") });
        HVContext context;
        context.set(HVKeyTrackHover, true);
        Host host(context, { packages.path() });
        Control control(text("other"));
        control.setProperty("suffix", text("!"));
        QCOMPARE(host.manager()->keyForObject(&control), text("b!"));
        QVERIFY(HoverScene::rest(control));
        QCOMPARE(host.view()->content()->attribute(text("key")), text("b!"));
    }

    void shouldShowForAnObjectThatIsNoWidget()
    {
        HoverScene scene;
        scene.start();
        QObject object;
        object.setObjectName(text("b"));
        QHelpEvent event(QEvent::ToolTip, {}, HoverScene::Position);
        QVERIFY(QCoreApplication::sendEvent(&object, &event));
        QCOMPARE(scene.shownKey(), text("b"));
        QCOMPARE(scene.popup()->referenceWidget(), nullptr);
        QVERIFY(scene.manager().show(text("a"), {}, nullptr));
        QCOMPARE(scene.shownKey(), text("a"));
    }

    void shouldNotWatchTheMouseUnlessTheSettingsSaySo()
    {
        HoverScene scene;
        scene.context().set(HVKeyTrackHover, false);
        scene.start();
        QVERIFY(!HoverScene::rest(*scene.control));
        QCOMPARE(scene.popup(), nullptr);

        QVERIFY(scene.show(text("a")));
        QTest::mouseClick(scene.control, Qt::LeftButton);
        QVERIFY(scene.isShowing());
        QEvent deactivate(QEvent::ApplicationDeactivate);
        QCoreApplication::sendEvent(qApp, &deactivate);
        QVERIFY(scene.isShowing());

        // Too late: the setting is read when the library starts.
        scene.context().set(HVKeyTrackHover, true);
        QTest::mouseClick(scene.control, Qt::LeftButton);
        QVERIFY(scene.isShowing());
    }

    void shouldHideImmediatelyWhenTheApplicationIsLeft()
    {
        HoverScene scene;
        scene.context().set(HVKeyHideFadeDuration, 100000);
        QEvent deactivate(QEvent::ApplicationDeactivate);
        scene.start();
        QCoreApplication::sendEvent(qApp, &deactivate);
        QCOMPARE(scene.popup(), nullptr);
        QVERIFY(scene.show(text("a")));
        QCoreApplication::sendEvent(qApp, &deactivate);
        QVERIFY(!scene.isShowing());
    }

    void shouldLetAllOtherEventsThrough_data()
    {
        QTest::addColumn<QEvent::Type>("type");
        QTest::newRow("left") << QEvent::ApplicationDeactivate;
        QTest::newRow("move") << QEvent::MouseMove;
        QTest::newRow("press") << QEvent::MouseButtonPress;
        QTest::newRow("release") << QEvent::MouseButtonRelease;
        QTest::newRow("other") << QEvent::Wheel;
    }

    void shouldLetAllOtherEventsThrough()
    {
        // Installed before the library's filter, it sees what that lets through.
        class Watcher : public QObject
        {
        public:
            int seen = 0;
            const QObject *receiver = nullptr;

        protected:
            bool eventFilter(QObject *object, QEvent *) override
            {
                seen += object == receiver ? 1 : 0;
                return object == receiver;
            }
        } watcher;
        qApp->installEventFilter(&watcher);
        QFETCH(QEvent::Type, type);
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        watcher.receiver = scene.control;
        QMouseEvent mouse = mouseMove({ 700, 700 });
        QMouseEvent button(type, QPointF(), QPointF(), Qt::LeftButton, Qt::LeftButton, {});
        QEvent other(type);
        const bool isButton =
                type == QEvent::MouseButtonPress || type == QEvent::MouseButtonRelease;
        QEvent *event = type == QEvent::MouseMove ? &mouse : isButton ? &button : &other;
        QCoreApplication::sendEvent(scene.control, event);
        QCOMPARE(watcher.seen, 1);
    }

    // Clicks

    void shouldHideWhenClickedOutside_data()
    {
        QTest::addColumn<QEvent::Type>("type");
        QTest::addColumn<bool>("hides");
        QTest::newRow("press") << QEvent::MouseButtonPress << true;
        QTest::newRow("release") << QEvent::MouseButtonRelease << true;
        QTest::newRow("double click") << QEvent::MouseButtonDblClick << false;
        QTest::newRow("move") << QEvent::MouseMove << false;
    }

    void shouldHideWhenClickedOutside()
    {
        QFETCH(QEvent::Type, type);
        HoverScene scene;
        scene.context().set(HVKeyHideFadeDuration, 100000);
        QVERIFY(scene.show(text("a")));
        QMouseEvent event(type, QPointF(1, 1), QPointF(1, 1), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(scene.control, &event);
        QTEST(!scene.isShowing(), "hides");
        QCOMPARE(scene.control->presses, type == QEvent::MouseButtonPress ? 1 : 0);
    }

    void shouldStayWhenClickedInside()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        QTest::mouseClick(scene.view(), Qt::LeftButton);
        QVERIFY(scene.isShowing());
        // The popup's own edge, outside the view.
        QTest::mouseClick(scene.popup(), Qt::LeftButton, {}, scene.popup()->rect().bottomRight());
        QVERIFY(scene.isShowing());
        QWidget deeper(scene.view());
        QTest::mouseClick(&deeper, Qt::LeftButton);
        QVERIFY(scene.isShowing());
    }

    void shouldIgnoreClicksOnOtherObjects()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(), QPointF(), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QObject object;
        QVERIFY(!scene.manager().mouseButtonEventFilter(&object, &event));
        QVERIFY(!scene.manager().mouseButtonEventFilter(nullptr, &event));
        QVERIFY(scene.isShowing());
        QVERIFY(!scene.manager().mouseButtonEventFilter(scene.control, &event));
        QVERIFY(!scene.isShowing());
    }

    void shouldIgnoreTheMouseWithoutAPopup()
    {
        HoverScene scene;
        QMouseEvent event = mouseMove({});
        QVERIFY(!scene.manager().mouseButtonEventFilter(scene.control, &event));
        QVERIFY(!scene.manager().mouseMoveEventFilter(scene.control, &event));
        QCOMPARE(scene.popup(), nullptr);
    }

    void shouldActivateAPopupThatMustStayOpen()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        scene.view()->setStayOpen(true);
        scene.window.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &scene.window);
        QTest::mousePress(scene.control, Qt::LeftButton);
        QVERIFY(scene.isShowing());
        QTRY_COMPARE(QApplication::activeWindow(), scene.popup());
        QTest::mouseRelease(scene.control, Qt::LeftButton);
        QVERIFY(scene.isShowing());
    }

    // Moves

    void shouldInformAVisiblePopupAboutTheMouse()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        scene.context().set(HVKeyHideDelay, 100000);
        QVERIFY(!countsDown(scene.popup()));
        const QPoint away(700, 700);
        const auto move = [&scene](QObject *object, const QPoint &position) {
            QMouseEvent event = mouseMove(position);
            return scene.manager().mouseMoveEventFilter(object, &event);
        };
        QVERIFY(!move(scene.control, away));
        QVERIFY(countsDown(scene.popup()));
        QVERIFY(!move(nullptr, scene.popup()->geometry().center()));
        QVERIFY(!countsDown(scene.popup()));

        QMouseEvent event = mouseMove(away);
        QCoreApplication::sendEvent(scene.control, &event);
        QVERIFY(countsDown(scene.popup()));
        scene.popup()->hide();
        QVERIFY(!move(scene.control, away));
        QVERIFY(!countsDown(scene.popup()));
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerHover)
#include "tst_hvmanager_hover.moc"
