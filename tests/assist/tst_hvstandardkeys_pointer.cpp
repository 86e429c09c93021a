// SPDX-License-Identifier: Apache-2.0
#include "HVView.h"
#include "HVWidget.h"
#include "KeysHost.h"
#include "PackageFolder.h"
#include "Pointer.h"
#include "TestMain.h"

#include <Hovlets/HVPopup.h>
#include <Hovlets/HVXmlElement.h>

#include <memory>

using namespace Hovlets;

/// Tests keys for parts with a real pointer, real menus and real tooltips.
class tst_HVStandardKeysPointer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        Pointer::moveAway();
        m_folder = std::make_unique<PackageFolder>();
        m_folder->addPackage(text("Pack"),
                             { text("File"), text("actionOpen"),
                               text("File/Open Recent/Clear List"), text("tabs/Network"),
                               text("pageGeneral"), text("table/Size"), text("table"), text("spin"),
                               text("MainWindow") });
        HVContext settings;
        useRecommendedSettings(settings);
        settings.set(HVKeyHideFadeDuration, 0);
        settings.set(HVKeyHideDelay, 20);
        m_host = std::make_unique<KeysHost>(settings, QStringList { m_folder->path() });
        m_window = std::make_unique<KeysWindow>();
        m_window->move(200, 100);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }

    void cleanup()
    {
        Pointer::moveAway();
        m_host.reset();
        m_window.reset();
        QToolTip::hideText();
    }

    void shouldShowTheEntriesOfParts()
    {
        const QMenuBar *bar = m_window->menuBar();
        QVERIFY(restOn(bar, bar->actionGeometry(m_window->file->menuAction()).center(), "File"));
        const QTabBar *tabs = m_window->tabs->tabBar();
        QVERIFY(restOn(tabs, tabs->tabRect(0).center(), "pageGeneral"));
        QVERIFY(restOn(tabs, tabs->tabRect(1).center(), "tabs/Network"));
        QVERIFY(restOn(m_window->toolButton, m_window->toolButton->rect().center(), "actionOpen"));
        const QHeaderView *header = m_window->table->horizontalHeader();
        const QPoint section(header->sectionViewportPosition(1) + 8, 8);
        QVERIFY(restOn(header->viewport(), section, "table/Size"));
        QVERIFY(restOn(m_window->spin->findChild<QLineEdit *>(), QPoint(5, 5), "spin"));
    }

    void shouldShowTheEntryOfAMenuEntry()
    {
        m_window->file->popup(m_window->mapToGlobal(QPoint(300, 60)));
        QTRY_VERIFY(m_window->file->isVisible());
        const QAction *open = m_window->file->actions().constFirst();
        QVERIFY(restOn(m_window->file,
                       m_window->file->actionGeometry(const_cast<QAction *>(open)).center(),
                       "actionOpen"));
        QVERIFY(m_window->file->isVisible());
        m_window->file->hide();
    }

    void shouldLeaveItemsTheirToolTips()
    {
        const QTableWidget *table = m_window->table;
        const QWidget *viewport = table->viewport();
        QVERIFY(restOn(viewport, table->visualItemRect(table->item(0, 0)).center(), "table"));
        QVERIFY(rest(viewport->mapToGlobal(table->visualItemRect(table->item(1, 0)).center()),
                     [] { return QToolTip::isVisible() && QToolTip::text() == text("Its own"); }));
        QCOMPARE(shownKey(), QString());
        const QTabBar *tabs = m_window->tabs->tabBar();
        QVERIFY(rest(tabs->mapToGlobal(tabs->tabRect(2).center()),
                     [] { return QToolTip::isVisible() && QToolTip::text() == text("Its own"); }));
    }

private:
    static QString shownKey()
    {
        const HVPopup popup = HVPopup::current();
        return popup.content() ? popup.content()->attribute(text("key")) : QString();
    }

    /// Rests the pointer at \a position, which no popup covers, and moves it a bit now and then,
    /// like a hand.
    template <typename Condition> static bool rest(const QPoint &position, Condition happened)
    {
        Pointer::moveAway();
        if (!QTest::qWaitFor([] { return shownKey().isEmpty(); }, Patience))
            return false;
        for (int i = 0; i < 25; ++i) {
            Pointer::moveTo(position + QPoint(i % 2, 0));
            if (QTest::qWaitFor(happened, 1500))
                return true;
        }
        return false;
    }

    static bool restOn(const QWidget *widget, const QPoint &point, const char *key)
    {
        return rest(widget->mapToGlobal(point), [key] { return shownKey() == text(key); });
    }

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<KeysHost> m_host;
    std::unique_ptr<KeysWindow> m_window;
};

HOVLETS_TEST_MAIN(tst_HVStandardKeysPointer)
#include "tst_hvstandardkeys_pointer.moc"
