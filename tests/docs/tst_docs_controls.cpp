// SPDX-License-Identifier: Apache-2.0
#include "ControlWindow.h"
#include "HVInterface.h"
#include "HVPopup.h"
#include "HVView.h"
#include "HVWidget.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "TestMain.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QStandardItemModel>
#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

using namespace Hovlets;

// The class from the page about menus, item views and other parts.
namespace {
#include "ControlKeys.cpp" // NOLINT(bugprone-suspicious-include): part of a page, not a source

/// Records the objects that receive a tooltip event.
class EventRoute : public QObject
{
public:
    EventRoute() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::ToolTip)
            m_names += object->objectName();
        return false;
    }

    QString text() const { return m_names.join(QLatin1Char(' ')); }

private:
    QStringList m_names;
};

/// Sends what Qt sends when the mouse has rested on a point of a widget.
void restOn(QWidget &widget, const QPoint &point)
{
    QToolTip::hideText();
    const QPoint position = widget.mapToGlobal(point);
    QCursor::setPos(position);
    QHelpEvent event(QEvent::ToolTip, point, position);
    QCoreApplication::sendEvent(&widget, &event);
}

/// The key of the entry in the visible popup; empty if there is none.
QString shownKey()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *popup = qobject_cast<HVWidget *>(window);
        if (popup && popup->isVisible() && popup->view()->content())
            return popup->view()->content()->attribute(QStringLiteral("key"));
    }
    return {};
}

} // namespace

class tst_DocsControls : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_window = std::make_unique<ControlWindow>(ControlKeys::KeyRole);
        QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    }

    void cleanup() { m_window.reset(); }

    void shouldGoFromTheInnermostWidgetToTheWindow();
    void shouldAnswerForThePart();
    void shouldLeaveAnItemItsTooltip();
    void shouldTakeTheTooltipOfAnItemWhenPartsAnswerForTheControl();
    void shouldShowTheFallbackForAnInnerPart();
    void shouldShowOwnTips_data();
    void shouldShowOwnTips();
    void shouldNotShowOwnTipsUnlessAsked();
    void shouldMoveToAnotherControlWithTheSameTip();
    void shouldHideTheTipOfAnItemOverOneWithoutATip();
    void shouldLeaveTipsToQtWithoutThePackageThatDrawsThem();

private:
    template <class Host = ControlKeys>
    std::unique_ptr<HVInterface> host(const QByteArray &keys, HVContext settings = HVContext());
    static HVContext withOwnTips();
    QPair<QWidget *, QPoint> place(const QString &name);

    PackageFolder m_folder;
    std::unique_ptr<ControlWindow> m_window;
};

/// A host, by default of the class on the page, and an entry for each of \a keys, which are
/// separated by spaces.
template <class Host>
std::unique_ptr<HVInterface> tst_DocsControls::host(const QByteArray &keys, HVContext settings)
{
    QByteArray entries;
    for (const QByteArray &key : keys.split(' '))
        entries += "<hovlet key=\"" + key + "\" title=\"" + key + "\"/>\n";
    m_folder.addControlFile(QStringLiteral("Doc"), QStringLiteral("doc"),
                            "<hovlets search=\"Default\">\n" + entries + "</hovlets>");
    settings.set(HVKeyTrackHover, true);
    settings.set(HVKeyHideFadeDuration, 0);
    return std::make_unique<Host>(
            settings, QStringList { QStringLiteral(HOVLETS_PACKAGES), m_folder.path() });
}

/// Tests the page's table, which describes Qt without this library.
void tst_DocsControls::shouldGoFromTheInnermostWidgetToTheWindow()
{
    const auto route = [](QWidget &widget, const QPoint &point) {
        const EventRoute route;
        restOn(widget, point);
        return route.text();
    };
    ControlWindow &window = *m_window;
    QCOMPARE(route(window.button, { 5, 5 }), QStringLiteral("button group window"));
    QCOMPARE(route(window.tipped, { 5, 5 }), QStringLiteral("tipped"));
    QCOMPARE(route(*window.field(), { 5, 5 }),
             QStringLiteral("qt_spinbox_lineedit spinBox window"));
    QCOMPARE(route(*window.list.viewport(), window.item(0)),
             QStringLiteral("qt_scrollarea_viewport list window"));
    QCOMPARE(route(*window.list.viewport(), window.item(1)),
             QStringLiteral("qt_scrollarea_viewport"));
    QCOMPARE(route(*window.tabs.tabBar(), window.tabs.tabBar()->tabRect(0).center()),
             QStringLiteral("qt_tabwidget_tabbar tabs window"));
}

