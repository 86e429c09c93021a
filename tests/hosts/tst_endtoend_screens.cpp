// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtCore/QProcess>
#include <QtGui/QScreen>

using namespace Hovlets;

namespace {

constexpr QRect Left(0, 0, 640, 800);
constexpr QRect Right(640, 0, 640, 700);

void xrandr(const QStringList &arguments)
{
    if (QProcess::execute(QStringLiteral("xrandr"), arguments) != 0)
        qFatal("xrandr %s failed", qPrintable(arguments.join(u' ')));
}

QRect areaOf(int screen)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return screen < screens.size() ? screens.at(screen)->geometry() : QRect();
}

/// A screen that tests can change. Restores it at the end.
class ChangingScreen
{
    Q_DISABLE_COPY_MOVE(ChangingScreen)

public:
    ChangingScreen() = default;

    ~ChangingScreen()
    {
        if (m_isSplit) {
            xrandr({ QStringLiteral("--delmonitor"), QStringLiteral("left") });
            xrandr({ QStringLiteral("--delmonitor"), QStringLiteral("right") });
        }
        if (m_isSmall) {
            setMode("1280x800");
            xrandr({ QStringLiteral("--delmode"), QStringLiteral("screen"), Small });
            xrandr({ QStringLiteral("--rmmode"), Small });
        }
        QTRY_COMPARE(areaOf(0), QRect(0, 0, 1280, 800));
    }

    void shrink()
    {
        m_isSmall = true;
        // Only the width and the height matter: this screen has no lines to time.
        const QString zero = QStringLiteral("0");
        xrandr({ QStringLiteral("--newmode"), Small, zero, QStringLiteral("1000"), zero, zero, zero,
                 QStringLiteral("700"), zero, zero, zero });
        xrandr({ QStringLiteral("--addmode"), QStringLiteral("screen"), Small });
        setMode("small");
        QTRY_COMPARE(areaOf(0), QRect(0, 0, 1000, 700));
    }

    void split()
    {
        m_isSplit = true;
        setMonitor("left", Left, "screen");
        setMonitor("right", Right, "none");
        QTRY_COMPARE(areaOf(0), Left);
        QTRY_COMPARE(areaOf(1), Right);
    }

private:
    static void setMode(const char *mode)
    {
        xrandr({ QStringLiteral("--output"), QStringLiteral("screen"), QStringLiteral("--mode"),
                 QLatin1String(mode) });
    }

    static void setMonitor(const char *name, const QRect &area, const char *output)
    {
        const QString geometry = QStringLiteral("%1/170x%2/210+%3+%4")
                                         .arg(area.width())
                                         .arg(area.height())
                                         .arg(area.x())
                                         .arg(area.y());
        xrandr({ QStringLiteral("--setmonitor"), QLatin1String(name), geometry,
                 QLatin1String(output) });
    }

    const QString Small = QStringLiteral("small");
    bool m_isSmall = false;
    bool m_isSplit = false;
};

/// Half as tall as its screen.
constexpr auto Tall = R"(import QtQuick 2.15
import QtQuick.Window 2.15
Rectangle { width: 100; height: Screen.height / 2; color: "steelblue" })";

/// Records the heights in which popups are painted.
class PaintedHeights : public QObject
{
public:
    PaintedHeights() { qApp->installEventFilter(this); }

    /// Whether a popup was painted as high as it should be on \a screen.
    bool contain(const QRect &screen) const { return m_heights.contains(screen.height() / 2 + 1); }

    /// The number of different heights since the last call.
    int take() { return int(std::exchange(m_heights, {}).size()); }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        const auto *popup = qobject_cast<HVWidget *>(object);
        if (popup && event->type() == QEvent::Paint && !m_heights.contains(popup->height()))
            m_heights.append(popup->height());
        return false;
    }

private:
    QList<int> m_heights;
};

void addPlacements()
{
    QTest::addColumn<int>("placement");
    QTest::newRow("at the cursor") << int(HVPlaceAtCursor);
    QTest::newRow("beside the control") << int(HVPlaceBesideControl);
}

} // namespace

