// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVPinnedState.h"
#include "HVView.h"
#include "HVWidget.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "RecordingHost.h"
#include "TestMain.h"

#include <QtCore/QPointer>
#include <QtCore/QProcess>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

using namespace Hovlets;

/// Tests pinned popups that draw their title bar, under a window manager.
class tst_EndToEndTitleBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_folder->addControlFile(QStringLiteral("Test"), QStringLiteral("content"), R"(
<hovlets search="Default">
<hovlet key="pen" title="Pen" shortcut="P"><p>Draws a free line in the current colour.</p></hovlet>
</hovlets>)");
        Pointer::moveAway();
        m_window = std::make_unique<QWidget>();
        m_window->setGeometry(100, 100, 300, 200);
        m_button = new QPushButton(QStringLiteral("Pen"), m_window.get());
        m_button->setGeometry(100, 50, 100, 30);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        makeHost();
    }

    void cleanup()
    {
        delete m_pinned;
        m_host.reset();
        m_window.reset();
    }

    void shouldShowTheTitleAndOneButtonInASlimBar()
    {
        const QPoint place = pin();
        QVERIFY(m_pinned);
        QTRY_COMPARE(m_pinned->frameGeometry(), m_pinned->geometry()); // no frame of the desktop
        QCOMPARE(m_pinned->pos(), place);
        QCOMPARE(m_pinned->windowTitle(), QStringLiteral("Pen"));
        QVERIFY(item("titleBar"));
        QCOMPARE(item("barTitle")->property("text").toString(), QStringLiteral("Pen"));
        QVERIFY(!item("title"));
        QVERIFY(item("pinned"));
        QCOMPARE(countOf("close"), 1);
        QVERIFY(!item("pin"));
        QVERIFY(item("titleBar")->height() < 32);
        clickOn("close");
        QTRY_VERIFY(!m_pinned);
    }

    void shouldMoveByItsBar()
    {
        pin();
        const QPoint before = m_pinned->pos();
        const QPoint grip = onScreen("barTitle");
        // The window manager may report the new place only at the end.
        drag(grip, [&] { return !QRect(before, m_pinned->size()).contains(QCursor::pos()); });
        QTRY_VERIFY((m_pinned->pos() - before).manhattanLength() > 60);
        QVERIFY(m_pinned->isVisible());
    }

    void shouldResizeByItsEdgesAndComeBackWithThatSize()
    {
        pin();
        const QSize before = m_pinned->size();
        drag(m_pinned->geometry().bottomRight() - QPoint(2, 2),
             [&] { return m_pinned->width() > before.width() + 60; });
        QVERIFY(m_pinned->width() > before.width() + 60);
        QVERIFY(m_pinned->height() > before.height());
        QTRY_COMPARE(m_pinned->view()->size() + QSize(1, 1), m_pinned->size());
        QTRY_COMPARE(rootSize(), QSizeF(m_pinned->view()->size()));
        const QSize size = m_pinned->size();
        const QByteArray state = m_host->manager()->saveState();
        delete m_pinned;
        makeHost();
        QVERIFY(m_host->manager()->restoreState(state));
        findPinned();
        QVERIFY(m_pinned);
        QTRY_COMPARE(m_pinned->size(), size);
    }

    /// Some window managers do not always tell a new window where they have put it.
    void shouldSaveWhereItIs()
    {
        const QPoint position = m_button->mapToGlobal(m_button->rect().center());
        m_host->manager()->show(QStringLiteral("pen"), position, m_button);
        m_pinned = m_host->popup();
        const QPoint place = m_pinned->pos();
        m_host->view()->setReserved(true);
        QVERIFY(QTest::qWaitForWindowExposed(m_pinned));
        const auto saved = [&] {
            const auto states = decodePinnedStates(m_host->manager()->saveState());
            return states && states->size() == 1 ? states->first().position : QPoint();
        };
        (void)QTest::qWaitFor([&] { return m_pinned->pos() != place; }, 1000);
        QCOMPARE(saved(), place);
    }

    void shouldComeBackNoLargerThanTheScreen()
    {
        pin();
        auto states = decodePinnedStates(m_host->manager()->saveState());
        QVERIFY(states && states->size() == 1);
        states->first().size = QSize(5000, 4000);
        delete m_pinned;
        makeHost();
        QVERIFY(m_host->manager()->restoreState(encodePinnedStates(*states)));
        findPinned();
        QVERIFY(m_pinned);
        const QRect screen = m_pinned->screen()->availableGeometry();
        QTRY_VERIFY(screen.contains(m_pinned->geometry()));
    }

    void shouldCloseByEscape()
    {
        pin();
        m_pinned->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_pinned));
        m_pinned->view()->setFocus();
        Pointer::press(QStringLiteral("Escape"));
        Pointer::release(QStringLiteral("Escape"));
        QTRY_VERIFY(!m_pinned);
    }

    void shouldHaveNoBarInAContainer()
    {
        auto *container = new QWidget;
        container->setAttribute(Qt::WA_DeleteOnClose);
        m_host->container = container;
        pin();
        QCOMPARE(m_pinned->window(), container);
        QVERIFY(!item("titleBar"));
        QVERIFY(!item("close"));
        QVERIFY(!item("title"));
        QCOMPARE(container->windowTitle(), QStringLiteral("Pen"));
        delete container;
    }

    /// As when the user maximises or tiles it.
    void shouldForgetTheSizesThatTheDesktopGivesIt()
    {
        pin();
        const QSize before = m_pinned->size();
        desktopResizes(before + QSize(80, 60));
        QTRY_COMPARE(m_pinned->view()->size(), before + QSize(79, 59));
        QTRY_COMPARE(rootSize(), QSizeF(before + QSize(79, 59)));
        const auto states = decodePinnedStates(m_host->manager()->saveState());
        QVERIFY(states && states->size() == 1);
        QCOMPARE(states->first().size, QSize(0, 0));
    }

    void shouldKeepTheUsersSizeBesideThatOfTheDesktop()
    {
        pin();
        const QSize before = m_pinned->size();
        drag(m_pinned->geometry().bottomRight() - QPoint(2, 2),
             [&] { return m_pinned->width() > before.width() + 60; });
        QTRY_COMPARE(m_pinned->view()->size() + QSize(1, 1), m_pinned->size());
        Pointer::moveTo(m_pinned->geometry().center());
        Pointer::click();
        const QSize users = m_pinned->view()->size();
        desktopResizes(before + QSize(200, 150));
        QTRY_COMPARE(m_pinned->view()->size(), before + QSize(199, 149));
        const auto states = decodePinnedStates(m_host->manager()->saveState());
        QVERIFY(states && states->size() == 1);
        QCOMPARE(states->first().size, users);
    }

    void shouldLeaveTheDesktopsBarWithoutTheSetting()
    {
        m_host->manager()->context().set(HVKeyOwnTitleBar, false);
        pin();
        QTRY_VERIFY(m_pinned->frameGeometry() != m_pinned->geometry());
        QVERIFY(!item("titleBar"));
        QVERIFY(item("title"));
        QVERIFY(item("close"));
    }

    // These are the last tests, because the display stays like this.

    void shouldMoveByItsBarWithoutAWindowManagerThatMovesWindows()
    {
        if (QT_VERSION < QT_VERSION_CHECK(6, 0, 0))
            QSKIP("With Qt 5, the window manager still moves it; tst_hvwindowdrag tests this");
        stopMovingByTheWindowManager();
        pin();
        const QPoint before = m_pinned->pos();
        const QPoint grip = onScreen("barTitle");
        drag(grip, [&] { return m_pinned->pos() != before; });
        QTRY_COMPARE(m_pinned->pos() - before, QCursor::pos() - grip);
        const QPoint after = m_pinned->pos();
        Pointer::moveTo(after + QPoint(60, 60));
        QTRY_COMPARE(QCursor::pos(), after + QPoint(60, 60));
        QCOMPARE(m_pinned->pos(), after);
    }

    void shouldResizeByItsEdgesWithoutAWindowManagerThatResizesWindows()
    {
        if (QT_VERSION < QT_VERSION_CHECK(6, 0, 0))
            QSKIP("With Qt 5, the window manager still moves it; tst_hvwindowdrag tests this");
        stopMovingByTheWindowManager();
        pin();
        const QRect before = m_pinned->geometry();
        drag(before.bottomRight() - QPoint(2, 2),
             [&] { return m_pinned->width() > before.width() + 60; });
        QTRY_VERIFY(m_pinned->width() > before.width() + 60);
        QVERIFY(m_pinned->height() > before.height());
        QCOMPARE(m_pinned->pos(), before.topLeft());
        QTRY_COMPARE(rootSize() + QSizeF(1, 1), QSizeF(m_pinned->size()));
        const auto states = decodePinnedStates(m_host->manager()->saveState());
        QVERIFY(states && states->size() == 1);
        QCOMPARE(states->first().size, m_pinned->view()->size());

        const QRect wide = m_pinned->geometry();
        drag(wide.topLeft() + QPoint(2, 2), [&] { return m_pinned->x() > wide.x() + 60; });
        QTRY_VERIFY(m_pinned->x() > wide.x() + 60);
        QCOMPARE(m_pinned->geometry().bottomRight(), wide.bottomRight());
    }

    void shouldStayWhereItIsWhenItsBarOrItsEdgeIsClicked_data()
    {
        QTest::addColumn<bool>("edge");
        QTest::newRow("bar") << false;
        QTest::newRow("edge") << true;
    }

    void shouldStayWhereItIsWhenItsBarOrItsEdgeIsClicked()
    {
        QFETCH(bool, edge);
        stopMovingByTheWindowManager();
        pin();
        const QRect before = m_pinned->geometry();
        const QPoint grip = edge ? before.bottomRight() - QPoint(2, 2) : onScreen("barTitle");
        Pointer::moveTo(grip);
        Pointer::hold();
        QTRY_VERIFY(QGuiApplication::mouseButtons() != Qt::NoButton);
        Pointer::moveTo(grip + QPoint(1, 1)); // a hand does not keep still
        Pointer::letGo();
        QTRY_COMPARE(QGuiApplication::mouseButtons(), Qt::NoButton);
        QCOMPARE(m_pinned->geometry(), before);
        QVERIFY(m_pinned->isVisible());
    }

