// SPDX-License-Identifier: Apache-2.0
#include "AssistScene.h"
#include "HVPopupPlace.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "TestMain.h"

#include <HovletsAssist/HVKeyboardAccess.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QtWidgets>
// The modules of these classes depend on the major version of Qt.
#include <QAction>
#include <QShortcut>

#include <memory>

using namespace Hovlets;

namespace {

/// A window with controls "a" and "nobody" and a group "b" with "inside". The mouse is far from all
/// of them.
class KeyboardScene : public AssistScene
{
public:
    explicit KeyboardScene(const HVKeyboardAccessSettings &wanted = {})
    {
        QCursor::setPos(780, 780);
        packages.addControlFile(
                text("Scene"), text("words"),
                "<hovlets locale='en_US'><hovlet key='words' title='Pen' shortcut='P'>"
                "<p>Draws &lt;b>%(width)s pixels&lt;/b> wide.</p><img alt='A pen'/></hovlet>"
                "</hovlets>");
        settings.set(HVKeyHideDelay, 20);
        settings.set(HVKeyHideFadeDuration, 0);
        createHost();
        host->setGlobalProperty(text("width"), 3);
        access = std::make_unique<HVKeyboardAccess>(*host, wanted);

        a = add<QPushButton>("a");
        nobody = add<QPushButton>("nobody");
        group = add<QGroupBox>("b");
        group->setFixedSize(200, 60);
        inside = new QLineEdit(group);
        inside->setObjectName(text("inside"));
        window.setGeometry(20, 20, 250, 200);
    }

    ~KeyboardScene()
    {
        access.reset();
        host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show(QWidget *focused, QWidget *shown = nullptr)
    {
        QWidget &top = shown ? *shown : window;
        top.show();
        top.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&top));
        focused->setFocus();
        QCOMPARE(QApplication::focusWidget(), focused);
    }

    static HVWidget *popup()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *widget : windows) {
            auto *popup = qobject_cast<HVWidget *>(widget);
            if (popup && popup->isVisible() && !popup->view()->reserved())
                return popup;
        }
        return nullptr;
    }

    static QString shownKey()
    {
        return popup() ? popup()->view()->content()->attribute(text("key")) : QString();
    }

    /// Sends a key press as the platform does: shortcuts see it first.
    static void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::activeWindow()->windowHandle(), key, modifiers);
    }

    static void pressOpenKey() { press(Qt::Key_F1, Qt::ControlModifier); }

    std::unique_ptr<HVKeyboardAccess> access;
    QPushButton *a;
    QPushButton *nobody;
    QGroupBox *group;
    QLineEdit *inside;
};

QRect onScreen(const QWidget *widget)
{
    return { widget->mapToGlobal(QPoint(0, 0)), widget->size() };
}

/// Counts the Escape keys that reach it.
class Dialog : public QDialog
{
public:
    using QDialog::QDialog;
    int escapes = 0;

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->key() == Qt::Key_Escape)
            ++escapes;
    }
};

QList<QAccessible::Event> announced;

} // namespace

/// Replaces Qt's own, which reports nothing on the offscreen platform: that lacks accessibility.
void QAccessible::updateAccessibility(QAccessibleEvent *event)
{
    if (qobject_cast<HVWidget *>(event->object()))
        announced += event->type();
}

