// SPDX-License-Identifier: Apache-2.0
#include "HVScrollBarComponent.h"
#include "HVVideoComponent.h"
#include "Pointer.h"
#include "QmlPopup.h"
#include "TestMain.h"

#include <QtCore/QProcess>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGRendererInterface>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyleFactory>

#include <algorithm>

using namespace Hovlets;

/// Tests clips and the scroll bar on a screen, with a pointer and on OpenGL. Their other tests
/// paint in software.
class tst_ClipsDisplay : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        Pointer::moveTo(QPoint(700, 700));
    }

    void init()
    {
        m_popup = std::make_unique<QmlPopup>();
        m_popup->trackHover();
    }

    void cleanup() { m_popup.reset(); }

    void shouldPaintClipsBeyondTheirItem()
    {
        m_popup->makeClip(QStringLiteral("clip.avi"),
                          QStringLiteral("color=red:size=64x48:rate=25:duration=1,format=rgb24,"
                                         "drawbox=0:0:64:48:blue:fill:enable='gte(n,10)'"));
        m_popup->show("HVVideoComponent { objectName: 'clip'; x: 30; y: 40; width: 5; height: 6 }");
        const auto renderer = m_popup->view()->quickWindow()->rendererInterface();
        QVERIFY(renderer->graphicsApi() != QSGRendererInterface::Software);
        auto *item = m_popup->item<HVVideoComponent>("clip");
        item->setSource(QStringLiteral("clip.avi"));
        QTRY_VERIFY(isRed(screen(31, 41)) && isRed(screen(92, 86)));
        QCOMPARE(screen(95, 89), QColor(Qt::white));
        QCOMPARE(screen(29, 39), QColor(Qt::white));
        QTRY_COMPARE(item->loadProgress(), 1.0);
        // Repeats play(), because the clip pauses when it is completely decoded, perhaps later.
        QTRY_VERIFY((item->play(), screen(92, 86) == QColor(Qt::blue)));
        QTRY_COMPARE(item->state(), HVVideoComponent::pausedState);
        QTRY_COMPARE(item->progress(), 1.0);
        item->setSource(QStringLiteral("missing.avi"));
        QTRY_COMPARE(screen(92, 86), QColor(Qt::white));
    }

    void shouldPaintTheBordersOfStyledRectangles()
    {
        m_popup->show("HVStyledRectangle { toolTipStyle: true; x: 20; y: 30; width: 100\n"
                      "height: 60 }");
        for (const QPoint &point :
             { QPoint(20, 50), QPoint(120, 50), QPoint(50, 30), QPoint(50, 90), QPoint(120, 90) })
            QTRY_COMPARE(screen(point.x(), point.y()), QColor(Qt::black));
        QCOMPARE(screen(121, 50), QColor(Qt::white));
        QCOMPARE(screen(50, 91), QColor(Qt::white));
    }

    void shouldScrollByThePointer()
    {
        m_popup->show("HVScrollBar { objectName: 'bar'; x: 50; y: 20; width: 20; height: 160\n"
                      "start: 0; end: 1; Component.onCompleted: updateDimensions() }");
        auto *item = m_popup->item<HVScrollBarComponent>("bar");
        const QImage before = bar();

        // The groove scrolls by pages.
        Pointer::moveTo(global(QPoint(60, 150)));
        Pointer::click();
        QTRY_COMPARE(item->position(), 0.1F);
        QTRY_VERIFY(bar() != before);

        // The slider, while the button is pressed.
        item->setPosition(0);
        Pointer::moveTo(global(QPoint(60, 45)));
        QTRY_VERIFY(bar() != before); // hovered
        press("mousedown");
        Pointer::moveTo(global(QPoint(60, 90)));
        QTRY_VERIFY(item->position() > 0.2F && item->position() < 0.8F);
        Pointer::moveTo(global(QPoint(200, 100))); // off the bar, which keeps the mouse grab
        press("mouseup");
        QTRY_VERIFY(!isDragged());
        QVERIFY(item->position() > 0.2F);

        // The wheel, button 5 of the pointer.
        item->setPosition(0);
        Pointer::moveTo(global(QPoint(60, 100)));
        press("click", "5");
        QTRY_COMPARE(item->position(), 0.03F);

        QVERIFY(m_popup->popup()->isVisible());
        QCOMPARE(scrollBarWindows(), 0);
    }

private:
    QPoint global(const QPoint &point) { return m_popup->view()->mapToGlobal(point); }
    QColor screen(int x, int y) { return pixelOnScreen(global(QPoint(x, y))); }
    QImage bar() { return m_popup->picture().copy(50, 20, 20, 160); }

    static void press(const char *command, const char *button = "1")
    {
        QCOMPARE(QProcess::execute(QStringLiteral("xdotool"),
                                   { QLatin1String(command), QLatin1String(button) }),
                 0);
    }

    static QList<QScrollBar *> scrollBars()
    {
        QList<QScrollBar *> bars;
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (auto *bar = qobject_cast<QScrollBar *>(widget))
                bars += bar;
        }
        return bars;
    }

    static bool isDragged() { return scrollBars().constFirst()->isSliderDown(); }

    /// The number of scroll bars that are windows on the screen; -1 if there are no windows at all.
    static int scrollBarWindows()
    {
        QProcess search;
        search.start(QStringLiteral("xdotool"),
                     { QStringLiteral("search"), QStringLiteral("--onlyvisible"),
                       QStringLiteral("--name"), QStringLiteral(".*") });
        search.waitForFinished();
        const QList<QByteArray> ids = search.readAllStandardOutput().split('\n');
        const QList<QScrollBar *> bars = scrollBars();
        const auto isOnScreen = [&](const QScrollBar *bar) {
            return ids.contains(QByteArray::number(bar->internalWinId()));
        };
        return ids.size() > 1 ? int(std::count_if(bars.begin(), bars.end(), isOnScreen)) : -1;
    }

    std::unique_ptr<QmlPopup> m_popup;
};

int main(int argc, char **argv)
{
    qputenv("QT_QUICK_BACKEND", ""); // the toolkit decides
    qputenv("QSG_RHI_BACKEND", "opengl");
    qputenv("LIBGL_ALWAYS_SOFTWARE", "1");
    return runTest(argc, argv, []() -> QObject * { return new tst_ClipsDisplay; });
}

#include "tst_clips_display.moc"
