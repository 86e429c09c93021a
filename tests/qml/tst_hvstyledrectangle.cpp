// SPDX-License-Identifier: Apache-2.0
#include "HVStyledRectangleComponent.h"
#include "QmlPopup.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>

#include <functional>

using namespace Hovlets;

class tst_HVStyledRectangle : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_palette = QApplication::palette();
        m_tipPalette = QToolTip::palette();
    }

    void init()
    {
        QCOMPARE(qApp->devicePixelRatio(),
                 qEnvironmentVariable("QT_SCALE_FACTOR", QStringLiteral("1")).toDouble());
        QPalette tips;
        tips.setColor(QPalette::ToolTipBase, QColor(255, 255, 0));
        QToolTip::setPalette(tips);
    }

    void cleanup()
    {
        QApplication::setPalette(m_palette);
        QToolTip::setPalette(m_tipPalette);
    }

    void shouldListItsSignalsAndPropertiesInOrder()
    {
        const QMetaObject &type = HVStyledRectangleComponent::staticMetaObject;
        QCOMPARE(ownMethods(type, QMetaMethod::Signal),
                 QStringList({ QStringLiteral("elementChanged()"),
                               QStringLiteral("textColorChanged()"),
                               QStringLiteral("toolTipStyleChanged()") }));
        QCOMPARE(ownProperties(type),
                 QStringList({ QStringLiteral("QString element rw elementChanged"),
                               QStringLiteral("QColor textColor r textColorChanged"),
                               QStringLiteral("bool toolTipStyle rw toolTipStyleChanged") }));
    }

    void shouldBeginAsAWidgetInTheStyleOfWindows()
    {
        const HVStyledRectangleComponent rectangle;
        QCOMPARE(rectangle.element(), QStringLiteral("PE_Widget"));
        QVERIFY(!rectangle.toolTipStyle());
        QVERIFY(rectangle.flags() & QQuickItem::ItemHasContents);
        QVERIFY(!rectangle.parentItem());
        QQuickItem parent;
        QCOMPARE(HVStyledRectangleComponent(&parent).parentItem(), &parent);
    }

    void shouldTakeOnlyKnownElements_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("element");
        QTest::addColumn<int>("told");
        const QString widget = QStringLiteral("PE_Widget");
        const QString frame = QStringLiteral("PE_Frame");
        QTest::newRow("frame") << frame << frame << 1;
        QTest::newRow("the same") << widget << widget << 1;
        QTest::newRow("other case") << QStringLiteral("pe_frame") << widget << 0;
        QTest::newRow("other") << QStringLiteral("PE_FrameMenu") << widget << 0;
        QTest::newRow("part") << QStringLiteral("PE_Fram") << widget << 0;
        QTest::newRow("empty") << QString() << widget << 0;
    }

    void shouldTakeOnlyKnownElements()
    {
        QFETCH(QString, name);
        HVStyledRectangleComponent rectangle;
        QSignalSpy told(&rectangle, &HVStyledRectangleComponent::elementChanged);
        rectangle.setElement(name);
        QTEST(rectangle.element(), "element");
        QTEST(int(told.count()), "told");
    }

    void shouldAnnounceTheStyleAndThenTheTextEachTime()
    {
        const QColor usual(Qt::darkGreen);
        QPalette palette = m_palette;
        palette.setColor(QPalette::Active, QPalette::WindowText, usual);
        QApplication::setPalette(palette);
        HVStyledRectangleComponent rectangle;
        // Handlers of the change signals read the new values.
        bool isToolTip = false;
        const auto look = [&] {
            QCOMPARE(rectangle.toolTipStyle(), isToolTip);
            QCOMPARE(rectangle.textColor(), isToolTip ? QColor(Qt::black) : usual);
        };
        connect(&rectangle, &HVStyledRectangleComponent::toolTipStyleChanged, this, look);
        connect(&rectangle, &HVStyledRectangleComponent::textColorChanged, this, look);
        SignalOrder seen;
        seen.note(&rectangle, &HVStyledRectangleComponent::toolTipStyleChanged,
                  QStringLiteral("style"));
        seen.note(&rectangle, &HVStyledRectangleComponent::textColorChanged,
                  QStringLiteral("text"));
        for (const bool style : { true, true, false, false }) {
            isToolTip = style;
            rectangle.setToolTipStyle(style);
            QCOMPARE(rectangle.toolTipStyle(), style);
            QCOMPARE(seen.take(), QStringList({ QStringLiteral("style"), QStringLiteral("text") }));
        }
    }

    void shouldColourTextForItsStyle()
    {
        QPalette palette = m_palette;
        palette.setColor(QPalette::Active, QPalette::WindowText, Qt::darkGreen);
        palette.setColor(QPalette::Inactive, QPalette::WindowText, Qt::red);
        QApplication::setPalette(palette);
        HVStyledRectangleComponent rectangle;
        QCOMPARE(rectangle.textColor(), QColor(Qt::darkGreen));
        rectangle.setToolTipStyle(true);
        QCOMPARE(rectangle.textColor(), QColor(Qt::black));
    }

    void shouldAnnounceTheTextColourWhenThePaletteChanges()
    {
        HVStyledRectangleComponent rectangle;
        QSignalSpy told(&rectangle, &HVStyledRectangleComponent::textColorChanged);
        QPalette palette = m_palette;
        palette.setColor(QPalette::WindowText, Qt::darkGreen);
        QApplication::setPalette(palette);
        QTRY_VERIFY(told.count() > 0);
        QCOMPARE(rectangle.textColor(), QColor(Qt::darkGreen));
    }

    /// Tests the drawing on a canvas that extends two pixels beyond the item of 6 x 4.
    void shouldDrawItsOutline_data()
    {
        QTest::addColumn<bool>("toolTip");
        QTest::addColumn<bool>("nested");
        QTest::addColumn<QRect>("outline"); // including its lines
        QTest::newRow("tooltip") << true << false << QRect(0, 0, 7, 5);
        QTest::newRow("nested tooltip") << true << true << QRect(0, 0, 7, 5);
        QTest::newRow("window, one larger") << false << false << QRect(-1, -1, 9, 7);
        QTest::newRow("nested window, nothing") << false << true << QRect();
    }

    void shouldDrawItsOutline()
    {
        QFETCH(bool, toolTip);
        QFETCH(bool, nested);
        QFETCH(QRect, outline);
        QPalette palette = m_palette;
        palette.setColor(QPalette::Active, QPalette::Window, QColor(0, 200, 0));
        QApplication::setPalette(palette);
        QQuickItem parent;
        HVStyledRectangleComponent rectangle(nested ? &parent : nullptr);
        rectangle.setSize(QSizeF(6, 4));
        rectangle.setToolTipStyle(toolTip);
        QImage canvas(11, 9, QImage::Format_RGB32);
        canvas.fill(Qt::white);
        QPainter painter(&canvas);
        painter.translate(2, 2);
        painter.setPen(Qt::blue);
        rectangle.paint(&painter);
        painter.end();

        const QColor inside = toolTip ? QColor(255, 255, 0) : QColor(0, 200, 0);
        verify(canvas, outline.translated(2, 2), Qt::blue, inside);
    }

    void shouldFillWithTheBrushOfItsPalette_data()
    {
        QTest::addColumn<bool>("toolTip");
        QTest::addColumn<QPalette::ColorGroup>("current");
        QTest::addColumn<QBrush>("expected");
        QTest::newRow("tooltip") << true << QPalette::Active << QBrush(Qt::cyan, Qt::Dense4Pattern);
        QTest::newRow("tooltip, inactive")
                << true << QPalette::Inactive << QBrush(Qt::magenta, Qt::CrossPattern);
        QTest::newRow("tooltip, disabled") << true << QPalette::Disabled << QBrush(Qt::gray);
        QTest::newRow("window, solid") << false << QPalette::Active << QBrush(Qt::darkCyan);
        QTest::newRow("window, active") << false << QPalette::Inactive << QBrush(Qt::darkCyan);
    }

    void shouldFillWithTheBrushOfItsPalette()
    {
        QFETCH(bool, toolTip);
        QFETCH(QPalette::ColorGroup, current);
        QFETCH(QBrush, expected);
        QPalette palette = m_palette;
        palette.setBrush(QPalette::Active, QPalette::ToolTipBase,
                         QBrush(Qt::cyan, Qt::Dense4Pattern));
        palette.setBrush(QPalette::Inactive, QPalette::ToolTipBase,
                         QBrush(Qt::magenta, Qt::CrossPattern));
        palette.setBrush(QPalette::Disabled, QPalette::ToolTipBase, QBrush(Qt::gray));
        palette.setBrush(QPalette::Active, QPalette::Window,
                         QBrush(Qt::darkCyan, Qt::Dense4Pattern));
        palette.setBrush(QPalette::Inactive, QPalette::Window, QBrush(Qt::red));
        palette.setCurrentColorGroup(current);
        QApplication::setPalette(palette);
        QToolTip::setPalette(palette);
        HVStyledRectangleComponent rectangle;
        rectangle.setSize(QSizeF(16, 16));
        rectangle.setToolTipStyle(toolTip);
        const auto drawn = [](const std::function<void(QPainter *)> &draw) {
            QImage canvas(20, 20, QImage::Format_RGB32);
            canvas.fill(Qt::white);
            QPainter painter(&canvas);
            painter.translate(2, 2);
            draw(&painter);
            return canvas;
        };
        QCOMPARE(drawn([&](QPainter *painter) { rectangle.paint(painter); }),
                 drawn([&](QPainter *painter) {
                     painter->setBrush(expected);
                     painter->drawRect(toolTip ? QRect(0, 0, 16, 16) : QRect(-1, -1, 18, 18));
                 }));
    }

    void shouldHaveABorderOnAllSides_data()
    {
        QTest::addColumn<QByteArray>("place");
        QTest::newRow("in the popup") << QByteArray("x: 20; y: 30");
        QTest::newRow("in a small item") << QByteArray("parent: small");
    }

    void shouldHaveABorderOnAllSides()
    {
        QFETCH(QByteArray, place);
        QmlPopup popup;
        popup.show("Item { id: small; x: 20; y: 30; width: 5; height: 5 }\n"
                   "HVStyledRectangle { toolTipStyle: true; width: 100; height: 60; "
                   + place + " }");
        verify(popup.picture(), QRect(20, 30, 101, 61), Qt::black, QColor(255, 255, 0));
    }

    void shouldPaintNothingNestedInTheStyleOfWindows()
    {
        QmlPopup popup;
        popup.show("HVStyledRectangle { objectName: 'r'; width: 100; height: 60 }");
        verify(popup.picture(), QRect(), Qt::black, Qt::black);
        auto *rectangle = popup.item<HVStyledRectangleComponent>("r");
        rectangle->setToolTipStyle(true);
        verify(popup.picture(), QRect(0, 0, 101, 61), Qt::black, QColor(255, 255, 0));
        rectangle->setToolTipStyle(false);
        verify(popup.picture(), QRect(), Qt::black, Qt::black);
    }

    void shouldFillTheWindowAsItsRoot()
    {
        QPalette palette = m_palette;
        palette.setColor(QPalette::Active, QPalette::Window, QColor(0, 200, 0));
        palette.setColor(QPalette::Inactive, QPalette::Window, Qt::red);
        QApplication::setPalette(palette);
        QmlPopup popup;
        popup.show("");
        popup.view()->loadQML(
                popup.folder.add(QStringLiteral("Root.qml"),
                                 "import QtQuick 2.15\nimport com.zandor.hovlets.qml 1.0\n"
                                 "HVStyledRectangle { width: 90; height: 70 }"));
        QTRY_COMPARE(popup.view()->size(), QSize(90, 70));
        // Its border lies just outside.
        QTRY_COMPARE(uniform(popup.picture()), QColor(0, 200, 0));
        palette.setColor(QPalette::Active, QPalette::Window, QColor(0, 0, 200));
        QApplication::setPalette(palette);
        QTRY_COMPARE(uniform(popup.picture()), QColor(0, 0, 200));
    }

    void shouldFollowItsSize()
    {
        QmlPopup popup;
        popup.show("HVStyledRectangle { objectName: 'r'; toolTipStyle: true; x: 20; y: 30 }");
        auto *rectangle = popup.item<HVStyledRectangleComponent>("r");
        rectangle->setSize(QSizeF(50, 40));
        verify(popup.picture(), QRect(20, 30, 51, 41), Qt::black, QColor(255, 255, 0));
        rectangle->setSize(QSizeF(70.4, 20.6));
        verify(popup.picture(), QRect(20, 30, 71, 22), Qt::black, QColor(255, 255, 0));
    }

    void shouldFollowThePaletteOfTooltips()
    {
        QmlPopup popup;
        popup.show("HVStyledRectangle { toolTipStyle: true; x: 20; y: 30; width: 9; height: 9 }");
        QPalette tips;
        tips.setColor(QPalette::ToolTipBase, Qt::cyan);
        QToolTip::setPalette(tips);
        QApplication::setPalette(QPalette(Qt::gray));
        QTRY_COMPARE(popup.pixel(25, 35), QColor(Qt::cyan));
    }

