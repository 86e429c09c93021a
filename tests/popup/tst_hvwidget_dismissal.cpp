// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverScene.h"
#include "TestMain.h"

#include <QtGui/QWheelEvent>
#include <QtTest/QtTest>

using namespace Hovlets;

namespace {

/// Counts the events that still reach a widget.
class Receiver : public QObject
{
public:
    explicit Receiver(QWidget *widget) { widget->installEventFilter(this); }

    int keys = 0;
    int turns = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        keys += event->type() == QEvent::KeyPress ? 1 : 0;
        turns += event->type() == QEvent::Wheel ? 1 : 0;
        return false;
    }
};

void turnWheel(QWidget *widget)
{
    const QPointF position(5, 5);
    QWheelEvent event(position, widget->mapToGlobal(position.toPoint()), QPoint(), QPoint(0, 120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

/// Tests that keys and the wheel hide the popup if the settings say so, and still reach their
/// target.
class tst_HVWidgetDismissal : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldHideOnAKey_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<bool>("goes");
        const int any = HVDismissOnAnyKey;
        QTest::newRow("unset, Escape") << QVariant(0) << Qt::Key_Escape << false;
        QTest::newRow("Escape") << QVariant(HVDismissOnEscape) << Qt::Key_Escape << true;
        QTest::newRow("Escape, another") << QVariant(HVDismissOnEscape) << Qt::Key_A << false;
        QTest::newRow("any") << QVariant(any) << Qt::Key_A << true;
        QTest::newRow("any, modifier") << QVariant(any) << Qt::Key_Shift << false;
        QTest::newRow("wheel, a key") << QVariant(HVDismissOnWheel) << Qt::Key_Escape << false;
        QTest::newRow("text with a number")
                << QVariant(QStringLiteral("1")) << Qt::Key_Escape << true;
        QTest::newRow("text") << QVariant(QStringLiteral("Escape")) << Qt::Key_Escape << false;
    }

    void shouldHideOnAKey()
    {
        QFETCH(QVariant, setting);
        QFETCH(Qt::Key, key);
        QFETCH(bool, goes);
        HoverScene scene;
        scene.context().set(HVKeyDismissOnKey, setting);
        const Receiver receiver(scene.control);
        QVERIFY(scene.show(QStringLiteral("a")));
        QTest::keyClick(scene.control, key);
        QCOMPARE(scene.isShowing(), !goes);
        QCOMPARE(receiver.keys, 1);
    }

    void shouldHideOnAKeyThatTriggersAShortcut()
    {
        HoverScene scene;
        scene.context().set(HVKeyDismissOnKey, int(HVDismissOnAnyKey));
        QVERIFY(scene.show(QStringLiteral("a")));
        // The event is not followed by a key press.
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_S, Qt::ControlModifier);
        QCoreApplication::sendEvent(scene.control, &event);
        QVERIFY(!scene.isShowing());
    }

    void shouldStayForAKeyThatRepeats()
    {
        HoverScene scene;
        scene.context().set(HVKeyDismissOnKey, int(HVDismissOnAnyKey));
        QVERIFY(scene.show(QStringLiteral("a")));
        QKeyEvent event(QEvent::KeyPress, Qt::Key_F1, Qt::ControlModifier, QString(), true);
        QCoreApplication::sendEvent(scene.control, &event);
        QVERIFY(scene.isShowing());
    }

    void shouldLetKeysIntoThePopupExceptEscape()
    {
        HoverScene scene;
        scene.context().set(HVKeyDismissOnKey, int(HVDismissOnAnyKey | HVDismissOnEscape));
        QVERIFY(scene.show(QStringLiteral("a")));
        scene.popup()->activateWindow();
        QTRY_COMPARE(QGuiApplication::focusWindow(), scene.popup()->windowHandle());
        QTest::keyClick(scene.view(), Qt::Key_A);
        QVERIFY(scene.isShowing());
        QTest::keyClick(scene.view(), Qt::Key_Escape);
        QVERIFY(!scene.isShowing());
    }

    void shouldHideOnTheWheelOverTheControl_data()
    {
        QTest::addColumn<int>("setting");
        QTest::addColumn<QByteArray>("target");
        QTest::addColumn<bool>("goes");
        const auto wheel = int(HVDismissOnWheel);
        QTest::newRow("unset") << 0 << QByteArray("control") << false;
        QTest::newRow("keys") << 3 << QByteArray("control") << false;
        QTest::newRow("control") << wheel << QByteArray("control") << true;
        QTest::newRow("inside the control") << wheel << QByteArray("child") << true;
        QTest::newRow("elsewhere") << wheel << QByteArray("window") << false;
        QTest::newRow("popup") << wheel << QByteArray("popup") << false;
    }

    void shouldHideOnTheWheelOverTheControl()
    {
        QFETCH(int, setting);
        QFETCH(QByteArray, target);
        QFETCH(bool, goes);
        HoverScene scene;
        scene.context().set(HVKeyDismissOnKey, setting);
        auto *child = new QWidget(scene.control);
        QVERIFY(scene.show(QStringLiteral("a")));
        QWidget *widget = target == "control" ? scene.control
                : target == "child"           ? child
                : target == "window"          ? &scene.window
                                              : static_cast<QWidget *>(scene.popup());
        const Receiver receiver(widget);
        turnWheel(widget);
        QCOMPARE(scene.isShowing(), !goes);
        QCOMPARE(receiver.turns, 1);
    }

    void shouldUseTheSettingsAtTheTimeOfTheShow()
    {
        HoverScene scene;
        QVERIFY(scene.show(QStringLiteral("a")));
        scene.context().set(HVKeyDismissOnKey, int(HVDismissOnEscape));
        QTest::keyClick(scene.control, Qt::Key_Escape);
        QVERIFY(scene.isShowing());
        QVERIFY(scene.show(QStringLiteral("b")));
        QTest::keyClick(scene.control, Qt::Key_Escape);
        QVERIFY(!scene.isShowing());
    }

    void shouldLeaveAPinnedPopup()
    {
        HoverScene scene;
        scene.context().set(HVKeyDismissOnKey, int(HVDismissOnAnyKey));
        QVERIFY(scene.show(QStringLiteral("a")));
        const std::unique_ptr<HVWidget> pinned(scene.pin());
        QTest::keyClick(scene.control, Qt::Key_Escape);
        QVERIFY(pinned->isVisible());
    }
};

HOVLETS_TEST_MAIN(tst_HVWidgetDismissal)
#include "tst_hvwidget_dismissal.moc"
