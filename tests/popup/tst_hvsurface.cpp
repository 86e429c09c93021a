// SPDX-License-Identifier: Apache-2.0
#include "Compositor.h"
#include "HVArrow.h"
#include "HVFramePainting.h"
#include "HVFrameWindow.h"
#include "Pointer.h"
#include "PopupBench.h"
#include "TestMain.h"

#include <QtCore/QScopeGuard>
#include <QtGui/QPainter>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

constexpr auto RoundedInterface = R"(import QtQuick 2.15
Rectangle {
    readonly property color rimColor: "#0000ff"
    readonly property color fillColor: "#ff0000"
    readonly property int cornerRadius: hovletTheme.rounded ? 8 : 0
    readonly property bool framed: hovletTheme.framed
    width: 200; height: 100
    color: "transparent"
    Rectangle { width: 201; height: 101; radius: parent.cornerRadius; color: "#ff0000" }
})";

HVFrameWindow *frame()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    for (QWindow *window : windows) {
        if (auto *frame = qobject_cast<HVFrameWindow *>(window))
            return frame;
    }
    return nullptr;
}

HVFrameLook red(std::optional<HVArrow> arrow = {})
{
    return { 8, QColor(0xff, 0, 0), QColor(0, 0, 0xff), arrow };
}

QImage painted(const HVFrameLook &look, const QRect &popup, qreal scale)
{
    QImage image(popup.size() + QSize(2, 2) * (FrameMargin * scale),
                 QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    paintFrame(painter, popup, look, scale);
    return image;
}

/// The colour of the outline on the screen, at the middle of the popup's left edge.
QColor outline()
{
    const QRect window = frame()->geometry();
    return pixelOnScreen({ window.x() + FrameMargin - 1, window.y() + window.height() / 2 });
}

} // namespace

