// SPDX-License-Identifier: Apache-2.0
#include "KeysHost.h"
#include "PackageFolder.h"
#include "TestMain.h"

#include <memory>

using namespace Hovlets;

namespace {

QPoint onScreen(const QWidget *widget, const QPoint &point)
{
    return widget->mapToGlobal(point);
}

QRect areaOf(const QWidget *widget, const QRect &area)
{
    return { widget->mapToGlobal(area.topLeft()), area.size() };
}

/// A host with a window of every kind of control. The content has entries for \a keys.
class KeysScene
{
public:
    explicit KeysScene(const QStringList &keys = {}, const HVStandardKeysSettings &wanted = {})
    {
        packages.addPackage(text("Scene"), QStringList(keys) << text("unused"));
        host = std::make_unique<KeysHost>(settings, QStringList { packages.path() }, wanted);
        window.show();
        const bool isShown = QTest::qWaitForWindowExposed(&window);
        Q_ASSERT(isShown);
        Q_UNUSED(isShown)
    }

    HVKeyedControl find(QWidget *widget) const
    {
        return host->keys.find(widget, onScreen(widget, widget->rect().center()));
    }

    /// What is found at a point of a widget.
    HVKeyedControl find(QWidget *widget, const QPoint &point) const
    {
        return host->keys.find(widget, onScreen(widget, point));
    }

    HVKeyedControl item(QAbstractItemView *view, int row, int column = 0) const
    {
        const QModelIndex index = view->model()->index(row, column);
        return find(view->viewport(), view->visualRect(index).center());
    }

    HVKeyedControl tab(int index) const
    {
        QTabBar *bar = window.tabs->tabBar();
        return find(bar, bar->tabRect(index).center());
    }

    HVKeyedControl entry(QMenu *menu, int index) const
    {
        return find(menu, menu->actionGeometry(menu->actions().at(index)).center());
    }

    PackageFolder packages;
    HVContext settings;
    KeysWindow window;
    std::unique_ptr<KeysHost> host;
};

} // namespace

