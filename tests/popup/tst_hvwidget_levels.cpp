// SPDX-License-Identifier: Apache-2.0
#include "LevelScene.h"
#include "TestMain.h"

#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>
#include <QtWidgets/QDialog>

using namespace Hovlets;

namespace {

/// Shows the popup when its control gets a key press.
class ShowingHost : public QObject
{
public:
    explicit ShowingHost(HoverScene &scene)
        : m_scene(scene)
    {
        scene.control->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress)
            m_scene.show(text("a"));
        return false;
    }

private:
    HoverScene &m_scene;
};

/// Deletes a window when it is about to be painted.
class Deleter : public QObject
{
public:
    explicit Deleter(QWidget *window)
        : m_window(window)
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (!m_window || object != m_window || event->type() != QEvent::UpdateRequest)
            return false;
        delete m_window;
        return true;
    }

private:
    QPointer<QWidget> m_window;
};

} // namespace

/// Tests the way from the simple popup to the full one, and from there to a pinned one.
class tst_HVWidgetLevels : public QObject, private LevelScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void cleanup() { m_scene.reset(); }

    void shouldGoFromLevelToLevel()
    {
        const Receiver receiver(m_scene->control);
        QVERIFY(m_scene->show(text("a")));
        const QPointer<HVWidget> popup(m_scene->popup());
        QCOMPARE(shownInterface(), text("simple"));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(shownInterface(), text("full"));
        QVERIFY(!popup->view()->reserved());
        QTRY_COMPARE(popup->height(), 201);
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QVERIFY(popup->view()->reserved());
        QVERIFY(popup->isVisible());
        QCOMPARE(receiver.overrides, 0);
        QCOMPARE(receiver.presses, 0);
        QCOMPARE(receiver.releases, 0);
        // Now the key is the host's.
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(receiver.releases, 1);
        delete popup.data();
    }

    void shouldLeaveTheKeyToTheHostWithoutAPopup()
    {
        const Receiver receiver(m_scene->control);
        m_scene->start();
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QVERIFY(m_scene->show(text("a")));
        m_scene->popup()->hide();
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 2);
    }

    void shouldLeaveTheKeyToTheHostWhileThePopupFadesOut()
    {
        m_scene->context().set(HVKeyHideFadeDuration, 600000);
        const Receiver receiver(m_scene->control);
        QVERIFY(m_scene->show(text("a")));
        m_scene->popup()->hideAnimated();
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(shownInterface(), text("simple"));
        QVERIFY(m_scene->show(text("a"))); // stays
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(shownInterface(), text("full"));
    }

    void shouldLeaveTheKeyToTheHostIfThereIsNoMore()
    {
        setInterfaces("property bool hasMore: false", {});
        const Receiver receiver(m_scene->control);
        QVERIFY(m_scene->show(text("a")));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(shownInterface(), text("simple"));
    }

    void shouldPinOnlyWhatCanBePinned()
    {
        setInterfaces({}, "property bool pinnable: false");
        const Receiver receiver(m_scene->control);
        QVERIFY(m_scene->show(text("a")));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(shownInterface(), text("full"));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QVERIFY(!m_scene->view()->reserved());
        QCOMPARE(receiver.presses, 1);
    }

    void shouldPinAFullPopup_data()
    {
        QTest::addColumn<bool>("simpleMode");
        QTest::newRow("shown at once") << false;
        QTest::newRow("after the delay") << true;
    }

    void shouldPinAFullPopup()
    {
        QFETCH(bool, simpleMode);
        m_scene->context().set(HVKeySimpleMode, simpleMode);
        m_scene->context().set(HVKeyExpandDelay, 1);
        QVERIFY(m_scene->show(text("a")));
        const QPointer<HVWidget> popup(m_scene->popup());
        QTRY_COMPARE(popup->view()->rootObject()->objectName(), text("full"));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QVERIFY(popup->view()->reserved());
        delete popup.data();
    }

    void shouldWorkInThePopupItself()
    {
        QVERIFY(m_scene->show(text("a")));
        m_scene->popup()->activateWindow();
        QTRY_COMPARE(QGuiApplication::focusWindow(), m_scene->popup()->windowHandle());
        QTest::keyClick(m_scene->view(), Qt::Key_F1);
        QCOMPARE(shownInterface(), text("full"));
    }

    void shouldStopTheDelay()
    {
        m_scene->context().set(HVKeyExpandDelay, 600000);
        QVERIFY(m_scene->show(text("a")));
        QCOMPARE(activeTimers(), 1);
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(activeTimers(), 0);
    }

    void shouldPinOnlyWhatIsShown()
    {
        m_scene->context().set(HVKeySimpleMode, false);
        setInterfaces({}, "function show() { hovletView.openExternalResource('x') }");
        QVERIFY(m_scene->show(text("a")));
        const QPointer<HVWidget> popup(m_scene->popup());
        m_scene->host().opening = [&] {
            QTest::keyClick(m_scene->control, Qt::Key_F1); // waits for the user interface
            popup->hide();
        };
        QMetaObject::invokeMethod(popup->view()->rootObject(), "show");
        QTest::qWait(0);
        QVERIFY(!popup->isVisible());
        QVERIFY(!popup->view()->reserved());
    }

    void shouldNotExpandWithThePressThatShowsThePopup_data()
    {
        QTest::addColumn<bool>("isUp");
        QTest::newRow("without a popup") << false;
        QTest::newRow("with one that has no next level") << true;
    }

    /// The press continues to the control's parents after the host's handler has shown the popup.
    void shouldNotExpandWithThePressThatShowsThePopup()
    {
        QFETCH(bool, isUp);
        m_scene->context().set(HVKeyHideFadeDuration, 600000);
        m_scene->start();
        if (isUp) {
            QVERIFY(m_scene->show(text("b")));
            m_scene->popup()->hideAnimated();
        }
        const Receiver parent(&m_scene->window);
        const ShowingHost host(*m_scene);
        ulong time = 1000; // ms
        const auto press = [&] {
            QKeyEvent event(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier);
            event.setTimestamp(++time);
            QCoreApplication::sendEvent(m_scene->control, &event);
        };
        press();
        QVERIFY(m_scene->isShowing());
        QCOMPARE(shownInterface(), text("simple"));
        QCOMPARE(parent.presses, 1);
        QCoreApplication::processEvents();
        press();
        QCOMPARE(shownInterface(), text("full"));
        QCOMPARE(parent.presses, 1);
    }

    void shouldLetTheHostDeleteThePopupWhenItIsPainted_data()
    {
        QTest::addColumn<bool>("expands");
        QTest::newRow("with its next level") << true;
        QTest::newRow("with other content") << false;
    }

    void shouldLetTheHostDeleteThePopupWhenItIsPainted()
    {
        QFETCH(bool, expands);
        QVERIFY(m_scene->show(text("a")));
        const QPointer<HVWidget> popup(m_scene->popup());
        const Deleter deleter(popup);
        if (expands)
            QTest::keyClick(m_scene->control, Qt::Key_F1);
        else
            m_scene->show(text("b"), { 310, 310 });
        QVERIFY(!popup);
    }

    void shouldLeaveTheKeyToADialogIfThePopupHasNoControl()
    {
        QVERIFY(m_scene->manager().show(text("a"), HoverScene::Position, nullptr));
        QDialog dialog;
        dialog.setModal(true);
        dialog.show();
        const Receiver receiver(&dialog);
        QVERIFY(m_scene->isShowing());
        QTest::keyClick(&dialog, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(shownInterface(), text("simple"));
        dialog.hide();
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(shownInterface(), text("full"));
    }

    void shouldStartSimpleAgain()
    {
        QVERIFY(m_scene->show(text("a")));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QVERIFY(m_scene->show(text("b")));
        QCOMPARE(shownInterface(), text("simple"));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(shownInterface(), text("full"));
    }

private:
    /// How many timers of the popup run.
    int activeTimers()
    {
        int count = 0;
        const QList<QTimer *> timers = m_scene->popup()->findChildren<QTimer *>();
        for (const QTimer *timer : timers)
            count += timer->isActive() ? 1 : 0;
        return count;
    }
};

HOVLETS_TEST_MAIN(tst_HVWidgetLevels)
#include "tst_hvwidget_levels.moc"
