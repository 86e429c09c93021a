// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtGui/QWheelEvent>

using namespace Hovlets;

/// Tests the settings from 1100 on with a real pointer.
class tst_EndToEndSettings : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldHideOnAKeyThatTheFieldStillGets_data()
    {
        QTest::addColumn<int>("setting");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("goes");
        QTest::newRow("unset") << 0 << QStringLiteral("Escape") << false;
        QTest::newRow("Escape") << int(HVDismissOnEscape) << QStringLiteral("Escape") << true;
        QTest::newRow("another") << int(HVDismissOnEscape) << QStringLiteral("x") << false;
        QTest::newRow("any") << int(HVDismissOnAnyKey) << QStringLiteral("x") << true;
        QTest::newRow("modifier") << int(HVDismissOnAnyKey) << QStringLiteral("shift") << false;
    }

    void shouldHideOnAKeyThatTheFieldStillGets()
    {
        QFETCH(int, setting);
        QFETCH(QString, key);
        QFETCH(bool, goes);
        settings().set(HVKeyDismissOnKey, setting);
        m_window->field.setFocus();
        KeyCounter counter;
        m_window->field.installEventFilter(&counter);
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        Pointer::press(key);
        Pointer::release(key);
        QTRY_COMPARE(counter.presses, 1);
        QCOMPARE(popup()->isVisible(), !goes);
    }

    void shouldHideOnTheWheelOverTheControl()
    {
        settings().set(HVKeyDismissOnKey, int(HVDismissOnWheel));
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        Pointer::turnWheel();
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldGoBesideTheControl_data()
    {
        QTest::addColumn<QPoint>("window");
        QTest::newRow("in the middle") << QPoint(400, 300);
        QTest::newRow("at the bottom right") << QPoint(870, 590);
    }

    void shouldGoBesideTheControl()
    {
        QFETCH(QPoint, window);
        settings().set(HVKeyPlacement, int(HVPlaceBesideControl));
        showWindow(window);
        for (const char *name : { "a", "disabled" }) {
            QVERIFY(hover(name));
            const QPushButton &button = m_window->button(name);
            const QRect control(button.mapToGlobal(QPoint()), button.size());
            const QRect shown = popup()->frameGeometry();
            QVERIFY(!shown.intersects(control));
            QVERIFY(!shown.contains(QCursor::pos()));
            QVERIFY(popup()->screen()->availableGeometry().contains(shown));
            const int below = shown.top() - control.bottom();
            const int above = control.top() - shown.bottom();
            QCOMPARE(qMax(below, above), 7); // a gap of 6 pixels
        }
    }

    void shouldLeaveRegionsOfTheHostInView()
    {
        settings().set(HVKeyPlacement, int(HVPlaceBesideControl));
        const QRect below(m_window->pos() + QPoint(0, 40), QSize(400, 400));
        settings().set(HVKeyKeepClear, QRegion(below));
        QVERIFY(hover("a"));
        QVERIFY(!popup()->frameGeometry().intersects(below));
        QVERIFY(!popup()->frameGeometry().contains(QCursor::pos()));
    }

    void shouldServeTheRecommendedSettings()
    {
        useRecommendedSettings(settings());
        QVERIFY(hover("a"));
        const QPushButton &button = m_window->button("a");
        const QRect control(button.mapToGlobal(QPoint()), button.size());
        QCOMPARE(popup()->frameGeometry().top() - control.bottom(), 7); // beside the control
        stopAskingForTooltips();
        Pointer::moveTo(m_window->centerOf("b"));
        QTRY_VERIFY(isShowing("b")); // the safe path shows it, not the toolkit
        Pointer::moveTo(popup()->frameGeometry().center());
        QTRY_COMPARE(QApplication::widgetAt(QCursor::pos()), m_host->view());
        QVERIFY(isShowing("b"));
        Pointer::press(QStringLiteral("Escape"));
        Pointer::release(QStringLiteral("Escape"));
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldReachThePopupAcrossAnotherControl_data()
    {
        QTest::addColumn<bool>("safePath");
        QTest::addColumn<QString>("shown");
        QTest::newRow("without") << false << QStringLiteral("Title of b");
        QTest::newRow("with") << true << QStringLiteral("Title of a");
    }

    void shouldReachThePopupAcrossAnotherControl()
    {
        QFETCH(bool, safePath);
        settings().set(HVKeyPlacement, int(HVPlaceBesideControl));
        settings().set(HVKeySafePath, safePath);
        settings().set(HVKeySafePathDwell, 600000);
        QVERIFY(hover("a"));
        ToolTipCounter counter;
        qApp->installEventFilter(&counter);
        Pointer::moveTo(m_window->centerOf("b"));
        QTRY_VERIFY(counter.toolTips > 0); // the toolkit's delay has passed
        QTRY_COMPARE(title(), QStringLiteral("Title of %1").arg(safePath ? 'a' : 'b'));
        Pointer::moveTo(popup()->geometry().center());
        QTRY_COMPARE(QApplication::widgetAt(QCursor::pos()), m_host->view());
        QTEST(title(), "shown");
        QVERIFY(popup()->isVisible());
    }

    void shouldSwapToAControlOnWhichThePointerRests()
    {
        settings().set(HVKeySafePath, true);
        settings().set(HVKeySafePathDwell, 100);
        QVERIFY(hover("a"));
        stopAskingForTooltips(); // the library shows it, not the toolkit
        Pointer::moveTo(m_window->centerOf("b"));
        QTRY_VERIFY(isShowing("b"));
        Pointer::moveTo(m_window->centerOf("unknown"));
        QTRY_VERIFY(isToolTipShown(QStringLiteral("Its own")));
        QVERIFY(!popup()->isVisible());
    }

    void shouldGoWhenThePointerLeavesTheWindowOnTheWay()
    {
        settings().set(HVKeySafePath, true);
        settings().set(HVKeyHideDelay, 50);
        settings().set(HVKeyCursorOffset, QSize(35, 250)); // below the window
        QVERIFY(hover("a"));
        const QRect window = m_window->frameGeometry();
        const QRect shown = popup()->geometry();
        QVERIFY(!window.intersects(shown));
        const QPoint between(shown.left(), (window.bottom() + shown.top()) / 2);
        Pointer::moveTo(between);
        QTRY_COMPARE(QCursor::pos(), between);
        QVERIFY(popup()->isSafe(between));
        QVERIFY(popup()->isVisible());
        Pointer::moveAway(); // no event reports this move
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldShowLaterWhenAsked()
    {
        settings().set(HVKeyShowDelay, 1000);
        QVERIFY(restOn("a")); // the toolkit's moment
        QVERIFY(!popup() || !popup()->isVisible());
        QTRY_VERIFY(isShowing("a"));
        QVERIFY(!QToolTip::isVisible());
    }

    void shouldExpandTheSimplePopupUnderThePointer()
    {
        m_folder.add(QStringLiteral("Pack.hovlets/ui/SimpleTooltip.qml"),
                     "import QtQuick 2.15\nRectangle { width: 150; height: 40 }");
        settings().set(HVKeyPlacement, int(HVPlaceBesideControl));
        settings().set(HVKeySimpleMode, true);
        settings().set(HVKeyExpandDelay, 700);
        QVERIFY(hover("a"));
        const QRect simple = popup()->geometry();
        QCOMPARE(simple.height(), 41);
        Pointer::moveTo(simple.center());
        QTRY_COMPARE(popup()->geometry().height(), 101);
        QCOMPARE(popup()->geometry().topLeft(), simple.topLeft());
        QVERIFY(popup()->isVisible());
        QCOMPARE(title(), QStringLiteral("Title of a"));
    }

    void shouldBringPinnedPopupsBack()
    {
        QVERIFY(hover("a"));
        QPointer<HVWidget> pinned(popup());
        Pointer::moveTo(pinned->geometry().topLeft() + QPoint(150, 50));
        Pointer::click();
        QTRY_VERIFY(pinned->view()->reserved() && popup() != pinned);
        QTRY_VERIFY(pinned->isVisible());
        const QByteArray state = m_host->manager()->saveState();
        const QPoint place = pinned->pos();
        delete pinned;
        QVERIFY(m_host->manager()->restoreState(state));
        QPointer<HVWidget> restored;
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            auto *candidate = qobject_cast<HVWidget *>(window);
            if (candidate && candidate->view()->reserved())
                restored = candidate;
        }
        QVERIFY(restored);
        QTRY_VERIFY(restored->isVisible());
        QTRY_COMPARE(restored->pos(), place);
        QVERIFY(hover("b")); // pinned or not, the next popup comes
        delete restored;
    }

private:
    class ToolTipCounter : public QObject
    {
    public:
        int toolTips = 0;

    protected:
        bool eventFilter(QObject *, QEvent *event) override
        {
            toolTips += event->type() == QEvent::ToolTip ? 1 : 0;
            return false;
        }
    };

    HVContext &settings() { return m_host->manager()->context(); }
};

HOVLETS_TEST_MAIN(tst_EndToEndSettings)
#include "tst_endtoend_settings.moc"
