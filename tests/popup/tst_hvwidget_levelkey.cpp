// SPDX-License-Identifier: Apache-2.0
#include "LevelScene.h"
#include "TestMain.h"

#include <QtCore/QTranslator>
#include <QtGui/QKeySequence>
#include <QtTest/QtTest>

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
};

HOVLETS_TEST_MAIN(tst_HVWidgetLevelKey)
#include "tst_hvwidget_levelkey.moc"
