// SPDX-License-Identifier: Apache-2.0
#include "DisplayPicture.h"
#include "HoverTest.h"
#include "TestMain.h"

#include <QtCore/QProcess>
#include <QtCore/QScopeGuard>
#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

const QColor PopupColor("steelblue"); // of the user interface

enum class Taskbar { Unknown, Omits, Lists };

/// What taskbars on X11 do with \a window. Unknown until the display has it.
Taskbar taskbarEntryOf(const QWidget &window)
{
    QProcess xprop;
    xprop.start(QStringLiteral("xprop"),
                { QStringLiteral("-id"), QString::number(window.windowHandle()->winId()),
                  QStringLiteral("WM_TRANSIENT_FOR"), QStringLiteral("_NET_WM_STATE"),
                  QStringLiteral("_NET_WM_WINDOW_TYPE") });
    if (!xprop.waitForFinished() || xprop.exitCode() != 0)
        return Taskbar::Unknown;
    const QByteArray properties = xprop.readAllStandardOutput();
    const bool isListed = properties.contains("WM_TRANSIENT_FOR:  not found.")
            && !properties.contains("_NET_WM_STATE_SKIP_TASKBAR")
            && !properties.contains("_NET_WM_WINDOW_TYPE_UTILITY");
    return isListed ? Taskbar::Lists : Taskbar::Omits;
}

} // namespace

/// Tests the host's window beside a pinned popup, with a real pointer.
class tst_EndToEndPinned : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldGoOnWithPopupsInTheWindowThatItCameFrom()
    {
        pin();
        activatePinned();
        if (QTest::currentTestFailed())
            return;
        QVERIFY(hover("b"));
        QVERIFY(rest(m_window->centerOf("unknown"),
                     [] { return isToolTipShown(QStringLiteral("Its own")); }));
    }

    void shouldLeaveTheHostsAttributeAsItWas_data()
    {
        QTest::addColumn<bool>("set");
        QTest::newRow("cleared") << false;
        QTest::newRow("set by the host") << true;
    }

    void shouldLeaveTheHostsAttributeAsItWas()
    {
        QFETCH(bool, set);
        m_window->setAttribute(Qt::WA_AlwaysShowToolTips, set);
        pin();
        activatePinned();
        if (QTest::currentTestFailed())
            return;
        QTRY_VERIFY(m_window->testAttribute(Qt::WA_AlwaysShowToolTips));
        activateWindow();
        QCOMPARE(m_window->testAttribute(Qt::WA_AlwaysShowToolTips), set);
    }

    void shouldForgetAPinnedPopupThatCloses()
    {
        pin();
        activatePinned();
        if (QTest::currentTestFailed())
            return;
        m_pinned->close();
        QTRY_VERIFY(!m_pinned);
        QTRY_VERIFY(!m_window->testAttribute(Qt::WA_AlwaysShowToolTips));
    }

    void shouldLeaveTheHostsWindowUsable()
    {
        pin();
        if (QTest::currentTestFailed())
            return;
        QSignalSpy clicked(&m_window->button("b"), &QPushButton::clicked);
        Pointer::moveTo(m_window->centerOf("b"));
        Pointer::click();
        QTRY_COMPARE(clicked.size(), 1);
    }

    /// As long as the popup belongs to the window, some compositors activate the popup instead. The
    /// library notices that some time after the first click.
    void shouldLetClicksActivateTheHostsWindow()
    {
        pin();
        activatePinned();
        if (QTest::currentTestFailed())
            return;
        Pointer::moveTo(m_window->centerOf("b"));
        const auto isActive = [&] {
            return QGuiApplication::focusWindow() == m_window->windowHandle();
        };
        for (int clicks = 0; clicks < 10 && !isActive(); ++clicks) {
            Pointer::click();
            (void)QTest::qWaitFor(isActive, 1500);
        }
        QVERIFY(isActive());
    }

    void shouldMoveByItsTitle()
    {
        pin();
        findPopup();
        if (QTest::currentTestFailed())
            return;
        const QPoint title = m_place.topLeft() + QPoint(60, -10); // beside any buttons
        Pointer::moveTo(title);
        Pointer::hold();
        const auto release = qScopeGuard([] { Pointer::letGo(); });
        // The program may have to ask for the move, so it begins at one of the next steps.
        int step = 0;
        QVERIFY(colorAppears(PopupColor, [&](const QRect &found) {
            if (found.topLeft() != m_place.topLeft()) {
                m_place = found;
                return true;
            }
            ++step;
            Pointer::moveTo(title + QPoint(step, -step));
            return false;
        }));
        constexpr QPoint Distance(100, -60);
        Pointer::moveTo(title + QPoint(step, -step) + Distance);
        // When the popup was first seen to move, it may not yet have followed all steps.
        QVERIFY(colorAppears(PopupColor, [&](const QRect &found) {
            const QPoint rest = found.topLeft() - m_place.topLeft() - Distance;
            return rest.manhattanLength() <= 2 * step;
        }));
    }

    void shouldLeaveTheKeyboardToTheHostsWindow()
    {
        pin();
        activatePinned();
        if (QTest::currentTestFailed())
            return;
        // A compositor may take a second click.
        Pointer::moveTo(m_window->field.mapToGlobal(m_window->field.rect().center()));
        const auto hasText = [this] { return !m_window->field.text().isEmpty(); };
        bool received = false;
        for (int clicks = 0; clicks < 20 && !received; ++clicks) {
            Pointer::click();
            Pointer::press(QStringLiteral("x"));
            Pointer::release(QStringLiteral("x"));
            received = QTest::qWaitFor(hasText, 2000);
        }
        QVERIFY(received);
        QVERIFY(m_pinned->isVisible());
    }

    void shouldBeInTheTaskbarIfTheSettingsAskForIt()
    {
        if (QGuiApplication::platformName() != QLatin1String("xcb"))
            QSKIP("on Wayland, a program cannot find out what the taskbar lists");
        pin();
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE(taskbarEntryOf(*m_pinned), Taskbar::Omits);
        m_pinned->close();
        m_host->manager()->context().set(HVKeyPinnedInTaskbar, true);
        pin(Qt::Window);
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE(taskbarEntryOf(*m_pinned), Taskbar::Lists);
        m_host->manager()->setStayOnTop(true); // which makes the window again
        QTRY_COMPARE(taskbarEntryOf(*m_pinned), Taskbar::Lists);
        // It goes with the host's window, and does not keep the application running.
        QVERIFY(!m_pinned->testAttribute(Qt::WA_QuitOnClose));
        m_window.reset();
        QVERIFY(!m_pinned);
    }