/// Tests screens that change, and two screens of one desktop, with a real pointer.
class tst_EndToEndScreens : public HoverTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFetchThePopupOntoASmallerScreen_data() { addPlacements(); }

    void shouldFetchThePopupOntoASmallerScreen()
    {
        QFETCH(int, placement);
        settings().set(HVKeyPlacement, placement);
        ChangingScreen screen;
        showWindow({ 580, 480 });
        m_window->button("b").move(300, 150); // at (880, 630)
        QVERIFY(hover("b"));
        const QRect before = popup()->frameGeometry();
        screen.shrink();
        if (popup()->isVisible()) {
            QCOMPARE(popup()->frameGeometry(), before);
            QVERIFY(!areaOf(0).contains(before));
        }
        // Window managers may move the window, too.
        QVERIFY(restAt(
                [&] { return m_window->centerOf("b"); },
                [&] { return isShowing("b") && areaOf(0).contains(popup()->frameGeometry()); }));
    }

    void shouldFetchThePopupOntoTheScreenOfItsControl()
    {
        if (!hasMonitors())
            QSKIP("Qt 5 takes outputs for screens, and the virtual server has only one");
        QVERIFY(hover("disabled"));
        const QRect before = popup()->frameGeometry();
        QVERIFY(before.left() < Right.left() && before.right() > Left.right());
        ChangingScreen screen;
        screen.split();
        QVERIFY(rest(m_window->centerOf("disabled"), [&] {
            return isShowing("disabled") && Left.contains(popup()->frameGeometry());
        }));
    }

    void shouldStayOnTheScreenOfItsControl_data() { addPlacements(); }

    void shouldStayOnTheScreenOfItsControl()
    {
        if (!hasMonitors())
            QSKIP("Qt 5 takes outputs for screens, and the virtual server has only one");
        QFETCH(int, placement);
        ChangingScreen screen;
        screen.split();
        settings().set(HVKeyPlacement, placement);
        showWindow({ 400, 300 }); // on both screens
        m_window->button("b").move(260, 60);
        QVERIFY(hover("disabled"));
        QVERIFY(Left.contains(QCursor::pos()));
        QVERIFY(Left.contains(popup()->frameGeometry()));
        settings().set(HVKeyCursorOffset, QSize(-150, 30));
        QVERIFY(hover("b"));
        QVERIFY(Right.contains(QCursor::pos()));
        QVERIFY(Right.contains(popup()->frameGeometry()));
    }

    void shouldLimitAPopupToTheScreenOfItsControl()
    {
        if (!hasMonitors())
            QSKIP("Qt 5 takes outputs for screens, and the virtual server has only one");
        ChangingScreen screen;
        screen.split();
        m_folder.add(QStringLiteral("Pack.hovlets/ui/Tall.qml"), Tall);
        settings().set(HVKeyRichUiFile, QStringLiteral("ui/Tall.qml"));
        showWindow({ 400, 300 }); // on both screens
        m_window->button("b").move(260, 60);
        PaintedHeights heights;

        // The first popup is on the second screen. No frame may have another screen's limit.
        QVERIFY(hover("b"));
        QTRY_VERIFY(heights.contain(Right));
        QCOMPARE(heights.take(), 1);
        QVERIFY(hover("disabled"));
        QTRY_VERIFY(heights.contain(Left));
        QCOMPARE(heights.take(), 1);
        QVERIFY(hover("b"));
        QTRY_VERIFY(heights.contain(Right));
        QCOMPARE(heights.take(), 1);
    }

    void shouldFollowItsWindowToAnotherScreen_data() { addPlacements(); }

    void shouldFollowItsWindowToAnotherScreen()
    {
        if (!hasMonitors())
            QSKIP("Qt 5 takes outputs for screens, and the virtual server has only one");
        QFETCH(int, placement);
        ChangingScreen screen;
        screen.split();
        settings().set(HVKeyPlacement, placement);
        settings().set(HVKeyHideDelay, 0); // only the window's move hides the popup
        showWindow({ 20, 300 });
        QVERIFY(hover("disabled"));
        QVERIFY(Left.contains(popup()->frameGeometry()));
        m_window->move(720, 300);
        QTRY_VERIFY(!popup()->isVisible());
        QVERIFY(hover("disabled"));
        QVERIFY(Right.contains(popup()->frameGeometry()));
    }

private:
    HVContext &settings() { return m_host->manager()->context(); }

    /// Earlier versions read the outputs of the graphics card, of which this screen has one.
    static bool hasMonitors() { return QLibraryInfo::version() >= QVersionNumber(6); }
};

HOVLETS_TEST_MAIN(tst_EndToEndScreens)
#include "tst_endtoend_screens.moc"
