// SPDX-License-Identifier: Apache-2.0
#include "HVScrollBarComponent.h"
#include "SignalOrder.h"
#include "TestMain.h"

#include <QtWidgets/QMenu>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QAbstractItemView>
#include <QtWidgets/QScrollBar>

#include <cmath>
#include <memory>

/// Tests the item without a window.
class tst_HVScrollBar : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldLeaveMenusAndListsOpen()
    {
        QMenu menu;
        menu.addAction(QStringLiteral("Entry"));
        menu.popup({ 100, 100 });
        QVERIFY(menu.isVisible());
        HVScrollBarComponent bar;
        QVERIFY(menu.isVisible());
        bar.setVisible(false);
        bar.setVisible(true);
        QVERIFY(menu.isVisible());
        menu.close();

        QComboBox box;
        box.addItem(QStringLiteral("Entry"));
        box.show();
        box.showPopup();
        QVERIFY(box.view()->isVisible());
        const HVScrollBarComponent other;
        QVERIFY(box.view()->isVisible());
    }

    void init()
    {
        m_item = std::make_unique<HVScrollBarComponent>();
        const QWidgetList widgets = QApplication::topLevelWidgets();
        for (QWidget *widget : widgets) {
            if (auto *bar = qobject_cast<QScrollBar *>(widget))
                m_bar = bar;
        }
        QVERIFY(m_bar);
        m_item->setEnd(10);
    }

    void cleanup()
    {
        m_item.reset();
        QVERIFY(!m_bar);
    }

    void shouldListItsSignalsSlotsAndPropertiesInOrder()
    {
        const QMetaObject &type = HVScrollBarComponent::staticMetaObject;
        QCOMPARE(type.className(), "HVScrollBarComponent");
        QCOMPARE(ownMethods(type, QMetaMethod::Signal),
                 QStringList({ QStringLiteral("startChanged()"), QStringLiteral("endChanged()"),
                               QStringLiteral("positionChanged()"),
                               QStringLiteral("orientHorizontalChanged()"),
                               QStringLiteral("scrollBarWidthChanged()"),
                               QStringLiteral("pageStepChanged()"),
                               QStringLiteral("singleStepChanged()") }));
        QCOMPARE(ownMethods(type, QMetaMethod::Slot),
                 QStringList { QStringLiteral("scrollBarPositionChanged(int)") });
        QCOMPARE(ownMethods(type, QMetaMethod::Method),
                 QStringList({ QStringLiteral("updateDimensions()"),
                               QStringLiteral("setPositionExternal(float)") }));
        QCOMPARE(ownProperties(type),
                 QStringList({ QStringLiteral("float start rw startChanged"),
                               QStringLiteral("float end rw endChanged"),
                               QStringLiteral("float position rw positionChanged"),
                               QStringLiteral("bool orientHorizontal rw orientHorizontalChanged"),
                               QStringLiteral("float scrollBarWidth r scrollBarWidthChanged"),
                               QStringLiteral("float pageStep rw pageStepChanged"),
                               QStringLiteral("float singleStep rw singleStepChanged") }));
    }

    void shouldStepByHundredthsToo()
    {
        QCOMPARE(m_item->pageStep(), 0.1F);
        QCOMPARE(m_item->singleStep(), 0.01F);
        QSignalSpy page(m_item.get(), &HVScrollBarComponent::pageStepChanged);
        QSignalSpy single(m_item.get(), &HVScrollBarComponent::singleStepChanged);
        m_item->setPageStep(2.999F);
        m_item->setSingleStep(0.5F);
        QCOMPARE(m_bar->pageStep(), 299);
        QCOMPARE(m_bar->singleStep(), 50);
        QCOMPARE(m_item->pageStep(), 2.99F);
        QCOMPARE(m_item->singleStep(), 0.5F);
        QCOMPARE(page.count(), 1);
        QCOMPARE(single.count(), 1);
    }

    void shouldTruncateToHundredths_data()
    {
        QTest::addColumn<float>("value");
        QTest::addColumn<int>("hundredths");
        QTest::addColumn<float>("read");
        QTest::newRow("0.126") << 0.126F << 12 << 0.12F;
        QTest::newRow("2.999") << 2.999F << 299 << 2.99F;
        QTest::newRow("0.29, of which a float falls short") << 0.29F << 28 << 0.28F;
        QTest::newRow("0.5") << 0.5F << 50 << 0.5F;
        QTest::newRow("toward zero") << -0.126F << -12 << -0.12F;
        QTest::newRow("most") << 1e30F << 2147483647 << 21474836.47F;
        QTest::newRow("least") << -1e30F << -2147483647 - 1 << -21474836.48F;
        QTest::newRow("not a number") << std::nanf("") << 0 << 0.0F;
    }

    void shouldTruncateToHundredths()
    {
        QFETCH(float, value);
        QFETCH(int, hundredths);
        QFETCH(float, read);
        m_bar->setRange(-2147483647 - 1, 2147483647);
        m_item->setPosition(value);
        QCOMPARE(m_bar->value(), hundredths);
        QCOMPARE(m_item->position(), read);
        m_bar->setRange(-2147483647 - 1, 2147483647);
        m_item->setStart(value);
        QCOMPARE(m_bar->minimum(), hundredths);
        QCOMPARE(m_item->start(), read);
        m_bar->setRange(-2147483647 - 1, 2147483647);
        m_item->setEnd(value);
        QCOMPARE(m_bar->maximum(), hundredths);
        QCOMPARE(m_item->end(), read);
    }

    void shouldClampToTheRange()
    {
        m_item->setStart(1);
        m_item->setPosition(11);
        QCOMPARE(m_item->position(), 10.0F);
        m_item->setPosition(0.5);
        QCOMPARE(m_item->position(), 1.0F);
        m_item->setStart(2);
        QCOMPARE(m_item->position(), 2.0F);
    }

    void shouldAnnounceEachChangeOfTheRange()
    {
        QSignalSpy start(m_item.get(), &HVScrollBarComponent::startChanged);
        QSignalSpy end(m_item.get(), &HVScrollBarComponent::endChanged);
        m_item->setStart(1);
        m_item->setStart(1);
        QCOMPARE(start.count(), 2);
        QCOMPARE(end.count(), 0);
        m_item->setEnd(5);
        m_item->setEnd(5);
        QCOMPARE(end.count(), 2);
        QCOMPARE(start.count(), 2);
    }

    void shouldAnnounceThePosition_data()
    {
        QTest::addColumn<bool>("external");
        QTest::addColumn<float>("position");
        QTest::addColumn<int>("told");
        QTest::newRow("changed") << false << 4.0F << 2;
        QTest::newRow("unchanged") << false << 3.0F << 1;
        QTest::newRow("unchanged hundredths") << false << 3.004F << 1;
        QTest::newRow("changed, external") << true << 4.0F << 1;
        QTest::newRow("unchanged, external") << true << 3.0F << 0;
    }

    void shouldAnnounceThePosition()
    {
        QFETCH(bool, external);
        QFETCH(float, position);
        m_item->setPosition(3);
        QSignalSpy told(m_item.get(), &HVScrollBarComponent::positionChanged);
        if (external)
            m_item->setPositionExternal(position);
        else
            m_item->setPosition(position);
        QTEST(int(told.count()), "told");
    }

    void shouldAnnounceThatTheBarIsMoved()
    {
        QSignalSpy told(m_item.get(), &HVScrollBarComponent::positionChanged);
        m_bar->setValue(456);
        QCOMPARE(told.count(), 1);
        QCOMPARE(m_item->position(), 4.56F);
        m_item->scrollBarPositionChanged(7); // emits the signal for any value
        QCOMPARE(told.count(), 2);
        QCOMPARE(m_item->position(), 4.56F);
    }

    void shouldTurn()
    {
        QSignalSpy told(m_item.get(), &HVScrollBarComponent::orientHorizontalChanged);
        QVERIFY(!m_item->orientHorizontal());
        QCOMPARE(m_bar->orientation(), Qt::Vertical);
        m_item->setOrientHorizontal(true);
        QVERIFY(m_item->orientHorizontal());
        QCOMPARE(m_bar->orientation(), Qt::Horizontal);
        m_item->setOrientHorizontal(true);
        QCOMPARE(told.count(), 2);
        m_item->setOrientHorizontal(false);
        QCOMPARE(m_bar->orientation(), Qt::Vertical);
        QCOMPARE(told.count(), 3);
    }

    void shouldKeepItsSizeUntilAsked()
    {
        QCOMPARE(m_bar->size(), m_bar->sizeHint());
        QCOMPARE(m_item->scrollBarWidth(), float(m_bar->sizeHint().width()));
        QSignalSpy told(m_item.get(), &HVScrollBarComponent::scrollBarWidthChanged);
        const QSize before = m_bar->size();
        m_item->setSize(QSizeF(21.9, 87.9));
        QCOMPARE(m_bar->size(), before);
        m_item->updateDimensions();
        QCOMPARE(m_bar->size(), QSize(21, 87));
        QCOMPARE(m_bar->minimumSize(), m_bar->maximumSize());
        QCOMPARE(m_item->scrollBarWidth(), 21.0F);
        m_item->setOrientHorizontal(true);
        QCOMPARE(m_item->scrollBarWidth(), 87.0F);
        m_item->setSize(QSizeF(90, 15));
        m_item->updateDimensions();
        QCOMPARE(m_item->scrollBarWidth(), 15.0F);
        QCOMPARE(told.count(), 0);
    }

    void shouldHideTheBarWithTheItem()
    {
        QQuickItem scene; // items without a parent stay hidden since Qt 6.8
        m_item->setParentItem(&scene);
        QVERIFY(m_bar->isVisible());
        m_item->setVisible(false);
        QVERIFY(!m_bar->isVisible());
        m_item->setVisible(true);
        QVERIFY(m_bar->isVisible());
    }

    void shouldFadeTheBarWithTheItem()
    {
        m_item->setOpacity(0.5);
        QVERIFY(qAbs(m_bar->windowOpacity() - 0.5) < 0.01);
        m_item->setOpacity(1);
        QCOMPARE(m_bar->windowOpacity(), 1.0);
    }

    void shouldBeNoWindowOfTheDesktop()
    {
        QVERIFY(!m_bar->parentWidget());
        QVERIFY(m_bar->testAttribute(Qt::WA_DontShowOnScreen));
        QVERIFY(!m_bar->windowHandle() || !m_bar->windowHandle()->isVisible());
    }

    void shouldNotKeepTheApplicationRunning()
    {
        QWidget window;
        window.show();
        QTimer::singleShot(0, &window, &QWidget::close);
        QTimer::singleShot(5000, &window, [] { QCoreApplication::exit(1); });
        QCOMPARE(QCoreApplication::exec(), 0);
    }

private:
    std::unique_ptr<HVScrollBarComponent> m_item;
    QPointer<QScrollBar> m_bar;
};

HOVLETS_TEST_MAIN(tst_HVScrollBar)
#include "tst_hvscrollbar.moc"
