// SPDX-License-Identifier: Apache-2.0
#include "HVPopup.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "HovletsQuickTypes.h"
#include "ImpatientStyle.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "RecordingHost.h"
#include "TestMain.h"

#include <HovletsAssist/HVKeyboardAccess.h>

#include <QtGui/QScreen>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExpression>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

/// "first" and "second" are beside each other, "inner" is in "outer", and a mouse area hides half
/// of "covered". "named" has only an object name, "plain" is no control.
constexpr auto Scene = R"(import QtQuick 2.15
import QtQuick.Window 2.15
import Hovlets 1.0
Window {
    width: 400; height: 300; x: 100; y: 100; visible: true
    Rectangle {
        objectName: "first"; x: 10; y: 10; width: 80; height: 30
        Hovlet.key: "a"; Hovlet.shortcut: "F7"
        MouseArea { anchors.fill: parent; hoverEnabled: true }
    }
    Item { objectName: "second"; focus: true; activeFocusOnTab: true; x: 100; y: 10; width: 80; height: 30; Hovlet.key: "b" }
    Item { objectName: "named"; x: 190; y: 10; width: 80; height: 30; Hovlet.enabled: true }
    Item { objectName: "plain"; activeFocusOnTab: true; x: 280; y: 10; width: 80; height: 30 }
    Item {
        objectName: "outer"; x: 10; y: 60; width: 180; height: 60; clip: true
        Hovlet.key: "c"
        Item { objectName: "inner"; x: 100; y: 10; width: 200; height: 30; Hovlet.key: "b" }
    }
    Item { objectName: "covered"; x: 200; y: 60; width: 80; height: 30; Hovlet.key: "a" }
    MouseArea { x: 240; y: 60; width: 100; height: 30 }
})";

} // namespace

/// Tests items of Qt Quick as controls, with a real pointer.
class tst_EndToEndQuick : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { start(false); }
    void cleanup();

    void shouldShowBesideAnItem();
    void shouldStayOnTheScreen();
    void shouldAskTheHostAboutItems();
    void shouldFindTheUppermostItem_data();
    void shouldFindTheUppermostItem();
    void shouldHideWithItsItem_data();
    void shouldHideWithItsItem();
    void shouldHideOverItemsWithoutContent_data();
    void shouldHideOverItemsWithoutContent();
    void shouldLeaveTheWayToThePopupFree();
    void shouldPinAboveItsWindow();
    void shouldOpenByKeyboard();
    void shouldShowInAnInactiveWindowIfTheSettingsAsk();
    void shouldSayThatAnObjectIsNoItem();

private:
    void start(bool inInactiveWindows);
    HVWidget *popup() const { return m_host->popup(); }
    bool isShowing(const QString &key) const;
    QQuickItem *item(const QString &name) const { return m_window->findChild<QQuickItem *>(name); }
    QRect placeOf(const QString &name) const;
    template <typename Condition> static bool rest(const QPoint &position, Condition happened);
    bool hover(const QString &name, const QString &key);

    PackageFolder m_folder;
    std::unique_ptr<RecordingHost> m_host;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
};

void tst_EndToEndQuick::initTestCase()
{
    QApplication::setStyle(new ImpatientStyle);
    registerQuickTypes("Hovlets");
    m_folder.addPackage(QStringLiteral("Pack"),
                        { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c"),
                          QStringLiteral("named") });
}

void tst_EndToEndQuick::start(bool inInactiveWindows)
{
    HVContext settings;
    settings.set(HVKeyAlwaysShowTooltips, inInactiveWindows);
    settings.set(HVKeyTrackHover, true);
    settings.set(HVKeyPlacement, int(HVPlaceBesideControl));
    settings.set(HVKeyHideFadeDuration, 0);
    settings.set(HVKeyHideDelay, 60000);
    settings.set(HVKeyDismissOnKey, HVDismissOnEscape | HVDismissOnWheel);
    m_host = std::make_unique<RecordingHost>(settings, QStringList { m_folder.path() });
    Pointer::moveAway();
    m_engine = std::make_unique<QQmlEngine>();
    QQmlComponent component(m_engine.get());
    component.setData(Scene, QUrl());
    m_window.reset(qobject_cast<QQuickWindow *>(component.create()));
    QVERIFY2(m_window, qPrintable(component.errorString()));
    QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
}

void tst_EndToEndQuick::cleanup()
{
    m_window.reset();
    m_engine.reset();
    m_host.reset();
}

bool tst_EndToEndQuick::isShowing(const QString &key) const
{
    return popup() && popup()->isVisible() && popup()->view()->content()
            && popup()->view()->content()->attribute(QStringLiteral("key")) == key;
}

QRect tst_EndToEndQuick::placeOf(const QString &name) const
{
    const QQuickItem *found = item(name);
    return { found->mapToGlobal(QPointF()).toPoint(),
             QSizeF(found->width(), found->height()).toSize() };
}

