// SPDX-License-Identifier: Apache-2.0
#include "HVControlPart.h"
#include "TestMain.h"

#include <QtGui/QStandardItemModel>
#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

using namespace Hovlets;

namespace {

HVControlPart::Id whole()
{
    return {};
}

/// The part at the centre of \a rectangle, in the widget's coordinates.
HVControlPart partIn(const QWidget &widget, const QRect &rectangle)
{
    return controlPartAt(widget, widget.mapToGlobal(rectangle.center()));
}

QRect toGlobal(const QWidget &widget, const QRect &rectangle)
{
    return { widget.mapToGlobal(rectangle.topLeft()), rectangle.size() };
}

} // namespace

class tst_HVControlPart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldTreatAPlainWidgetAsAWhole()
    {
        QPushButton button;
        button.setGeometry(50, 60, 80, 30);
        button.show();
        const HVControlPart part = partIn(button, button.rect());
        QCOMPARE(part.id, whole());
        QCOMPARE(part.geometry, toGlobal(button, button.rect()));
    }

    void shouldDistinguishTabs()
    {
        QTabBar bar;
        bar.addTab(QStringLiteral("One"));
        bar.addTab(QStringLiteral("Two"));
        bar.setExpanding(false);
        bar.resize(400, bar.sizeHint().height());
        bar.show();
        const HVControlPart one = partIn(bar, bar.tabRect(0));
        const HVControlPart two = partIn(bar, bar.tabRect(1));
        QCOMPARE(two.geometry, toGlobal(bar, bar.tabRect(1)));
        QVERIFY(one.id != whole());
        QVERIFY(one.id != two.id);
        QCOMPARE(controlPartAt(bar, two.geometry.topLeft() + QPoint(2, 2)).id, two.id);
        QCOMPARE(partIn(bar, QRect(380, 2, 10, 5)).id, whole()); // past the last tab
    }

    void shouldDistinguishSections()
    {
        QTableWidget table(2, 3);
        table.resize(400, 200);
        table.show();
        for (const QHeaderView *header : { table.horizontalHeader(), table.verticalHeader() }) {
            const QWidget &viewport = *header->viewport();
            const int middle = header->sectionViewportPosition(1) + header->sectionSize(1) / 2;
            const bool isRow = header->orientation() == Qt::Horizontal;
            const QPoint inSecond = isRow ? QPoint(middle, 3) : QPoint(3, middle);
            const HVControlPart first = controlPartAt(viewport, viewport.mapToGlobal(QPoint(3, 3)));
            const HVControlPart second = controlPartAt(viewport, viewport.mapToGlobal(inSecond));
            QVERIFY(first.id != whole());
            QVERIFY(first.id != second.id);
            QVERIFY(second.geometry.contains(viewport.mapToGlobal(inSecond)));
            QVERIFY(!second.geometry.intersects(first.geometry));
            QCOMPARE(isRow ? second.geometry.width() : second.geometry.height(),
                     header->sectionSize(1));
        }
    }

    void shouldDistinguishItems()
    {
        QStandardItemModel model;
        for (const char *name : { "a", "b" }) {
            auto *item = new QStandardItem(QString::fromUtf8(name));
            item->appendRow(new QStandardItem(QStringLiteral("child")));
            model.appendRow(item);
        }
        QTreeView tree;
        tree.setModel(&model);
        tree.expandAll();
        tree.resize(300, 200);
        tree.show();
        const auto idOf = [&](const QModelIndex &index) {
            const HVControlPart part = partIn(*tree.viewport(), tree.visualRect(index));
            return part.geometry == toGlobal(*tree.viewport(), tree.visualRect(index)) ? part.id
                                                                                       : whole();
        };
        const QModelIndex a = model.index(0, 0);
        const QModelIndex b = model.index(1, 0);
        const std::array<HVControlPart::Id, 5> ids { whole(), idOf(a), idOf(b),
                                                     idOf(model.index(0, 0, a)),
                                                     idOf(model.index(0, 0, b)) };
        for (size_t i = 0; i < ids.size(); ++i) {
            for (size_t j = 0; j < i; ++j)
                QVERIFY2(ids[i] != ids[j], qPrintable(QStringLiteral("%1 %2").arg(i).arg(j)));
        }
        QCOMPARE(partIn(*tree.viewport(), QRect(2, 180, 2, 2)).id, whole()); // below the last row
        QCOMPARE(partIn(tree, tree.rect()).id, whole()); // the view's own events
    }

    void shouldDistinguishMenuEntries()
    {
        QMenu menu;
        const QAction *open = menu.addAction(QStringLiteral("New"));
        const QAction *other = menu.addAction(QStringLiteral("New From Template"));
        menu.popup(QPoint(100, 100));
        const auto rectangle = [&](const QAction *action) {
            return menu.actionGeometry(const_cast<QAction *>(action));
        };
        QVERIFY(partIn(menu, rectangle(open)).id != partIn(menu, rectangle(other)).id);
        QCOMPARE(partIn(menu, rectangle(other)).geometry, toGlobal(menu, rectangle(other)));

        QMenuBar bar;
        QMenu file(QStringLiteral("File"));
        QMenu edit(QStringLiteral("Edit"));
        bar.addMenu(&file);
        bar.addMenu(&edit);
        bar.resize(300, 30);
        bar.show();
        const QRect first = bar.actionGeometry(file.menuAction());
        const QRect second = bar.actionGeometry(edit.menuAction());
        QVERIFY(partIn(bar, first).id != partIn(bar, second).id);
        QCOMPARE(partIn(bar, second).geometry, toGlobal(bar, second));
        QCOMPARE(partIn(bar, QRect(280, 2, 10, 5)).id, whole());
    }

    void shouldCutAPartThatIsScrolledOut()
    {
        QListWidget list;
        list.addItem(QString(200, QLatin1Char('w'))); // wider than the list
        list.resize(150, 100);
        list.show();
        const HVControlPart part = controlPartAt(
                *list.viewport(), list.viewport()->mapToGlobal(list.viewport()->rect().topLeft()));
        QVERIFY(toGlobal(*list.viewport(), list.viewport()->rect()).contains(part.geometry));
    }
};

HOVLETS_TEST_MAIN(tst_HVControlPart)
#include "tst_hvcontrolpart.moc"
