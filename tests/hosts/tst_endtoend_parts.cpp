// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtGui/QCursor>
#include <QtWidgets/QtWidgets>

using namespace Hovlets;

namespace {

/// With a scroll bar, which is a window that is never seen.
constexpr auto UserInterface = R"(import QtQuick 2.15
import com.zandor.hovlets.qml 1.0
Rectangle { width: 200; height: 100; color: "steelblue"; HVScrollBar { width: 20; height: 100 } })";

/// Finds the part under the pointer, as a host does that returns a key for each part.
QString textAt(QObject *object, const QPoint &position)
{
    auto *widget = qobject_cast<QWidget *>(object);
    if (!widget)
        return {};
    const QPoint point = widget->mapFromGlobal(position);
    if (const auto *bar = qobject_cast<QTabBar *>(widget))
        return bar->tabText(bar->tabAt(point));
    if (const auto *menu = qobject_cast<QMenu *>(widget)) {
        const QAction *action = menu->actionAt(point);
        return action ? action->text() : QString();
    }
    if (const auto *bar = qobject_cast<QMenuBar *>(widget)) {
        const QAction *action = bar->actionAt(point);
        return action ? action->text() : QString();
    }
    const auto *view = qobject_cast<QAbstractItemView *>(widget->parentWidget());
    if (const auto *header = qobject_cast<const QHeaderView *>(view))
        return header->model()
                ->headerData(header->logicalIndexAt(point), header->orientation())
                .toString();
    return view ? view->indexAt(point).data().toString() : QString();
}

/// A host whose keys are the texts of the parts.
class PartsHost : public RecordingHost
{
public:
    using RecordingHost::RecordingHost;

    QString keyForObject(QObject *object) override { return textAt(object, QCursor::pos()); }
};

/// A window with a widget of each kind. Of its parts "a" and "b" have content, "tip" has its
/// own tooltip, and "plain" has nothing.
class PartsWindow : public QMainWindow
{
public:
    PartsWindow()
        : header(new QStandardItemModel(1, 4, this))
    {
        resize(500, 300);
        auto *center = new QWidget;
        auto *layout = new QVBoxLayout(center);
        layout->addWidget(&tabs);
        layout->addWidget(&table);
        layout->addWidget(&list);
        layout->addWidget(&combo);
        setCentralWidget(center);
        tabs.setExpanding(false);
        table.setModel(header);
        table.setMaximumHeight(60);
        menu.setTitle(QStringLiteral("a"));
        menu.setToolTipsVisible(true);
        menuBar()->addMenu(&menu);
        menuBar()->addAction(QStringLiteral("b"));
        menuBar()->addAction(QStringLiteral("plain"));
        for (const QString &text : names()) {
            const int index = names().indexOf(text);
            const QString toolTip =
                    text == QLatin1String("tip") ? QStringLiteral("Its own") : QString();
            tabs.setTabToolTip(tabs.addTab(text), toolTip);
            header->setHeaderData(index, Qt::Horizontal, text);
            auto *item = new QListWidgetItem(text, &list);
            combo.addItem(text);
            QAction *action = menu.addAction(text);
            if (toolTip.isEmpty())
                continue;
            header->setHeaderData(index, Qt::Horizontal, toolTip, Qt::ToolTipRole);
            item->setToolTip(toolTip);
            combo.setItemData(index, toolTip, Qt::ToolTipRole);
            action->setToolTip(toolTip);
        }
    }

    static QStringList names()
    {
        return { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("plain"),
                 QStringLiteral("tip") };
    }

    /// The centre of the part \a name of the widget \a kind.
    QPoint centerOf(const QByteArray &kind, const QString &name)
    {
        const int index = names().indexOf(name);
        if (kind == "tabs")
            return tabs.mapToGlobal(tabs.tabRect(index).center());
        if (kind == "dock tabs") {
            const QTabBar &docks = *dockTabs();
            return docks.mapToGlobal(docks.tabRect(index).center());
        }
        if (kind == "menu")
            return menu.mapToGlobal(menu.actionGeometry(menu.actions().at(index)).center());
        if (kind == "menu bar")
            return menuBar()->mapToGlobal(
                    menuBar()->actionGeometry(menuBar()->actions().at(index)).center());
        if (kind == "rows")
            return list.viewport()->mapToGlobal(list.visualItemRect(list.item(index)).center());
        if (kind == "combo list") {
            const QAbstractItemView *view = combo.view();
            return view->viewport()->mapToGlobal(
                    view->visualRect(combo.model()->index(index, 0)).center());
        }
        const QHeaderView &sections = *table.horizontalHeader();
        return sections.viewport()->mapToGlobal(
                QPoint(sections.sectionViewportPosition(index) + 20, sections.height() / 2));
    }

