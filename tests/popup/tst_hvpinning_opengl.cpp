// SPDX-License-Identifier: Apache-2.0
#include "Pointer.h"
#include "PopupBench.h"
#include "TestMain.h"

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickItem>

using namespace Hovlets;

namespace {

/// A host's window of two colours.
class HostPainting : public QWidget
{
public:
    HostPainting()
    {
        setGeometry(500, 300, 600, 450); // away from the shadows of other windows
        show();
    }

    int paints = 0;

protected:
    void paintEvent(QPaintEvent *) override
    {
        ++paints;
        QPainter painter(this);
        painter.fillRect(rect(), Qt::darkCyan);
        painter.fillRect(100, 100, 300, 200, Qt::darkYellow);
    }
};

/// The picture of \a window on the screen.
QImage onScreen(const QWidget &window)
{
    const QRect area(window.mapToGlobal(QPoint()), window.size());
    return window.screen()
            ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
            .toImage()
            .convertToFormat(QImage::Format_RGB32);
}

int differences(const QImage &one, const QImage &other)
{
    if (one.size() != other.size())
        return -1;
    int count = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x)
            count += one.pixel(x, y) != other.pixel(x, y);
    }
    return count;
}

} // namespace

/// Tests the host's own window on OpenGL, without a compositor that keeps its pixels.
class tst_HVPinningOpenGL : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldLeaveTheHostsPaintingAsItWas_data()
    {
        QTest::addColumn<bool>("closes"); // before the next popup shows
        QTest::newRow("pinned") << false;
        QTest::newRow("pinned and closed") << true;
    }

    void shouldLeaveTheHostsPaintingAsItWas()
    {
        QFETCH(bool, closes);
        HoverBench bench;
        bench.folder.add(
                QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
                "import QtQuick 2.15\nRectangle { width: 160; height: 100; color: 'red' }");
        HostPainting window;
        QWidget control(&window);
        control.setGeometry(10, 10, 50, 30);
        control.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const QPoint inside = window.mapToGlobal(QPoint(150, 150));
        QCursor::setPos(5, 5);

        HVManager &manager = *bench.host->manager();
        const auto showAndHide = [&] {
            QVERIFY(manager.show(QStringLiteral("b"), inside, &control));
            QVERIFY(QTest::qWaitForWindowExposed(bench.popup()));
            QTRY_COMPARE(pixelOnScreen(bench.popup()->pos() + QPoint(20, 20)), QColor(Qt::red));
            bench.popup()->hide();
        };
        QImage whole;
        const auto centre = [&] {
            whole = onScreen(window);
            return whole.pixelColor(150, 150);
        };
        QTRY_COMPARE(centre(), QColor(Qt::darkYellow));
        showAndHide();
        QTRY_COMPARE(differences(onScreen(window), whole), 0);

        QVERIFY(manager.show(QStringLiteral("a"), { 5, 5 }, &control));
        QVERIFY(QTest::qWaitForWindowExposed(bench.popup()));
        const QPointer<HVWidget> pinned = bench.popup();
        pinned->view()->setReserved(true);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        QCOMPARE(pinned->windowHandle()->transientParent(), window.windowHandle());
        bench.host->manager()->setStayOnTop(true);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        QCOMPARE(pinned->windowHandle()->transientParent(), window.windowHandle());
        if (closes) {
            pinned->close();
            QTRY_VERIFY(!pinned);
        }
        showAndHide();
        QTRY_COMPARE(differences(onScreen(window), whole), 0);
        delete pinned;
    }

    void shouldBeDeletedWithTheHostsWindow()
    {
        HoverBench bench;
        auto window = std::make_unique<HostPainting>();
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        QVERIFY(bench.host->manager()->show(QStringLiteral("a"), { 5, 5 }, window.get()));
        const QPointer<HVWidget> pinned = bench.popup();
        pinned->view()->setReserved(true);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        window.reset();
        QVERIFY(!pinned);
    }

    void shouldLeaveNothingBehindInTheHostsWindow()
    {
        HoverBench bench;
        HostPainting window;
        QVERIFY(bench.host->manager()->show(QStringLiteral("a"), { 5, 5 }, &window));
        const QPointer<HVWidget> pinned = bench.popup();
        pinned->view()->setReserved(true);
        QVERIFY(QTest::qWaitForWindowExposed(pinned));
        pinned->close();
        QTRY_VERIFY(!pinned);
        QTRY_VERIFY(window.children().isEmpty());
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_QUICK_BACKEND", ""); // the toolkit decides
    qputenv("QSG_RHI_BACKEND", "opengl");
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    return runTest(argc, argv, []() -> QObject * { return new tst_HVPinningOpenGL; });
}

#include "tst_hvpinning_opengl.moc"
