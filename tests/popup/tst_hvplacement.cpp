// SPDX-License-Identifier: Apache-2.0
#include "HVVisibleArea.h"
#include "PlacementRules.h"
#include "TestMain.h"

#include <QtTest/QtTest>

using namespace Hovlets;

Q_DECLARE_METATYPE(Hovlets::HVSide)

namespace {

/// Screen of the requests.
constexpr QRect Area(0, 0, 1280, 800);

/// A control with the cursor on its centre.
HVPlacementRequest request(const QRect &control, const QSize &popup = { 300, 200 })
{
    HVPlacementRequest made;
    made.control = control;
    made.popup = popup;
    made.area = Area;
    made.cursor = control.center();
    return made;
}

/// The popup's edge that faces the control.
int nearEdge(const HVPlace &place)
{
    switch (place.side) {
    case HVSide::Below:
        return place.geometry.top();
    case HVSide::Above:
        return place.geometry.bottom();
    case HVSide::Right:
        return place.geometry.left();
    case HVSide::Left:
        return place.geometry.right();
    }
    return 0;
}

} // namespace

class tst_HVPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShiftIntoTheAreaOnlyFromTheRequestedPoint()
    {
        // A popup that shrinks keeps nothing of the place that it had when it was tall.
        const QPoint wanted(1000, 700);
        const QRect tall = shiftedInto({ wanted, QSize(200, 480) }, Area);
        QCOMPARE(tall.topLeft(), QPoint(1000, 320));
        QCOMPARE(shiftedInto({ wanted, QSize(200, 60) }, Area).topLeft(), wanted);
        bool shifted = true;
        shiftedInto({ wanted, QSize(200, 60) }, Area, &shifted);
        QVERIFY(!shifted);
        shiftedInto({ wanted, QSize(200, 101) }, Area, &shifted);
        QVERIFY(shifted);
    }

    void shouldShowTheEndOfARectangleLargerThanTheArea()
    {
        bool shifted = false;
        const QRect shown = shiftedInto({ QPoint(5, 5), QSize(1300, 900) }, Area, &shifted);
        QCOMPARE(shown.bottomRight(), Area.bottomRight());
        QCOMPARE(shown.size(), QSize(1300, 900));
        QVERIFY(shifted);
    }

    void shouldTakeTheFirstSideWithRoom_data()
    {
        QTest::addColumn<QRect>("control");
        QTest::addColumn<QSize>("popup");
        QTest::addColumn<HVSide>("side");
        QTest::addColumn<QPoint>("topLeft");
        const QSize size(300, 200);
        QTest::newRow("in the middle")
                << QRect(600, 300, 80, 24) << size << HVSide::Below << QPoint(600, 330);
        QTest::newRow("top left") << QRect(0, 0, 80, 24) << size << HVSide::Below << QPoint(8, 30);
        QTest::newRow("top right")
                << QRect(1200, 0, 80, 24) << size << HVSide::Below << QPoint(972, 30);
        QTest::newRow("bottom left")
                << QRect(0, 776, 80, 24) << size << HVSide::Above << QPoint(8, 570);
        QTest::newRow("bottom right")
                << QRect(1200, 776, 80, 24) << size << HVSide::Above << QPoint(972, 570);
        QTest::newRow("just room below")
                << QRect(600, 562, 80, 24) << size << HVSide::Below << QPoint(600, 592);
        QTest::newRow("one pixel short below")
                << QRect(600, 563, 80, 24) << size << HVSide::Above << QPoint(600, 357);
        QTest::newRow("too tall for below and above")
                << QRect(400, 390, 80, 24) << QSize(300, 500) << HVSide::Right << QPoint(486, 292);
        QTest::newRow("room only on the left")
                << QRect(1000, 390, 80, 24) << QSize(300, 500) << HVSide::Left << QPoint(694, 292);
        QTest::newRow("a column along the right edge")
                << QRect(1180, 0, 100, 800) << size << HVSide::Left << QPoint(874, 8);
        QTest::newRow("a row of a list along the left edge")
                << QRect(0, 300, 250, 18) << size << HVSide::Below << QPoint(8, 324);
        QTest::newRow("half off the screen")
                << QRect(-40, 300, 80, 24) << size << HVSide::Below << QPoint(8, 330);
        QTest::newRow("wide as the screen, at its foot")
                << QRect(0, 770, 1280, 30) << size << HVSide::Above << QPoint(8, 564);
    }

    void shouldTakeTheFirstSideWithRoom()
    {
        QFETCH(QRect, control);
        QFETCH(QSize, popup);
        const HVPlace place = placeBeside(request(control, popup));
        QTEST(place.side, "side");
        QTEST(place.geometry.topLeft(), "topLeft");
        QCOMPARE(place.geometry.size(), popup);
        QVERIFY(inset(Area).contains(place.geometry));
        QVERIFY(!place.geometry.intersects(control));
    }

    void shouldMirrorForRightToLeft()
    {
        HVPlacementRequest made = request({ 600, 300, 80, 24 });
        made.direction = Qt::RightToLeft;
        QCOMPARE(placeBeside(made).geometry, QRect(380, 330, 300, 200)); // their ends align
        made = request({ 600, 390, 80, 24 }, { 300, 500 });
        made.direction = Qt::RightToLeft;
        QCOMPARE(placeBeside(made).side, HVSide::Left);
    }

    void shouldKeepRegionsClear()
    {
        HVPlacementRequest made = request({ 600, 300, 80, 24 });
        made.keepClear = { QRect(500, 340, 130, 60) };
        HVPlace place = placeBeside(made);
        QCOMPARE(place.side, HVSide::Below); // beside the region, as near as possible
        QCOMPARE(place.geometry.topLeft(), QPoint(630, 330));

        made.keepClear = { QRect(0, 340, 1280, 60) };
        QCOMPARE(placeBeside(made).side, HVSide::Above);
        made.keepClear.append(QRect(0, 200, 1280, 60));
        place = placeBeside(made);
        QCOMPARE(place.side, HVSide::Below); // the first side: none is clear of both
    }

    void shouldApproachTheEdgeOfTheScreenBeforeItCoversAnything()
    {
        const HVPlacementRequest made = request({ 0, 206, 1280, 594 }); // 200 pixels and the gap
        const HVPlace place = placeBeside(made);
        QCOMPARE(place.side, HVSide::Above);
        QCOMPARE(place.geometry.y(), 0);
    }

    void shouldGoBesideTheCursorWhenTheControlLeavesNoRoom()
    {
        HVPlacementRequest made = request(Area);
        made.cursor = { 400, 300 };
        HVPlace place = placeBeside(made);
        QCOMPARE(place.side, HVSide::Below);
        QVERIFY(inset(Area).contains(place.geometry));
        QVERIFY(!place.geometry.contains(made.cursor));

        made.keepClear = { QRect(300, 320, 200, 200) }; // such as the selection in a canvas
        place = placeBeside(made);
        QVERIFY(!place.geometry.intersects(made.keepClear.constFirst()));
        QVERIFY(!place.geometry.contains(made.cursor));
    }

    void shouldShowTheMostOfAPopupThatFitsNowhere()
    {
        HVPlacementRequest made = request({ 600, 100, 80, 24 }, { 1400, 1000 });
        const HVPlace place = placeBeside(made);
        QCOMPARE(place.side, HVSide::Below);
        QCOMPARE(place.geometry.left(), 0);
        QVERIFY(place.geometry.top() > made.cursor.y());
    }

    void shouldKeepTheNearEdgeWhenItGrows_data()
    {
        QTest::addColumn<QRect>("control");
        QTest::addColumn<QSize>("small");
        QTest::addColumn<QSize>("large");
        QTest::newRow("below") << QRect(600, 300, 80, 24) << QSize(200, 80) << QSize(350, 300);
        QTest::newRow("above") << QRect(600, 700, 80, 24) << QSize(200, 80) << QSize(350, 300);
        QTest::newRow("right") << QRect(400, 0, 80, 800) << QSize(200, 80) << QSize(350, 300);
        QTest::newRow("left") << QRect(1000, 0, 80, 800) << QSize(200, 80) << QSize(350, 300);
        QTest::newRow("below, towards the screen's edge")
                << QRect(1100, 300, 80, 24) << QSize(100, 80) << QSize(500, 300);
    }

    void shouldKeepTheNearEdgeWhenItGrows()
    {
        QFETCH(QRect, control);
        QFETCH(QSize, small);
        QFETCH(QSize, large);
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            HVPlacementRequest made = request(control, small);
            made.direction = direction;
            const HVPlace before = placeBeside(made);
            made.current = before;
            made.popup = large;
            const HVPlace after = placeBeside(made);
            QCOMPARE(after.side, before.side);
            QCOMPARE(nearEdge(after), nearEdge(before));
            QVERIFY(inset(Area).contains(after.geometry));
        }
    }

    void shouldStayAboveWhenItShrinksAndWouldFitBelow()
    {
        // A popup that shrinks stays above, even if it would now fit below.
        HVPlacementRequest made = request({ 600, 600, 80, 24 }, { 300, 300 });
        made.current = placeBeside(made);
        QCOMPARE(made.current->side, HVSide::Above);
        made.popup = { 300, 50 };
        const HVPlace after = placeBeside(made);
        QCOMPARE(after.side, HVSide::Above);
        QCOMPARE(nearEdge(after), nearEdge(*made.current));
    }

    void shouldGrowUnderACursorThatIsAlreadyOverIt()
    {
        HVPlacementRequest made = request({ 600, 300, 80, 24 }, { 200, 80 });
        made.current = placeBeside(made);
        made.cursor = made.current->geometry.center();
        made.popup = { 350, 300 };
        const HVPlace after = placeBeside(made);
        QCOMPARE(after.side, HVSide::Below);
        QCOMPARE(after.geometry.topLeft(), made.current->geometry.topLeft());
    }

    void shouldChangeSidesWhenItGrowsOutOfTheRoom()
    {
        HVPlacementRequest made = request({ 600, 550, 80, 24 }, { 300, 100 });
        made.current = placeBeside(made);
        QCOMPARE(made.current->side, HVSide::Below);
        made.popup = { 300, 400 };
        QCOMPARE(placeBeside(made).side, HVSide::Above);
    }

    void shouldHoldForAnyRequest_data()
    {
        QTest::addColumn<unsigned>("seed");
        for (unsigned seed = 1; seed <= 8; ++seed)
            QTest::addRow("%u", seed) << seed;
    }

    void shouldHoldForAnyRequest()
    {
        QFETCH(unsigned, seed);
        RandomRequests random(seed);
        int withRoom = 0;
        int covering = 0;
        for (int i = 0; i < 2000; ++i) {
            const HVPlacementRequest made = random.next();
            const HVPlace place = placeBeside(made);
            const char *broken = brokenRule(made, place);
            if (broken)
                QFAIL(qPrintable(QString::fromUtf8(broken) + described(made, place)));
            withRoom += hasRoomBeside(made);
            covering += place.geometry.intersects(made.control.intersected(made.area));
        }
        // The requests include both simple and impossible ones.
        QVERIFY(withRoom > 400);
        QVERIFY(covering > 50);
    }

    void shouldHoldForImpossibleRequests()
    {
        HVPlacementRequest made; // all empty
        QVERIFY(!placeBeside(made).geometry.contains(made.cursor));
        made = request({ 5000, 5000, 80, 24 }); // a control outside every screen
        made.cursor = { 640, 400 };
        const HVPlace place = placeBeside(made);
        QVERIFY(Area.contains(place.geometry));
        QVERIFY(!place.geometry.contains(made.cursor));
    }
};

HOVLETS_TEST_MAIN(tst_HVPlacement)
#include "tst_hvplacement.moc"
