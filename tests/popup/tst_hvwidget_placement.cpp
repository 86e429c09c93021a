// SPDX-License-Identifier: Apache-2.0
#include "HVPopupGeometry.h"
#include "PopupBench.h"
#include "TestMain.h"

#include <QtCore/QDir>
#include <QtGui/QCursor>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHBoxLayout>

using namespace Hovlets;

class tst_HVWidgetPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<PopupBench>(); }
    void cleanup() { m_bench.reset(); }

    void shouldShiftARectangleIntoTheAvailableArea_data()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const int left = area.left();
        const int top = area.top();
        const int right = area.right();
        const int bottom = area.bottom();
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<QRect>("expected");
        QTest::addColumn<bool>("moves");

        const QSize size(50, 40);
        const QRect inside(QPoint(left + 100, top + 100), size);
        QTest::newRow("inside") << inside << inside << false;
        QTest::newRow("the whole area") << area << area << false;

        const QRect topLeft(QPoint(left, top), size);
        const QRect topRight(QPoint(right - 49, top), size);
        const QRect bottomLeft(QPoint(left, bottom - 39), size);
        const QRect bottomRight(QPoint(right - 49, bottom - 39), size);
        QTest::newRow("just in at top left") << topLeft << topLeft << false;
        QTest::newRow("just in at bottom right") << bottomRight << bottomRight << false;
        QTest::newRow("above") << topLeft.translated(9, -1) << topLeft.translated(9, 0) << true;
        QTest::newRow("left") << topLeft.translated(-1, 9) << topLeft.translated(0, 9) << true;
        QTest::newRow("below") << bottomLeft.translated(9, 1) << bottomLeft.translated(9, 0)
                               << true;
        QTest::newRow("right") << topRight.translated(1, 9) << topRight.translated(0, 9) << true;
        QTest::newRow("out at top left") << topLeft.translated(-500, -500) << topLeft << true;
        QTest::newRow("out at top right") << topRight.translated(500, -500) << topRight << true;
        QTest::newRow("out at bottom left")
                << bottomLeft.translated(-500, 500) << bottomLeft << true;
        QTest::newRow("out at bottom right")
                << bottomRight.translated(500, 500) << bottomRight << true;

        // The bottom and right edges take precedence over the top and left ones.
        QTest::newRow("too high") << QRect(left + 10, top + 10, 50, area.height() + 25)
                                  << QRect(left + 10, top - 25, 50, area.height() + 25) << true;
        QTest::newRow("too wide") << QRect(left + 10, top + 10, area.width() + 15, 50)
                                  << QRect(left - 15, top + 10, area.width() + 15, 50) << true;
        const QSize large = area.size() + QSize(15, 25);
        QTest::newRow("too large") << QRect(QPoint(left - 500, top + 500), large)
                                   << QRect(QPoint(left - 15, top - 25), large) << true;
        // Shifted down and then back up, which also counts as a shift.
        QTest::newRow("too large, in place") << QRect(QPoint(left - 15, top - 25), large)
                                             << QRect(QPoint(left - 15, top - 25), large) << true;
    }

    void shouldShiftARectangleIntoTheAvailableArea()
    {
        QFETCH(QRect, geometry);
        QFETCH(bool, moves);
        bool moved = !moves;
        QTEST(m_bench->popup->findVisibleGeometry(geometry, &moved), "expected");
        QCOMPARE(moved, moves);
        QTEST(m_bench->popup->findVisibleGeometry(geometry), "expected");
    }

    void shouldStayOnTheScreen_data()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QTest::addColumn<bool>("isSafe");
        QTest::addColumn<QPoint>("position");
        QTest::addColumn<QPoint>("expected");
        const QPoint last = area.bottomRight() - QPoint(200, 100); // of 201 x 101
        const auto add = [](const QByteArray &row, QPoint position, QPoint expected) {
            QTest::newRow(row) << true << position << expected;
            QTest::newRow(row + ", away from the mouse") << false << position << expected;
        };
        add("inside", QPoint(50, 60), QPoint(50, 60));
        add("top left", area.topLeft() - QPoint(30, 30), area.topLeft());
        add("top right", QPoint(last.x() + 30, area.top() - 30), QPoint(last.x(), area.top()));
        add("bottom left", QPoint(area.left() - 30, last.y() + 30), QPoint(area.left(), last.y()));
        add("bottom right", last + QPoint(30, 30), last);
        add("one pixel", last + QPoint(1, 1), last);
    }

    void shouldStayOnTheScreen()
    {
        QFETCH(bool, isSafe);
        QFETCH(QPoint, position);
        if (!isSafe)
            QCursor::setPos(QGuiApplication::primaryScreen()->availableGeometry().center());
        m_bench->show(position);
        QCOMPARE(m_bench->countdown(), isSafe ? -1 : 3000);
        QCOMPARE(m_bench->popup->size(), QSize(201, 101));
        QTEST(m_bench->popup->pos(), "expected");
    }

    void shouldStayOnTheScreenWhenItIsMovedWhileVisible()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        m_bench->show(QPoint(50, 60));
        m_bench->show(area.bottomRight());
        QCOMPARE(m_bench->popup->geometry().bottomRight(), area.bottomRight());
        m_bench->popup->move(area.topLeft() - QPoint(5, 5));
        m_bench->popup->reposition();
        QCOMPARE(m_bench->popup->pos(), area.topLeft());
    }

    void shouldEndAtTheBottomWhenItIsTooTall()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const QString ui =
                m_bench->ui("High.qml", PackageFolder::userInterface(50, area.height() + 30));
        m_bench->popup->showWithContent(&m_bench->control, QPoint(10, 10),
                                        m_bench->content(QStringLiteral("a"), ui), QString());
        QCOMPARE(m_bench->popup->geometry().bottom(), area.bottom());
        QCOMPARE(m_bench->popup->y(), area.bottom() - area.height() - 30);
        QCOMPARE(m_bench->popup->x(), 10);
    }

    void shouldPlaceTheNextOneForItsOwnSize_data()
    {
        QTest::addColumn<bool>("isVisible");
        QTest::newRow("while it is up") << true;
        QTest::newRow("after it was hidden") << false;
    }

    void shouldPlaceTheNextOneForItsOwnSize()
    {
        QFETCH(bool, isVisible);
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const QString tall = m_bench->ui("Tall.qml", PackageFolder::userInterface(200, 480));
        const QPoint nearBottom(100, area.bottom() - 120);
        m_bench->popup->showWithContent(&m_bench->control, nearBottom,
                                        m_bench->content(QStringLiteral("a"), tall), QString());
        QCOMPARE(m_bench->popup->y(), area.bottom() - 480);
        if (!isVisible)
            m_bench->popup->hide();
        m_bench->show(nearBottom); // 101 pixels high
        QTRY_COMPARE(m_bench->popup->size(), QSize(201, 101));
        QCOMPARE(m_bench->popup->pos(), nearBottom);
    }

    void shouldReturnToTheRequestedPlaceWhenItShrinks()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        const QPoint wanted = area.bottomRight() - QPoint(210, 110);
        m_bench->show(wanted);
        QCOMPARE(m_bench->popup->pos(), wanted);
        m_bench->view->rootObject()->setProperty("height", 400);
        QTRY_COMPARE(m_bench->popup->size(), QSize(201, 401));
        QCOMPARE(m_bench->popup->y(), area.bottom() - 399);
        m_bench->view->rootObject()->setProperty("height", 100);
        QTRY_COMPARE(m_bench->popup->size(), QSize(201, 101));
        QCOMPARE(m_bench->popup->pos(), wanted);
    }

    void shouldStayWhereItWasMovedWhenItsSizeChanges()
    {
        m_bench->show(QPoint(300, 200));
        m_bench->popup->move(40, 50);
        m_bench->view->rootObject()->setProperty("height", 150);
        QTRY_COMPARE(m_bench->popup->size(), QSize(201, 151));
        QCOMPARE(m_bench->popup->pos(), QPoint(40, 50));
    }

    void shouldFollowTheSizeOfTheUserInterface()
    {
        m_bench->show();
        // The extra pixel in each direction is deliberate.
        QCOMPARE(m_bench->popup->size(), QSize(201, 101));
        QCOMPARE(m_bench->popup->minimumSize(), QSize(201, 101));
        QCOMPARE(m_bench->popup->maximumSize(), QSize(201, 101));
        QCOMPARE(m_bench->view->size(), QSize(200, 100));
        QCOMPARE(m_bench->view->pos(), QPoint(0, 0));

        m_bench->view->rootObject()->setProperty("width", 320);
        m_bench->view->rootObject()->setProperty("height", 50);
        QTRY_COMPARE(m_bench->popup->size(), QSize(321, 51));
        m_bench->view->rootObject()->setProperty("width", 10);
        m_bench->view->rootObject()->setProperty("height", 5);
        QTRY_COMPARE(m_bench->popup->size(), QSize(11, 6));
    }

    void shouldStayOnTheScreenWhenItGrows()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        m_bench->show(area.bottomRight() - QPoint(200, 100));
        m_bench->view->rootObject()->setProperty("width", 300);
        m_bench->view->rootObject()->setProperty("height", 200);
        QTRY_COMPARE(m_bench->popup->size(), QSize(301, 201));
        // The view is inside the screen; the extra pixel need not be.
        QCOMPARE(m_bench->popup->pos(), area.bottomRight() - QPoint(299, 199));
    }

    void shouldPlaceAnyPopupAgainFromTheSameRequest()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget popup(nullptr, Qt::ToolTip);
        HVPopupGeometry geometry(popup);
        const QPoint wanted = area.bottomRight() - QPoint(60, 40);
        geometry.request(wanted, {});
        geometry.place(QSize(50, 30));
        QCOMPARE(popup.geometry(), QRect(wanted, QSize(51, 31)));
        geometry.resize(QSize(80, 30));
        QCOMPARE(popup.geometry(), QRect(wanted - QPoint(19, 0), QSize(81, 31)));
        geometry.resize(QSize(50, 30));
        QCOMPARE(popup.pos(), wanted);

        geometry.leaveToUser();
        geometry.resize(QSize(80, 30));
        geometry.resize(QSize(50, 30));
        QCOMPARE(popup.pos(), wanted - QPoint(19, 0));
    }

    void shouldPlaceAPinnedPopupOnTheScreen()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QWidget popup(nullptr, Qt::ToolTip);
        HVPopupGeometry geometry(popup);
        geometry.leaveToUser();
        geometry.placeAt(area.bottomRight(), QSize(50, 30));
        QCOMPARE(popup.geometry(), QRect(area.bottomRight() - QPoint(50, 30), QSize(51, 31)));
    }

    void shouldResizeOnlyAWindowThatIsForThePopup()
    {
        QWidget window;
        window.resize(400, 300);
        QWidget panel(&window);
        QWidget popup(&panel);
        HVPopupGeometry geometry(popup);
        QVERIFY(!geometry.window());
        geometry.resize(QSize(50, 30));
        QCOMPARE(popup.size(), QSize(51, 31));
        QCOMPARE(window.size(), QSize(400, 300));

        QHBoxLayout layout(&window);
        layout.setContentsMargins(1, 2, 3, 4);
        popup.setParent(&window);
        QCOMPARE(geometry.window(), &window);
        geometry.resize(QSize(50, 30));
        QCOMPARE(window.size(), QSize(55, 37));
    }

    void shouldTakeTheSizeOfAUserInterfaceShownLater()
    {
        m_bench->show();
        const QString ui = m_bench->ui("Other.qml", PackageFolder::userInterface(40, 300));
        m_bench->popup->showWithContent(&m_bench->control, QPoint(10, 10),
                                        m_bench->content(QStringLiteral("b"), ui), QString());
        QTRY_COMPARE(m_bench->popup->size(), QSize(41, 301));
    }

    void shouldCountAMarginAroundItselfAsSafe_data()
    {
        QTest::addColumn<QPoint>("offset"); // from the popup's top-left corner, 201 x 101
        QTest::addColumn<bool>("safe");
        QTest::newRow("inside") << QPoint(100, 50) << true;
        QTest::newRow("left, 20") << QPoint(-20, 50) << true;
        QTest::newRow("left, 21") << QPoint(-21, 50) << false;
        QTest::newRow("top, 20") << QPoint(100, -20) << true;
        QTest::newRow("top, 21") << QPoint(100, -21) << false;
        QTest::newRow("right, 20") << QPoint(200 + 20, 50) << true;
        QTest::newRow("right, 21") << QPoint(200 + 21, 50) << false;
        QTest::newRow("bottom, 20") << QPoint(100, 100 + 20) << true;
        QTest::newRow("bottom, 21") << QPoint(100, 100 + 21) << false;
        QTest::newRow("top-left corner") << QPoint(-20, -20) << true;
        QTest::newRow("bottom-right corner") << QPoint(220, 120) << true;
    }

    void shouldCountAMarginAroundItselfAsSafe()
    {
        QFETCH(QPoint, offset);
        m_bench->control.hide();
        m_bench->show(QPoint(200, 200));
        QTEST(m_bench->popup->isSafe(QPoint(200, 200) + offset), "safe");
    }

    void shouldTakeTheMarginFromTheSettings()
    {
        m_bench->control.hide();
        m_bench->show(QPoint(200, 200));
        m_bench->context().set(HVKeySafeMargin, QSize(5, 50));
        QVERIFY(m_bench->popup->isSafe(QPoint(195, 150)));
        QVERIFY(!m_bench->popup->isSafe(QPoint(194, 210)));
        QVERIFY(!m_bench->popup->isSafe(QPoint(210, 149)));
        QVERIFY(m_bench->popup->isSafe(QPoint(405, 350)));
        QVERIFY(!m_bench->popup->isSafe(QPoint(406, 350)));
        QVERIFY(!m_bench->popup->isSafe(QPoint(405, 351)));
    }

    void shouldIncludeTheFrameOfAWindow()
    {
        m_bench->control.hide();
        HVWidget &popup = *m_bench->popup;
        popup.setWindowFlag(Qt::FramelessWindowHint, false);
        m_bench->show(QPoint(200, 200));
        const int frame = popup.geometry().top() - popup.frameGeometry().top();
        QVERIFY(frame > 0);
        QCOMPARE(popup.pos(), QPoint(200, 200));

        // At the corner of the client area, but with the size of the frame.
        const QPoint corner = popup.geometry().topLeft();
        QVERIFY(popup.isSafe(corner - QPoint(20, 20)));
        QVERIFY(!popup.isSafe(corner - QPoint(21, 20)));
        const QSize size = popup.frameGeometry().size();
        QVERIFY(popup.isSafe(corner + QPoint(size.width() + 19, size.height() + 19)));
        QVERIFY(!popup.isSafe(corner + QPoint(size.width() + 19, size.height() + 20)));

        // Room for the view below the top of the frame, then moved up by the frame's height.
        const int bottom = QGuiApplication::primaryScreen()->availableGeometry().bottom();
        popup.move(10, bottom);
        popup.contentResized();
        QCOMPARE(popup.pos(), QPoint(10, bottom - 99 - frame));
    }

    void shouldCountItsControlAsSafe()
    {
        m_bench->show(QPoint(10, 10));
        QVERIFY(m_bench->popup->isSafe(m_bench->control.geometry().center()));
        QVERIFY(m_bench->popup->isSafe(m_bench->control.geometry().bottomRight()));
        QVERIFY(!m_bench->popup->isSafe(m_bench->control.geometry().bottomRight() + QPoint(1, 1)));

        QWidget other;
        other.setGeometry(500, 500, 50, 50);
        other.show();
        QVERIFY(QTest::qWaitForWindowExposed(&other));
        QVERIFY(!m_bench->popup->isSafe(other.geometry().center()));

        QWidget inner(&m_bench->control); // another control, with another hovlet
        inner.setGeometry(50, 0, 50, 30);
        inner.show();
        QVERIFY(m_bench->popup->isSafe(m_bench->control.mapToGlobal(QPoint(25, 15))));
        QVERIFY(!m_bench->popup->isSafe(inner.mapToGlobal(QPoint(25, 15))));
    }

    void shouldNotCountEmptySpaceAsTheControl()
    {
        m_bench->popup->showWithContent(nullptr, QPoint(10, 10),
                                        m_bench->content(QStringLiteral("a")), QString());
        const QPoint nowhere = PopupBench::away();
        QVERIFY(!QApplication::widgetAt(nowhere));
        QVERIFY(!m_bench->popup->isSafe(nowhere));
    }

    void shouldOutliveTheManagerWithTheDefaults()
    {
        m_bench->context().set(HVKeySafeMargin, QSize(50, 50));
        m_bench->control.hide();
        m_bench->show(QPoint(200, 200));
        m_bench->host.reset();
        QVERIFY(!m_bench->popup->manager());
        QVERIFY(m_bench->popup->isSafe(QPoint(180, 180)));
        QVERIFY(!m_bench->popup->isSafe(QPoint(179, 180)));
        m_bench->popup->setTimer();
        QCOMPARE(m_bench->countdown(), 3000);
        QCOMPARE(m_bench->view->findResource(QStringLiteral("x")), QStringLiteral("Resources"));
        m_bench->view->setReserved(true); // without a manager, nothing else pins it
        QVERIFY(m_bench->popup->isWindow());
        m_bench->show(QPoint(100, 100));
        m_bench->popup->hide();
    }

private:
    std::unique_ptr<PopupBench> m_bench;
};

HOVLETS_TEST_MAIN(tst_HVWidgetPlacement)
#include "tst_hvwidget_placement.moc"
