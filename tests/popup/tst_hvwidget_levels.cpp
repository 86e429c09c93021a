// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HoverScene.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QTranslator>
#include <QtGui/QKeySequence>
#include <QtQuick/QQuickItem>
#include <QtTest/QtTest>
#include <QtWidgets/QDialog>

#include <memory>

using namespace Hovlets;

namespace {

/// Counts the key events that still reach a widget: those of one key or, without it, all.
class Receiver : public QObject
{
public:
    explicit Receiver(QWidget *widget, int key = 0)
        : m_key(key)
    {
        widget->installEventFilter(this);
    }

    int overrides = 0;
    int presses = 0;
    int releases = 0;

protected:
    bool eventFilter(QObject *, QEvent *event) override
    {
        int *const count = event->type() == QEvent::ShortcutOverride ? &overrides
                : event->type() == QEvent::KeyPress                  ? &presses
                : event->type() == QEvent::KeyRelease                ? &releases
                                                                     : nullptr;
        if (count && (m_key == 0 || static_cast<QKeyEvent *>(event)->key() == m_key))
            ++*count;
        return false;
    }

private:
    int m_key;
};

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

/// Gives the Return key another name.
class Translator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        const bool isKey = QByteArray(context) == "QShortcut" && QByteArray(source) == "Return";
        return isKey ? text("Retour") : QString();
    }
};

void repeat(QWidget *widget, Qt::Key key)
{
    // As an X server does while a key is held.
    for (const QEvent::Type type :
         { QEvent::KeyRelease, QEvent::ShortcutOverride, QEvent::KeyPress }) {
        QKeyEvent event(type, key, Qt::NoModifier, QString(), true);
        QCoreApplication::sendEvent(widget, &event);
    }
}

} // namespace

