// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Text.h"

#include <Hovlets/HVInterface.h>
#include <HovletsAssist/HVStandardKeys.h>

#include <QtGui/QStandardItemModel>
#include <QtWidgets/QtWidgets>
// The module of this class depends on the major version of Qt.
#include <QAction>

/// A host that leaves its keys to the helper.
class KeysHost : public Hovlets::HVInterface
{
public:
    KeysHost(HVContext &settings, const QStringList &dataPaths,
             const Hovlets::HVStandardKeysSettings &wanted = {})
        : HVInterface(settings, dataPaths)
        , keys(*this, wanted)
    {
    }

    QString keyForObject(QObject *object) override { return keys.keyFor(object); }

    Hovlets::HVStandardKeys keys;
};

/// A main window with a control of every kind, written without a thought of keys.
class KeysWindow : public QMainWindow
{
public:
    enum { KeyRole = Qt::UserRole + 7 };

    KeysWindow()
    {
        setObjectName(text("MainWindow"));
        resize(700, 600);
        fillMenus();
        fillCentre();
        fillDocks();
        button("plainButton", &centre)->setText(text("Plain"));
        button("qt_made", &group)->setText(text("Inner"));
        auto *unnamed = new QPushButton(text("&Apply all..."), &group);
        group.layout()->addWidget(unnamed);
        unnamedButton = unnamed;
    }

    QPushButton *button(const char *name, QWidget *parent)
    {
        auto *made = new QPushButton(parent);
        made->setObjectName(text(name));
        parent->layout()->addWidget(made);
        return made;
    }

    QMenu *file = nullptr;
    QMenu *recent = nullptr;
    QToolBar *bar = nullptr;
    QToolButton *toolButton = nullptr;
    QWidget centre;
    QTabWidget *tabs = nullptr;
    QTableWidget *table = nullptr;
    QListWidget *list = nullptr;
    QSpinBox *spin = nullptr;
    QComboBox *combo = nullptr;
    QGroupBox group;
    QGroupBox *unnamedGroup = nullptr;
    QDockWidget *layers = nullptr;
    QDockWidget *history = nullptr;
    QPushButton *unnamedButton = nullptr;

private:
    void fillMenus()
    {
        file = menuBar()->addMenu(text("&File"));
        auto *open = file->addAction(text("&Open...\tCtrl+O"));
        open->setObjectName(text("actionOpen"));
        file->addSeparator();
        recent = file->addMenu(text("Open &Recent"));
        recent->setObjectName(text("menuRecent"));
        recent->addAction(text("&Clear List"));
        auto *edit = menuBar()->addMenu(text("&Edit"));
        edit->addAction(text("Cu&t"));
        bar = addToolBar(text("Main"));
        bar->setObjectName(text("mainToolBar"));
        bar->addAction(open);
        toolButton = qobject_cast<QToolButton *>(bar->widgetForAction(open));
    }

    void fillCentre()
    {
        setCentralWidget(&centre);
        auto *layout = new QVBoxLayout(&centre);
        tabs = new QTabWidget;
        tabs->setObjectName(text("tabs"));
        auto *page = new QWidget;
        page->setObjectName(text("pageGeneral"));
        tabs->addTab(page, text("&General"));
        tabs->addTab(new QWidget, text("&Network"));
        tabs->addTab(new QWidget, text("Tip"));
        tabs->setTabToolTip(2, text("Its own"));
        table = new QTableWidget(2, 2);
        table->setObjectName(text("table"));
        table->setHorizontalHeaderLabels({ text("Name"), text("Size") });
        table->setItem(0, 0, new QTableWidgetItem(text("first")));
        table->setItem(0, 1, new QTableWidgetItem(text("1 KB")));
        table->setItem(1, 0, new QTableWidgetItem(text("second")));
        table->item(1, 0)->setToolTip(text("Its own"));
        list = new QListWidget;
        list->setObjectName(text("list"));
        list->addItem(text("Security"));
        list->addItem(text("Colours"));
        list->item(1)->setData(KeyRole, text("row.colours"));
        spin = new QSpinBox;
        spin->setObjectName(text("spin"));
        combo = new QComboBox;
        combo->setObjectName(text("combo"));
        combo->addItems({ text("Left"), text("Right") });
        group.setObjectName(text("group"));
        group.setTitle(text("Group"));
        new QVBoxLayout(&group);
        unnamedGroup = new QGroupBox(text("&Pens"));
        for (QWidget *widget : QWidgetList { tabs, table, list, spin, combo, &group, unnamedGroup })
            layout->addWidget(widget);
    }

    void fillDocks()
    {
        layers = new QDockWidget(text("Layers"), this);
        layers->setObjectName(text("dockLayers"));
        history = new QDockWidget(text("History"), this);
        history->setObjectName(text("dockHistory"));
        addDockWidget(Qt::LeftDockWidgetArea, layers);
        addDockWidget(Qt::LeftDockWidgetArea, history);
        tabifyDockWidget(layers, history);
    }
};