    /// The menu or list of \a kind, which closes by itself; null for the other kinds.
    QWidget *open(const QByteArray &kind)
    {
        if (kind == "menu") {
            menu.popup(mapToGlobal(QPoint(40, 40)));
            return &menu;
        }
        if (kind != "combo list")
            return nullptr;
        combo.showPopup();
        return combo.view();
    }

    /// Puts docks of these names into one place. Qt creates their tabs.
    void addDocks()
    {
        QDockWidget *first = nullptr;
        for (const QString &text : names()) {
            auto *dock = new QDockWidget(text, this);
            addDockWidget(Qt::BottomDockWidgetArea, dock);
            if (first)
                tabifyDockWidget(first, dock);
            else
                first = dock;
        }
    }

    QTabBar *dockTabs() const
    {
        return findChild<QTabBar *>(QString(), Qt::FindDirectChildrenOnly);
    }

    QTabBar tabs;
    QTableView table;
    QListWidget list;
    QComboBox combo;
    QMenu menu;
    QStandardItemModel *header;
};

} // namespace

/// Tests that parts of one widget act as separate controls, with a real pointer.
class tst_EndToEndParts : public HoverTest
{
    Q_OBJECT

public:
    tst_EndToEndParts()
    {
        m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), UserInterface);
    }

private Q_SLOTS:
    void shouldTakePartsForControls_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind :
             { "tabs", "dock tabs", "sections", "rows", "menu", "menu bar", "combo list" })
            QTest::newRow(kind) << QByteArray(kind);
    }

    void shouldTakePartsForControls()
    {
        QFETCH(QByteArray, kind);
        PartsWindow window;
        if (kind == "dock tabs")
            window.addDocks();
        QVERIFY(start(window));
        QTRY_VERIFY(kind != "dock tabs" || (window.dockTabs() && window.dockTabs()->isVisible()));
        const QWidget *opened = window.open(kind);
        const auto at = [&](const char *name) {
            return window.centerOf(kind, QString::fromUtf8(name));
        };
        const auto shown = [&](const char *name) {
            return popup() && isShowing(name) && (!opened || opened->isVisible());
        };

        QVERIFY(rest(at("a"), [&] { return shown("a"); }));
        QVERIFY(rest(at("b"), [&] { return shown("b"); }));
        QVERIFY(!timer()->isActive());
        Pointer::moveTo(at("plain")); // another control: the countdown starts
        QTRY_VERIFY(timer()->isActive() || !popup()->isVisible());
        QVERIFY(rest(at("plain"), [&] { return !popup()->isVisible(); }));
        if (kind == "menu bar" || kind == "dock tabs")
            return; // Qt shows no tooltips for them
        QVERIFY(rest(at("a"), [&] { return shown("a"); }));
        // The popup does not stay for a part near it that has a tooltip.
        m_host->manager()->context().set(HVKeySafeMargin, QSize(2000, 2000));
        QVERIFY(rest(at("tip"), [&] { return isToolTipShown(QStringLiteral("Its own")); }));
        QVERIFY(!popup()->isVisible());
        QVERIFY(!opened || opened->isVisible());
    }

    void shouldLeaveMenusAndListsOpenAfterAPin_data()
    {
        QTest::addColumn<QByteArray>("kind");
        for (const char *kind : { "menu", "combo list" })
            QTest::newRow(kind) << QByteArray(kind);
    }

    void shouldLeaveMenusAndListsOpenAfterAPin()
    {
        QFETCH(QByteArray, kind);
        PartsWindow window;
        QVERIFY(start(window));
        QVERIFY(rest(window.centerOf("tabs", QStringLiteral("a")),
                     [&] { return popup() && isShowing("a"); }));
        const std::unique_ptr<HVWidget> pinned(popup());
        pinned->view()->setReserved(true);
        QTRY_COMPARE(pinned->windowType(), Qt::Tool);
        const QWidget *opened = window.open(kind);
        QVERIFY(rest(window.centerOf(kind, QStringLiteral("b")),
                     [&] { return popup() && isShowing("b"); }));
        QVERIFY(opened->isVisible());
        QVERIFY(pinned->isVisible());
    }

private:
    bool start(PartsWindow &window)
    {
        HVContext settings;
        settings.set(HVKeyTrackHover, true);
        settings.set(HVKeyHideFadeDuration, 0);
        settings.set(HVKeyHideDelay, 60000);
        settings.set(HVKeyCursorOffset, QSize(300, 30)); // far from the other parts
        m_host.reset();
        m_host = std::make_unique<PartsHost>(settings, QStringList { m_folder.path() });
        m_window.reset();
        window.move(300, 200);
        window.show();
        window.activateWindow();
        return QTest::qWaitForWindowActive(&window);
    }
};

HOVLETS_TEST_MAIN(tst_EndToEndParts)
#include "tst_endtoend_parts.moc"