/// Tests the key that leads from the simple popup to the full one, and from there to a pinned one.
class tst_HVWidgetLevels : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_scene = std::make_unique<HoverScene>();
        setInterfaces({}, {});
        m_scene->context().set(HVKeySimpleMode, true);
        m_scene->context().set(HVKeyExpandKey, text("F1"));
    }
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

    void shouldLeaveTheKeyToTheHost_data()
    {
        QTest::addColumn<QVariant>("setting");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("isTaken");
        const auto row = [](const char *name, const QVariant &setting, int key, bool isTaken) {
            QTest::newRow(name) << setting << key << isTaken;
        };
        row("default", QVariant(QString()), Qt::Key_F1, false);
        row("the key", text("F1"), Qt::Key_F1, true);
        row("another key", text("F1"), Qt::Key_F2, false);
        row("with a modifier", text("F1"), Qt::CTRL | Qt::Key_F1, false);
        row("without its modifier", text("Ctrl+F1"), Qt::Key_F1, false);
        row("with its modifier", text("Ctrl+F1"), Qt::CTRL | Qt::Key_F1, true);
        row("on the number pad", text("+"), Qt::KeypadModifier | Qt::Key_Plus, true);
        row("typed with Shift", text("?"), Qt::SHIFT | Qt::Key_Question, true);
        row("a letter with Shift", text("M"), Qt::SHIFT | Qt::Key_M, false);
        row("Shift and Tab", text("Shift+Tab"), Qt::SHIFT | Qt::Key_Backtab, true);
        row("a key sequence", QVariant::fromValue(QKeySequence(Qt::Key_F1)), Qt::Key_F1, true);
    }

    void shouldLeaveTheKeyToTheHost()
    {
        QFETCH(QVariant, setting);
        QFETCH(int, key);
        QFETCH(bool, isTaken);
        m_scene->context().set(HVKeyExpandKey, setting);
        const Qt::Key pressed = Qt::Key(key & ~int(Qt::KeyboardModifierMask));
        const Receiver receiver(m_scene->control, pressed); // QTest also presses the modifiers
        QVERIFY(m_scene->show(text("a")));
        QTest::keyClick(m_scene->control, pressed,
                        Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask)));
        QCOMPARE(shownInterface(), isTaken ? text("full") : text("simple"));
        QCOMPARE(receiver.overrides, isTaken ? 0 : 1);
        QCOMPARE(receiver.presses, isTaken ? 0 : 1);
        QCOMPARE(receiver.releases, isTaken ? 0 : 1);
    }

    void shouldReadAKeySequenceInAnyLanguage()
    {
        Translator translator;
        QCoreApplication::installTranslator(&translator);
        const QKeySequence key(Qt::Key_Return);
        QCOMPARE(key.toString(QKeySequence::NativeText), text("Retour"));
        m_scene->context().set(HVKeyExpandKey, QVariant::fromValue(key));
        QVERIFY(m_scene->show(text("a")));
        QTest::keyClick(m_scene->control, Qt::Key_Return);
        QCOMPARE(shownInterface(), text("full"));
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

    void shouldMoveOneLevelWhileTheKeyIsHeld()
    {
        const Receiver receiver(m_scene->control);
        QVERIFY(m_scene->show(text("a")));
        const QPointer<HVWidget> popup(m_scene->popup());
        for (const char *level : { "full", "pinned" }) {
            QTest::keyPress(m_scene->control, Qt::Key_F1);
            for (int i = 0; i < 3; ++i)
                repeat(m_scene->control, Qt::Key_F1);
            QCOMPARE(popup->view()->reserved(), text(level) == text("pinned"));
            QTest::keyRelease(m_scene->control, Qt::Key_F1);
        }
        QCOMPARE(receiver.overrides + receiver.presses + receiver.releases, 0);
        delete popup.data();
    }

    void shouldKeepTheHeldKeyFromTheHostWhileOthersArePressed()
    {
        const Receiver receiver(m_scene->control, Qt::Key_F1);
        QVERIFY(m_scene->show(text("a")));
        QTest::keyPress(m_scene->control, Qt::Key_F1);
        QTest::keyPress(m_scene->control, Qt::Key_Shift);
        repeat(m_scene->control, Qt::Key_F1);
        QTest::keyRelease(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.overrides + receiver.presses + receiver.releases, 0);
        QCOMPARE(shownInterface(), text("full"));
    }

    void shouldIgnoreAKeyThatWasHeldBefore_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("the key") << Qt::Key_F1;
        QTest::newRow("a key that Qt does not name") << Qt::Key(0);
    }

    void shouldIgnoreAKeyThatWasHeldBefore()
    {
        QFETCH(Qt::Key, key);
        const Receiver receiver(m_scene->control);
        QVERIFY(m_scene->show(text("a")));
        repeat(m_scene->control, key);
        QVERIFY(receiver.overrides > 0);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(receiver.releases, 1);
        QCOMPARE(shownInterface(), text("simple"));
    }

    void shouldTakePrecedenceOverKeysThatDismiss_data()
    {
        QTest::addColumn<QString>("expands");
        QTest::addColumn<Qt::Key>("key");
        QTest::newRow("any key") << text("F1") << Qt::Key_F1;
        QTest::newRow("Escape") << text("Esc") << Qt::Key_Escape;
    }

    void shouldTakePrecedenceOverKeysThatDismiss()
    {
        QFETCH(QString, expands);
        QFETCH(Qt::Key, key);
        m_scene->context().set(HVKeyExpandKey, expands);
        m_scene->context().set(HVKeyDismissOnKey, HVDismissOnAnyKey | HVDismissOnEscape);
        QVERIFY(m_scene->show(text("a")));
        QTest::keyClick(m_scene->control, key);
        QVERIFY(m_scene->isShowing());
        QCOMPARE(shownInterface(), text("full"));
        QTest::keyClick(m_scene->control, Qt::Key_A);
        QVERIFY(!m_scene->isShowing());
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

    void shouldUseTheSettingAtTheTimeOfTheShow()
    {
        m_scene->context().set(HVKeyExpandKey, QString());
        QVERIFY(m_scene->show(text("a")));
        m_scene->context().set(HVKeyExpandKey, text("F1"));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(shownInterface(), text("simple"));
    }

    void shouldExplainAnUnreadableKey_data()
    {
        QTest::addColumn<QString>("setting");
        for (const char *value : { "nonsense", "Ctrl+K, F1", "Shift", "Ctrl+", "F99" })
            QTest::newRow(value) << text(value);
    }

    void shouldExplainAnUnreadableKey()
    {
        QFETCH(QString, setting);
        m_scene->context().set(HVKeyExpandKey, setting);
        const Receiver receiver(m_scene->control);
        for (const char *key : { "a", "b", "a" })
            QVERIFY(m_scene->show(text(key)));
        const QStringList expected(
                text("HVKeyExpandKey is \"%1\", which is not one key: write a key and its "
                     "modifiers, such as \"F1\" or \"Ctrl+Space\"")
                        .arg(setting));
        QTRY_COMPARE(m_scene->host().messagesOf(HVMessageWarning), expected);
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(receiver.presses, 1);
        QCOMPARE(shownInterface(), text("simple"));
    }

    void shouldTellQmlTheKey()
    {
        setInterfaces("property string key: hovletWindow.levelKey",
                      "property string key: hovletWindow.levelKey");
        QVERIFY(m_scene->show(text("a")));
        QCOMPARE(m_scene->view()->rootObject()->property("key").toString(), text("F1"));
        QTest::keyClick(m_scene->control, Qt::Key_F1);
        QCOMPARE(m_scene->view()->rootObject()->property("key").toString(), text("F1"));
        m_scene->context().set(HVKeyExpandKey, text("nonsense"));
        QVERIFY(m_scene->show(text("b")));
        QCOMPARE(m_scene->view()->rootObject()->property("key").toString(), QString());
        QTRY_COMPARE(m_scene->host().messagesOf(HVMessageWarning).size(), 1);
    }

private:
    /// The interfaces of the popup, with properties of their own.
    void setInterfaces(const QByteArray &simple, const QByteArray &full)
    {
        const auto add = [this](const char *file, const char *name, int height,
                                const QByteArray &properties) {
            m_scene->packages.add(text("Scene.hovlets/ui/") + text(file),
                                  QByteArray("import QtQuick 2.15\nItem { objectName: '") + name
                                          + "'; width: 200; height: " + QByteArray::number(height)
                                          + '\n' + properties + "\n}");
        };
        add("SimpleTooltip.qml", "simple", 50, simple);
        add("HovletsUI.qml", "full", 200, full);
    }

    /// How many timers of the popup run.
    int activeTimers()
    {
        int count = 0;
        const QList<QTimer *> timers = m_scene->popup()->findChildren<QTimer *>();
        for (const QTimer *timer : timers)
            count += timer->isActive() ? 1 : 0;
        return count;
    }

    QString shownInterface() { return m_scene->view()->rootObject()->objectName(); }

    std::unique_ptr<HoverScene> m_scene;
};

HOVLETS_TEST_MAIN(tst_HVWidgetLevels)
#include "tst_hvwidget_levels.moc"
