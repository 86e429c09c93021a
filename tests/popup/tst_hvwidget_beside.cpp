// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "PlacementRules.h"
#include "PopupBench.h"
#include "TestMain.h"

#include <QtGui/QRegion>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <QtWidgets/QTabBar>

using namespace Hovlets;

/// Tests a popup beside its control, which is at (300, 300) with a size of 100 x 30.
class tst_HVWidgetBeside : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_bench = std::make_unique<PopupBench>();
        m_bench->context().set(HVKeyPlacement, int(HVPlaceBesideControl));
    }
    void cleanup() { m_bench.reset(); }

    void shouldGoBelowTheControl()
    {
        m_bench->show();
        QCOMPARE(geometry().topLeft(), control().bottomLeft() + QPoint(0, 1 + Gap));
    }

    void shouldGoAtTheCursorUnlessAskedFor_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::newRow("default") << QVariant(0);
        QTest::newRow("unknown") << QVariant(7);
        QTest::newRow("text") << QVariant(QStringLiteral("beside"));
        QTest::newRow("list") << QVariant(QStringList { QStringLiteral("1") });
    }

    void shouldGoAtTheCursorUnlessAskedFor()
    {
        QFETCH(QVariant, setting);
        m_bench->context().set(HVKeyPlacement, setting);
        m_bench->show({ 120, 130 });
        QCOMPARE(geometry().topLeft(), QPoint(120, 130));
    }

    void shouldGoAtTheCursorForWhatIsNoWidget()
    {
        QObject object;
        m_bench->popup->showWithContent(&object, { 120, 130 },
                                        m_bench->content(QStringLiteral("a")),
                                        m_bench->folder.path());
        QCOMPARE(geometry().topLeft(), QPoint(120, 130));
    }

    void shouldStayOnTheScreenAndOffTheControl_data()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QTest::addColumn<QPoint>("position");
        QTest::newRow("top left") << area.topLeft();
        QTest::newRow("top right") << area.topRight() - QPoint(99, 0);
        QTest::newRow("bottom left") << area.bottomLeft() - QPoint(0, 29);
        QTest::newRow("bottom right") << area.bottomRight() - QPoint(99, 29);
        QTest::newRow("middle of the bottom") << QPoint(area.center().x(), area.bottom() - 29);
    }

    void shouldStayOnTheScreenAndOffTheControl()
    {
        QFETCH(QPoint, position);
        m_bench->control.move(position);
        QCursor::setPos(control().center());
        m_bench->show();
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QVERIFY(area.adjusted(EdgeDistance, EdgeDistance, -EdgeDistance, -EdgeDistance)
                        .contains(geometry()));
        QVERIFY(!geometry().intersects(control()));
        QVERIFY(!geometry().contains(QCursor::pos()));
    }

    void shouldKeepTheEdgeNextToTheControlWhenItGrows_data()
    {
        const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
        QTest::addColumn<QPoint>("position");
        QTest::newRow("below") << QPoint(300, 300);
        QTest::newRow("above") << QPoint(300, area.bottom() - 29);
    }

    void shouldKeepTheEdgeNextToTheControlWhenItGrows()
    {
        QFETCH(QPoint, position);
        m_bench->control.move(position);
        QCursor::setPos(control().center());
        m_bench->show();
        const QRect before = geometry();
        m_bench->view->resize(260, 180);
        const QRect after = geometry();
        QVERIFY(after.height() > before.height());
        if (before.top() > control().bottom())
            QCOMPARE(after.top(), before.top());
        else
            QCOMPARE(after.bottom(), before.bottom());
        QVERIFY(!after.intersects(control()));
    }

    void shouldBeMirroredFromRightToLeft()
    {
        m_bench->control.setLayoutDirection(Qt::RightToLeft);
        m_bench->show();
        QCOMPARE(geometry().topRight(), control().bottomRight() + QPoint(0, 1 + Gap));
    }

    void shouldLeaveRegionsInView_data()
    {
        const QRegion below(QRect(200, 330, 300, 200));
        const QRegion curve(QRect(200, 330, 300, 200), QRegion::Ellipse);
        QTest::addColumn<QVariant>("regions");
        QTest::addColumn<QRegion>("clear");
        QTest::newRow("one") << QVariant(below) << below;
        const QRegion both = QRegion(QRect(300, 330, 100, 200)) + QRect(300, 150, 100, 150);
        QTest::newRow("below and above") << QVariant(both) << both;
        QTest::newRow("curved") << QVariant(curve) << curve;
        QTest::newRow("no region") << QVariant(QStringLiteral("the canvas")) << QRegion();
    }

    void shouldLeaveRegionsInView()
    {
        QFETCH(QVariant, regions);
        QFETCH(QRegion, clear);
        m_bench->context().set(HVKeyKeepClear, regions);
        m_bench->show();
        QVERIFY(!clear.intersects(geometry()));
        QVERIFY(!geometry().intersects(control()));
    }

    void shouldGoBesideThePartUnderTheMouse()
    {
        QTabBar bar(&m_bench->control);
        bar.addTab(QStringLiteral("one"));
        bar.addTab(QStringLiteral("two"));
        bar.adjustSize();
        bar.show();
        const QRect tab(bar.mapToGlobal(bar.tabRect(1).topLeft()), bar.tabRect(1).size());
        m_bench->popup->setHoverPosition(tab.center());
        m_bench->popup->showWithContent(&bar, { 100, 100 }, m_bench->content(QStringLiteral("a")),
                                        m_bench->folder.path());
        QCOMPARE(geometry().left(), tab.left());
    }

    void shouldLeaveAnOpenMenuInView()
    {
        QMenu menu;
        QAction *first = menu.addAction(QStringLiteral("first"));
        menu.addAction(QStringLiteral("second"));
        menu.addAction(QStringLiteral("third"));
        menu.popup({ 300, 300 });
        QTRY_VERIFY(menu.isVisible());
        m_bench->popup->setHoverPosition(menu.mapToGlobal(menu.actionGeometry(first).center()));
        m_bench->popup->showWithContent(&menu, { 100, 100 }, m_bench->content(QStringLiteral("a")),
                                        m_bench->folder.path());
        QVERIFY(!geometry().intersects(menu.geometry()));
    }

private:
    QRect geometry() const { return m_bench->popup->frameGeometry(); }
    QRect control() const { return m_bench->control.geometry(); }

    std::unique_ptr<PopupBench> m_bench;
};

HOVLETS_TEST_MAIN(tst_HVWidgetBeside)
#include "tst_hvwidget_beside.moc"
