// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "TestMain.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

using namespace Hovlets;

namespace {

void showModal(QDialog &dialog)
{
    dialog.setModal(true);
    dialog.show();
}

} // namespace

/// Tests that a popup goes with its control.
class tst_HVWidgetControl : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldHideWithItsControl_data()
    {
        QTest::addColumn<QByteArray>("event");
        for (const char *event :
             { "control hidden", "control destroyed", "window hidden", "window closed",
               "window moved", "window minimised", "modal dialog" })
            QTest::newRow(event) << QByteArray(event);
    }

    void shouldHideWithItsControl()
    {
        QFETCH(QByteArray, event);
        HoverScene scene;
        QVERIFY(scene.show(QStringLiteral("a")));
        QVERIFY(scene.isShowing());
        QDialog dialog;
        if (event == "control hidden")
            scene.control->hide();
        else if (event == "control destroyed")
            delete std::exchange(scene.control, nullptr);
        else if (event == "window hidden")
            scene.window.hide();
        else if (event == "window closed")
            scene.window.close();
        else if (event == "window moved")
            scene.window.move(40, 30);
        else if (event == "window minimised")
            scene.window.showMinimized();
        else
            showModal(dialog);
        QTRY_VERIFY(!scene.isShowing());
    }

    void shouldComeToTheSameControlInAnotherPlace_data()
    {
        QTest::addColumn<bool>("inAnotherWindow");
        QTest::newRow("moved in its window") << false;
        QTest::newRow("in another window") << true;
    }

    void shouldComeToTheSameControlInAnotherPlace()
    {
        QFETCH(bool, inAnotherWindow);
        HoverScene scene;
        const QString key = QStringLiteral("a");
        QVERIFY(scene.show(key));
        const QPoint first = scene.popup()->pos();
        QVERIFY(scene.show(key, { 320, 310 }));
        QCOMPARE(scene.popup()->pos(), first); // still its place
        Control window;
        window.setGeometry(200, 300, 100, 100);
        Control other(key, &window);
        window.show();
        QWidget *control = inAnotherWindow ? &other : scene.control;
        scene.control->move(0, 30);
        QVERIFY(scene.manager().show(key, { 200, 300 }, control));
        QCOMPARE(scene.popup()->pos(), QPoint(200, 300) + QPoint(35, 30));
        QCOMPARE(scene.popup()->referenceWidget(), control);
        window.hide();
        QCOMPARE(scene.isShowing(), !inAnotherWindow);
    }

    void shouldStayWhenAnotherWidgetGoes()
    {
        HoverScene scene;
        Control other(QStringLiteral("b"), &scene.window);
        other.show();
        QVERIFY(scene.show(QStringLiteral("a")));
        other.hide();
        scene.control->move(3, 3);
        QVERIFY(scene.isShowing());
    }

    void shouldStayPinnedWhenItsControlGoes()
    {
        HoverScene scene;
        QVERIFY(scene.show(QStringLiteral("a")));
        const QPointer<HVWidget> pinned = scene.pin();
        scene.control->hide();
        QVERIFY(pinned->isVisible());
        delete pinned;
    }

    void shouldBeginItsCountdownWhenThePointerLeavesTheWindow_data()
    {
        QTest::addColumn<bool>("fromThePopup");
        QTest::newRow("the control's") << false;
        QTest::newRow("the popup") << true;
    }

    void shouldBeginItsCountdownWhenThePointerLeavesTheWindow()
    {
        QFETCH(bool, fromThePopup);
        HoverScene scene;
        scene.start();
        scene.context().set(HVKeyHideDelay, 60000);
        QCursor::setPos(scene.control->mapToGlobal(QPoint(10, 10)));
        QVERIFY(scene.show(QStringLiteral("a")));
        scene.popup()->checkMousePosition(QCursor::pos());
        const auto *timer =
                scene.popup()->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(!timer->isActive());
        QCursor::setPos(780, 780);
        QEvent leave(QEvent::Leave);
        QWidget *left = scene.popup();
        QApplication::sendEvent(fromThePopup ? left : &scene.window, &leave);
        QVERIFY(timer->isActive());
    }
};

HOVLETS_TEST_MAIN(tst_HVWidgetControl)
#include "tst_hvwidget_control.moc"