private:
    static QColor uniform(const QImage &picture)
    {
        const QRgb first = picture.pixel(0, 0);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (picture.pixel(x, y) != first)
                    return {};
            }
        }
        return first;
    }

    static QImage plain(QImage picture)
    {
        picture.setDevicePixelRatio(1);
        return picture.convertToFormat(QImage::Format_RGB32);
    }

    /// Checks every pixel: white, except for a rectangle with lines one pixel wide. On a screen
    /// with doubled pixels, a line is centred on its coordinate.
    static void verify(const QImage &picture, const QRect &outline, const QColor &line,
                       const QColor &inside)
    {
        QImage expected(picture.size(), QImage::Format_RGB32);
        expected.fill(Qt::white);
        if (!outline.isEmpty()) {
            const int ratio = qRound(picture.devicePixelRatio());
            const QRect scaled(outline.topLeft() * ratio - QPoint(ratio / 2, ratio / 2),
                               outline.size() * ratio);
            QPainter painter(&expected);
            painter.fillRect(scaled, line);
            painter.fillRect(scaled.adjusted(ratio, ratio, -ratio, -ratio), inside);
        }
        const QImage painted = plain(picture);
        QCOMPARE(painted.size(), expected.size());
        int wrong = 0;
        for (int y = 0; y < painted.height(); ++y) {
            for (int x = 0; x < painted.width(); ++x)
                wrong += painted.pixel(x, y) == expected.pixel(x, y) ? 0 : 1;
        }
        // Corners of thick lines lack a pixel.
        QVERIFY2(wrong <= (picture.devicePixelRatio() > 1 ? 4 : 0),
                 qPrintable(QString::number(wrong)));
    }

    QPalette m_palette;
    QPalette m_tipPalette;
};

HOVLETS_TEST_MAIN(tst_HVStyledRectangle)
#include "tst_hvstyledrectangle.moc"
