// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtGui/QScreen>

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
        const bool shown = rest(m_window->centerOf("b"), [&] {
            return isShowing("b") && onScreen().second.isWhole({ popup()->pos(), SecondSize });
        });
        QTest::qWait(50); // nothing changes any more
        QAbstractEventDispatcher::instance()->disconnect(this);
        QVERIFY(shown);
        const QRect second(popup()->pos(), SecondSize);
        for (const Frame &frame : std::as_const(frames)) {
            const bool isFirst = frame.first.isWhole(first) && frame.second.pixels == 0;
            const bool isSecond = frame.second.isWhole(second) && frame.first.pixels == 0;
            QVERIFY2(isFirst || isSecond, qPrintable(frame.text()));
        }
    }

private:
    /// The screen's background reappears immediately when a popup hides; a window must repaint
    /// first.
    void placePopupsBesideTheWindow()
    {
        m_host->manager()->context().set(HVKeyCursorOffset, QSize(35, 200));
    }
};

HOVLETS_TEST_MAIN(tst_EndToEndFrames)
#include "tst_endtoend_frames.moc"