private:
    /// Waits until the popup is on the display. Window systems may move it, and show it later than
    /// the program asks.
    void findPopup()
    {
        QVERIFY(colorAppears(PopupColor, [&](const QRect &found) {
            m_place = found;
            return found.size() == QSize(200, 100);
        }));
    }

    void pin(Qt::WindowType type = Qt::Tool)
    {
        QVERIFY(hover("a"));
        m_pinned = popup();
        findPopup();
        if (QTest::currentTestFailed())
            return;
        Pointer::moveTo(m_place.topLeft() + QPoint(150, 50));
        Pointer::click();
        QTRY_COMPARE(m_pinned->windowType(), type);
        QVERIFY(QTest::qWaitForWindowExposed(m_pinned));
        if (QGuiApplication::platformName() == QLatin1String("xcb"))
            moveBelowTheWindow();
    }

    /// The title of the popup may be tall enough to cover controls.
    void moveBelowTheWindow()
    {
        const int bottom = m_window->geometry().bottom();
        m_pinned->move(m_window->geometry().left(), bottom + 50);
        QVERIFY(colorAppears(PopupColor, [&](const QRect &found) {
            return found.top() > bottom && found.size() == QSize(200, 100);
        }));
    }

    /// Window managers differ in whether they activate a new tool window. All activate one that is
    /// clicked.
    void activatePinned()
    {
        if (QTest::currentTestFailed())
            return;
        findPopup();
        if (QTest::currentTestFailed())
            return;
        Pointer::moveTo(m_place.center());
        Pointer::click();
        QTRY_COMPARE(QGuiApplication::focusWindow(), m_pinned->windowHandle());
    }

    /// Clicks the host's window like a user, until it has the focus. A window counts as active
    /// while another that belongs to it has the focus.
    void activateWindow()
    {
        Pointer::moveTo(m_window->mapToGlobal(m_window->rect().bottomRight() - QPoint(5, 5)));
        const auto hasFocus = [this] {
            return QGuiApplication::focusWindow() == m_window->windowHandle();
        };
        bool focused = false;
        for (int clicks = 0; clicks < 20 && !focused; ++clicks) {
            Pointer::click();
            focused = QTest::qWaitFor(hasFocus, 2000);
        }
        QVERIFY(focused);
    }

    QPointer<HVWidget> m_pinned;
    QRect m_place; // of the popup on the display
};

HOVLETS_TEST_MAIN(tst_EndToEndPinned)
#include "tst_endtoend_pinned.moc"
