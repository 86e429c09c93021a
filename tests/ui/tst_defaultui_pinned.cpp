// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiLooksTest.h"
#include "TestMain.h"

#include <QtCore/QPointer>

using namespace Hovlets;

/// Tests the title bar that the default user interface draws for pinned popups.
class tst_DefaultUiPinned : public DefaultUiLooksTest
{
    Q_OBJECT

private Q_SLOTS:
    void shouldHaveTheShortcutInTheBarWhereThereIsRoom_data()
    {
        QTest::addColumn<QByteArray>("title");
        QTest::addColumn<bool>("inBar");
        QTest::newRow("no title") << QByteArray() << true;
        QTest::newRow("short title") << QByteArray("Save") << true;
        QTest::newRow("long title") << QByteArray("Save ").repeated(10) << false;
    }

    void shouldHaveTheShortcutInTheBarWhereThereIsRoom()
    {
        QFETCH(QByteArray, title);
        QFETCH(bool, inBar);
        for (const auto direction : { Qt::LeftToRight, Qt::RightToLeft }) {
            QApplication::setLayoutDirection(direction);
            pin("title=\"" + title + "\" shortcut=\"Ctrl+S\"", "<p>Text</p>");
            QVERIFY(item("titleBar"));
            QCOMPARE(bool(item("barShortcut")), inBar);
            QCOMPARE(bool(item("shortcut")), !inBar);
            const QRectF keys = place(inBar ? "barShortcut" : "shortcut");
            QCOMPARE(place("titleBar").contains(keys), inBar);
            for (const char *other : { "close", "pinned", "barTitle", "paragraph" })
                QVERIFY(!keys.intersects(place(other)));
            QVERIFY(!place("barTitle").intersects(place("close")));
            QCOMPARE(item("barTitle")->property("truncated").toBool(), !inBar);
            // The shortcut has no line of its own then.
            QCOMPARE(place("paragraph").top() < place("titleBar").bottom() + keys.height(), inBar);
            delete m_popup;
        }
    }

    void shouldBeAsFarFromKeysBelowTheBarAsFromATallHeader()
    {
        pin("title=\"" + QByteArray("Save ").repeated(10) + "\" shortcut=\"Ctrl+S\"",
            "<p>Text</p>");
        QVERIFY(item("shortcut"));
        const int gap = m_root->property("theme").value<QObject *>()->property("gap").toInt();
        QVERIFY(gap > 0);
        QVERIFY(place("paragraph").top() - place("shortcut").bottom() >= gap);
        delete m_popup;
    }

    void shouldEndWithTheBarIfThatShowsAll_data()
    {
        QTest::addColumn<QByteArray>("attributes");
        QTest::addColumn<QByteArray>("children");
        QTest::addColumn<bool>("isBarOnly");
        const auto row = [](const char *name, const QByteArray &attributes,
                            const QByteArray &children, bool isBarOnly) {
            QTest::newRow(name) << attributes << children << isBarOnly;
        };
        row("title", "title=\"Redo\"", {}, true);
        row("title and shortcut", "title=\"Redo\" shortcut=\"F4\"", {}, true);
        row("nothing", {}, {}, true);
        row("text", "title=\"Redo\"", "<p>Text</p>", false);
        row("shortcut below", "title=\"" + QByteArray("Redo ").repeated(10) + "\" shortcut=\"F4\"",
            {}, false);
    }

    void shouldEndWithTheBarIfThatShowsAll()
    {
        QFETCH(QByteArray, attributes);
        QFETCH(QByteArray, children);
        QFETCH(bool, isBarOnly);
        pin(attributes, children);
        QCOMPARE(place("titleBar").bottom() == m_root->height(), isBarOnly);
        delete m_popup;
    }

private:
    void pin(const QByteArray &attributes, const QByteArray &children)
    {
        make(attributes, children);
        m_bench->context().set(HVKeyOwnTitleBar, true);
        QVERIFY(m_bench->show());
        m_popup = m_bench->host.popup(); // the next one is another
        m_root = m_bench->root();
        m_bench->view()->setReserved(true);
        QCoreApplication::processEvents();
    }

    QQuickItem *item(const char *name)
    {
        return DefaultUiBench::itemsOf(m_root, QLatin1String(name)).value(0);
    }

    QRectF place(const char *name)
    {
        const QQuickItem *found = item(name);
        return found->mapRectToItem(m_root, QRectF(0, 0, found->width(), found->height()));
    }

    QPointer<QWidget> m_popup;
    QQuickItem *m_root = nullptr;
};

HOVLETS_TEST_MAIN(tst_DefaultUiPinned)

#include "tst_defaultui_pinned.moc"