class tst_HVKeyboardAccess : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldOpenTheHovletOfTheControlWithTheFocus()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.pressOpenKey();
        QCOMPARE(scene.shownKey(), text("a"));
        QVERIFY(scene.access->isOpen());
        QVERIFY(!onScreen(scene.popup()).intersects(onScreen(scene.a)));
        QCOMPARE(scene.popup()->referenceWidget(), scene.a);
    }

    void shouldOpenAboveAControlAtTheBottomOfTheScreen()
    {
        KeyboardScene scene;
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        scene.window.move(20, screen.bottom() - 230);
        scene.show(scene.inside);
        scene.pressOpenKey();
        QCOMPARE(scene.shownKey(), text("b"));
        QVERIFY(onScreen(scene.popup()).bottom() < onScreen(scene.group).top());
    }

    void shouldPlaceThePopupBesideTheControl_data()
    {
        QTest::addColumn<QRect>("control");
        QTest::addColumn<QPoint>("place"); // of a popup of 200 x 100 on a screen of 800 x 600
        QTest::newRow("below") << QRect(100, 100, 50, 20) << QPoint(100, 126);
        QTest::newRow("above") << QRect(100, 560, 50, 20) << QPoint(100, 454);
        QTest::newRow("moved in from the right") << QRect(700, 100, 50, 20) << QPoint(600, 126);
        QTest::newRow("moved in from the left") << QRect(-10, 100, 50, 20) << QPoint(0, 126);
        QTest::newRow("right") << QRect(100, 20, 50, 560) << QPoint(156, 20);
        QTest::newRow("left") << QRect(700, 20, 50, 560) << QPoint(494, 20);
        QTest::newRow("over one that fills it") << QRect(0, 0, 800, 600) << QPoint(600, 500);
    }

    void shouldPlaceThePopupBesideTheControl()
    {
        QFETCH(QRect, control);
        QFETCH(QPoint, place);
        QCOMPARE(placeBeside(control, QSize(200, 100), QRect(0, 0, 800, 600)), place);
    }

    void shouldOpenTheHovletOfTheNearestParent()
    {
        KeyboardScene scene;
        scene.show(scene.inside);
        scene.pressOpenKey();
        QCOMPARE(scene.shownKey(), text("b"));
    }

    void shouldOpenTheFallbackIfNoParentHasAnEntry()
    {
        KeyboardScene scene;
        scene.show(scene.nobody);
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
        scene.host->context().set(HVKeyFallbackKey, text("generic"));
        scene.pressOpenKey();
        QCOMPARE(scene.shownKey(), text("generic"));
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
    }

    void shouldCloseWithTheSameKey()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.pressOpenKey();
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
        QVERIFY(!scene.access->isOpen());
        scene.pressOpenKey();
        QCOMPARE(scene.shownKey(), text("a"));
    }

    void shouldCloseWhenTheFocusMoves()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.pressOpenKey();
        QVERIFY(scene.popup());
        scene.nobody->setFocus();
        QVERIFY(!scene.popup());
    }

    void shouldCloseWhenTheControlGoes()
    {
        KeyboardScene scene;
        scene.show(scene.inside);
        scene.pressOpenKey();
        QVERIFY(scene.popup());
        scene.group->hide();
        QVERIFY(!scene.popup());
    }

    void shouldStayWhileTheMouseRestsElsewhere()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        QVERIFY(scene.host->show(text("a"), QPoint(400, 400), scene.a));
        QTRY_VERIFY(!scene.popup()); // after the delay, as without the key
        scene.pressOpenKey();
        QVERIFY(scene.popup());
        auto *timer = scene.popup()->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly);
        QVERIFY(!timer->isActive()); // no countdown runs
        QMouseEvent move(QEvent::MouseMove, QPointF(), QPointF(), QPointF(780, 780), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(&scene.window, &move);
        QVERIFY(timer->isActive()); // the mouse decides again
        QTRY_VERIFY(!scene.popup());
    }

    void shouldHideThePopupWithEscape()
    {
        KeyboardScene scene;
        Dialog dialog;
        auto *button = scene.add<QPushButton>("a", &dialog);
        scene.show(button, &dialog);
        scene.press(Qt::Key_Escape);
        QCOMPARE(dialog.escapes, 1); // without a popup, the dialog gets the key
        QVERIFY(scene.host->show(text("a"), QPoint(400, 400), button)); // as a hover does
        scene.press(Qt::Key_Escape);
        QVERIFY(!scene.popup());
        QCOMPARE(dialog.escapes, 1);
        scene.press(Qt::Key_Escape);
        QCOMPARE(dialog.escapes, 2);
    }

    void shouldComeBeforeShortcuts()
    {
        KeyboardScene scene;
        QShortcut escape(QKeySequence(Qt::Key_Escape), &scene.window);
        QShortcut help(QKeySequence(text("Ctrl+F1")), &scene.window);
        QSignalSpy escapes(&escape, &QShortcut::activated), helps(&help, &QShortcut::activated);
        scene.show(scene.a);
        scene.pressOpenKey();
        QVERIFY(scene.popup());
        scene.press(Qt::Key_Escape);
        QVERIFY(!scene.popup());
        QCOMPARE(escapes.count() + helps.count(), 0);
        scene.press(Qt::Key_Escape);
        QCOMPARE(escapes.count(), 1);
        scene.nobody->setFocus();
        scene.pressOpenKey(); // there is nothing to open
        QCOMPARE(helps.count(), 1);
    }

    void shouldCloseAPinnedPopupOnlyWithTheFocus()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.pressOpenKey();
        QPointer<HVWidget> pinned = scene.popup();
        pinned->view()->setReserved(true);
        QVERIFY(!scene.access->isOpen());
        scene.show(scene.a);
        scene.press(Qt::Key_Escape);
        QVERIFY(pinned && pinned->isVisible());
        pinned->activateWindow();
        QTRY_COMPARE(QApplication::activeWindow(), pinned.data());
        // The window in which the key would be released is gone.
        QTest::keyPress(pinned->windowHandle(), Qt::Key_Escape);
        QTRY_VERIFY(!pinned);
    }

    void shouldOpenTheHovletOfTheChosenMenuEntry()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        QMenu menu;
        QAction *action = menu.addAction(text("One"));
        action->setObjectName(text("b"));
        menu.addAction(text("Two"));
        menu.popup(QPoint(100, 100));
        menu.setActiveAction(action);
        QTest::keyClick(&menu, Qt::Key_F1, Qt::ControlModifier);
        QCOMPARE(scene.shownKey(), text("b"));
        QTest::keyClick(&menu, Qt::Key_Escape);
        QVERIFY(!scene.popup());
        QVERIFY(menu.isVisible());
        QTest::keyClick(&menu, Qt::Key_F1, Qt::ControlModifier);
        QCOMPARE(scene.shownKey(), text("b"));
        menu.close();
        QVERIFY(!scene.popup());
    }

    void shouldRefuseResourcesThatTheSettingsForbid()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.host->context().set(HVKeySuspended, true);
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
    }

    void shouldIgnoreKeysWhenDisabled()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.access->setEnabled(false);
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
        QVERIFY(scene.host->show(text("a"), QPoint(400, 400), scene.a));
        scene.press(Qt::Key_Escape);
        QVERIFY(scene.popup());
    }

    void shouldAcceptAnotherKey()
    {
        HVKeyboardAccessSettings wanted;
        wanted.openKey = QKeySequence(text("Alt+H"));
        KeyboardScene scene(wanted);
        scene.show(scene.a);
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
        scene.press(Qt::Key_H, Qt::AltModifier);
        QCOMPARE(scene.shownKey(), text("a"));
    }

    void shouldUseNoStandardKey()
    {
        const QKeySequence key = HVKeyboardAccessSettings().openKey;
        QCOMPARE(key, QKeySequence(Qt::CTRL | Qt::Key_F1));
        const QMetaEnum keys = QMetaEnum::fromType<QKeySequence::StandardKey>();
        for (int i = 0; i < keys.keyCount(); ++i) {
            const auto standard = QKeySequence::StandardKey(keys.value(i));
            QVERIFY2(!QKeySequence::keyBindings(standard).contains(key), keys.key(i));
        }
        QVERIFY(QKeySequence::keyBindings(QKeySequence::WhatsThis)
                        .contains(QKeySequence(Qt::SHIFT | Qt::Key_F1)));
    }

    void shouldInformScreenReaders()
    {
        announced.clear();
        KeyboardScene scene;
        scene.host->context().set(HVKeyHideDelay, 0); // the popup stays
        scene.show(scene.a);
        QVERIFY(scene.host->show(text("words"), QPoint(300, 300), scene.a));
        QTRY_COMPARE(announced.count(QAccessible::Alert), 1);
        QVERIFY(announced.contains(QAccessible::ObjectShow));
        QCOMPARE(scene.popup()->accessibleName(), text("Pen"));
        QCOMPARE(scene.popup()->accessibleDescription(), text("P\nDraws 3 pixels wide.\nA pen"));
        // New content in a visible popup is announced, too.
        QVERIFY(scene.host->show(text("a"), QPoint(310, 310), scene.nobody));
        QTRY_COMPARE(announced.count(QAccessible::Alert), 2);
        QCOMPARE(scene.popup()->accessibleName(), text("Title of a"));
    }

    void shouldDoNothingWithoutTheInterface()
    {
        KeyboardScene scene;
        scene.show(scene.a);
        scene.host.reset();
        QVERIFY(!scene.access->open());
        scene.pressOpenKey();
        QVERIFY(!scene.popup());
    }
};

HOVLETS_TEST_MAIN(tst_HVKeyboardAccess)
#include "tst_hvkeyboardaccess.moc"
