// SPDX-License-Identifier: Apache-2.0
#include "HoverScene.h"
#include "TestMain.h"
#include "TranslationFile.h"
#include "Text.h"

#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QVBoxLayout>

using namespace Hovlets;

namespace {

/// Records when a window is raised, as its children see it.
class RaiseWatcher : public QObject
{
    Q_OBJECT

public:
    void watch(QWidget *widget, const QString &name)
    {
        widget->setObjectName(name);
        widget->installEventFilter(this);
    }

    QStringList raised;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        if (event->type() == QEvent::ZOrderChange)
            raised += object->objectName();
        return QObject::eventFilter(object, event);
    }
};

} // namespace

/// Tests popups that the user pins, and popups that outlive the manager.
class tst_HVManagerPinned : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldTranslateEachPopupByItsOwnPackage()
    {
        HoverScene scene;
        scene.packages.add(text("Scene.hovlets/l10n/Hovlets_de_DE.qm"),
                           translationFile("Menu", "Open", text("Aufmachen")));
        scene.packages.addPackage(text("Other"), { text("c") });
        scene.context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(scene.show(text("a")));
        const QPointer<HVWidget> pinned = scene.pin();
        QVERIFY(scene.show(text("c")));
        QCOMPARE(scene.view()->translate(text("Open"), text("Menu")), text("Open"));
        QCOMPARE(pinned->view()->translate(text("Open"), text("Menu")), text("Aufmachen"));
        QCOMPARE(scene.view()->translate(text("Open"), text("Menu")), text("Open"));
        delete pinned;
    }

    void shouldPinOnlyTheCurrentPopup()
    {
        HoverScene scene;
        QWidget container;
        QWidget *answer = &container;
        QVERIFY(!scene.manager().reserve(nullptr, answer)); // there is no popup yet
        QVERIFY(scene.show(text("a")));
        HVWidget other(&scene.manager(), nullptr, nullptr);
        QVERIFY(!scene.manager().reserve(&other, answer));
        QVERIFY(!scene.manager().reserve(nullptr, answer));
        QCOMPARE(answer, &container);
        QVERIFY(scene.host().windowsAskedFor.isEmpty());

        HVWidget *popup = scene.popup();
        const std::unique_ptr<HVWidget> pinned(popup);
        QVERIFY(scene.manager().reserve(popup, answer));
        QCOMPARE(answer, nullptr); // the host supplies no window for it
        QCOMPARE(scene.host().windowsAskedFor, QList<HVWindowType> { HVReservedWindow });
        QVERIFY(!scene.manager().reserve(popup, answer)); // no longer the current popup
        QCOMPARE(scene.host().windowsAskedFor.size(), 1);
    }

    void shouldHaveANewPopupImmediately()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        const std::unique_ptr<HVWidget> pinned(scene.pin());
        QVERIFY(scene.popup());
        QVERIFY(scene.popup() != pinned.get());
        QVERIFY(scene.view() && !scene.view()->content());
        QVERIFY(!scene.isShowing());
        QVERIFY(pinned->isVisible());
        QCOMPARE(pinned->windowType(), Qt::Tool);

        QVERIFY(scene.show(text("a"))); // the same key, in the new popup
        QVERIFY(scene.isShowing());
        QTest::mouseClick(pinned.get(), Qt::LeftButton);
        QVERIFY(!scene.isShowing());
        QVERIFY(pinned->isVisible());
        QCOMPARE(pinned->view()->content()->attribute(text("key")), text("a"));
    }

    void shouldPutThePopupIntoTheWindowOfTheHost()
    {
        HoverScene scene;
        QWidget container;
        scene.host().container = &container;
        QVERIFY(scene.show(text("a")));
        const HVWidget *pinned = scene.pin();
        QCOMPARE(pinned->parentWidget(), &container);
        QVERIFY(container.layout());
        QVERIFY(container.isVisible());
    }

    void shouldRaiseThePinnedPopupsFromTheLastToTheFirst()
    {
        HoverScene scene;
        QWidget container; // makes it visible when a child is raised
        container.setLayout(new QVBoxLayout);
        scene.host().container = &container;
        RaiseWatcher watcher;
        QList<HVWidget *> pinned;
        for (const char *name : { "first", "second", "third" }) {
            QVERIFY(scene.show(text("a")));
            pinned += scene.pin();
            watcher.watch(pinned.constLast(), text(name));
        }
        pinned.at(2)->lower();
        watcher.raised.clear();
        scene.manager().raise();
        QCOMPARE(watcher.raised, (QStringList { text("third"), text("second"), text("first") }));
        const QObjectList order = container.children();
        QVERIFY(order.indexOf(pinned.at(0)) > order.indexOf(pinned.at(1)));
        QVERIFY(order.indexOf(pinned.at(1)) > order.indexOf(pinned.at(2)));

        delete pinned.at(1);
        watcher.raised.clear();
        pinned.at(0)->lower();
        watcher.raised.clear();
        scene.manager().raise();
        QCOMPARE(watcher.raised, QStringList { text("first") }); // the other is on top already
    }

    void shouldKeepPinnedPopupsOnTop()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        const std::unique_ptr<HVWidget> first(scene.pin());
        QVERIFY(scene.show(text("b")));
        std::unique_ptr<HVWidget> second(scene.pin());
        QVERIFY(scene.show(text("a")));
        const Qt::WindowFlags before = first->windowFlags();
        QVERIFY(!before.testFlag(Qt::WindowStaysOnTopHint));
        const Qt::WindowFlags current = scene.popup()->windowFlags();

        scene.manager().setStayOnTop(true);
        QCOMPARE(first->windowFlags(), before | Qt::WindowStaysOnTopHint);
        QVERIFY(second->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
        QVERIFY(first->isVisible() && second->isVisible());
        QCOMPARE(scene.popup()->windowFlags(), current);

        second.reset();
        scene.manager().setStayOnTop(false);
        QCOMPARE(first->windowFlags(), before);
        QVERIFY(first->isVisible());
        scene.manager().raise();
    }

    void shouldShowThePinnedPopupsFromTheLastToTheFirst()
    {
        class Watcher : public QObject
        {
        public:
            QObjectList shown;

        protected:
            bool eventFilter(QObject *object, QEvent *event) override
            {
                if (event->type() == QEvent::Show)
                    shown += object;
                return false;
            }
        } watcher;
        HoverScene scene;
        std::vector<std::unique_ptr<HVWidget>> pinned;
        for (int i = 0; i < 3; ++i) {
            QVERIFY(scene.show(text("a")));
            pinned.emplace_back(scene.pin())->installEventFilter(&watcher);
        }
        watcher.shown.clear();
        scene.manager().setStayOnTop(true);
        QCOMPARE(watcher.shown,
                 (QObjectList { pinned[2].get(), pinned[1].get(), pinned[0].get() }));
    }

    void shouldForgetPinnedPopupsThatTheUserCloses()
    {
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        QPointer<HVWidget> pinned = scene.pin();
        pinned->close();
        QTRY_VERIFY(!pinned);
        scene.manager().raise();
        scene.manager().setStayOnTop(true);
        QCOMPARE(scene.manager().hovletAttribute(text("a"), text("key"), {}), text("a"));
    }

    void shouldSkipPopupsThatCloseMeanwhile_data()
    {
        QTest::addColumn<bool>("raises");
        QTest::newRow("raised") << true;
        QTest::newRow("kept on top") << false;
    }

    void shouldSkipPopupsThatCloseMeanwhile()
    {
        QFETCH(bool, raises);
        HoverScene scene;
        QVERIFY(scene.show(text("a")));
        QPointer<HVWidget> first = scene.pin();
        QVERIFY(scene.show(text("b")));
        const std::unique_ptr<HVWidget> second(scene.pin());

        // Closes the first when the last appears.
        class Closer : public QObject
        {
        public:
            QPointer<HVWidget> other;

        protected:
            bool eventFilter(QObject *, QEvent *event) override
            {
                if (event->type() == QEvent::Show || event->type() == QEvent::ZOrderChange)
                    delete other;
                return false;
            }
        } closer;
        closer.other = first;
        second->installEventFilter(&closer);
        if (raises)
            scene.manager().raise();
        else
            scene.manager().setStayOnTop(true);
        QVERIFY(!first);
        QCOMPARE(second->windowFlags().testFlag(Qt::WindowStaysOnTopHint), !raises);
    }

    // Popups that outlive the manager

    void shouldLetPinnedPopupsLiveOnWithoutTheManager()
    {
        std::unique_ptr<HVWidget> pinned;
        QPointer<HVWidget> current;
        {
            HoverScene scene;
            scene.packages.add(
                    text("Scene.hovlets/ui/HovletsUI.qml"),
                    PackageFolder::userInterface(200, 100,
                                                 "function use() {\n"
                                                 "hovletView.debugLog(\"x\")\n"
                                                 "hovletView.stayOpen = true\n"
                                                 "return hovletView.interpolate(\"%(a)s\")"
                                                 "+ hovletView.translate(\"t\", \"c\")"
                                                 "+ hovletView.findResource(\"r\")"
                                                 "+ hovletView.openExternalResource(\"e\") }"));
            // Without a control, because the popup would go with the control's window.
            QVERIFY(scene.manager().show(text("a"), HoverScene::Position, nullptr));
            pinned.reset(scene.pin());
            current = scene.popup();
        }
        QVERIFY(!current);
        QVERIFY(pinned->isVisible());
        QCOMPARE(pinned->manager(), nullptr);
        QVariant used;
        QVERIFY(QMetaObject::invokeMethod(pinned->view()->rootObject(), "use",
                                          Q_RETURN_ARG(QVariant, used)));
        QCOMPARE(used.toString(), text("%(a)stResourcesfalse"));
        pinned->checkMousePosition({ 0, 0 });
        pinned->reposition();
        pinned->view()->setReserved(false);
        pinned->view()->setReserved(true);
        pinned->hideAnimated();
    }

    void shouldLetThePopupWaitForItsDeletion()
    {
        HVContext context;
        PackageFolder packages;
        packages.addPackage(text("P"), { text("a") });
        auto host = std::make_unique<RecordingHost>(context, QStringList { packages.path() });
        QVERIFY(host->manager()->show(text("a"), {}, nullptr));
        QPointer<HVWidget> popup = host->popup();
        host.reset();
        QVERIFY(popup);
        QVERIFY(popup->isVisible());
        popup->checkMousePosition({ 700, 700 });
        popup->hideAnimated();
        popup->view()->setReserved(true);
        QCOMPARE(popup->windowType(), Qt::ToolTip); // the manager that would pin it is gone
        popup->showAnimated();
        QTRY_VERIFY(!popup);
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerPinned)
#include "tst_hvmanager_pinned.moc"