private:
    /// Makes the program believe that the window manager does not let users move windows.
    static void stopMovingByTheWindowManager()
    {
        QCOMPARE(QProcess::execute(QStringLiteral("xprop"),
                                   { QStringLiteral("-root"), QStringLiteral("-f"),
                                     QStringLiteral("_NET_SUPPORTED"), QStringLiteral("32a"),
                                     QStringLiteral("-set"), QStringLiteral("_NET_SUPPORTED"),
                                     QStringLiteral("_NET_WM_NAME") }),
                 0);
    }

    void desktopResizes(const QSize &size)
    {
        QCOMPARE(QProcess::execute(
                         QStringLiteral("xdotool"),
                         { QStringLiteral("windowsize"), QString::number(m_pinned->winId()),
                           QString::number(size.width()), QString::number(size.height()) }),
                 0);
    }

    void makeHost()
    {
        HVContext settings;
        useRecommendedSettings(settings);
        settings.set(HVKeyHideDelay, 0);
        m_host = std::make_unique<RecordingHost>(
                settings, QStringList { m_folder->path(), QStringLiteral(HOVLETS_PACKAGES) });
    }

    /// Pins the popup, and returns where it was.
    QPoint pin()
    {
        const QPoint position = m_button->mapToGlobal(m_button->rect().center());
        m_host->manager()->show(QStringLiteral("pen"), position, m_button);
        m_pinned = m_host->popup();
        const QPoint place = m_pinned->pos();
        m_host->view()->setReserved(true);
        if (!QTest::qWaitForWindowExposed(m_pinned->window()))
            qFatal("the pinned popup did not appear");
        // Openbox does not always tell a new window without a frame where it has put it.
        const auto isThere = [&] { return m_pinned->pos() == place; };
        if (m_pinned->isWindow() && !QTest::qWaitFor(isThere, 300)) {
            m_pinned->move(place);
            (void)QTest::qWaitFor(isThere);
        }
        return place;
    }

    /// Drags from \a position towards the bottom right until \a happened. The window manager takes
    /// over only once the program has handled the press.
    template <typename Condition> static void drag(const QPoint &position, Condition happened)
    {
        Pointer::moveTo(position);
        Pointer::hold();
        (void)QTest::qWaitFor([] { return QGuiApplication::mouseButtons() != Qt::NoButton; });
        for (int i = 1; i < 20; ++i) {
            Pointer::moveTo(position + QPoint(8, 5) * i);
            if (QTest::qWaitFor(happened, 200))
                break;
        }
        Pointer::letGo();
    }

    void findPinned()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows) {
            auto *popup = qobject_cast<HVWidget *>(window);
            if (popup && popup->isVisible())
                m_pinned = popup;
        }
    }

    QList<QQuickItem *> itemsBelow(QQuickItem *above, const char *name) const
    {
        QList<QQuickItem *> found;
        const QList<QQuickItem *> children = above->childItems();
        for (QQuickItem *child : children) {
            if (child->isVisible() && child->objectName() == QLatin1String(name))
                found.append(child);
            found += itemsBelow(child, name);
        }
        return found;
    }
    QQuickItem *item(const char *name) const
    {
        return itemsBelow(m_pinned->view()->rootObject(), name).value(0);
    }
    int countOf(const char *name) const
    {
        return int(itemsBelow(m_pinned->view()->rootObject(), name).size());
    }
    QSizeF rootSize() const
    {
        const QQuickItem *root = m_pinned->view()->rootObject();
        return { root->width(), root->height() };
    }

    /// The middle of the item.
    QPoint onScreen(const char *name) const
    {
        const QQuickItem *found = item(name);
        const QPointF place = found->mapToScene({ found->width() / 2, found->height() / 2 });
        return m_pinned->view()->mapToGlobal(place.toPoint());
    }
    void clickOn(const char *name) const
    {
        Pointer::moveTo(onScreen(name));
        Pointer::click();
    }

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<QWidget> m_window;
    QPushButton *m_button = nullptr;
    std::unique_ptr<RecordingHost> m_host;
    QPointer<HVWidget> m_pinned;
};

HOVLETS_TEST_MAIN(tst_EndToEndTitleBar)
#include "tst_endtoend_titlebar.moc"
