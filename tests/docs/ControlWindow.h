// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtGui/QStandardItemModel>
#include <QtWidgets/QtWidgets>

/// A window with a control of each kind. Most of them have parts.
class ControlWindow : public QWidget
{
public:
    /// Some rows and columns have data of \a keyRole.
    explicit ControlWindow(int keyRole)
    {
        setObjectName(QStringLiteral("window"));
        auto *layout = new QVBoxLayout(this);
        layout->setMenuBar(&menuBar);
        menuBar.addMenu(&menu)->setObjectName(QStringLiteral("file"));
        menu.addAction(&save);
        save.setObjectName(QStringLiteral("save"));
        group.setObjectName(QStringLiteral("group"));
        auto *inGroup = new QVBoxLayout(&group);
        inGroup->addWidget(&button);
        inGroup->addWidget(&tipped);
        button.setObjectName(QStringLiteral("button"));
        tipped.setObjectName(QStringLiteral("tipped"));
        tipped.setToolTip(QStringLiteral("Of the button"));
        spinBox.setObjectName(QStringLiteral("spinBox"));
        list.setObjectName(QStringLiteral("list"));
        for (const char *name : { "plain", "tip", "keyed" })
            model.appendRow(new QStandardItem(QLatin1String(name)));
        model.item(1)->setToolTip(QStringLiteral("Of the item"));
        model.item(2)->setData(QStringLiteral("row"), keyRole);
        model.setHeaderData(0, Qt::Horizontal, QStringLiteral("column"), keyRole);
        list.setModel(&model);
        tree.setModel(&model);
        tabs.setObjectName(QStringLiteral("tabs"));
        tabs.addTab(new QWidget, QStringLiteral("One"));
        tabs.addTab(new QWidget, QStringLiteral("Two"));
        tabs.tabBar()->setTabData(1, QStringLiteral("two"));
        for (QWidget *widget : { static_cast<QWidget *>(&group), static_cast<QWidget *>(&spinBox),
                                 static_cast<QWidget *>(&list), static_cast<QWidget *>(&tree),
                                 static_cast<QWidget *>(&tabs) })
            layout->addWidget(widget);
        resize(400, 700);
        show();
    }

    QPoint item(int row) const { return list.visualRect(model.index(row, 0)).center(); }
    QLineEdit *field() const { return spinBox.findChild<QLineEdit *>(); }

    QStandardItemModel model;
    QMenuBar menuBar;
    QMenu menu;
    QAction save;
    QGroupBox group;
    QPushButton button, tipped;
    QSpinBox spinBox;
    QListView list;
    QTreeView tree;
    QTabWidget tabs;
};