void tst_DocsControls::shouldAnswerForThePart()
{
    const auto interface = host<>("group spinBox list row column two tabs save file");
    ControlWindow &window = *m_window;
    // The distance between a popup and the next control depends on the style.
    const auto keyAt = [](QWidget &widget, const QPoint &point) {
        if (QWidget *popup = Hovlets::HVPopup::current().widget())
            popup->hide();
        restOn(widget, point);
        return shownKey();
    };
    QCOMPARE(keyAt(window.button, { 5, 5 }), QStringLiteral("group"));
    QCOMPARE(keyAt(*window.field(), { 5, 5 }), QStringLiteral("spinBox"));
    QCOMPARE(keyAt(*window.list.viewport(), window.item(0)), QStringLiteral("list"));
    QCOMPARE(keyAt(*window.list.viewport(), window.item(2)), QStringLiteral("row"));
    QCOMPARE(keyAt(*window.tree.header()->viewport(), { 5, 5 }), QStringLiteral("column"));
    QTabBar *bar = window.tabs.tabBar();
    QCOMPARE(keyAt(*bar, bar->tabRect(1).center()), QStringLiteral("two"));
    QCOMPARE(
            keyAt(window.menuBar, window.menuBar.actionGeometry(window.menu.menuAction()).center()),
            QStringLiteral("file"));
    window.menu.popup(window.mapToGlobal(QPoint(50, 50)));
    QCOMPARE(keyAt(window.menu, window.menu.actionGeometry(&window.save).center()),
             QStringLiteral("save"));
    window.menu.hide();
}

void tst_DocsControls::shouldLeaveAnItemItsTooltip()
{
    const auto interface = host<>("list");
    restOn(*m_window->list.viewport(), m_window->item(1));
    QCOMPARE(shownKey(), QString());
    QCOMPARE(QToolTip::text(), QStringLiteral("Of the item"));
}

/// Tests the case that the page warns about.
void tst_DocsControls::shouldTakeTheTooltipOfAnItemWhenPartsAnswerForTheControl()
{
    class MappedParts : public ControlKeys
    {
    public:
        using ControlKeys::ControlKeys;
        QString keyForObject(QObject *object) override
        {
            return object->objectName().startsWith(QLatin1String("qt_"))
                    ? object->parent()->objectName()
                    : ControlKeys::keyForObject(object);
        }
    };
    const auto interface = host<MappedParts>("list");
    restOn(*m_window->list.viewport(), m_window->item(1));
    QCOMPARE(shownKey(), QStringLiteral("list"));
    QCOMPARE(QToolTip::text(), QString());
}

void tst_DocsControls::shouldShowTheFallbackForAnInnerPart()
{
    HVContext settings;
    settings.set(HVKeyFallbackKey, QStringLiteral("general"));
    const auto interface = host<>("spinBox general", settings);
    restOn(*m_window->field(), { 5, 5 });
    QCOMPARE(shownKey(), QStringLiteral("general"));
}

namespace {

/// What the visible popup shows: title, shortcut and paragraphs, in brackets.
QString shownTexts()
{
    const HVPopup popup = HVPopup::current();
    if (popup.isNull() || !popup.content())
        return {};
    QString text;
    for (const char *name : { "title", "shortcut" })
        text += QLatin1Char('[') + popup.content()->attribute(QLatin1String(name))
                + QLatin1Char(']');
    const QObjectList &paragraphs = popup.content()->children();
    for (const QObject *paragraph : paragraphs)
        text += QLatin1Char('[') + static_cast<const HVXmlElement *>(paragraph)->content()
                + QLatin1Char(']');
    return text;
}

/// A delegate that may show any tooltip.
class OwnDelegate : public QStyledItemDelegate
{
};

} // namespace

HVContext tst_DocsControls::withOwnTips()
{
    HVContext settings;
    settings.set(HVKeyShowOwnTips, true);
    return settings;
}

/// The control of a row of the test, with its tips, and a point in it.
QPair<QWidget *, QPoint> tst_DocsControls::place(const QString &name)
{
    ControlWindow &window = *m_window;
    const auto setTips = [](auto &control) {
        control.setToolTip(QStringLiteral("Tip"));
        control.setStatusTip(QStringLiteral("Status"));
        control.setWhatsThis(QStringLiteral("<p>What's <b>this</b></p>"));
    };
    if (name == QLatin1String("button")) {
        setTips(window.button);
        window.button.setShortcut(Qt::CTRL | Qt::Key_B);
        return { &window.button, { 5, 5 } };
    }
    if (name == QLatin1String("status tip")) {
        window.button.setStatusTip(QStringLiteral("Status"));
        return { &window.button, { 5, 5 } };
    }
    if (name == QLatin1String("window")) {
        window.setWhatsThis(QStringLiteral("About the window"));
        return { &window.button, { 5, 5 } };
    }
    if (name == QLatin1String("spin box")) {
        setTips(window.spinBox);
        return { window.field(), { 5, 5 } };
    }
    if (name == QLatin1String("tab")) {
        window.tabs.setTabToolTip(1, QStringLiteral("Tip"));
        window.tabs.setTabWhatsThis(1, QStringLiteral("This"));
        QTabBar *bar = window.tabs.tabBar();
        return { bar, bar->tabRect(1).center() };
    }
    if (name == QLatin1String("section")) {
        window.model.setHeaderData(0, Qt::Horizontal, QStringLiteral("Tip"), Qt::ToolTipRole);
        return { window.tree.header()->viewport(), { 5, 5 } };
    }
    if (name.startsWith(QLatin1String("item"))) {
        setTips(*window.model.item(1));
        if (name.endsWith(QLatin1String("delegate")))
            window.list.setItemDelegate(new OwnDelegate);
        return { window.list.viewport(), window.item(1) };
    }
    setTips(window.save);
    window.save.setText(QStringLiteral("&Save"));
    window.save.setShortcut(Qt::CTRL | Qt::Key_S);
    window.menu.setToolTipsVisible(name == QLatin1String("menu"));
    window.menu.popup(window.mapToGlobal(QPoint(50, 50)));
    return { &window.menu, window.menu.actionGeometry(&window.save).center() };
}

