// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtWidgets/QApplication>
#include <QtWidgets/QDialog>

using namespace Hovlets;

namespace {

/// All of it is a link. The popup for "disabled" is tall.
constexpr auto UserInterface = R"(import QtQuick 2.15
Rectangle {
    property color rimColor: "darkred"
    width: 200; height: hovlet.attribute("key") === "disabled" ? 500 : 100; color: "steelblue"
    MouseArea { anchors.fill: parent; onClicked: hovletView.openExternalResource("topic") }
})";

} // namespace

/// Tests with a real pointer that a popup goes, and comes back, with the control it belongs to.
class tst_EndToEndControl : public HoverTest
{
    Q_OBJECT

public:
    tst_EndToEndControl()
    {
        m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), UserInterface);
        m_german.addPackage(QStringLiteral("Other"), { QStringLiteral("c") });
    }

private Q_SLOTS:
    void shouldGoWithItsControl_data()
    {
        QTest::addColumn<QByteArray>("event");
        for (const char *event : { "window moved", "window minimised", "window closed",
                                   "control hidden", "control destroyed", "modal dialog opened" })
            QTest::newRow(event) << QByteArray(event);
    }

    void shouldGoWithItsControl()
    {
        QFETCH(QByteArray, event);
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        QDialog dialog(m_window.get());
        dialog.setGeometry(20, 20, 100, 100); // far from the popup
        if (event == "window moved")
            m_window->move(m_window->pos() + QPoint(0, 60));
        else if (event == "window minimised")
            m_window->showMinimized();
        else if (event == "window closed")
            m_window->close();
        else if (event == "control hidden")
            m_window->button("a").hide();
        else if (event == "control destroyed")
            delete &m_window->button("a");
        else
            dialog.open();
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldGoWithADialogThatIsClosedByAKey()
    {
        QDialog dialog(m_window.get());
        QPushButton button(&dialog);
        button.setObjectName(QStringLiteral("a"));
        dialog.resize(200, 100);
        dialog.open();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QVERIFY(rest(button.mapToGlobal(button.rect().center()), [&] { return isShowing("a"); }));
        stopAskingForTooltips();
        Pointer::press(QStringLiteral("Escape"));
        Pointer::release(QStringLiteral("Escape"));
        QTRY_VERIFY(!dialog.isVisible());
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldGoWhenThePointerLeavesTheWindowInOneMove()
    {
        settings().set(HVKeyHideDelay, 50);
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        Pointer::moveAway(); // no event reports this move
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldNotCoverTheWindowThatAClickedLinkOpens()
    {
        QWidget help;
        m_host->opening = [&] {
            help.setGeometry(popup()->geometry());
            help.show();
        };
        QVERIFY(hover("a"));
        openLink();
        QTRY_VERIFY(help.isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&help));
        QTRY_COMPARE(pixelOnScreen(help.geometry().center()), help.palette().window().color());
    }

    void shouldShowWhatIsHoveredWhileAClickedLinkWaits()
    {
        QDialog dialog;
        QPushButton button(&dialog);
        button.setObjectName(QStringLiteral("c")); // with another user interface
        dialog.setGeometry(40, 40, 200, 100);
        bool shown = false;
        m_host->opening = [&] {
            QTimer::singleShot(0, &dialog, [&] {
                QVERIFY(QTest::qWaitForWindowActive(&dialog));
                shown = rest(button.mapToGlobal(button.rect().center()),
                             [&] { return isShowing("c"); });
                dialog.accept();
            });
            dialog.exec();
        };
        QVERIFY(hover("a"));
        openLink();
        QTRY_VERIFY(shown);
        QVERIFY(hover("a")); // and everything goes on
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
        QVERIFY(hover("a"));
        const QPoint first = popup()->pos();
        HostWindow other;
        if (inAnotherWindow) {
            other.move(20, 20);
            other.show();
            QVERIFY(QTest::qWaitForWindowExposed(&other));
        } else {
            m_window->button("a").move(300, 110);
        }
        const QPoint center = inAnotherWindow ? other.centerOf("a") : m_window->centerOf("a");
        QVERIFY(rest(center, [&] { return popup()->pos() != first; }));
        QCOMPARE(popup()->pos(), QCursor::pos() + QPoint(35, 30));
        QVERIFY(isShowing("a"));
    }

    void shouldPlaceTheNextPopupForItsOwnSize()
    {
        showWindow({ 400, 540 });
        QVERIFY(hover("disabled"));
        QCOMPARE(popup()->height(), 501);
        QVERIFY(hover("b"));
        QCOMPARE(popup()->pos(), QCursor::pos() + QPoint(35, 30));
    }

    void shouldPaintItsRimInTheColourOfTheUserInterface()
    {
        QVERIFY(hover("a"));
        const QRect shown = popup()->geometry();
        QTRY_COMPARE(pixelOnScreen(shown.topLeft()), QColor("steelblue"));
        for (const QPoint &corner : { shown.topRight(), shown.bottomLeft(), shown.bottomRight() })
            QTRY_COMPARE(pixelOnScreen(corner), QColor("darkred"));
    }

private:
    void openLink()
    {
        Pointer::moveTo(popup()->geometry().center());
        Pointer::click();
    }

    HVContext &settings() { return m_host->manager()->context(); }
};

HOVLETS_TEST_MAIN(tst_EndToEndControl)
#include "tst_endtoend_control.moc"
