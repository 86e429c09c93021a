// SPDX-License-Identifier: Apache-2.0
#include "HVScrollBarComponent.h"
#include "QmlPopup.h"
#include "TestMain.h"

#include <QtGui/QPainter>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QProxyStyle>
#include <QtWidgets/QScrollBar>
#include <QtWidgets/QStyleFactory>
#include <QtWidgets/QStyleOptionSlider>

using namespace Hovlets;

namespace {

/// Gives scroll bars a green groove.
class GreenGrooves : public QProxyStyle
{
public:
    GreenGrooves()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                            QPainter *painter, const QWidget *widget) const override
    {
        if (control == CC_ScrollBar)
            painter->fillRect(option->rect, Qt::green);
        else
            QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
};

} // namespace

/// Tests the scroll bar in a popup, with the mouse events that the popup's view receives.
class tst_HVScrollBarPopup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion"))); }

    void init()
    {
        m_popup = std::make_unique<QmlPopup>();
        m_popup->trackHover();
        m_popup->show("HVScrollBar { objectName: 'bar'; x: 50; y: 20; width: 20; height: 160\n"
                      "start: 0; end: 1; Component.onCompleted: updateDimensions() }");
        m_item = m_popup->item<HVScrollBarComponent>("bar");
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (auto *bar = qobject_cast<QScrollBar *>(widget))
                m_bar = bar;
        }
        QVERIFY(m_bar);
        QCOMPARE(m_bar->size(), QSize(20, 160));
        m_before = bar();
    }

    void cleanup()
    {
        QVERIFY(m_popup->popup()->isVisible()); // no event counted as a click outside
        m_popup.reset();
    }

    void shouldPaintTheDesktopsScrollBar()
    {
        QImage expected(m_bar->size(), QImage::Format_RGB32);
        m_bar->render(&expected);
        QCOMPARE(bar(), expected);
    }

    void shouldRepaint_data()
    {
        QTest::addColumn<int>("change");
        QTest::newRow("value") << 0;
        QTest::newRow("range") << 1;
        QTest::newRow("page") << 2;
        QTest::newRow("direction") << 3;
        QTest::newRow("palette") << 4;
        QTest::newRow("style") << 5;
        QTest::newRow("size") << 6;
    }

    void shouldRepaint()
    {
        QFETCH(int, change);
        const QPalette palette = QApplication::palette();
        switch (change) {
        case 0:
            m_item->setPosition(0.5);
            break;
        case 1:
            m_item->setEnd(0.05F);
            break;
        case 2:
            m_bar->setPageStep(50);
            break;
        case 3:
            m_item->setOrientHorizontal(true);
            break;
        case 4:
            QApplication::setPalette(QPalette(Qt::darkRed));
            break;
        case 5:
            QApplication::setStyle(new GreenGrooves);
            break;
        default:
            m_item->setHeight(100);
            m_item->updateDimensions();
        }
        QTRY_VERIFY(bar() != m_before);
        QImage expected(m_bar->size(), QImage::Format_RGB32);
        m_bar->render(&expected);
        QTRY_COMPARE(bar(), expected);
        if (change == 5)
            QCOMPARE(m_popup->pixel(60, 100), QColor(Qt::green));
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
        QApplication::setPalette(palette);
    }

    /// Painting must not request another paint.
    void shouldStopPainting()
    {
        m_item->setPosition(0.5);
        QSignalSpy rendered(m_popup->view()->quickWindow(), &QQuickWindow::afterRendering);
        const auto isAtRest = [&] {
            rendered.clear();
            for (int i = 0; i < 20; ++i)
                QCoreApplication::processEvents(
                        QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 5);
            return rendered.isEmpty();
        };
        QTimer ticks; // lets waiting for events end
        ticks.start(5);
        QTRY_VERIFY(isAtRest());
    }

    void shouldBeDragged()
    {
        const QPoint slider = center(QStyle::SC_ScrollBarSlider);
        send(QEvent::MouseButtonPress, slider);
        QVERIFY(m_bar->isSliderDown());
        send(QEvent::MouseMove, slider + QPoint(0, 40));
        const float there = m_item->position();
        QVERIFY(there > 0.1F && there < 0.9F);
        send(QEvent::MouseMove, slider + QPoint(0, 80));
        QVERIFY(m_item->position() > there);
        send(QEvent::MouseMove, slider + QPoint(0, 40));
        QCOMPARE(m_item->position(), there);
        send(QEvent::MouseButtonRelease, slider + QPoint(0, 40));
        QVERIFY(!m_bar->isSliderDown());
        send(QEvent::MouseMove, slider);
        QCOMPARE(m_item->position(), there);
    }

    void shouldBeClicked_data()
    {
        QTest::addColumn<QStyle::SubControl>("control");
        QTest::addColumn<float>("position");
        QTest::newRow("one step down") << QStyle::SC_ScrollBarAddLine << 0.51F;
        QTest::newRow("one step up") << QStyle::SC_ScrollBarSubLine << 0.49F;
        QTest::newRow("a page down") << QStyle::SC_ScrollBarAddPage << 0.6F;
        QTest::newRow("a page up") << QStyle::SC_ScrollBarSubPage << 0.4F;
    }

    void shouldBeClicked()
    {
        QFETCH(QStyle::SubControl, control);
        m_item->setPosition(0.5);
        const QPoint point = center(control);
        send(QEvent::MouseButtonPress, point);
        send(QEvent::MouseButtonRelease, point);
        QTEST(m_item->position(), "position");
    }

    void shouldKeepScrollingWhileAnArrowIsPressed()
    {
        const QPoint arrow = center(QStyle::SC_ScrollBarAddLine);
        send(QEvent::MouseButtonPress, arrow);
        QTRY_VERIFY(m_item->position() > 0.05F);
        send(QEvent::MouseButtonRelease, arrow);
        verifyThatItRests();
    }

    void shouldEndTheScrollingWhenTheMouseIsTakenAway_data()
    {
        QTest::addColumn<QStyle::SubControl>("control");
        QTest::newRow("arrow") << QStyle::SC_ScrollBarAddLine;
        QTest::newRow("slider") << QStyle::SC_ScrollBarSlider;
    }

    void shouldEndTheScrollingWhenTheMouseIsTakenAway()
    {
        QFETCH(QStyle::SubControl, control);
        send(QEvent::MouseButtonPress, center(control));
        m_item->ungrabMouse();
        QVERIFY(!m_bar->isSliderDown());
        QVERIFY(!m_item->keepMouseGrab());
        verifyThatItRests();
    }

    void shouldBeTurnedByTheWheel()
    {
        const QPoint point = toView(QPoint(10, 80));
        wheel(point, -120);
        QCOMPARE(m_item->position(), 0.03F);
        wheel(point, 120);
        QCOMPARE(m_item->position(), 0.0F);
    }

    void shouldShowThatItIsHovered()
    {
        const QPoint slider = center(QStyle::SC_ScrollBarSlider);
        send(QEvent::MouseMove, slider);
        QTRY_VERIFY(m_bar->testAttribute(Qt::WA_UnderMouse));
        QTRY_VERIFY(bar() != m_before);
        QTest::mouseMove(m_popup->view(), QPoint(200, 100));
        QTRY_VERIFY(!m_bar->testAttribute(Qt::WA_UnderMouse));
        QTRY_COMPARE(bar(), m_before);
    }

    void shouldIgnoreOtherButtons()
    {
        QSignalSpy told(m_item, &HVScrollBarComponent::positionChanged);
        QTest::mouseClick(m_popup->view(), Qt::RightButton, Qt::NoModifier,
                          toView(center(QStyle::SC_ScrollBarAddPage)));
        QCOMPARE(told.count(), 0);
        QVERIFY(!QApplication::activePopupWidget());
    }

