// SPDX-License-Identifier: Apache-2.0
#include "LevelScene.h"
#include "TestMain.h"

#include <QtCore/QTranslator>
#include <QtGui/QKeySequence>
#include <QtQuickWidgets/QQuickWidget>
#include <QtTest/QtTest>
#include <QtWidgets/QLineEdit>
// The module of this class depends on the major version of Qt.
#include <QAction>

#include <memory>

using namespace Hovlets;

namespace {

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

/// Tests which key presses lead to the next level of a popup, and which are the host's.
class tst_HVWidgetLevelKey : public QObject, private LevelScene
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }
    void cleanup() { m_scene.reset(); }

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

    void shouldTakeTheKeyFromAShortcutOfTheHost_data()
    {
        QTest::addColumn<QString>("focus");
        QTest::addColumn<Qt::ShortcutContext>("context");
        for (const char *focus : { "none", "text field", "Qt Quick" }) {
            QTest::addRow("%s, window", focus) << text(focus) << Qt::WindowShortcut;
            QTest::addRow("%s, application", focus) << text(focus) << Qt::ApplicationShortcut;
        }
    }

    /// The action gets the key again as soon as the popup has no use for it.
    void shouldTakeTheKeyFromAShortcutOfTheHost()
    {
        QFETCH(QString, focus);
        QFETCH(Qt::ShortcutContext, context);
        setInterfaces({}, "property bool pinnable: false");
        Control &window = m_scene->window;
        QAction action;
        action.setShortcut(Qt::Key_F1);
        action.setShortcutContext(context);
        window.addAction(&action);
        QSignalSpy triggered(&action, &QAction::triggered);
        const std::unique_ptr<QWidget> field = focusedField(focus);
        const Receiver others(qApp, Qt::Key_F1);
        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QCOMPARE(QApplication::focusWidget(), field.get());
        const auto press = [&] { QTest::keyClick(window.windowHandle(), Qt::Key_F1); };

        press();
        QCOMPARE(triggered.count(), 1);
        QVERIFY(m_scene->show(text("a")));
        QCoreApplication::processEvents(); // the press that shows a popup is the host's
        press();
        QCOMPARE(shownInterface(), text("full"));
        QCOMPARE(triggered.count(), 1);
        press();
        QCOMPARE(triggered.count(), 2);
        QCOMPARE(others.presses, 0);
    }

    /// Qt offers a press that is not accepted to the parents of the widget as well.
    void shouldTakeAPressOnlyOnce()
    {
        QVERIFY(m_scene->show(text("a")));
        const QPointer<HVWidget> popup(m_scene->popup());
        const Receiver parent(&m_scene->window);
        for (const QEvent::Type type : { QEvent::KeyPress, QEvent::KeyRelease }) {
            QKeyEvent event(type, Qt::Key_F1, Qt::NoModifier);
            event.ignore(); // as one that a host passes on
            QCoreApplication::sendEvent(m_scene->control, &event);
            QVERIFY(!popup->view()->reserved());
            QVERIFY(event.isAccepted());
        }
        QCOMPARE(shownInterface(), text("full"));
        QCOMPARE(parent.presses + parent.releases, 0);
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
    /// A new child of the window that has the focus; null for "none".
    std::unique_ptr<QWidget> focusedField(const QString &kind)
    {
        std::unique_ptr<QWidget> field;
        if (kind == text("text field")) {
            field = std::make_unique<QLineEdit>();
        } else if (kind == text("Qt Quick")) {
            auto view = std::make_unique<QQuickWidget>();
            const QString file = m_scene->packages.add(
                    text("Field.qml"), "import QtQuick 2.15\nTextInput { focus: true }");
            view->setSource(QUrl::fromLocalFile(file));
            field = std::move(view);
        }
        if (!field)
            return nullptr;
        field->setParent(&m_scene->window);
        field->show();
        field->setFocus();
        return field;
    }
};

HOVLETS_TEST_MAIN(tst_HVWidgetLevelKey)
#include "tst_hvwidget_levelkey.moc"
