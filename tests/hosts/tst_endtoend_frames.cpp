// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverTest.h"
#include "Patience.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QEventLoop>
#include <QtCore/QProcess>
#include <QtCore/QTimer>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>

using namespace Hovlets;

namespace {

/// Two entries of different colours and sizes.
constexpr auto UserInterface = R"(import QtQuick 2.15
Rectangle {
    readonly property bool isFirst: hovlet.attribute("key") === "a"
    property string title: hovlet.childElement("title").content
    width: isFirst ? 200 : 320; height: isFirst ? 100 : 260
    color: isFirst ? "#ff0000" : "#0000ff"
})";

const QSize FirstSize(200, 100);
const QSize SecondSize(320, 260);

/// The area of one colour on the screen.
struct Patch
{
    QRect box;
    int pixels = 0;

    bool isWhole(const QRect &expected) const
    {
        return box == expected && pixels == expected.width() * expected.height();
    }
};

Patch patchOf(const QImage &screen, QRgb colour)
{
    Patch patch;
    for (int y = 0; y < screen.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(screen.constScanLine(y));
        for (int x = 0; x < screen.width(); ++x) {
            if ((line[x] | 0xff000000U) != colour)
                continue;
            ++patch.pixels;
            patch.box = patch.box.united(QRect(x, y, 1, 1));
        }
    }
    return patch;
}

/// The visible parts of the two entries.
struct Frame
{
    Patch first;
    Patch second;

    QString text() const
    {
        const auto describe = [](const Patch &patch) {
            return QStringLiteral("%1 pixels in %2x%3 at %4,%5")
                    .arg(patch.pixels)
                    .arg(patch.box.width())
                    .arg(patch.box.height())
                    .arg(patch.box.x())
                    .arg(patch.box.y());
        };
        return QStringLiteral("first %1; second %2").arg(describe(first), describe(second));
    }
};

Frame onScreen()
{
    const QImage screen = QGuiApplication::primaryScreen()->grabWindow(0).toImage().convertToFormat(
            QImage::Format_RGB32);
    return { patchOf(screen, 0xffff0000U), patchOf(screen, 0xff0000ffU) };
}

/// Takes a picture of the screen whenever it remains for a while: before the event loop waits, and
/// before a popup is painted, when its window may have its new place already.
class FrameRecord : public QObject
{
public:
    explicit FrameRecord(QWidget *popup)
    {
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [this] { frames.append(onScreen()); });
        popup->installEventFilter(this);
    }

    QVector<Frame> frames;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest)
            frames.append(onScreen());
        return false;
    }
};

/// A colour that must not appear in an area of the screen.
struct Forbidden
{
    QRect area;
    QRgb colour;
};

constexpr auto Watch = "--watch";

/// The other process of ScreenWatch: looks until its standard input ends.
int watchScreen(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    QVector<Forbidden> all;
    for (int i = 2; i + 4 < argc; i += 5) {
        const auto number = [&](int j) { return int(std::strtol(argv[i + j], nullptr, 10)); };
        all.append({ { number(0), number(1), number(2), number(3) },
                     QRgb(std::strtoul(argv[i + 4], nullptr, 16)) });
    }
    std::atomic<bool> ends { false };
    std::thread input([&] {
        while (std::getchar() != EOF) { }
        ends = true;
    });
    int pictures = 0;
    int wrong = 0;
    std::puts("watching");
    std::fflush(stdout);
    for (; !ends; ++pictures) {
        for (const Forbidden &forbidden : std::as_const(all)) {
            const QRect &area = forbidden.area;
            const QImage picture =
                    QGuiApplication::primaryScreen()
                            ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
                            .toImage()
                            .convertToFormat(QImage::Format_RGB32);
            wrong += patchOf(picture, forbidden.colour).pixels > 0;
        }
    }
    input.join();
    std::printf("%d %d\n", pictures, wrong);
    return 0;
}

