// SPDX-License-Identifier: Apache-2.0
#include "Compositor.h"
#include "HVContext.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVWindowSystem.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "RecordingHost.h"
#include "TestMain.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QProcess>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>

#include <cstdio>
#include <cstring>

using namespace Hovlets;

namespace {

/// The background of the host's window, which the popup lies on.
const QColor Backdrop(0x30, 0xc0, 0x60);

/// Whether the pixel at \a position has the colour of the backdrop, apart from the shadow.
bool showsBackdrop(const QPoint &position)
{
    const QColor color = pixelOnScreen(position);
    return color.green() > color.red() + 50 && color.green() > color.blue() + 30;
}

constexpr auto AskForCompositor = "--ask-for-compositor";

/// The program that prints whether there is a compositor, and ends.
int askForCompositor(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    std::puts(windowsAreBlended() ? "composited" : "not composited");
    return 0;
}

/// A mark in the corner of the screen, by which to tell what a compositor has drawn.
class Mark : public QWidget
{
public:
    static constexpr int Size = 10;

    Mark()
        : QWidget(nullptr, Qt::ToolTip)
    {
        setGeometry(0, 0, Size, Size);
        show();
    }

    /// The rest of the screen, once it shows all that the program has drawn. A compositor draws
    /// changes in their order. Does not run the event loop.
    QImage restOfScreen()
    {
        m_isLight = !m_isLight;
        const QColor color(m_isLight ? 0xffee88 : 0x884400);
        setPalette(color);
        repaint();
        const QDeadlineTimer deadline(Patience);
        while (pixelOnScreen({ Size / 2, Size / 2 }) != color) {
            if (deadline.hasExpired())
                return {};
            QTest::qSleep(1);
        }
        return screen()->grabWindow(0, Size, 0).toImage();
    }

private:
    bool m_isLight = false;
};

/// Takes a picture of the screen when a widget is about to be painted for the first time.
class BeforePainting : public QObject
{
public:
    BeforePainting(QWidget &widget, Mark &mark)
        : m_mark(mark)
    {
        widget.installEventFilter(this);
    }

    QImage picture;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest && picture.isNull())
            picture = m_mark.restOfScreen();
        return false;
    }

private:
    Mark &m_mark;
};

/// Counts how often the pointer leaves a widget.
class LeaveCounter : public QObject
{
public:
    explicit LeaveCounter(QWidget &widget) { widget.installEventFilter(this); }
    int count() const { return m_count; }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_count += event->type() == QEvent::Leave;
        return false;
    }

private:
    int m_count = 0;
};

} // namespace

