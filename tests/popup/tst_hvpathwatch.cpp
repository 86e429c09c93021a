// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverScene.h"
#include "TestMain.h"

#include <QtGui/QCursor>
#include <QtTest/QtTest>
#include <QtWidgets/QTabBar>

using namespace Hovlets;

namespace {

constexpr int ShortDwell = 40; // ms
constexpr int EndlessDwell = 600000; // ms

/// Sends a mouse move to the window under the pointer, as the platform does.
void moveTo(QWidget *widget, const QPoint &local)
{
    const QPoint global = widget->mapToGlobal(local);
    QCursor::setPos(global);
    QMouseEvent event(QEvent::MouseMove, local, widget->window()->mapFromGlobal(global), global,
                      Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

/// Tests other controls on the way from a control to its popup.
class tst_HVPathWatch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = std::make_unique<HoverScene>();
        m_other = new Control(QStringLiteral("b"), &m_scene->window);
        m_other->setGeometry(0, 50, 50, 50);
        m_other->show();
        m_plain = new Control(QString(), &m_scene->window);
        m_plain->setGeometry(50, 50, 50, 50);
        m_plain->show();
        m_scene->window.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &m_scene->window);
        m_scene->context().set(HVKeySafePath, true);
        m_scene->context().set(HVKeySafePathDwell, EndlessDwell);
    }
    void cleanup() { m_scene.reset(); }

    void shouldSwapAtTheDesktopsMomentWithoutIt()
    {
        m_scene->context().set(HVKeySafePath, false);
        show();
        moveTo(m_other, { 25, 10 });
        rest(*m_other);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("b"));
    }

    void shouldKeepThePopupWhileThePointerPasses()
    {
        show();
        moveTo(m_other, { 25, 10 });
        QVERIFY(rest(*m_other));
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
        QCOMPARE(m_other->toolTips, 0);
    }

    void shouldSwapAfterTheDwell()
    {
        m_scene->context().set(HVKeySafePathDwell, ShortDwell);
        show();
        moveTo(m_other, { 25, 10 });
        QTRY_COMPARE(m_scene->shownKey(), QStringLiteral("b"));
        // And back: the other control's popup is visible now.
        moveTo(m_scene->control, { 25, 25 });
        QTRY_COMPARE(m_scene->shownKey(), QStringLiteral("a"));
    }

    void shouldSwapAtOnceWithoutADwell_data()
    {
        QTest::addColumn<QVariant>("dwell");
        QTest::newRow("none") << QVariant(0);
        QTest::newRow("negative") << QVariant(-5);
        QTest::newRow("text") << QVariant(QStringLiteral("long"));
    }

    void shouldSwapAtOnceWithoutADwell()
    {
        QFETCH(QVariant, dwell);
        m_scene->context().set(HVKeySafePathDwell, dwell);
        show();
        moveTo(m_other, { 25, 10 });
        QTRY_COMPARE(m_scene->shownKey(), QStringLiteral("b"));
    }

    void shouldShowTheTooltipOfAnotherControlAfterTheDwell()
    {
        m_scene->context().set(HVKeySafePathDwell, ShortDwell);
        m_plain->setToolTip(QStringLiteral("Plain"));
        show();
        moveTo(m_plain, { 25, 25 });
        QTRY_VERIFY(m_plain->toolTips > 0);
        QVERIFY(!m_scene->isShowing());
    }

    void shouldStayOverNothingBetweenTheControlAndThePopup()
    {
        m_scene->context().set(HVKeySafePathDwell, ShortDwell);
        show();
        moveTo(m_plain, { 10, 10 });
        // The control is asked only once.
        QTRY_VERIFY(m_plain->toolTips > 0
                    || m_scene->host()
                               .messagesOf(HVMessageInformation)
                               .contains(QStringLiteral("looking for Hovlet for key:")));
        QVERIFY(m_scene->isShowing());
        const auto asked = m_scene->host().messagesOf(HVMessageInformation).size();
        moveTo(m_plain, { 12, 11 });
        QTest::qWait(3 * ShortDwell);
        QCOMPARE(m_scene->host().messagesOf(HVMessageInformation).size(), asked);
        QVERIFY(m_scene->isShowing());
    }

    void shouldTakePartsForControlsOfTheirOwn()
    {
        QTabBar bar(&m_scene->window);
        bar.setObjectName(QStringLiteral("a"));
        bar.addTab(QStringLiteral("one"));
        bar.addTab(QStringLiteral("two"));
        bar.adjustSize();
        bar.show();
        show(bar, bar.tabRect(0).center());
        moveTo(&bar, bar.tabRect(1).center());
        QHelpEvent event(QEvent::ToolTip, bar.tabRect(1).center(),
                         bar.mapToGlobal(bar.tabRect(1).center()));
        bar.setObjectName(QStringLiteral("b")); // a host would return this key for the other tab
        QCoreApplication::sendEvent(&bar, &event);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
    }

    void shouldEndWithThePopup()
    {
        show();
        moveTo(m_other, { 25, 10 });
        m_scene->popup()->hide();
        rest(*m_other);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("b"));
        QVERIFY(m_scene->isShowing());
    }

    void shouldNotLoseATooltipToAPopupThatFades()
    {
        m_scene->context().set(HVKeySafePathDwell, 200);
        m_scene->context().set(HVKeyHideFadeDuration, 50);
        show();
        moveTo(m_other, { 25, 10 });
        QVERIFY(rest(*m_other));
        m_scene->popup()->hideAnimated();
        QTRY_VERIFY(!m_scene->isShowing());
        QTRY_VERIFY(m_scene->isShowing());
        QCOMPARE(m_scene->shownKey(), QStringLiteral("b"));
    }

    void shouldSurviveAControlThatGoes()
    {
        m_scene->context().set(HVKeySafePathDwell, ShortDwell);
        show();
        moveTo(m_other, { 25, 10 });
        delete m_other;
        QTest::qWait(2 * ShortDwell);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
    }

    void shouldReadWhatConverts()
    {
        m_scene->context().set(HVKeySafePath, QStringLiteral("true"));
        show();
        moveTo(m_other, { 25, 10 });
        rest(*m_other);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
    }

private:
    /// Shows the popup for the control, with the pointer over it.
    void show() { show(*m_scene->control, { 25, 25 }); }

    void show(QWidget &widget, const QPoint &local)
    {
        m_scene->start();
        const QPoint position = widget.mapToGlobal(local);
        QCursor::setPos(position);
        QHelpEvent event(QEvent::ToolTip, local, position);
        QCoreApplication::sendEvent(&widget, &event);
        QVERIFY(m_scene->isShowing());
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
    }

    static bool rest(Control &widget) { return HoverScene::rest(widget, QCursor::pos()); }

    std::unique_ptr<HoverScene> m_scene;
    Control *m_other = nullptr;
    Control *m_plain = nullptr;
};

HOVLETS_TEST_MAIN(tst_HVPathWatch)
#include "tst_hvpathwatch.moc"
