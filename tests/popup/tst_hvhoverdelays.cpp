// SPDX-License-Identifier: Apache-2.0
#include "HVDismissal.h"
#include "HVHoverDelays.h"
#include "TestMain.h"

#include <QtTest/QtTest>

using namespace Hovlets;

using Action = HVHoverDelays::Action;

/// Tests when a popup shows and expands, and which keys hide it.
class tst_HVHoverDelays : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowAfterTheDesktopsDelay_data()
    {
        QTest::addColumn<int>("delay");
        QTest::newRow("unset") << 0;
        QTest::newRow("negative") << -500;
        QTest::newRow("shorter") << 300;
        QTest::newRow("equal") << 700;
    }

    void shouldShowAfterTheDesktopsDelay()
    {
        QFETCH(int, delay);
        HVHoverDelays delays;
        delays.setDelays(delay, 0);
        QCOMPARE(delays.toolTipDue(1700, 1000), Action::Show);
        QVERIFY(!delays.deadline());
        QCOMPARE(delays.timeReached(9000), Action::Nothing);
    }

    void shouldShowLaterWhenAsked()
    {
        HVHoverDelays delays;
        delays.setDelays(1200, 0);
        QCOMPARE(delays.toolTipDue(1700, 1000), Action::Nothing);
        QCOMPARE(*delays.deadline(), 2200);
        QCOMPARE(delays.timeReached(2199), Action::Nothing);
        QCOMPARE(delays.timeReached(2200), Action::Show);
        QCOMPARE(delays.timeReached(2300), Action::Nothing); // only once
        QVERIFY(!delays.deadline());
    }

    void shouldNotShowForAPointerThatMovedOn()
    {
        HVHoverDelays delays;
        delays.setDelays(1200, 0);
        delays.toolTipDue(1700, 1000);
        delays.pointerMoved();
        QVERIFY(!delays.deadline());
        QCOMPARE(delays.timeReached(5000), Action::Nothing);
        delays.toolTipDue(3000, 2300);
        QCOMPARE(*delays.deadline(), 3500);
    }

    void shouldExpandTheSimplePopup()
    {
        HVHoverDelays delays;
        delays.setDelays(0, 1000);
        delays.popupShown(2000, true);
        delays.pointerMoved();
        QCOMPARE(*delays.deadline(), 3000);
        QCOMPARE(delays.timeReached(2999), Action::Nothing);
        QCOMPARE(delays.timeReached(3000), Action::Expand);
        QVERIFY(!delays.deadline());
        delays.pointerReturned(4000);
        QVERIFY(!delays.deadline());
    }

    void shouldNotExpandTheFullPopup()
    {
        HVHoverDelays delays;
        delays.setDelays(0, 1000);
        delays.popupShown(2000, false);
        QVERIFY(!delays.deadline());
    }

    void shouldNotExpandWithoutADelay()
    {
        HVHoverDelays delays;
        delays.popupShown(2000, true);
        QVERIFY(!delays.deadline());
    }

    void shouldWaitForAPointerThatLeft()
    {
        HVHoverDelays delays;
        delays.setDelays(0, 1000);
        delays.popupShown(2000, true);
        delays.pointerReturned(2500); // the pointer has not left
        QCOMPARE(*delays.deadline(), 3000);
        delays.pointerLeft();
        QCOMPARE(delays.timeReached(9000), Action::Nothing);
        delays.pointerReturned(9000);
        QCOMPARE(delays.timeReached(10000), Action::Expand);
    }

    void shouldForgetADeletedPopup()
    {
        HVHoverDelays delays;
        delays.setDelays(0, 1000);
        delays.popupShown(2000, true);
        delays.popupHidden();
        QVERIFY(!delays.deadline());
        delays.pointerReturned(2500);
        QVERIFY(!delays.deadline());
    }

    void shouldDismissOnTheChosenKeys_data()
    {
        QTest::addColumn<int>("dismissals");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("dismisses");
        const auto add = [](const char *row, int dismissals, int key, bool dismisses) {
            QTest::newRow(row) << dismissals << key << dismisses;
        };
        add("never, Escape", HVDismissNever, Qt::Key_Escape, false);
        add("never, a letter", HVDismissNever, Qt::Key_A, false);
        add("Escape, Escape", HVDismissOnEscape, Qt::Key_Escape, true);
        add("Escape, a letter", HVDismissOnEscape, Qt::Key_A, false);
        add("Escape, Shift", HVDismissOnEscape, Qt::Key_Shift, false);
        add("any, Escape", HVDismissOnAnyKey, Qt::Key_Escape, true);
        add("any, a letter", HVDismissOnAnyKey, Qt::Key_A, true);
        add("any, an arrow", HVDismissOnAnyKey, Qt::Key_Left, true);
        add("any, a function key", HVDismissOnAnyKey, Qt::Key_F1, true);
        add("any, unknown", HVDismissOnAnyKey, Qt::Key_unknown, true);
        add("wheel, Escape", HVDismissOnWheel, Qt::Key_Escape, false);
        add("wheel and any, a letter", HVDismissOnWheel | HVDismissOnAnyKey, Qt::Key_A, true);
        add("other bits", 64, Qt::Key_Escape, false);
        for (const Qt::Key key :
             { Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_AltGr, Qt::Key_Meta,
               Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock, Qt::Key_Super_L,
               Qt::Key_Super_R, Qt::Key_Hyper_L, Qt::Key_Hyper_R })
            QTest::addRow("any, modifier %x", unsigned(key))
                    << int(HVDismissOnAnyKey) << int(key) << false;
    }

    void shouldDismissOnTheChosenKeys()
    {
        QFETCH(int, dismissals);
        QFETCH(int, key);
        QTEST(keyDismisses(dismissals, key), "dismisses");
    }

    void shouldDismissOnTheWheelWhenChosen()
    {
        QVERIFY(!wheelDismisses(HVDismissNever));
        QVERIFY(!wheelDismisses(HVDismissOnEscape | HVDismissOnAnyKey));
        QVERIFY(wheelDismisses(HVDismissOnWheel));
        QVERIFY(wheelDismisses(HVDismissOnWheel | HVDismissOnEscape));
    }
};

HOVLETS_TEST_MAIN(tst_HVHoverDelays)
#include "tst_hvhoverdelays.moc"