/// Tests the corners, the shadow and the arrow of popups on the screen, with and without a
/// compositor.
class tst_EndToEndSurface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_folder->addControlFile(QStringLiteral("Test"), QStringLiteral("content"), R"(
<hovlets search="Default">
<hovlet key="pen" title="Pen"><p>Draws a free line in the current colour.</p></hovlet>
<hovlet key="fill" title="Fill"><p>Fills an area.</p></hovlet>
<hovlet key="long" title="Long"><p>One.</p><p>Two.</p><p>Three.</p><p>Four.</p></hovlet>
</hovlets>)");
        Pointer::moveAway();
        m_window = std::make_unique<QWidget>();
        QPalette palette = m_window->palette();
        palette.setColor(QPalette::Window, Backdrop);
        m_window->setPalette(palette);
        m_window->setGeometry(200, 150, 700, 450);
        m_button = new QPushButton(QStringLiteral("Pen"), m_window.get());
        m_button->setGeometry(200, 100, 100, 30);
        m_window->show();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        HVContext settings;
        useRecommendedSettings(settings);
        settings.set(HVKeyHideDelay, 0);
        settings.set(HVKeyHideFadeDuration, 0);
        m_host = std::make_unique<RecordingHost>(
                settings, QStringList { m_folder->path(), QStringLiteral(HOVLETS_PACKAGES) });
    }

    void cleanup()
    {
        m_host.reset();
        m_window.reset();
        QVERIFY(m_compositor.stop());
    }

    void shouldHaveTransparentCornersAndAShadowWithACompositor()
    {
        QVERIFY(m_compositor.start());
        QVERIFY(show("pen"));
        const QRect popup = m_host->popup()->geometry();
        for (const QPoint &corner :
             { popup.topLeft(), popup.topRight(), popup.bottomLeft(), popup.bottomRight() })
            QTRY_VERIFY(showsBackdrop(corner));
        const QPoint middle = popup.center();
        const QColor base = m_host->view()->fillColor().rgb(); // as pixels have it
        QTRY_COMPARE(pixelOnScreen({ middle.x(), popup.bottom() }), base);
        QCOMPARE(pixelOnScreen({ popup.right(), middle.y() }), base);
        QCOMPARE(pixelOnScreen({ popup.right() + 1, middle.y() }),
                 QColor(m_host->view()->rimColor().rgb()));
        const QPoint below(middle.x(), popup.bottom() + 4);
        QVERIFY(showsBackdrop(below));
        QVERIFY(pixelOnScreen(below).green() < Backdrop.green() - 5);

        const QRect button(m_button->mapToGlobal(QPoint()), m_button->size());
        QCOMPARE(popup.top(), button.bottom() + 7);
        QCOMPARE(pixelOnScreen({ button.center().x() + 1, popup.top() - 2 }), base);
    }

    void shouldBePlainRectanglesWithoutACompositor()
    {
        QVERIFY(show("pen"));
        const QRect popup = m_host->popup()->geometry();
        const QColor line = m_host->view()->rimColor().rgb();
        for (const QPoint &corner :
             { popup.topLeft(), popup.topRight(), popup.bottomLeft(), popup.bottomRight() })
            QTRY_COMPARE(pixelOnScreen(corner), line);
        QCOMPARE(pixelOnScreen({ popup.center().x(), popup.bottom() + 4 }), Backdrop);
        QCOMPARE(pixelOnScreen(
                         { m_button->mapToGlobal(m_button->rect().center()).x(), popup.top() - 2 }),
                 Backdrop);
    }

    void shouldFollowTheCompositorAtTheNextShow()
    {
        QVERIFY(show("pen"));
        QTRY_COMPARE(pixelOnScreen(corner()), QColor(m_host->view()->rimColor().rgb()));
        QVERIFY(m_compositor.start());
        QVERIFY(show("fill"));
        QTRY_VERIFY(showsBackdrop(corner()));
        QVERIFY(m_compositor.stop());
        QVERIFY(show("pen"));
        QTRY_COMPARE(pixelOnScreen(corner()), QColor(m_host->view()->rimColor().rgb()));
        m_host->popup()->hide();
        QTRY_COMPARE(pixelOnScreen(corner()), Backdrop);
    }

    /// The window of the shadow is above that of the host.
    void shouldLetThePointerThroughTheShadow()
    {
        QVERIFY(m_compositor.start());
        QVERIFY(show("pen"));
        const QPoint below = m_host->popup()->geometry().bottomLeft() + QPoint(60, 5);
        Pointer::moveTo(below);
        QTRY_COMPARE(QCursor::pos(), below);
        QCOMPARE(QApplication::widgetAt(below), m_window.get());
        // The lower edge of the control is below the shadow as well.
        const QPoint edge = m_button->mapToGlobal(QPoint(50, m_button->height() - 2));
        QCOMPARE(QApplication::widgetAt(edge), m_button);
        Pointer::click();
        QTRY_VERIFY(!m_host->popup()->isVisible());
        QVERIFY(m_window->isActiveWindow());
    }

    /// A window that takes input for a moment takes the pointer from the control below it.
    void shouldNotTakeThePointerWhileItAppears()
    {
        QVERIFY(m_compositor.start());
        const QPoint edge = m_button->mapToGlobal(QPoint(50, m_button->height() - 2));
        Pointer::moveTo(edge);
        QTRY_VERIFY(m_button->underMouse());
        LeaveCounter leaves(*m_button);
        for (const char *key : { "pen", "fill", "pen" }) {
            QVERIFY(show(key));
            QVERIFY(!m_host->popup()->geometry().contains(edge));
            QTRY_VERIFY(pixelOnScreen(m_host->popup()->geometry().bottomLeft() + QPoint(60, 4))
                        != Backdrop); // the shadow is there
            m_host->popup()->hide();
            QTRY_COMPARE(pixelOnScreen(corner()), Backdrop);
        }
        QCOMPARE(leaves.count(), 0);
    }

    void shouldShowTheNextLevelNotBeforeItIsPainted_data()
    {
        QTest::addColumn<int>("top");
        QTest::newRow("below the control") << 150;
        QTest::newRow("above the control") << 540;
    }

    /// A compositor may draw the screen at any time, for example when the popup's window has its
    /// new size, or when the shadow has.
    void shouldShowTheNextLevelNotBeforeItIsPainted()
    {
        QFETCH(int, top);
        HVContext &settings = m_host->manager()->context();
        settings.set(HVKeySimpleMode, true);
        settings.set(HVKeyExpandKey, QStringLiteral("F1"));
        settings.set(HVKeyShowFadeDuration, 0);
        m_button->move(200, 180);
        m_window->move(200, top);
        QTRY_COMPARE(m_window->y(), top);
        QVERIFY(m_compositor.start());
        QVERIFY(show("long"));
        QWidget *const popup = m_host->popup();
        const QRect simple = popup->geometry();
        QTRY_VERIFY(showsBackdrop(corner()));
        Mark mark;
        QVERIFY(QTest::qWaitForWindowExposed(&mark));
        const QImage before = mark.restOfScreen();
        const BeforePainting painting(*popup, mark);
        QTest::keyClick(m_button, Qt::Key_F1);
        const QImage after = mark.restOfScreen();

        QVERIFY(popup->height() > simple.height());
        QCOMPARE(popup->y() == simple.y(), top == 150);
        QVERIFY(!painting.picture.isNull());
        QCOMPARE(painting.picture, before);
        // The outline is that of the new size, also at the edge that is away from the control.
        const int edge = top == 150 ? popup->geometry().bottom() + 1 : popup->y() - 1;
        QCOMPARE(after.pixelColor(popup->geometry().center().x() - Mark::Size, edge),
                 QColor(m_host->view()->rimColor().rgb()));
    }

    void shouldAskTheDisplayOfTheApplicationForACompositor()
    {
        QVERIFY(m_compositor.start());
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString display = environment.value(QStringLiteral("DISPLAY"));
        environment.insert(QStringLiteral("DISPLAY"), QStringLiteral(":9999")); // no server
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(QCoreApplication::applicationFilePath(),
                      { QString::fromUtf8(AskForCompositor), QStringLiteral("-display"), display });
        QVERIFY(program.waitForFinished());
        QCOMPARE(program.readAllStandardOutput(), QByteArray("composited\n"));
    }

    void shouldBeAPlainWindowInAFrameOfTheDesktop()
    {
        m_host->manager()->context().set(HVKeyOwnTitleBar, false);
        QVERIFY(m_compositor.start());
        QVERIFY(show("pen"));
        QTRY_VERIFY(showsBackdrop(corner()));
        const std::unique_ptr<HVWidget> pinned(m_host->popup());
        m_host->view()->setReserved(true);
        QVERIFY(QTest::qWaitForWindowExposed(pinned.get()));
        const QColor line = pinned->view()->rimColor().rgb();
        QTRY_COMPARE(pixelOnScreen(pinned->mapToGlobal(pinned->rect().bottomLeft())), line);
        QTRY_COMPARE(pixelOnScreen(pinned->mapToGlobal(pinned->rect().bottomRight())), line);
    }

private:
    bool show(const char *key)
    {
        const QPoint position = m_button->mapToGlobal(m_button->rect().center());
        return m_host->manager()->show(QLatin1String(key), position, m_button)
                && QTest::qWaitForWindowExposed(m_host->popup());
    }

    /// The first pixel of the popup.
    QPoint corner() const { return m_host->popup()->geometry().topLeft(); }

    Compositor m_compositor;
    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<QWidget> m_window;
    QPushButton *m_button = nullptr;
    std::unique_ptr<RecordingHost> m_host;
};

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], AskForCompositor) == 0)
        return askForCompositor(argc, argv);
    return runTest(argc, argv, []() -> QObject * { return new tst_EndToEndSurface; });
}

#include "tst_endtoend_surface.moc"