/// Tests the surface of popups on an X display with a compositor. Others have no frame.
class tst_HVSurface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_compositor.start()); }
    void cleanupTestCase() { QVERIFY(m_compositor.stop()); }

    void shouldPointAtTheControl_data()
    {
        QTest::addColumn<QRect>("control");
        QTest::addColumn<QRect>("popup");
        QTest::addColumn<int>("side");
        QTest::addColumn<int>("position"); // negative: none
        const QRect button(100, 100, 40, 20);
        const auto row = [](const char *name, const QRect &control, const QRect &popup, HVSide side,
                            int position) {
            QTest::newRow(name) << control << popup << int(side) << position;
        };
        row("below", button, { 100, 126, 300, 100 }, HVSide::Below, 20);
        row("above", button, { 100, -6, 300, 100 }, HVSide::Above, 20);
        row("right", button, { 146, 100, 300, 100 }, HVSide::Right, 15);
        row("left", button, { -206, 100, 300, 100 }, HVSide::Left, 15);
        row("in the middle of a small popup", { 100, 100, 400, 20 }, { 100, 126, 80, 50 },
            HVSide::Below, 40);
        row("away from the corner", { 100, 100, 20, 20 }, { 100, 126, 300, 100 }, HVSide::Below,
            15);
        row("not beyond the control", { 100, 100, 8, 20 }, { 100, 126, 300, 100 }, HVSide::Below,
            -1);
        row("over the control", button, { 110, 110, 300, 100 }, HVSide::Below, -1);
        row("far away", button, { 100, 150, 300, 100 }, HVSide::Below, -1);
        row("beside a corner", button, { 200, 126, 300, 100 }, HVSide::Below, -1);
        row("too small a popup", button, { 100, 126, 25, 25 }, HVSide::Below, -1);
    }

    void shouldPointAtTheControl()
    {
        QFETCH(QRect, control);
        QFETCH(QRect, popup);
        QFETCH(int, side);
        QFETCH(int, position);
        const auto arrow = arrowTowards(control, { popup, HVSide(side) }, 8);
        QCOMPARE(arrow.has_value(), position >= 0);
        if (arrow)
            QVERIFY((*arrow == HVArrow { HVSide(side), position }));
    }

    void shouldPaintEvenLinesAtAllScales_data()
    {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : { 1.0, 1.25, 1.5, 2.0, 3.0 })
            QTest::addRow("%g", scale) << scale;
    }

    /// Straight edges have whole pixels of the line's and the background's colours only.
    void shouldPaintEvenLinesAtAllScales()
    {
        QFETCH(qreal, scale);
        const int margin = qRound(FrameMargin * scale);
        QCOMPARE(margin, FrameMargin * scale);
        const QRect popup(margin, margin, qRound(201 * scale), qRound(101 * scale));
        const QImage image = painted(red(), popup, scale);
        const int line = qMax(1, int(scale));
        const QPoint middle = popup.center();
        for (int i = 1; i <= line; ++i) {
            QCOMPARE(image.pixelColor(popup.left() - i, middle.y()), QColor(Qt::blue));
            QCOMPARE(image.pixelColor(popup.right() + i, middle.y()), QColor(Qt::blue));
            QCOMPARE(image.pixelColor(middle.x(), popup.top() - i), QColor(Qt::blue));
            QCOMPARE(image.pixelColor(middle.x(), popup.bottom() + i), QColor(Qt::blue));
        }
        for (const QPoint &edge :
             { QPoint(popup.left(), middle.y()), QPoint(popup.right(), middle.y()),
               QPoint(middle.x(), popup.top()), QPoint(middle.x(), popup.bottom()) })
            QCOMPARE(image.pixelColor(edge), QColor(Qt::red));
        const QColor shadow = image.pixelColor(middle.x(), popup.bottom() + line + 1);
        QVERIFY(shadow.alpha() > 10 && shadow.alpha() < 128);
        QCOMPARE(shadow.red() + shadow.green() + shadow.blue(), 0);
        QCOMPARE(image.pixelColor(0, 0).alpha(), 0);
        QCOMPARE(image.pixelColor(middle.x(), image.height() - 1).alpha(), 0);
        const QColor corner = image.pixelColor(popup.topLeft());
        QVERIFY(corner.red() < 10 && corner.alpha() < 128);
    }

    void shouldJoinTheArrowWithThePopup_data()
    {
        QTest::addColumn<int>("side");
        QTest::addColumn<QPoint>("base"); // the pixel beside the popup
        QTest::addColumn<QPoint>("outwards");
        QTest::newRow("below") << int(HVSide::Below) << QPoint(74, 23) << QPoint(0, -1);
        QTest::newRow("above") << int(HVSide::Above) << QPoint(74, 125) << QPoint(0, 1);
        QTest::newRow("right") << int(HVSide::Right) << QPoint(23, 74) << QPoint(-1, 0);
        QTest::newRow("left") << int(HVSide::Left) << QPoint(225, 74) << QPoint(1, 0);
    }

    void shouldJoinTheArrowWithThePopup()
    {
        QFETCH(int, side);
        QFETCH(QPoint, base);
        QFETCH(QPoint, outwards);
        const QRect popup(FrameMargin, FrameMargin, 201, 101);
        const QImage image = painted(red(HVArrow { HVSide(side), 50 }), popup, 1);
        for (int i = 0; i < ArrowHeight - 2; ++i)
            QCOMPARE(image.pixelColor(base + i * outwards), QColor(Qt::red));
        QVERIFY(image.pixelColor(base + (ArrowHeight + 1) * outwards).red() < 100);
        QVERIFY(image.pixelColor(base + (ArrowHeight + 3) * outwards).blue() < 20);
    }

    void shouldLeaveOthersOnlyAShadow()
    {
        const QRect popup(FrameMargin, FrameMargin, 201, 101);
        const QImage image = painted({}, popup, 1);
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                QCOMPARE(image.pixelColor(x, y).value(), 0);
        }
        QVERIFY(image.pixelColor(100, 126).alpha() > 10);
    }

    void shouldKeepThePopupsSizeAndPlace()
    {
        PopupBench plain;
        show(plain, RoundedInterface);
        const QRect geometry = plain.popup->frameGeometry();
        QVERIFY(!plain.popup->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(plain.view->cornerRadius(), 0.0);
        QVERIFY(!frame());

        const auto bench = rounded();
        QCOMPARE(bench->popup->frameGeometry(), geometry);
        QCOMPARE(bench->popup->size(), bench->view->size() + QSize(1, 1));
        QCOMPARE(bench->view->pos(), QPoint());
        QCOMPARE(bench->popup->windowType(), Qt::ToolTip);
        QVERIFY(bench->popup->isSafe(geometry.bottomRight() + QPoint(20, 20)));
        QVERIFY(!bench->popup->isSafe(geometry.bottomRight() + QPoint(21, 21)));
    }

    void shouldKeepTheGroundOfTheViewWithoutTheSetting()
    {
        PopupBench bench;
        show(bench, QByteArray(RoundedInterface).replace("hovletTheme.rounded ? 8 : 0", "8"));
        QCOMPARE(bench.view->cornerRadius(), 8.0);
        QCOMPARE(bench.view->quickWindow()->color(), QColor(Qt::white));
    }

    void shouldSurroundThePopupWithoutTakingInput()
    {
        const auto bench = rounded();
        QVERIFY(frame() && frame()->isVisible());
        QVERIFY(frame()->flags().testFlag(Qt::WindowTransparentForInput));
        QVERIFY(frame()->flags().testFlag(Qt::WindowDoesNotAcceptFocus));
        const QMargins margins(FrameMargin, FrameMargin, FrameMargin, FrameMargin);
        QCOMPARE(frame()->geometry(), bench->popup->geometry() + margins);

        bench->popup->move(300, 200);
        QCOMPARE(frame()->geometry(), bench->popup->geometry() + margins);
        bench->view->rootObject()->setProperty("width", 250);
        QTRY_COMPARE(bench->popup->width(), 251);
        QCOMPARE(frame()->geometry(), bench->popup->geometry() + margins);
        bench->popup->hide();
        QVERIFY(!frame()->isVisible());
        bench->popup->show();
        QVERIFY(frame()->isVisible());
    }

    void shouldFadeWithThePopup()
    {
        const auto bench = rounded();
        bench->context().set(HVKeyHideFadeDuration, 200);
        bench->popup->hideAnimated();
        QTRY_VERIFY(bench->popup->windowOpacity() < 0.9);
        QCOMPARE(frame()->opacity(), bench->popup->windowOpacity());
        bench->popup->showAnimated();
        QCOMPARE(frame()->opacity(), 1.0);
    }

    void shouldRoundTheRimOfThePopup()
    {
        const auto bench = rounded();
        QVERIFY(bench->view->rootObject()->property("framed").toBool());
        const QImage image = bench->popup->grab().toImage();
        QCOMPARE(image.size(), QSize(201, 101));
        QVERIFY(image.pixelColor(200, 100).alpha() < 40);
        QVERIFY(image.pixelColor(0, 0).alpha() < 40);
        QCOMPARE(image.pixelColor(200, 50), QColor(Qt::red));
        QCOMPARE(image.pixelColor(100, 100), QColor(Qt::red));
    }

    void shouldLeaveSquareUserInterfacesAsTheyAre()
    {
        PopupBench bench;
        useSurface(bench);
        show(bench, PackageFolder::userInterface(200, 100));
        QCOMPARE(bench.view->cornerRadius(), 0.0);
        QVERIFY(frame() && frame()->isVisible());
        QCOMPARE(bench.popup->grab().toImage().pixelColor(0, 0).alpha(), 255);
        QCOMPARE(bench.popup->grab().toImage().pixelColor(200, 100).alpha(), 255);
    }

    void shouldFollowTheColoursOfTheDesktop()
    {
        PopupBench bench;
        useSurface(bench);
        show(bench, QByteArray(RoundedInterface).replace("\"#0000ff\"", "hovletTheme.accent"));
        QTRY_COMPARE(outline(),
                     QApplication::palette().color(QPalette::Active, QPalette::Highlight));
        const QPalette before = QApplication::palette();
        const auto restore = qScopeGuard([&] { QApplication::setPalette(before); });
        QPalette other = before;
        other.setColor(QPalette::Highlight, Qt::green);
        QApplication::setPalette(other);
        QTRY_COMPARE(outline(), QColor(Qt::green));
    }

    void shouldFollowTheExpandedUserInterface()
    {
        HoverBench bench;
        bench.folder.add(QStringLiteral("Pack.hovlets/ui/SimpleTooltip.qml"), RoundedInterface);
        bench.folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
                         QByteArray(RoundedInterface).replace("#0000ff", "#00ff00"));
        bench.context().set(HVKeySurface, true);
        bench.context().set(HVKeySimpleMode, true);
        QVERIFY(bench.show());
        QTRY_COMPARE(outline(), QColor(Qt::blue));
        bench.view()->expand();
        QTRY_COMPARE(outline(), QColor(Qt::green));
    }

    void shouldLetTheUserInterfaceHaveThePopupDeleted_data()
    {
        QTest::addColumn<QByteArray>("handler");
        QTest::newRow("for the surface") << QByteArray(
                "Connections { target: hovletTheme; "
                "function onSurfaceChanged() { hovletView.openExternalResource('x') } }");
        QTest::newRow("for the title bar") << QByteArray(
                "Connections { target: hovletWindow; "
                "function onTitleBarChanged() { hovletView.openExternalResource('x') } }");
    }

    void shouldLetTheUserInterfaceHaveThePopupDeleted()
    {
        QFETCH(QByteArray, handler);
        HoverBench bench;
        bench.folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
                         QByteArray(RoundedInterface)
                                 .replace("width: 200",
                                          "readonly property bool drawsTitleBar: true; " + handler
                                                  + "\n width: 200"));
        bench.context().set(HVKeySurface, true);
        bench.context().set(HVKeyOwnTitleBar, true);
        QVERIFY(bench.show());
        const QPointer<HVWidget> popup = bench.popup();
        const QPointer<HVView> view = bench.view();
        bench.host->opening = [&] { delete popup; };
        view->setReserved(true);
        QTRY_VERIFY(!popup);
        QTRY_VERIFY(!view);
        QTRY_VERIFY(!frame() || !frame()->isVisible());
    }

    void shouldLetTheUserInterfaceHaveThePopupDeletedBeforeItShowsOtherContent()
    {
        HoverBench bench;
        bench.folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
                         QByteArray(RoundedInterface)
                                 .replace("width: 200",
                                          "Connections { target: hovletTheme; function "
                                          "onSurfaceChanged() { "
                                          "hovletView.openExternalResource('x') } }\n width: 200"));
        bench.context().set(HVKeySurface, true);
        QVERIFY(bench.show());
        const QPointer<HVWidget> popup = bench.popup();
        const QPointer<HVView> view = bench.view();
        bench.host->opening = [&] { delete popup; };
        QVERIFY(m_compositor.stop()); // popups become rectangles
        bench.show(QStringLiteral("b"));
        QVERIFY(m_compositor.start());
        QVERIFY(!popup);
        QTRY_VERIFY(!view);
    }

    void shouldBecomeAPlainWindowWhenPinned()
    {
        HoverBench bench;
        bench.folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), RoundedInterface);
        bench.context().set(HVKeySurface, true);
        QVERIFY(bench.show());
        QVERIFY(frame() && frame()->isVisible());
        const QPointer<HVWidget> popup = bench.popup();
        bench.view()->setReserved(true);
        QVERIFY(popup->isVisible());
        QVERIFY(!popup->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(popup->view()->cornerRadius(), 0.0);
        QVERIFY(!frame());
        delete popup;
    }

private:
    Compositor m_compositor;

    /// The bench's popup exists before a test can change the settings.
    static void useSurface(PopupBench &bench)
    {
        bench.context().set(HVKeySurface, true);
        bench.popup = std::make_unique<HVWidget>(bench.host->manager(), nullptr, &bench.control);
        bench.popup->setWindowFlag(Qt::FramelessWindowHint); // as in the bench
        bench.view = new HVView(bench.host->manager(), bench.popup.get());
        bench.popup->setView(bench.view);
    }

    static void show(PopupBench &bench, const QByteArray &qml)
    {
        const QString ui = bench.ui(QByteArrayLiteral("Surface.qml"), qml);
        bench.popup->showWithContent(&bench.control, { 100, 100 },
                                     bench.content(QStringLiteral("a"), ui), bench.folder.path());
        QVERIFY(bench.popup->isVisible());
    }

    static std::unique_ptr<PopupBench> rounded()
    {
        auto bench = std::make_unique<PopupBench>();
        useSurface(*bench);
        show(*bench, RoundedInterface);
        return bench;
    }
};

HOVLETS_TEST_MAIN(tst_HVSurface)
#include "tst_hvsurface.moc"
