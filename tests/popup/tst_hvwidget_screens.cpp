// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVWidget.h"
#include "PopupBench.h"
#include "RecordingHost.h"
#include "TestMain.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickWindow>

using namespace Hovlets;

/// Tests popups beside controls on the second of two screens.
class tst_HVWidgetScreens : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QVERIFY2(screens.size() == 2, "run it with support/with-display --second 640x480");
        QVERIFY(screens[0]->availableGeometry() != screens[1]->availableGeometry());
        QCOMPARE(QGuiApplication::primaryScreen(), screens[0]);
    }

    void shouldShiftIntoTheScreenOfTheControl_data()
    {
        QTest::addColumn<int>("screen"); // the control's screen; -1 for no control
        QTest::addColumn<int>("area");
        QTest::newRow("first") << 0 << 0;
        QTest::newRow("second") << 1 << 1;
        QTest::newRow("no control, so the first") << -1 << 0;
    }

    void shouldShiftIntoTheScreenOfTheControl()
    {
        QFETCH(int, screen);
        QFETCH(int, area);
        QWidget control;
        control.winId(); // creates its window
        control.windowHandle()->setScreen(QGuiApplication::screens().at(qMax(screen, 0)));
        control.show();
        QVERIFY(QTest::qWaitForWindowExposed(&control));
        RecordingHost host(m_settings, {});
        const HVWidget popup(host.manager(), nullptr, screen < 0 ? nullptr : &control);

        QRect expected(0, 0, 50, 40);
        expected.moveBottomRight(
                QGuiApplication::screens().at(area)->availableGeometry().bottomRight());
        QCOMPARE(popup.findVisibleGeometry(QRect(5000, 5000, 50, 40)), expected);
    }

    void shouldShowOnTheScreenToWhichTheWindowHasMoved()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        PopupBench bench;
        bench.show();
        QCOMPARE(bench.popup->windowHandle()->screen(), screens[0]);
        bench.control.hide();
        bench.control.windowHandle()->setScreen(screens[1]);
        bench.control.show();
        QVERIFY(!bench.popup->isVisible());
        bench.show();
        QVERIFY(QTest::qWaitForWindowExposed(bench.popup.get()));
        QCOMPARE(bench.popup->windowHandle()->screen(), screens[1]);
        QCOMPARE(bench.view->quickWindow()->screen(), screens[1]);
    }

private:
    HVContext m_settings;
};

HOVLETS_TEST_MAIN(tst_HVWidgetScreens)
#include "tst_hvwidget_screens.moc"
