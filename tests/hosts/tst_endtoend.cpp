// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtCore/QProcess>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QToolTip>

#include <cstring>

using namespace Hovlets;

namespace {

constexpr auto OtherApplication = "--other-application";

} // namespace

/// Tests hovering, clicking, pinning and leaving with a real pointer.
class tst_EndToEnd : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldShowBesideThePointer()
    {
        m_window->field.setFocus();
        QVERIFY(hover("a"));
        QCOMPARE(popup()->pos(), QCursor::pos() + QPoint(35, 30));
        QCOMPARE(popup()->windowOpacity(), 1.0);
        QTRY_COMPARE(pixelOnScreen(popup()->pos() + QPoint(50, 50)), QColor("steelblue"));
        // Keyboard input still goes to the same window.
        QVERIFY(m_window->isActiveWindow());
        QVERIFY(m_window->field.hasFocus());
        QCOMPARE(popup()->windowHandle()->transientParent(), m_window->windowHandle());
        QVERIFY(!QToolTip::isVisible());
    }

    void shouldShowTheNextControl()
    {
        QVERIFY(hover("a"));
        QVERIFY(hover("b"));
        QCOMPARE(popup()->pos(), QCursor::pos() + QPoint(35, 30));
        QCOMPARE(title(), QStringLiteral("Title of b"));
    }

    void shouldLeaveAnUnknownControlToItsOwnTooltip()
    {
        QVERIFY(hover("a"));
        QVERIFY(rest(m_window->centerOf("unknown"),
                     [&] { return isToolTipShown(QStringLiteral("Its own")); }));
        QVERIFY(!popup()->isVisible());
    }

    void shouldStayOverAnUnknownControlWithoutATooltipNearIt()
    {
        m_host->manager()->context().set(HVKeySafeMargin, QSize(500, 500));
        QVERIFY(hover("a"));
        m_window->asked.clear();
        QVERIFY(restOn("silent"));
        QVERIFY(isShowing("a"));
    }

    void shouldHideOverAnUnknownControlAwayFromIt()
    {
        QVERIFY(hover("a"));
        QVERIFY(rest(m_window->centerOf("silent"), [&] { return !popup()->isVisible(); }));
        QVERIFY(m_window->asked.contains(QStringLiteral("silent")));
    }

    void shouldHideAfterADelayOnceThePointerHasLeft()
    {
        QVERIFY(hover("a"));
        QVERIFY(!timer()->isActive());
        m_host->manager()->context().set(HVKeyHideDelay, 100);
        stopAskingForTooltips();
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 120)));
        QTRY_VERIFY(!popup()->isVisible());
    }

    void shouldStayWhenThePointerComesBack_data()
    {
        QTest::addColumn<bool>("toThePopup");
        QTest::newRow("to the control") << false;
        QTest::newRow("to the popup") << true;
    }

    void shouldStayWhenThePointerComesBack()
    {
        QFETCH(bool, toThePopup);
        QVERIFY(hover("a"));
        stopAskingForTooltips();
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 120)));
        QTRY_VERIFY(timer()->isActive());
        Pointer::moveTo(toThePopup ? popup()->geometry().center() : m_window->centerOf("a"));
        QTRY_VERIFY(!timer()->isActive());
        QVERIFY(isShowing("a"));
    }

    void shouldHideOnAClickOutside()
    {
        QSignalSpy clicked(&m_window->button("a"), &QPushButton::clicked);
        QVERIFY(hover("a"));
        Pointer::click();
        QTRY_VERIFY(!popup()->isVisible());
        QTRY_COMPARE(clicked.count(), 1); // the click reaches its target
    }

    void shouldActivateRatherThanHideWhenItMustStayOpen()
    {
        QVERIFY(hover("a"));
        m_host->view()->setStayOpen(true);
        QSignalSpy clicked(&m_window->button("a"), &QPushButton::clicked);
        Pointer::click();
        QTRY_COMPARE(clicked.count(), 1);
        QVERIFY(isShowing("a"));
    }

    void shouldReceiveAClickInside()
    {
        QVERIFY(hover("a"));
        Pointer::moveTo(popup()->pos() + QPoint(50, 50));
        Pointer::click();
        QTRY_COMPARE(m_host->view()->rootObject()->property("clicks").toInt(), 1);
        QVERIFY(isShowing("a"));
        // The popup's edge around the view belongs to it, too.
        m_clicksOnPopup = 0;
        popup()->installEventFilter(this);
        Pointer::moveTo(popup()->geometry().bottomRight());
        Pointer::click();
        QTRY_COMPARE(m_clicksOnPopup, 1);
        QVERIFY(isShowing("a"));
    }

    void shouldHideWhenTheApplicationIsDeactivated()
    {
        QVERIFY(hover("a"));
        QProcess other;
        other.setProcessChannelMode(QProcess::ForwardedChannels);
        other.start(QCoreApplication::applicationFilePath(),
                    { QString::fromUtf8(OtherApplication) });
        QVERIFY(other.waitForStarted());
        QTRY_VERIFY_WITH_TIMEOUT(!popup()->isVisible(), 20000);
        QVERIFY(QGuiApplication::applicationState() != Qt::ApplicationActive);
        other.kill();
        other.waitForFinished();
    }

    void shouldStayWhereItIsForTheSameControl()
    {
        QVERIFY(hover("a"));
        const QPoint position = popup()->pos();
        m_window->asked.clear();
        QVERIFY(restOn("a", QPoint(20, 8)));
        QCOMPARE(popup()->pos(), position);
        QVERIFY(isShowing("a"));
    }

    void shouldStayOnTheScreen_data()
    {
        QTest::addColumn<QPoint>("corner");
        QTest::addColumn<QByteArray>("control");
        QTest::addColumn<Qt::Alignment>("atEdge"); // the edges of the screen that the popup touches
        const int far = 5000;
        QTest::newRow("top left") << QPoint(0, 0) << QByteArray("a") << Qt::Alignment();
        QTest::newRow("top right")
                << QPoint(far, 0) << QByteArray("disabled") << Qt::Alignment(Qt::AlignRight);
        QTest::newRow("bottom left")
                << QPoint(0, far) << QByteArray("a") << Qt::Alignment(Qt::AlignBottom);
        QTest::newRow("bottom right") << QPoint(far, far) << QByteArray("disabled")
                                      << Qt::Alignment(Qt::AlignRight | Qt::AlignBottom);
    }

    void shouldStayOnTheScreen()
    {
        QFETCH(QPoint, corner);
        QFETCH(QByteArray, control);
        QFETCH(Qt::Alignment, atEdge);
        const QRect area = m_window->screen()->availableGeometry();
        const QRect frame = m_window->frameGeometry();
        const QPoint last = area.bottomRight() + QPoint(1, 151) // the controls stay visible
                - QPoint(frame.width(), frame.height());
        showWindow({ qMin(corner.x(), last.x()), qMin(corner.y(), last.y()) });
        QVERIFY(hover(control.constData()));
        const QRect shown = popup()->geometry();
        QVERIFY(area.contains(shown));
        QCOMPARE(shown.right() == area.right(), atEdge.testFlag(Qt::AlignRight));
        QCOMPARE(shown.bottom() == area.bottom(), atEdge.testFlag(Qt::AlignBottom));
    }

    void shouldPinByAClick()
    {
        QVERIFY(hover("a"));
        QPointer<HVWidget> pinned = popup();
        const QPoint position = pinned->pos();
        Pointer::moveTo(position + QPoint(150, 50));
        Pointer::click();
        QTRY_COMPARE(pinned->windowType(), Qt::Tool);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        QCOMPARE(pinned->windowTitle(), QStringLiteral("Title of a"));
        QVERIFY(pinned->testAttribute(Qt::WA_DeleteOnClose));

        QVERIFY(hover("b"));
        QVERIFY(pinned && pinned->isVisible());
        QVERIFY(popup() != pinned);
        Pointer::moveTo(m_window->mapToGlobal(QPoint(390, 190)));
        Pointer::click();
        QTRY_VERIFY(!popup()->isVisible());
        QVERIFY(pinned->isVisible());

        m_host.reset(); // the popup outlives its host
        QVERIFY(pinned->isVisible());
        pinned->close();
        QTRY_VERIFY(!pinned);
    }

    void shouldShowTheCursorBelowOnceAnItemHasNone()
    {
        QVERIFY(hover("a"));
        const QQuickItem *root = m_host->view()->rootObject();
        const QPoint left = popup()->pos() + QPoint(50, 50);
        Pointer::moveTo(left);
        QTRY_VERIFY(m_host->view()->underMouse());
        Pointer::moveTo(left + QPoint(100, 0));
        QTRY_COMPARE(popup()->windowHandle()->cursor().shape(), Qt::PointingHandCursor);
        m_host->view()->setItemCursor(root->childItems().at(1), QString(), QString());
        Pointer::moveTo(left + QPoint(90, 0));
        QTRY_COMPARE(popup()->windowHandle()->cursor().shape(), Qt::IBeamCursor);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        m_clicksOnPopup += event->type() == QEvent::MouseButtonRelease;
        return QObject::eventFilter(object, event);
    }

private:
    int m_clicksOnPopup = 0;
};

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], OtherApplication) == 0) {
        QApplication application(argc, argv);
        QWidget window;
        window.resize(50, 50);
        window.show();
        return QApplication::exec();
    }
    return runTest(argc, argv, []() -> QObject * { return new tst_EndToEnd; });
}

#include "tst_endtoend.moc"