void tst_DocsControls::shouldShowOwnTips_data()
{
    QTest::addColumn<QString>("shown"); // by the popup
    QTest::addColumn<QString>("toolTip"); // of Qt
    const QString texts = QStringLiteral("[Status][What's <b>this</b>]");
    QTest::newRow("button") << QStringLiteral("[Tip][Ctrl+B]") + texts << QString();
    QTest::newRow("status tip") << QStringLiteral("[][][Status]") << QString();
    QTest::newRow("window") << QString() << QString();
    QTest::newRow("spin box") << QStringLiteral("[Tip][]") + texts << QString();
    QTest::newRow("tab") << QStringLiteral("[Tip][][This]") << QString();
    QTest::newRow("section") << QStringLiteral("[Tip][]") << QString();
    QTest::newRow("item") << QStringLiteral("[Tip][]") + texts << QString();
    QTest::newRow("item with a delegate") << QString() << QStringLiteral("Tip");
    QTest::newRow("menu") << QStringLiteral("[Tip][Ctrl+S]") + texts << QString();
    QTest::newRow("menu without tooltips") << QString() << QString();
}

void tst_DocsControls::shouldShowOwnTips()
{
    const auto interface = host<>("other", withOwnTips());
    const auto [control, point] = place(QLatin1String(QTest::currentDataTag()));
    restOn(*control, point);
    QTEST(shownTexts(), "shown");
    QTEST(QToolTip::text(), "toolTip");
    m_window->menu.hide();
}

void tst_DocsControls::shouldNotShowOwnTipsUnlessAsked()
{
    HVContext settings = withOwnTips();
    settings.set(HVKeyFallbackKey, QStringLiteral("general"));
    const auto interface = host<>("button general", settings);
    m_window->button.setToolTip(QStringLiteral("Not shown"));
    restOn(m_window->button, { 5, 5 });
    QCOMPARE(shownKey(), QStringLiteral("button")); // an entry wins
    restOn(m_window->tipped, { 5, 5 });
    QCOMPARE(shownTexts(), QStringLiteral("[Of the button][]")); // and a tip over the fallback
    interface->context().set(HVKeyShowOwnTips, false);
    restOn(m_window->tipped, { 5, 5 });
    QCOMPARE(shownKey(), QStringLiteral("general"));
}

void tst_DocsControls::shouldMoveToAnotherControlWithTheSameTip()
{
    const auto interface = host<>("other", withOwnTips());
    m_window->button.setToolTip(m_window->tipped.toolTip());
    restOn(m_window->button, { 5, 5 });
    const QPoint first = HVPopup::current().widget()->pos();
    restOn(m_window->button, { 9, 5 });
    QCOMPARE(HVPopup::current().widget()->pos(), first);
    restOn(m_window->tipped, { 5, 5 });
    QVERIFY(HVPopup::current().widget()->pos() != first);
}

void tst_DocsControls::shouldHideTheTipOfAnItemOverOneWithoutATip()
{
    const auto interface = host<>("other", withOwnTips());
    m_window->model.item(1)->setToolTip(QStringLiteral("Tip"));
    QWidget *viewport = m_window->list.viewport();
    restOn(*viewport, m_window->item(1));
    QCOMPARE(shownTexts(), QStringLiteral("[Tip][]"));
    restOn(*viewport, m_window->item(0));
    QTRY_COMPARE(shownTexts(), QString());
}

void tst_DocsControls::shouldLeaveTipsToQtWithoutThePackageThatDrawsThem()
{
    HVContext settings = withOwnTips();
    settings.set(HVKeyTrackHover, true);
    const HVInterface interface(settings, {});
    restOn(m_window->tipped, { 5, 5 });
    QCOMPARE(QToolTip::text(), QStringLiteral("Of the button"));
}

HOVLETS_TEST_MAIN(tst_DocsControls)
#include "tst_docs_controls.moc"