/// Rests the pointer at \a position until \a happened, and moves it a bit now and then, like a
/// hand.
template <typename Condition>
bool tst_EndToEndQuick::rest(const QPoint &position, Condition happened)
{
    for (int i = 0; i < 25; ++i) {
        Pointer::moveTo(position + QPoint(i % 2, 0));
        if (QTest::qWaitFor(happened, 400))
            return true;
    }
    return false;
}

bool tst_EndToEndQuick::hover(const QString &name, const QString &key)
{
    return rest(placeOf(name).center(), [&] { return isShowing(key); });
}

void tst_EndToEndQuick::shouldShowBesideAnItem()
{
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    const QRect item = placeOf(QStringLiteral("first"));
    const QRect shown = popup()->frameGeometry();
    QVERIFY(!shown.intersects(item));
    QVERIFY(shown.adjusted(-20, -20, 20, 20).intersects(item));
    QCOMPARE(popup()->windowHandle()->transientParent(), m_window.get());
    QVERIFY(m_window->isActive());
    // The next item takes over.
    QVERIFY(hover(QStringLiteral("second"), QStringLiteral("b")));
    QVERIFY(!popup()->frameGeometry().intersects(placeOf(QStringLiteral("second"))));
}

void tst_EndToEndQuick::shouldStayOnTheScreen()
{
    const QRect screen = m_window->screen()->availableGeometry();
    m_window->setPosition(screen.right() - 100, screen.bottom() - 60);
    QTRY_VERIFY(m_window->y() > screen.bottom() - 100);
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    QVERIFY(screen.contains(popup()->geometry()));
    QVERIFY(!popup()->geometry().intersects(placeOf(QStringLiteral("first"))));
}

void tst_EndToEndQuick::shouldAskTheHostAboutItems()
{
    QVERIFY(hover(QStringLiteral("named"), QStringLiteral("named")));
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    const QString shortcut = QStringLiteral("shortcut");
    QCOMPARE(popup()->view()->content()->attribute(shortcut), QStringLiteral("F7"));
    m_host->shortcut = QStringLiteral("Ctrl+B");
    QVERIFY(hover(QStringLiteral("second"), QStringLiteral("b")));
    QCOMPARE(popup()->view()->content()->attribute(shortcut), QStringLiteral("Ctrl+B"));
}

void tst_EndToEndQuick::shouldFindTheUppermostItem_data()
{
    QTest::addColumn<QPoint>("point"); // in the window
    QTest::addColumn<QString>("disabled"); // an item whose Hovlet is not enabled
    QTest::addColumn<QString>("key");
    QTest::newRow("outer") << QPoint(30, 80) << QString() << "c";
    QTest::newRow("inner") << QPoint(150, 85) << QString() << "b";
    QTest::newRow("disabled inner") << QPoint(150, 85) << "inner"
                                    << "c";
    QTest::newRow("beside a cover") << QPoint(220, 75) << QString() << "a";
}

void tst_EndToEndQuick::shouldFindTheUppermostItem()
{
    QFETCH(QPoint, point);
    QFETCH(QString, disabled);
    QFETCH(QString, key);
    if (!disabled.isEmpty()) {
        QQmlExpression disable(qmlContext(m_window.get()), item(disabled),
                               QStringLiteral("Hovlet.enabled = false"));
        disable.evaluate();
        QVERIFY2(!disable.hasError(), qPrintable(disable.error().toString()));
    }
    QVERIFY(rest(m_window->mapToGlobal(point), [&] { return isShowing(key); }));
}

void tst_EndToEndQuick::shouldHideWithItsItem_data()
{
    QTest::addColumn<QString>("how");
    for (const char *how : { "hidden", "destroyed", "disabled", "moved window", "hidden window",
                             "click", "wheel", "escape", "left" })
        QTest::newRow(how) << QString::fromLatin1(how);
}

void tst_EndToEndQuick::shouldHideWithItsItem()
{
    QFETCH(QString, how);
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    QQuickItem *first = item(QStringLiteral("first"));
    if (how == QLatin1String("hidden")) {
        first->setVisible(false);
    } else if (how == QLatin1String("destroyed")) {
        delete first;
    } else if (how == QLatin1String("disabled")) {
        QQmlExpression(qmlContext(m_window.get()), first, QStringLiteral("Hovlet.enabled = false"))
                .evaluate();
    } else if (how == QLatin1String("moved window")) {
        m_window->setPosition(m_window->position() + QPoint(40, 0));
    } else if (how == QLatin1String("hidden window")) {
        m_window->hide();
    } else if (how == QLatin1String("click")) {
        Pointer::click();
    } else if (how == QLatin1String("wheel")) {
        Pointer::turnWheel();
    } else if (how == QLatin1String("escape")) {
        Pointer::press(QStringLiteral("Escape"));
        Pointer::release(QStringLiteral("Escape"));
    } else {
        m_host->manager()->context().set(HVKeyHideDelay, 100);
        Pointer::moveAway();
    }
    QTRY_VERIFY(!popup()->isVisible());
}

