// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVEntryReader.h"
#include "HoverScene.h"
#include "TestMain.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

QList<HVWidget *> pinnedPopups()
{
    QList<HVWidget *> pinned;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *popup = qobject_cast<HVWidget *>(window);
        if (popup && popup->isVisible() && popup->view()->reserved())
            pinned.append(popup);
    }
    return pinned;
}

void closePinned()
{
    const QList<HVWidget *> popups = pinnedPopups();
    for (HVWidget *popup : popups)
        delete popup;
}

} // namespace

/// Tests that pinned popups are restored in the next run.
class tst_HVManagerPinnedState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { closePinned(); }

    void shouldBringPinnedPopupsBack()
    {
        QByteArray state;
        {
            HoverScene scene;
            QVERIFY(scene.show(QStringLiteral("a")));
            scene.pin()->move(120, 140);
            QVERIFY(scene.show(QStringLiteral("b")));
            scene.pin()->move(400, 420);
            state = scene.manager().saveState();
            closePinned();
        }
        HoverScene next;
        QVERIFY(next.manager().restoreState(state));
        const QList<HVWidget *> popups = pinnedPopups();
        QCOMPARE(popups.size(), 2);
        QMap<QString, QPoint> places;
        for (const HVWidget *popup : popups)
            places.insert(popup->view()->content()->attribute(QStringLiteral("key")), popup->pos());
        QCOMPARE(places.value(QStringLiteral("a")), QPoint(120, 140));
        QCOMPARE(places.value(QStringLiteral("b")), QPoint(400, 420));
        QVERIFY(next.host().messagesOf(HVMessageWarning).isEmpty());
        // They are like any other pinned popups: the next hover gets a new one, and they are saved.
        QVERIFY(next.show(QStringLiteral("a")));
        QVERIFY(!next.view()->reserved());
        QCOMPARE(next.manager().saveState(), state);
    }

    void shouldKeepThemOnTopWhereTheyWere()
    {
        QByteArray state;
        {
            HoverScene scene;
            QVERIFY(scene.show(QStringLiteral("a")));
            scene.pin();
            scene.manager().setStayOnTop(true);
            state = scene.manager().saveState();
            closePinned();
        }
        HoverScene next;
        QVERIFY(next.manager().restoreState(state));
        QCOMPARE(pinnedPopups().size(), 1);
        QVERIFY(pinnedPopups().constFirst()->windowFlags() & Qt::WindowStaysOnTopHint);
    }

    void shouldBringThemOntoTheScreen()
    {
        HoverScene scene;
        QVERIFY(scene.show(QStringLiteral("a")));
        scene.pin()->move(5000, 6000);
        const QByteArray state = scene.manager().saveState();
        closePinned();
        QVERIFY(scene.manager().restoreState(state));
        QCOMPARE(pinnedPopups().size(), 1);
        QVERIFY(QGuiApplication::primaryScreen()->availableGeometry().contains(
                pinnedPopups().constFirst()->geometry()));
    }

    void shouldNotSayWhyAnotherControlIsDisabled()
    {
        HoverScene scene;
        QVERIFY(scene.show(QStringLiteral("b")));
        scene.pin();
        const QByteArray state = scene.manager().saveState();
        closePinned();
        scene.control->setProperty("hovletDisabledReason", QStringLiteral("Save first."));
        scene.control->setEnabled(false);
        QVERIFY(scene.show(QStringLiteral("a")));
        const auto reasonIn = [](const HVView &view) {
            return view.findChild<HVEntryReader *>()->disabledReason();
        };
        QCOMPARE(reasonIn(*scene.view()), QStringLiteral("Save first."));
        QVERIFY(scene.manager().restoreState(state));
        QCOMPARE(pinnedPopups().size(), 1);
        QCOMPARE(reasonIn(*pinnedPopups().constFirst()->view()), QString());
    }

    void shouldLeaveOutClosedOnesAndThoseWithoutContent()
    {
        QByteArray state;
        {
            HoverScene scene;
            QVERIFY(scene.show(QStringLiteral("a")));
            HVWidget *closed = scene.pin();
            QVERIFY(scene.show(QStringLiteral("b")));
            scene.pin();
            closed->close();
            state = scene.manager().saveState();
            closePinned();
        }
        MadeUpIndex empty([](const QString &, QString &, int &, HVXmlElement *&root) {
            root = nullptr;
            return static_cast<HVXmlElement *>(nullptr);
        });
        HoverScene next;
        next.start(&empty);
        QVERIFY(next.manager().restoreState(state));
        QVERIFY(pinnedPopups().isEmpty());
        QVERIFY(empty.asked.contains(QStringLiteral("b en_US")));
        QVERIFY(!empty.asked.contains(QStringLiteral("a en_US")));
    }

    void shouldRestoreNothingFromDamagedBytes_data()
    {
        HoverScene scene;
        QVERIFY(scene.show(QStringLiteral("a")));
        scene.pin();
        const QByteArray state = scene.manager().saveState();
        closePinned();
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("none") << QByteArray();
        QTest::newRow("others") << QByteArray("these are not the bytes");
        QTest::newRow("cut off") << state.left(state.size() - 1);
        QTest::newRow("extended") << state + '\0';
        QByteArray altered = state;
        altered[altered.size() / 2] = char(altered[altered.size() / 2] ^ 1);
        QTest::newRow("altered") << altered;
    }

    void shouldRestoreNothingFromDamagedBytes()
    {
        QFETCH(QByteArray, bytes);
        HoverScene scene;
        scene.start();
        QVERIFY(!scene.manager().restoreState(bytes));
        QVERIFY(pinnedPopups().isEmpty());
        QCOMPARE(scene.host().messagesOf(HVMessageWarning).size(), 1);
    }

    void shouldOfferItToHosts()
    {
        HoverScene scene;
        HVInterface &host = scene.host();
        const QByteArray none = host.saveState();
        QVERIFY(!none.isEmpty());
        QVERIFY(host.restoreState(none));
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerPinnedState)
#include "tst_hvmanager_pinnedstate.moc"