private:
    /// The bar as the popup shows it.
    QImage bar()
    {
        return m_popup->picture()
                .copy(QRect(QPoint(50, 20), m_bar->size()))
                .convertToFormat(QImage::Format_RGB32);
    }

    QPoint center(QStyle::SubControl control) const
    {
        QStyleOptionSlider option;
        option.initFrom(m_bar);
        option.orientation = m_bar->orientation();
        option.minimum = m_bar->minimum();
        option.maximum = m_bar->maximum();
        option.sliderPosition = option.sliderValue = m_bar->value();
        option.singleStep = m_bar->singleStep();
        option.pageStep = m_bar->pageStep();
        return m_bar->style()
                ->subControlRect(QStyle::CC_ScrollBar, &option, control, m_bar)
                .center();
    }

    static QPoint toView(const QPoint &point) { return point + QPoint(50, 20); }

    void send(QEvent::Type type, const QPoint &point)
    {
        HVView *view = m_popup->view();
        const bool isDown = type == QEvent::MouseButtonPress;
        if (isDown)
            m_isDown = true;
        if (type == QEvent::MouseButtonRelease)
            m_isDown = false;
        QMouseEvent event(type, toView(point), view->mapToGlobal(toView(point)),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                          m_isDown ? Qt::LeftButton : Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &event);
    }

    void wheel(const QPoint &point, int delta)
    {
        HVView *view = m_popup->view();
        QWheelEvent event(point, view->mapToGlobal(point), QPoint(), QPoint(0, delta), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view, &event);
    }

    /// Arrows repeat twenty times per second.
    void verifyThatItRests()
    {
        const float there = m_item->position();
        QTimer tenths;
        QSignalSpy passed(&tenths, &QTimer::timeout);
        tenths.start(100);
        QTRY_VERIFY(passed.count() >= 8);
        QCOMPARE(m_item->position(), there);
    }

    std::unique_ptr<QmlPopup> m_popup;
    HVScrollBarComponent *m_item = nullptr;
    QPointer<QScrollBar> m_bar;
    QImage m_before;
    bool m_isDown = false;
};

HOVLETS_TEST_MAIN(tst_HVScrollBarPopup)
#include "tst_hvscrollbar_popup.moc"
