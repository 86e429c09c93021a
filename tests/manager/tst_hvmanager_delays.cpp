// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverScene.h"
#include "TestMain.h"

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QElapsedTimer>
#include <QtCore/QEventLoop>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>

#include <algorithm>

using namespace Hovlets;

namespace {

constexpr int Never = 600000; // ms

QByteArray userInterface(const char *name, int height)
{
    return QByteArray("import QtQuick 2.15\nItem { objectName: '") + name
            + "'; width: 200; height: " + QByteArray::number(height) + " }";
}

bool isAnyTimerRunning(const QObject &owner)
{
    const QList<QTimer *> timers = owner.findChildren<QTimer *>();
    return std::any_of(timers.begin(), timers.end(),
                       [](QTimer *timer) { return timer->isActive(); });
}

void move(QWidget *widget, const QPoint &global)
{
    const QPoint local = widget->mapFromGlobal(global);
    QMouseEvent event(QEvent::MouseMove, local, local, global, Qt::NoButton, Qt::NoButton,
                      Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &event);
}

} // namespace

/// Tests the delays before a popup shows and before a simple popup expands.
class tst_HVManagerDelays : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = std::make_unique<HoverScene>();
        m_scene->packages.add(QStringLiteral("Scene.hovlets/ui/HovletsUI.qml"),
                              userInterface("full", 200));
        m_scene->packages.add(QStringLiteral("Scene.hovlets/ui/SimpleTooltip.qml"),
                              userInterface("simple", 50));
        m_scene->window.activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), &m_scene->window);
    }
    void cleanup() { m_scene.reset(); }

    void shouldHoldBackTheFirstPopup()
    {
        constexpr int Delay = 80;
        m_scene->context().set(HVKeyShowDelay, Delay);
        m_scene->start();
        QElapsedTimer clock;
        clock.start();
        QVERIFY(HoverScene::rest(*m_scene->control)); // no ordinary tooltip meanwhile
        QVERIFY(!m_scene->isShowing());
        QTRY_VERIFY(m_scene->isShowing());
        QVERIFY(clock.elapsed() >= Delay);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
        // The next popup shows immediately.
        Control other(QStringLiteral("b"), &m_scene->window);
        other.show();
        QVERIFY(HoverScene::rest(other));
        QCOMPARE(m_scene->shownKey(), QStringLiteral("b"));
    }

    void shouldShowAtOnceWithoutADelay_data()
    {
        QTest::addColumn<QVariant>("delay");
        QTest::newRow("none") << QVariant(0);
        QTest::newRow("negative") << QVariant(-1);
        QTest::newRow("text") << QVariant(QStringLiteral("soon"));
        QTest::newRow("list") << QVariant(QVariantList { 5 });
    }

    void shouldShowAtOnceWithoutADelay()
    {
        QFETCH(QVariant, delay);
        m_scene->context().set(HVKeyShowDelay, delay);
        m_scene->start();
        QVERIFY(HoverScene::rest(*m_scene->control));
        QVERIFY(m_scene->isShowing());
    }

    void shouldNotHoldBackOrdinaryTooltips()
    {
        m_scene->context().set(HVKeyShowDelay, Never);
        m_scene->start();
        m_scene->control->setObjectName(QStringLiteral("unknown"));
        QVERIFY(!HoverScene::rest(*m_scene->control));
    }

    void shouldGiveUpWhatWaits_data()
    {
        QTest::addColumn<int>("event");
        QTest::newRow("nothing happens") << int(QEvent::None);
        QTest::newRow("move") << int(QEvent::MouseMove);
        QTest::newRow("press") << int(QEvent::MouseButtonPress);
        QTest::newRow("key") << int(QEvent::KeyPress);
        QTest::newRow("leave") << int(QEvent::Leave);
        QTest::newRow("control destroyed") << int(QEvent::DeferredDelete);
    }

    void shouldGiveUpWhatWaits()
    {
        QFETCH(int, event);
        m_scene->context().set(HVKeyShowDelay, 60);
        m_scene->start();
        QVERIFY(HoverScene::rest(*m_scene->control));
        if (event == QEvent::MouseMove) {
            move(m_scene->control, HoverScene::Position + QPoint(5, 5));
        } else if (event == QEvent::MouseButtonPress) {
            QTest::mousePress(m_scene->control, Qt::LeftButton);
        } else if (event == QEvent::KeyPress) {
            QTest::keyPress(m_scene->control, Qt::Key_A);
        } else if (event == QEvent::Leave) {
            QEvent leave(QEvent::Leave);
            QCoreApplication::sendEvent(m_scene->control, &leave);
        } else if (event == QEvent::DeferredDelete) {
            delete std::exchange(m_scene->control, nullptr);
        }
        if (event == QEvent::None) {
            QVERIFY(isAnyTimerRunning(m_scene->manager()));
            QTRY_VERIFY(m_scene->isShowing());
        } else if (event == QEvent::DeferredDelete) {
            QTRY_VERIFY(!isAnyTimerRunning(m_scene->manager())); // its timer finds no control
            QVERIFY(!m_scene->isShowing());
        } else {
            QVERIFY(!isAnyTimerRunning(m_scene->manager()));
            QVERIFY(!m_scene->isShowing());
        }
    }

    void shouldExpandTheSimplePopupInPlace()
    {
        m_scene->context().set(HVKeySimpleMode, true);
        m_scene->context().set(HVKeyExpandDelay, 60);
        m_scene->start();
        QVERIFY(m_scene->show(QStringLiteral("a")));
        QCOMPARE(shownInterface(), QStringLiteral("simple"));
        const QPoint before = m_scene->popup()->pos();
        QTRY_COMPARE(shownInterface(), QStringLiteral("full"));
        QTRY_COMPARE(m_scene->popup()->height(), 201);
        QCOMPARE(m_scene->popup()->pos(), before);
        QCOMPARE(m_scene->shownKey(), QStringLiteral("a"));
        QVERIFY(m_scene->show(QStringLiteral("b")));
        QCOMPARE(shownInterface(), QStringLiteral("simple"));
    }

    void shouldStaySimple_data()
    {
        QTest::addColumn<QVariant>("delay");
        QTest::newRow("default") << QVariant(0);
        QTest::newRow("negative") << QVariant(-10);
        QTest::newRow("text") << QVariant(QStringLiteral("later"));
    }

    void shouldStaySimple()
    {
        QFETCH(QVariant, delay);
        m_scene->context().set(HVKeySimpleMode, true);
        m_scene->context().set(HVKeyExpandDelay, delay);
        m_scene->start();
        QVERIFY(m_scene->show(QStringLiteral("a")));
        QVERIFY(!isAnyTimerRunning(*m_scene->popup()));
        QCOMPARE(shownInterface(), QStringLiteral("simple"));
    }

    void shouldExpandOnlyWhileTheMouseStays()
    {
        m_scene->context().set(HVKeySimpleMode, true);
        m_scene->context().set(HVKeyExpandDelay, 60);
        m_scene->start();
        QVERIFY(m_scene->show(QStringLiteral("a")));
        QVERIFY(isAnyTimerRunning(*m_scene->popup()));
        m_scene->popup()->checkMousePosition({ 790, 790 });
        QVERIFY(!isAnyTimerRunning(*m_scene->popup()));
        QCOMPARE(shownInterface(), QStringLiteral("simple"));
        m_scene->popup()->checkMousePosition(m_scene->popup()->geometry().center());
        QTRY_COMPARE(shownInterface(), QStringLiteral("full"));
    }

    void shouldRunNoTimerWithoutAPopup()
    {
        m_scene->context().set(HVKeySimpleMode, true);
        m_scene->context().set(HVKeyExpandDelay, Never);
        m_scene->context().set(HVKeySafePath, true);
        m_scene->start();
        QVERIFY(m_scene->show(QStringLiteral("a")));
        QVERIFY(isAnyTimerRunning(*m_scene->popup()));
        m_scene->popup()->hide();
        QVERIFY(!isAnyTimerRunning(*m_scene->popup()));
    }

    /// Counts in the event loop itself, because a timer would add wake-ups.
    void shouldNotWakeTheHostWithoutAPopup()
    {
        wakeUps(); // the first one may count one fewer
        const int before = wakeUps();
        useRecommendedSettings(m_scene->context());
        m_scene->context().set(HVKeySimpleMode, true);
        m_scene->context().set(HVKeyExpandDelay, 50);
        m_scene->context().set(HVKeyShowDelay, 10);
        m_scene->start();
        QTRY_VERIFY(wakeUps() <= before);
        QVERIFY(HoverScene::rest(*m_scene->control));
        QTRY_VERIFY(m_scene->isShowing());
        m_scene->popup()->hide();
        QTRY_VERIFY(wakeUps() <= before); // after the pending events of the window system
    }

private:
    /// How often the event loop wakes up in 300 ms.
    static int wakeUps()
    {
        int count = 0;
        QEventLoop loop;
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake,
                         &loop, [&] { ++count; });
        QTimer::singleShot(300, &loop, &QEventLoop::quit);
        loop.exec();
        return count;
    }

    QString shownInterface() { return m_scene->view()->rootObject()->objectName(); }

    std::unique_ptr<HoverScene> m_scene;
};

HOVLETS_TEST_MAIN(tst_HVManagerDelays)
#include "tst_hvmanager_delays.moc"
