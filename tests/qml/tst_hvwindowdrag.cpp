// SPDX-License-Identifier: Apache-2.0
#include "HVWindowDrag.h"
#include "SilentMoves.h"
#include "TestMain.h"

#include <QtGui/QMouseEvent>
#include <QtWidgets/QWidget>

using namespace Hovlets;

/// Tests how a view moves and resizes its window where the desktop does not.
class tst_HVWindowDrag : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<QWidget>(nullptr, Qt::ToolTip);
        m_window->setGeometry(Place);
        m_view = new QWidget(m_window.get());
        m_view->setGeometry(0, 0, 100, 100);
        m_view->setMouseTracking(true);
        m_drag = new HVWindowDrag(*m_view);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
        QTRY_COMPARE(m_window->geometry(), Place);
    }

    void cleanup() { m_window.reset(); }

    void shouldMoveTheWindowUntilTheButtonIsReleased()
    {
        press(QPoint(250, 210));
        m_drag->start({});
        move(QPoint(260, 230));
        QCOMPARE(m_window->geometry(), Place.translated(10, 20));
        release(QPoint(260, 230));
        move(QPoint(290, 290));
        QCOMPARE(m_window->geometry(), Place.translated(10, 20));
    }

    void shouldMoveTheWindowToWhereTheButtonIsReleased()
    {
        press(QPoint(250, 210));
        m_drag->start({});
        release(QPoint(260, 230));
        QCOMPARE(m_window->geometry(), Place.translated(10, 20));
    }

    void shouldResizeTheWindowAtItsEdges()
    {
        press(QPoint(299, 299));
        m_drag->start(Qt::RightEdge | Qt::BottomEdge);
        QVERIFY(m_drag->isResizing());
        move(QPoint(309, 319));
        QCOMPARE(m_window->geometry(), Place.adjusted(0, 0, 10, 20));
        release(QPoint(309, 319));
        QVERIFY(!m_drag->isResizing());
    }

    /// As when a menu or another program takes the pointer meanwhile.
    void shouldEndWhenTheReleaseGotLost()
    {
        press(QPoint(250, 210));
        m_drag->start({});
        move(QPoint(290, 290), Qt::NoButton);
        QCOMPARE(m_window->geometry(), Place);
        move(QPoint(290, 290), Qt::LeftButton);
        QCOMPARE(m_window->geometry(), Place);
    }

    void shouldEndWhenTheButtonIsPressedAgain()
    {
        press(QPoint(250, 210));
        m_drag->start({});
        press(QPoint(280, 210));
        move(QPoint(290, 290));
        QCOMPARE(m_window->geometry(), Place);
    }

    void shouldNotJumpWhenAnotherButtonIsPressed()
    {
        press(QPoint(250, 210));
        m_drag->start({});
        move(QPoint(260, 230));
        const Qt::MouseButtons both = Qt::LeftButton | Qt::RightButton;
        send(QEvent::MouseButtonPress, QPoint(260, 230), Qt::RightButton, both);
        m_drag->start({});
        move(QPoint(261, 232), both);
        QCOMPARE(m_window->geometry(), Place.translated(11, 22));
        send(QEvent::MouseButtonRelease, QPoint(261, 232), Qt::RightButton, Qt::LeftButton);
        move(QPoint(262, 234));
        QCOMPARE(m_window->geometry(), Place.translated(12, 24));
        send(QEvent::MouseButtonRelease, QPoint(262, 234), Qt::LeftButton, Qt::RightButton);
        move(QPoint(290, 290), Qt::RightButton);
        QCOMPARE(m_window->geometry(), Place.translated(12, 24));
    }

    /// Widgets get a double-click instead of the second press.
    void shouldBeginWhereADoubleClickIs()
    {
        press(QPoint(250, 210));
        release(QPoint(250, 210));
        send(QEvent::MouseButtonDblClick, QPoint(254, 213), Qt::LeftButton, Qt::LeftButton);
        m_drag->start({});
        move(QPoint(264, 233));
        QCOMPARE(m_window->geometry(), Place.translated(10, 20));
    }

    void shouldEndWhenTheWindowHides()
    {
        press(QPoint(250, 210));
        m_drag->start({});
        m_window->hide();
        m_window->show();
        move(QPoint(290, 290));
        QCOMPARE(m_window->geometry(), Place);
    }

    /// Some window managers do not tell Qt where they have put a window.
    void shouldBeginWhereTheWindowIsOnTheDisplay()
    {
        m_window->move(0, 0);
        QTRY_COMPARE(m_window->windowHandle()->position(), QPoint());
        SilentMoves::move(*m_window, Place.topLeft());
        QCOMPARE(m_window->pos(), QPoint());
        press(QPoint(250, 210));
        m_drag->start({});
        move(QPoint(260, 230));
        QCOMPARE(m_window->geometry(), Place.translated(10, 20));
    }

private:
    void press(const QPoint &position)
    {
        send(QEvent::MouseButtonPress, position, Qt::LeftButton, Qt::LeftButton);
    }
    void move(const QPoint &position, Qt::MouseButtons buttons = Qt::LeftButton)
    {
        send(QEvent::MouseMove, position, Qt::NoButton, buttons);
    }
    void release(const QPoint &position)
    {
        send(QEvent::MouseButtonRelease, position, Qt::LeftButton, Qt::NoButton);
    }
    void send(QEvent::Type type, const QPoint &position, Qt::MouseButton button,
              Qt::MouseButtons buttons)
    {
        const QPoint local = m_view->mapFromGlobal(position);
        QMouseEvent event(type, local, local, position, button, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view, &event);
    }

    static constexpr QRect Place { 200, 200, 100, 100 };

    std::unique_ptr<QWidget> m_window;
    QWidget *m_view = nullptr;
    HVWindowDrag *m_drag = nullptr;
};

HOVLETS_TEST_MAIN(tst_HVWindowDrag)
#include "tst_hvwindowdrag.moc"