void tst_EndToEndQuick::shouldHideOverItemsWithoutContent_data()
{
    QTest::addColumn<QPoint>("point"); // in the window
    QTest::newRow("plain") << QPoint(320, 25);
    QTest::newRow("window") << QPoint(380, 280);
    QTest::newRow("covered") << QPoint(265, 75);
    QTest::newRow("clipped") << QPoint(280, 85); // the part of "inner" outside of "outer"
}

void tst_EndToEndQuick::shouldHideOverItemsWithoutContent()
{
    QFETCH(QPoint, point);
    m_host->manager()->context().set(HVKeySafeMargin, QSize(0, 0));
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    QVERIFY(rest(m_window->mapToGlobal(point), [&] { return !popup()->isVisible(); }));
}

void tst_EndToEndQuick::shouldLeaveTheWayToThePopupFree()
{
    m_host->manager()->context().set(HVKeySafePath, true);
    m_host->manager()->context().set(HVKeySafePathDwell, 3000);
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    // The popup is below "first", and the way to its right end leads over "second".
    const QRect second = placeOf(QStringLiteral("second"));
    const QPoint start = placeOf(QStringLiteral("first")).topRight() + QPoint(-5, 5);
    const QPoint end = popup()->frameGeometry().topRight() + QPoint(-20, 10);
    Pointer::moveTo(start);
    int steps = 0;
    for (int step = 1; step <= 20; ++step) {
        const QPoint position = start + (end - start) * step / 20;
        Pointer::moveTo(position);
        steps += second.contains(position) ? 1 : 0;
        QTest::qWait(20);
        QVERIFY(isShowing(QStringLiteral("a")));
    }
    QVERIFY(steps > 1);
    // An item on which the pointer rests takes over.
    QVERIFY(hover(QStringLiteral("second"), QStringLiteral("b")));
}

void tst_EndToEndQuick::shouldPinAboveItsWindow()
{
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
    const QPointer<HVWidget> pinned(popup());
    pinned->view()->setReserved(true);
    QTRY_COMPARE(pinned->windowType(), Qt::Tool);
    QTRY_VERIFY(pinned->isVisible());
    QCOMPARE(pinned->windowHandle()->transientParent(), m_window.get());
    QVERIFY(hover(QStringLiteral("second"), QStringLiteral("b")));
    QVERIFY(pinned->isVisible());
    m_window.reset();
    QVERIFY(!pinned); // like a popup that belongs to a widget's window
}

void tst_EndToEndQuick::shouldOpenByKeyboard()
{
    HVContext settings;
    settings.set(HVKeyHideFadeDuration, 0);
    HVInterface host(settings, { m_folder.path() });
    const HVKeyboardAccess access(host);
    const auto shownKey = [] {
        const HVXmlElement *entry = HVPopup::current().content();
        return entry ? entry->attribute(QStringLiteral("key")) : QString();
    };
    const auto press = [](const char *key) {
        Pointer::press(QLatin1String(key));
        Pointer::release(QLatin1String(key));
    };
    QVERIFY(item(QStringLiteral("second"))->hasActiveFocus());
    Pointer::press(QStringLiteral("ctrl"));
    press("F1");
    Pointer::release(QStringLiteral("ctrl"));
    QTRY_VERIFY(shownKey() == QLatin1String("b"));
    QVERIFY(!HVPopup::current().widget()->frameGeometry().intersects(
            placeOf(QStringLiteral("second"))));
    press("Tab");
    QTRY_VERIFY(shownKey().isEmpty());
    QVERIFY(item(QStringLiteral("plain"))->hasActiveFocus());
}

void tst_EndToEndQuick::shouldShowInAnInactiveWindowIfTheSettingsAsk()
{
    cleanup();
    start(true);
    QWidget other;
    other.setGeometry(700, 500, 100, 50);
    other.show();
    other.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&other));
    QVERIFY(!m_window->isActive());
    QVERIFY(hover(QStringLiteral("first"), QStringLiteral("a")));
}

void tst_EndToEndQuick::shouldSayThatAnObjectIsNoItem()
{
    QQmlComponent component(m_engine.get());
    component.setData("import QtQml 2.15\nimport Hovlets 1.0\nQtObject { Hovlet.key: 'a' }",
                      QUrl());
    QTest::ignoreMessage(QtWarningMsg,
                         QRegularExpression(QStringLiteral("only be attached to items")));
    const std::unique_ptr<QObject> object(component.create());
    QVERIFY2(object, qPrintable(component.errorString()));
}

HOVLETS_TEST_MAIN(tst_EndToEndQuick)
#include "tst_endtoend_quick.moc"
