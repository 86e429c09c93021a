// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QPropertyAnimation>
#include <QtQuick/QQuickItem>

using namespace Hovlets;

/// Tests whether a call shows a popup, what it shows, and where.
class tst_HVManagerShow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowNothingWhileSuspended()
    {
        HoverScene scene;
        scene.start();
        scene.context().set(HVKeySuspended, true);
        QVERIFY(!HoverScene::rest(*scene.control));
        QCOMPARE(scene.popup(), nullptr);
        QCOMPARE(scene.host().messagesOf(HVMessageInformation).value(0),
                 text("looking for Hovlet for key:a"));
        scene.context().set(HVKeySuspended, false);
        QVERIFY(HoverScene::rest(*scene.control));
        scene.context().set(HVKeySuspended, true);
        QVERIFY(!HoverScene::rest(*scene.control));
    }

    void shouldShowOnlyWhileExactlyTheRequiredModifiersAreHeld_data()
    {
        QTest::addColumn<int>("required");
        QTest::addColumn<Qt::KeyboardModifiers>("held");
        QTest::addColumn<bool>("shows");
        const Qt::KeyboardModifiers none;
        const Qt::KeyboardModifiers both = Qt::ShiftModifier | Qt::ControlModifier;
        QTest::newRow("none") << 0 << none << true;
        QTest::newRow("any") << 0 << both << true;
        QTest::newRow("missing") << int(Qt::ShiftModifier) << none << false;
        QTest::newRow("held") << int(Qt::ShiftModifier) << Qt::KeyboardModifiers(Qt::ShiftModifier)
                              << true;
        QTest::newRow("another") << int(Qt::ShiftModifier) << Qt::KeyboardModifiers(Qt::AltModifier)
                                 << false;
        QTest::newRow("one too many") << int(Qt::ShiftModifier) << both << false;
        QTest::newRow("both") << int(both) << both << true;
        QTest::newRow("one of both")
                << int(both) << Qt::KeyboardModifiers(Qt::ShiftModifier) << false;
    }

    void shouldShowOnlyWhileExactlyTheRequiredModifiersAreHeld()
    {
        QFETCH(int, required);
        QFETCH(Qt::KeyboardModifiers, held);
        HoverScene scene;
        scene.start();
        scene.context().set(HVKeyRequiredModifiers, required);
        QTest::mousePress(&scene.window, Qt::RightButton, held);
        QCOMPARE(QApplication::keyboardModifiers(), held);
        QTEST(scene.show(text("a")), "shows");
        QTEST(scene.isShowing(), "shows");
        QTEST(scene.popup() != nullptr, "shows");
        QTest::mouseRelease(&scene.window, Qt::RightButton, Qt::NoModifier);
    }

    void shouldLeaveAPopupOfTheSameKeyWhereItIs()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        const QPoint position = scene.popup()->pos();
        const HVXmlElement *content = scene.view()->content();
        scene.host().forgetMessages();
        scene.host().shortcutsAskedFor.clear();
        QVERIFY(HoverScene::rest(*scene.control, { 200, 200 }));
        QCOMPARE(scene.popup()->pos(), position);
        QCOMPARE(scene.view()->content(), content);
        QVERIFY(scene.host().shortcutsAskedFor.isEmpty());
        QCOMPARE(scene.host().messages.size(), 1); // "looking for"
    }

    void shouldMoveAPopupOfAnotherKey()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        HVWidget *popup = scene.popup();
        QVERIFY(scene.show(text("b"), { 200, 210 }));
        QCOMPARE(scene.popup(), popup);
        QVERIFY(popup->isVisible());
        QCOMPARE(scene.shownKey(), text("b"));
        QCOMPARE(popup->pos(), QPoint(235, 240));
        popup->hide();
        QVERIFY(scene.show(text("b"), { 100, 110 }));
        QVERIFY(popup->isVisible());
        QCOMPARE(popup->pos(), QPoint(135, 140));
    }

    void shouldRaiseThePopupWithEachShow()
    {
        class Watcher : public QObject
        {
        public:
            int raises = 0;

        protected:
            bool eventFilter(QObject *, QEvent *event) override
            {
                raises += event->type() == QEvent::ZOrderChange ? 1 : 0;
                return false;
            }
        } watcher;
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        scene.popup()->installEventFilter(&watcher);
        QVERIFY(scene.show(text("b")));
        QCOMPARE(watcher.raises, 1);
        QVERIFY(scene.show(text("b"))); // nothing changes
        QCOMPARE(watcher.raises, 1);
    }

    void shouldOffsetThePopupFromTheCursor()
    {
        HoverScene scene;
        HVManager &manager = scene.manager();
        QCOMPARE(manager.tooltipPosition({ 100, 100 }, scene.control), QPoint(135, 130));
        QCOMPARE(manager.tooltipPosition({ 100, 100 }, nullptr), QPoint(135, 130));
        scene.context().set(HVKeyCursorOffset, QSize(-5, 7));
        QCOMPARE(manager.tooltipPosition({ 100, 100 }, scene.control), QPoint(95, 107));
    }

    // Controls without content next to a visible popup

    void shouldKeepOrHideThePopupWhenAControlHasNoContent_data()
    {
        QTest::addColumn<QPoint>("offset"); // from the popup's corner
        QTest::addColumn<QString>("toolTip");
        QTest::addColumn<bool>("stays");
        QTest::newRow("inside") << QPoint(0, 0) << QString() << true;
        QTest::newRow("margin") << QPoint(-20, -20) << QString() << true;
        QTest::newRow("beyond the margin") << QPoint(-21, -20) << QString() << false;
        QTest::newRow("outside") << QPoint(-100, -100) << QString() << false;
        QTest::newRow("inside, with a tooltip") << QPoint(0, 0) << text("tip") << false;
        QTest::newRow("outside, with a tooltip") << QPoint(-100, -100) << text("tip") << false;
    }

    void shouldKeepOrHideThePopupWhenAControlHasNoContent()
    {
        QFETCH(QPoint, offset);
        QFETCH(QString, toolTip);
        QFETCH(bool, stays);
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        Control other(text("unknown"));
        other.setToolTip(toolTip);
        QCOMPARE(HoverScene::rest(other, scene.popup()->mapToGlobal(offset)), stays);
        QCOMPARE(scene.isShowing(), stays);
        QCOMPARE(scene.shownKey(), text("a"));
    }

    void shouldKeepThePopupForAnObjectThatHasNoTooltip()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        const QPoint inside = scene.popup()->geometry().center();
        QObject object;
        QVERIFY(scene.manager().show(text("unknown"), inside, &object));
        QVERIFY(scene.manager().show(text("unknown"), inside, nullptr));
        QVERIFY(!scene.manager().show(text("unknown"), { 700, 700 }, nullptr));
        QVERIFY(!scene.isShowing());
        QVERIFY(!scene.manager().show(text("unknown"), inside, nullptr));
    }

    void shouldFadeThePopupOutWhenAControlHasNoContent()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        scene.context().set(HVKeyHideFadeDuration, 100000);
        QVERIFY(!scene.show(text("unknown"), { 700, 700 }));
        QVERIFY(scene.isShowing()); // still fading
        const auto *fade = scene.popup()->findChild<QPropertyAnimation *>();
        QCOMPARE(fade->state(), QAbstractAnimation::Running);
    }

    void shouldEndAFadeOutWithAnySuccessfulShow_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("same key") << text("a");
        QTest::newRow("another key") << text("b");
        QTest::newRow("no content, inside") << text("unknown");
    }

    void shouldEndAFadeOutWithAnySuccessfulShow()
    {
        QFETCH(QString, key);
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        scene.context().set(HVKeyHideFadeDuration, 100000);
        scene.popup()->hideAnimated();
        const auto *fade = scene.popup()->findChild<QPropertyAnimation *>();
        QTRY_VERIFY(fade->currentTime() > 0);
        const QPoint inside = scene.popup()->geometry().center();
        Control control;
        QVERIFY(scene.manager().show(key, inside, &control));
        QCOMPARE(fade->state(), QAbstractAnimation::Stopped);
        QCOMPARE(scene.popup()->windowOpacity(), 1.0);
        QVERIFY(scene.isShowing());
    }

    // Shortcuts

    void shouldAskTheHostForTheShortcut_data()
    {
        QTest::addColumn<QString>("answer"); // null: the content's own
        QTest::addColumn<QString>("expected");
        QTest::newRow("the content's own") << QString() << "Ctrl+A";
        QTest::newRow("another") << text("F7") << "F7";
        QTest::newRow("empty") << text("") << "Ctrl+A";
    }

    void shouldAskTheHostForTheShortcut()
    {
        QFETCH(QString, answer);
        HoverScene scene;
        scene.packages.addControlFile(text("Scene"), text("shortcut"),
                                      "<hovlets><hovlet key=\"s\" shortcut=\"Ctrl+A\"/></hovlets>");
        scene.host().shortcut = answer;
        QVERIFY(scene.show(text("s")));
        QCOMPARE(scene.host().shortcutsAskedFor, QStringList { text("s") });
        QTEST(scene.view()->content()->attribute(text("shortcut")), "expected");
    }

    void shouldHaveTheShortcutWhenThePopupShows()
    {
        HoverScene scene;
        scene.packages.add(
                text("Scene.hovlets/ui/HovletsUI.qml"),
                PackageFolder::userInterface(
                        200, 100, "property string shortcut: hovlet.attribute(\"shortcut\")"));
        const auto shown = [&scene] { return scene.view()->rootObject()->property("shortcut"); };
        scene.host().shortcut = text("F7");
        QVERIFY(scene.show(text("a")));
        QCOMPARE(shown(), QVariant(text("F7")));
        scene.host().shortcut = text("F8");
        QVERIFY(scene.show(text("b")));
        QCOMPARE(shown(), QVariant(text("F8")));
    }

    void shouldAskForTheShortcutOfTheHoveredKeyAndObject()
    {
        class Host : public RecordingHost
        {
        public:
            using RecordingHost::RecordingHost;
            QString shortCutForObject(const QString &key, QObject *object,
                                      const QString &shortcut) override
            {
                return key + QLatin1Char('|') + object->objectName() + QLatin1Char('|') + shortcut;
            }
        };
        PackageFolder packages;
        packages.addPackage(text("P"), { text("generic") });
        packages.add(text("keys.xml"),
                     "<hovletkeys><key name=\"generic\" shortcut=\"F2\" more=\"m\"/></hovletkeys>");
        HVContext context;
        context.set(HVKeyFallbackKey, text("generic"));
        context.set(HVKeyKeyDataFile, packages.path() + text("/keys.xml"));
        Host host(context, { packages.path() });
        Control control(text("name"));
        QVERIFY(host.manager()->show(text("unknown"), {}, &control));
        const HVXmlElement *content = host.view()->content();
        QCOMPARE(content->attribute(text("shortcut")), text("unknown|name|F2"));
        QCOMPARE(content->attribute(text("more")), text("m"));
        QVERIFY(host.manager()->show(text("generic"), {}, &control)); // looks nothing up again
    }

    void shouldLeaveContentWithoutAShortcut()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        QVERIFY(!scene.view()->content()->hasAttribute(text("shortcut")));
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerShow)
#include "tst_hvmanager_show.moc"