/// Looks at the screen all the time, also between two steps of this process.
class ScreenWatch
{
public:
    explicit ScreenWatch(const QVector<Forbidden> &all)
    {
        QStringList arguments { QString::fromUtf8(Watch) };
        for (const Forbidden &forbidden : all) {
            for (const int number : { forbidden.area.x(), forbidden.area.y(),
                                      forbidden.area.width(), forbidden.area.height() })
                arguments += QString::number(number);
            arguments += QString::number(forbidden.colour, 16);
        }
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(QCoreApplication::applicationFilePath(), arguments);
    }

    bool waitForStart()
    {
        return m_process.waitForReadyRead() && m_process.readLine() == "watching\n";
    }

    /// Ends the watch, and returns how many pictures it took, and how many were wrong.
    QPair<int, int> finish()
    {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
        const QList<QByteArray> counts = m_process.readAll().trimmed().split(' ');
        return { counts.value(0).toInt(), counts.value(1, "-1").toInt() };
    }

private:
    QProcess m_process;
};

} // namespace

/// Tests what is on the screen between one popup and the next, with a real pointer.
class tst_EndToEndFrames : public HoverTest
{
    Q_OBJECT

public:
    tst_EndToEndFrames()
    {
        m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), UserInterface);
    }

private Q_SLOTS:
    void shouldDrawTheNextPopupInItsPlaceWhenItMoves()
    {
        placePopupsBesideTheWindow();
        QVERIFY(hover("a"));
        QTRY_VERIFY(onScreen().first.isWhole({ popup()->pos(), FirstSize }));
        QVERIFY(m_host->manager()->show(QStringLiteral("b"), { 600, 50 }, &m_window->button("b")));
        const Frame next = onScreen(); // before the event loop runs
        QVERIFY2(next.second.isWhole({ popup()->pos(), SecondSize }), qPrintable(next.text()));
        QVERIFY2(next.first.pixels == 0, qPrintable(next.text()));
        QVERIFY(m_host->manager()->show(QStringLiteral("a"), { 600, 50 }, &m_window->button("a")));
        const Frame last = onScreen();
        QVERIFY2(last.first.isWhole({ popup()->pos(), FirstSize }), qPrintable(last.text()));
    }

    void shouldShowOnlyTheOldOrTheNewPopup()
    {
        placePopupsBesideTheWindow();
        QVERIFY(hover("a"));
        const QRect first(popup()->pos(), FirstSize);
        QTRY_VERIFY(onScreen().first.isWhole(first));

        QVector<Frame> frames; // each remains on the screen until the next event
        connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
                [&] { frames.append(onScreen()); });
        QEventLoop loop; // unlike the waits of Qt Test, it blocks
        QTimer pointer;
        QTimer poll;
        bool shown = false;
        int moves = 0;
        connect(&pointer, &QTimer::timeout, &loop,
                [&] { Pointer::moveTo(m_window->centerOf("b") + QPoint(++moves % 2, 0)); });
        connect(&poll, &QTimer::timeout, &loop, [&] {
            shown = isShowing("b") && onScreen().second.isWhole({ popup()->pos(), SecondSize });
            if (shown)
                QTimer::singleShot(50, &loop, &QEventLoop::quit); // nothing changes any more
        });
        Pointer::moveTo(m_window->centerOf("b"));
        pointer.start(400);
        poll.start(10);
        QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
        loop.exec();
        QAbstractEventDispatcher::instance()->disconnect(this);
        QVERIFY(shown);
        const QRect second(popup()->pos(), SecondSize);
        QVERIFY(frames.constFirst().first.isWhole(first));
        QVERIFY(frames.constLast().second.isWhole(second));
        for (const Frame &frame : std::as_const(frames)) {
            const bool isFirst = frame.first.isWhole(first) && frame.second.pixels == 0;
            const bool isSecond = frame.second.isWhole(second) && frame.first.pixels == 0;
            QVERIFY2(isFirst || isSecond, qPrintable(frame.text()));
        }
    }

    void shouldTurnTheSimplePopupIntoTheFullOneInOneFrame_data()
    {
        QTest::addColumn<int>("bottom");
        QTest::newRow("in place") << 0;
        QTest::newRow("shifted onto the screen") << 200;
    }

    /// The field has the focus, and does not get the key.
    void shouldTurnTheSimplePopupIntoTheFullOneInOneFrame()
    {
        QFETCH(int, bottom);
        m_folder.add(QStringLiteral("Pack.hovlets/ui/SimpleTooltip.qml"),
                     "import QtQuick 2.15\nRectangle { width: 200; height: 100; color: '#ff0000'\n"
                     "property string title: hovlet.childElement('title').content }");
        HVContext &settings = m_host->manager()->context();
        settings.set(HVKeySimpleMode, true);
        settings.set(HVKeyExpandKey, QStringLiteral("F1"));
        showWindow({ 100, 50 });
        const QRect screen = m_window->screen()->availableGeometry();
        const int high = m_window->centerOf("b").y();
        settings.set(HVKeyCursorOffset, QSize(35, bottom ? screen.bottom() - high - bottom : 200));
        m_window->field.setFocus();
        KeyCounter counter;
        m_window->field.installEventFilter(&counter);
        QVERIFY(hover("b"));
        const QRect simple(popup()->pos(), FirstSize);
        QTRY_VERIFY(onScreen().first.isWhole(simple));
        stopAskingForTooltips();

        const FrameRecord record(popup());
        QEventLoop loop; // unlike the waits of Qt Test, it blocks
        QTimer poll;
        connect(&poll, &QTimer::timeout, &loop, [&] {
            if (popup()->height() > SecondSize.height())
                QTimer::singleShot(300, &loop, &QEventLoop::quit); // nothing changes any more
        });
        poll.start(10);
        QTimer::singleShot(Patience, &loop, &QEventLoop::quit);
        Pointer::press(QStringLiteral("F1"));
        Pointer::release(QStringLiteral("F1"));
        loop.exec();
        const QRect full(popup()->pos(), SecondSize);
        QCOMPARE(full.topLeft() == simple.topLeft(), bottom == 0);
        QVERIFY(record.frames.constLast().second.isWhole(full));
        for (const Frame &frame : record.frames) {
            const bool isSimple = frame.first.isWhole(simple) && frame.second.pixels == 0;
            const bool isFull = frame.second.isWhole(full) && frame.first.pixels == 0;
            QVERIFY2(isSimple || isFull, qPrintable(frame.text()));
        }
        QCOMPARE(counter.presses, 0);
        QVERIFY(popup()->isVisible());
    }

    void shouldNotShowTheOldPopupInTheNewPlace()
    {
        placePopupsBesideTheWindow();
        const QPoint first(100, 330);
        const QPoint second(600, 330);
        const QPoint offset(35, 200);
        ScreenWatch watch({ { QRect(second + offset, QSize(50, 50)), 0xffff0000U },
                            { QRect(first + offset, QSize(50, 50)), 0xff0000ffU } });
        QVERIFY(watch.waitForStart());
        for (int i = 0; i < 40; ++i) {
            const char *name = i % 2 == 0 ? "a" : "b";
            QVERIFY(m_host->manager()->show(QString::fromUtf8(name), i % 2 == 0 ? first : second,
                                            &m_window->button(name)));
            QTest::qWait(10);
        }
        const auto [pictures, wrong] = watch.finish();
        qInfo("%d of %d pictures are wrong", wrong, pictures);
        QVERIFY(pictures > 40);
        QCOMPARE(wrong, 0);
    }

private:
    /// The screen's background reappears immediately when a popup hides; a window must repaint
    /// first.
    void placePopupsBesideTheWindow()
    {
        m_host->manager()->context().set(HVKeyCursorOffset, QSize(35, 200));
    }
};

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], Watch) == 0)
        return watchScreen(argc, argv);
    return runTest(argc, argv, []() -> QObject * { return new tst_EndToEndFrames; });
}

#include "tst_endtoend_frames.moc"