class tst_HVStandardKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldNameActionsAndTheirButtons()
    {
        KeysScene scene;
        QCOMPARE(scene.find(scene.window.toolButton).key, text("actionOpen"));
        QAction *action = scene.window.toolButton->defaultAction();
        QCOMPARE(scene.host->keyForObject(action), text("actionOpen"));
        QAction *unnamed = scene.window.recent->actions().constFirst();
        QCOMPARE(scene.host->keyForObject(unnamed), text("Clear List"));
        unnamed->setParent(&scene.window); // as a host does that keeps its actions in the window
        QCOMPARE(scene.host->keyForObject(unnamed), text("File/Open Recent/Clear List"));
    }

    void shouldNameMenusAndTheirEntries()
    {
        KeysScene scene;
        scene.window.file->popup(QPoint(300, 100));
        QTRY_VERIFY(scene.window.file->isVisible());
        const HVKeyedControl open = scene.entry(scene.window.file, 0);
        QCOMPARE(open.key, text("actionOpen"));
        QVERIFY(open.candidates.contains(text("File/Open")));
        QAction *action = scene.window.file->actions().constFirst();
        QCOMPARE(open.area, areaOf(scene.window.file, scene.window.file->actionGeometry(action)));
        QCOMPARE(scene.entry(scene.window.file, 1).key, QString()); // a separator
        QCOMPARE(scene.entry(scene.window.file, 2).key, text("menuRecent"));
        scene.window.recent->popup(QPoint(300, 300));
        QCOMPARE(scene.entry(scene.window.recent, 0).key, text("File/Open Recent/Clear List"));
        scene.window.recent->hide();
        scene.window.file->hide();

        QMenuBar *bar = scene.window.menuBar();
        const QRect title = bar->actionGeometry(scene.window.file->menuAction());
        QCOMPARE(scene.find(bar, title.center()).key, text("File"));
        QCOMPARE(scene.find(bar, title.center()).area, areaOf(bar, title));
    }

    void shouldNotShowTheEntryOfAMenuForItsEntries()
    {
        KeysScene scene({ text("menuRecent") });
        scene.window.file->popup(QPoint(300, 100));
        scene.window.recent->popup(QPoint(300, 300));
        QTRY_VERIFY(scene.window.recent->isVisible());
        const HVKeyedControl clear = scene.entry(scene.window.recent, 0);
        QCOMPARE(clear.key, text("File/Open Recent/Clear List"));
        QVERIFY(!clear.hasEntry);
        QVERIFY(scene.entry(scene.window.file, 2).hasEntry);
    }

    void shouldNameTabs()
    {
        KeysScene scene;
        QTabBar *bar = scene.window.tabs->tabBar();
        QCOMPARE(scene.tab(0).key, text("pageGeneral"));
        QVERIFY(scene.tab(0).candidates.contains(text("tabs/General")));
        QCOMPARE(scene.tab(0).area, areaOf(bar, bar->tabRect(0)));
        QCOMPARE(scene.tab(1).key, text("tabs/Network"));
    }

    void shouldLeaveATabItsToolTip()
    {
        KeysScene scene({ text("tabs") });
        QCOMPARE(scene.tab(1).key, text("tabs")); // the entry of the whole
        QVERIFY(!scene.tab(2).hasEntry);
        KeysScene described({ text("tabs/Tip") });
        QCOMPARE(described.tab(2).key, text("tabs/Tip"));
        QVERIFY(described.tab(2).hasEntry);
    }

    void shouldNameItemsAndSections()
    {
        HVStandardKeysSettings wanted;
        wanted.keyRole = KeysWindow::KeyRole;
        KeysScene scene({}, wanted);
        QCOMPARE(scene.item(scene.window.list, 0).key, text("list/Security"));
        QCOMPARE(scene.item(scene.window.list, 1).key, text("row.colours"));
        QTableWidget *table = scene.window.table;
        QCOMPARE(scene.item(table, 0, 1).key, text("table/Size"));
        QCOMPARE(scene.item(table, 0, 1).area.width(),
                 table->visualItemRect(table->item(0, 1)).width());
        QVERIFY(scene.item(table, 0, 1).candidates.contains(text("table/first")));
        QHeaderView *header = table->horizontalHeader();
        const QPoint section(header->sectionViewportPosition(1) + 5, 5);
        QCOMPARE(scene.find(header->viewport(), section).key, text("table/Size"));
        QCOMPARE(scene.find(header->viewport(), section).area.width(), header->sectionSize(1));
    }

    void shouldLeaveAnItemItsToolTip()
    {
        KeysScene scene({ text("table") });
        QCOMPARE(scene.item(scene.window.table, 0, 0).key, text("table"));
        QVERIFY(!scene.item(scene.window.table, 1, 0).hasEntry);
        scene.window.table->item(1, 0)->setData(Qt::ToolTipRole, text(""));
        QCOMPARE(scene.item(scene.window.table, 1, 0).key, text("table"));
        QHeaderView *header = scene.window.table->horizontalHeader();
        scene.window.table->horizontalHeaderItem(0)->setData(Qt::ToolTipRole, text(""));
        QVERIFY(scene.find(header->viewport(), QPoint(5, 5)).hasEntry);
        KeysScene described({ text("table/second") });
        QCOMPARE(described.item(described.window.table, 1, 0).key, text("table/second"));
    }

    void shouldGivePartsTheKeyOfTheirOwner()
    {
        KeysScene scene;
        auto *field = scene.window.spin->findChild<QLineEdit *>();
        QCOMPARE(scene.find(field).key, text("spin"));
        QCOMPARE(scene.find(field).area, areaOf(scene.window.spin, scene.window.spin->rect()));
        scene.window.combo->setEditable(true);
        QCOMPARE(scene.find(scene.window.combo->lineEdit()).key, text("combo"));
        auto *inner = scene.window.findChild<QPushButton *>(text("qt_made"));
        QCOMPARE(scene.find(inner).key, text("group"));
        inner->setToolTip(text("Its own"));
        QCOMPARE(scene.find(inner).key, QString());
    }

    void shouldNameTheItemsOfAComboBox()
    {
        KeysScene scene;
        scene.window.combo->showPopup();
        QAbstractItemView *view = scene.window.combo->view();
        QTRY_VERIFY(view->isVisible());
        QCOMPARE(scene.item(view, 1).key, text("combo/Right"));
        QVERIFY(scene.item(view, 1).candidates.contains(text("combo")));
        scene.window.combo->hidePopup();
    }

    void shouldNameGroupsAndUnnamedControls()
    {
        KeysScene scene;
        QCOMPARE(scene.find(&scene.window.group).key, text("group"));
        QCOMPARE(scene.find(scene.window.unnamedGroup).key, text("MainWindow/Pens"));
        QCOMPARE(scene.find(scene.window.unnamedButton).key, text("group/Apply all"));
    }

    void shouldNameDocksTheirTabsAndButtons()
    {
        KeysScene scene;
        QCOMPARE(scene.find(scene.window.layers).key, text("dockLayers"));
        auto *close = scene.window.layers->findChild<QWidget *>(text("qt_dockwidget_closebutton"));
        QVERIFY(close);
        const HVKeyedControl found = scene.find(close);
        QCOMPARE(found.key, text("dockLayers/close"));
        QVERIFY(found.candidates.contains(text("qt_dockwidget_closebutton")));
        const auto bars =
                scene.window.findChildren<QTabBar *>(QString(), Qt::FindDirectChildrenOnly);
        QCOMPARE(bars.size(), 1);
        QTRY_COMPARE(bars.first()->count(), 2);
        QStringList keys { scene.find(bars.first(), bars.first()->tabRect(0).center()).key,
                           scene.find(bars.first(), bars.first()->tabRect(1).center()).key };
        keys.sort();
        QCOMPARE(keys, QStringList({ text("dockHistory"), text("dockLayers") }));
    }

    void shouldDistinguishDocksWithTheSameTitle()
    {
        KeysScene scene;
        scene.window.history->setWindowTitle(scene.window.layers->windowTitle());
        const auto *bar = scene.window.findChild<QTabBar *>(QString(), Qt::FindDirectChildrenOnly);
        QTRY_VERIFY(bar && bar->count() == 2 && bar->tabText(0) == bar->tabText(1));
        const auto keyOf = [&](int tab) {
            return scene.find(const_cast<QTabBar *>(bar), bar->tabRect(tab).center()).key;
        };
        QVERIFY(keyOf(0) != keyOf(1));
    }

    void shouldQualifyNamesInDialogs()
    {
        QDialog dialog;
        dialog.setObjectName(text("Preferences"));
        QLineEdit field(&dialog);
        field.setObjectName(text("name"));
        QDialogButtonBox box(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, &dialog);
        box.setObjectName(text("buttonBox"));
        box.move(0, 60);
        dialog.show();
        QPushButton *cancel = box.button(QDialogButtonBox::Cancel);

        KeysScene none;
        QCOMPARE(none.find(&field).key, text("Preferences/name"));
        QCOMPARE(none.find(cancel).key, text("Preferences/buttonBox/Cancel"));
        KeysScene plain({ text("name"), text("buttonBox/Cancel") });
        QCOMPARE(plain.find(&field).key, text("name"));
        QCOMPARE(plain.find(cancel).key, text("buttonBox/Cancel"));
        KeysScene both({ text("name"), text("Preferences/name") });
        QCOMPARE(both.find(&field).key, text("Preferences/name"));
    }

    void shouldNameTheButtonsOfMessageBoxes()
    {
        KeysScene scene;
        QMessageBox box(QMessageBox::Warning, text("Warning"), text("No sound"), QMessageBox::Ok,
                        &scene.window);
        box.show();
        const HVKeyedControl found = scene.find(box.button(QMessageBox::Ok));
        QCOMPARE(found.key, text("QMessageBox/Ok"));
        QCOMPARE(found.candidates, QStringList(text("QMessageBox/Ok")));
    }

    void shouldPreferThePropertyToEverything()
    {
        KeysScene scene({ text("spin") });
        scene.window.spin->setProperty("hovletKey", text("chosen"));
        QCOMPARE(scene.find(scene.window.spin).candidates, QStringList(text("chosen")));
        QCOMPARE(scene.find(scene.window.spin->findChild<QLineEdit *>()).key, text("chosen"));
        scene.window.spin->setProperty("hovletKey", QString());
        QCOMPARE(scene.find(scene.window.spin).key, QString());
        scene.window.toolButton->defaultAction()->setProperty("hovletKey", text("open"));
        QCOMPARE(scene.find(scene.window.toolButton).key, text("open"));
        scene.window.tabs->widget(0)->setProperty("hovletKey", text("general"));
        QCOMPARE(scene.tab(0).key, text("general"));
    }

    void shouldNotInheritFromAWindow()
    {
        KeysScene scene({ text("MainWindow") });
        QCOMPARE(scene.find(&scene.window).key, QString());
    }

    void shouldInheritFromAWindowIfAsked()
    {
        HVStandardKeysSettings wanted;
        wanted.windowsHaveKeys = true;
        KeysScene scene({ text("MainWindow") }, wanted);
        QCOMPARE(scene.find(&scene.window).key, text("MainWindow"));
    }

    void shouldFollowTheRulesOfAuthors()
    {
        const PackageFolder folder;
        HVStandardKeysSettings wanted;
        wanted.rulesFile = folder.add(text("rules.txt"),
                                      "# comment\n\n"
                                      "table/(.*) -> cell.\\1\n"
                                      ".*/pageGeneral -> \n"
                                      "(other)?combo -> by\\1.name\n"
                                      "MainWindow/.*/spin -> by.path\n");
        KeysScene scene({}, wanted);
        QCOMPARE(scene.host->keys.ruleErrors(), QStringList());
        QCOMPARE(scene.item(scene.window.table, 0, 1).key, text("cell.Size"));
        QCOMPARE(scene.tab(0).key, QString());
        QCOMPARE(scene.find(scene.window.spin).key, text("by.path"));
        QCOMPARE(scene.find(scene.window.combo).key, text("by.name"));
        scene.window.spin->setProperty("hovletKey", text("chosen"));
        QCOMPARE(scene.find(scene.window.spin).key, text("chosen"));

        folder.add(text("rules.txt"), "spin -> other\n(broken -> x\nno arrow\n");
        QCOMPARE(scene.find(scene.window.combo).key, text("combo"));
        scene.window.spin->setProperty("hovletKey", QVariant());
        QCOMPARE(scene.find(scene.window.spin).key, text("other"));
        const QStringList errors = scene.host->keys.ruleErrors();
        QCOMPARE(errors.size(), 2);
        QVERIFY(errors.at(0).startsWith(wanted.rulesFile + text(":2: ")));
        QVERIFY(errors.at(1).startsWith(wanted.rulesFile + text(":3: ")));
    }

    void shouldReportAMissingFileWithRules()
    {
        HVStandardKeysSettings wanted;
        wanted.rulesFile = text("/nonexistent/rules.txt");
        KeysScene scene({}, wanted);
        QCOMPARE(scene.host->keys.ruleErrors().size(), 1);
        QCOMPARE(scene.find(scene.window.spin).key, text("spin"));
    }

    void shouldAcceptNull()
    {
        KeysScene scene;
        QCOMPARE(scene.host->keyForObject(nullptr), QString());
    }
};

HOVLETS_TEST_MAIN(tst_HVStandardKeys)
#include "tst_hvstandardkeys.moc"
