// SPDX-License-Identifier: Apache-2.0
#include "HVVideoComponent.h"
#include "Pointer.h"
#include "PopupBench.h"
#include "QmlPopup.h"
#include "TestMain.h"

#include <QtGui/QImage>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGRendererInterface>

using namespace Hovlets;

namespace {

/// Records what it paints.
class MeasuredItem : public HVVideoComponent
{
public:
    using HVVideoComponent::HVVideoComponent;

    QSize texture;
    QRectF rect;

protected:
    QSGNode *updatePaintNode(QSGNode *node, UpdatePaintNodeData *data) override
    {
        QSGNode *result = HVVideoComponent::updatePaintNode(node, data);
        const auto *image = static_cast<QSGImageNode *>(result);
        texture = image ? image->texture()->textureSize() : QSize();
        rect = image ? image->rect() : QRectF();
        return result;
    }
};

} // namespace

/// Tests the popup on OpenGL, which most desktops use; all other tests paint in software.
class tst_OpenGL : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldPaintThePopup()
    {
        HoverBench bench;
        show(bench);
        const QSGRendererInterface *renderer = bench.view()->quickWindow()->rendererInterface();
        QVERIFY(QSGRendererInterface::isApiRhiBased(renderer->graphicsApi())
                || renderer->graphicsApi() == QSGRendererInterface::OpenGL);
        verifyColours(*bench.popup());
    }

    void shouldPaintOtherContent()
    {
        HoverBench bench;
        show(bench);
        verifyColours(*bench.popup());
        bench.folder.add(QStringLiteral("Other.qml"),
                         "import QtQuick 2.15\nRectangle { width: 90; height: 70; color: 'lime' }");
        bench.view()->loadQML(bench.folder.path() + QStringLiteral("/Other.qml"));
        QTRY_COMPARE(bench.popup()->size(), QSize(91, 71));
        QTRY_COMPARE(pixelOnScreen(bench.popup()->pos() + QPoint(89, 69)), QColor(Qt::green));
    }

    void shouldUploadFewerPixelsOfAFrameLargerThanScreens()
    {
        QmlPopup popup;
        popup.makeClip(QStringLiteral("large.avi"),
                       QStringLiteral("color=red:size=5000x4000:rate=1:duration=1,"
                                      "drawbox=x=100:y=0:w=4900:h=4000:color=blue:t=fill"));
        popup.show("");
        auto *item = new MeasuredItem(popup.view()->rootObject());
        item->setSource(QStringLiteral("large.avi"));
        QTRY_COMPARE_WITH_TIMEOUT(item->texture, QSize(2500, 2000), 60000);
        QCOMPARE(item->rect, QRectF(0, 0, 5000, 4000));
        QVERIFY(isRed(popup.pixel(90, 100)));
        QVERIFY(popup.pixel(110, 100).blue() > 250);
    }

    void shouldSmoothOnlyScaledFrames()
    {
        QmlPopup popup;
        popup.makeClip(QStringLiteral("columns.avi"), QmlPopup::columns());
        popup.show("");
        QQuickItem *root = popup.view()->rootObject();
        auto *item = new MeasuredItem(root);
        item->setSource(QStringLiteral("columns.avi"));
        const QSize size(64, 48);
        QTRY_COMPARE(item->texture, size);
        QCOMPARE(popup.shareOfGreys(*item, size), 0.0);
        root->setTransformOrigin(QQuickItem::TopLeft);
        item->setX(10.3); // between pixels
        QCOMPARE(popup.shareOfGreys(*item, size), 0.0);
        root->setScale(1.5);
        QVERIFY(popup.shareOfGreys(*item, size) > 0.2);
        root->setScale(1);
        QCOMPARE(popup.shareOfGreys(*item, size), 0.0);
    }

    void shouldPaintOnceItIsPinned_data()
    {
        QTest::addColumn<bool>("withContainer");
        QTest::newRow("tool window") << false;
        QTest::newRow("container") << true;
    }

    void shouldPaintOnceItIsPinned()
    {
        QFETCH(bool, withContainer);
        HoverBench bench;
        show(bench);
        verifyColours(*bench.popup());
        QWidget container;
        if (withContainer)
            bench.host->container = &container;
        const QPointer<HVWidget> popup = bench.popup();
        popup->view()->setReserved(true);
        QVERIFY(QTest::qWaitForWindowExposed(popup->window()));
        verifyColours(*popup);
        popup->view()->rootObject()->setProperty("color", QColor(Qt::yellow));
        QTRY_COMPARE(pixelOnScreen(popup->mapToGlobal(QPoint(20, 50))), QColor(Qt::yellow));
        QVERIFY(bench.show(QStringLiteral("b")));
        verifyColours(*bench.popup());
        delete popup;
    }

private:
    static void show(HoverBench &bench)
    {
        bench.folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"),
                         "import QtQuick 2.15\nRectangle { width: 160; height: 100; color: 'red'\n"
                         "Rectangle { x: 80; width: 80; height: 100; color: 'blue' } }");
        QVERIFY(bench.show());
        QVERIFY(QTest::qWaitForWindowExposed(bench.popup()));
    }

    static void verifyColours(const HVWidget &popup)
    {
        const auto grabbed = [&](const QPoint &point) {
            return popup.view()->grab().toImage().pixelColor(point);
        };
        for (const QPoint &point : { QPoint(0, 0), QPoint(79, 99) }) {
            QTRY_COMPARE(grabbed(point), QColor(Qt::red));
            QTRY_COMPARE(pixelOnScreen(popup.mapToGlobal(point)), QColor(Qt::red));
        }
        for (const QPoint &point : { QPoint(80, 0), QPoint(159, 99) }) {
            QTRY_COMPARE(grabbed(point), QColor(Qt::blue));
            QTRY_COMPARE(pixelOnScreen(popup.mapToGlobal(point)), QColor(Qt::blue));
        }
    }
};

int main(int argc, char **argv)
{
    qputenv("QT_QUICK_BACKEND", ""); // the toolkit decides
    qputenv("QSG_RHI_BACKEND", "opengl");
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    return runTest(argc, argv, []() -> QObject * { return new tst_OpenGL; });
}

#include "tst_opengl.moc"
