// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVVideoSourceFFMPEG.h"
#include "HVView.h"
#include "HVWidget.h"
#include "TestMain.h"
#include "Text.h"

#include <QtQuick/QQuickItem>

#include <algorithm>

using namespace Hovlets;

/// Tests content that is compiled into the host: a data path in Qt's resources.
class tst_HVManagerResources : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldIndexPackages()
    {
        HVContext settings;
        HVManager manager(nullptr, settings, { text(":/content") }, nullptr);
        QCOMPARE(manager.keys(), (QStringList { text("ink"), text("pen") }));
    }

    void shouldShowAnEntryInThePackagesOwnUserInterface()
    {
        HVContext settings;
        HVInterface host(settings, { text(":/content") });
        HVManager manager(&host, settings, { text(":/content") }, nullptr);
        QVERIFY(manager.show(text("pen"), QPoint(100, 100), nullptr));
        const HVView *view = manager.widget()->view();
        QCOMPARE(view->source(), QUrl(text("qrc:/content/App.hovlets/ui/HovletsUI.qml")));
        QVERIFY(view->rootObject());
        QCOMPARE(view->packageRoot().path(), text(":/content/App.hovlets"));
    }

    void shouldTranslate()
    {
        HVContext settings;
        settings.set(HVKeyLocale, text("de_DE"));
        settings.set(HVKeyFallbackLocale, text("de_DE"));
        HVInterface host(settings, {});
        HVManager manager(&host, settings, { text(":/content") }, nullptr);
        QVERIFY(manager.show(text("pen"), QPoint(100, 100), nullptr));
        QCOMPARE(manager.translateString(text("Pen"), text("pen")), text("Stift"));
    }

    void shouldShowPicturesInTheDefaultUserInterface()
    {
        HVContext settings;
        HVInterface host(settings, {});
        HVManager manager(&host, settings, { text(HOVLETS_PACKAGES), text(":/content") }, nullptr);
        QVERIFY(manager.show(text("ink"), QPoint(100, 100), nullptr));
        QQuickItem *root = manager.widget()->view()->rootObject();
        QVERIFY(root);
        const QString picture(text(":/content/Ink.hovlets/Resources/dot.png"));
        const auto isShown = [&] {
            QList<QQuickItem *> items { root };
            for (int i = 0; i < items.size(); ++i)
                items += items.at(i)->childItems();
            return std::any_of(items.begin(), items.end(), [&](const QQuickItem *item) {
                return item->property("source").toString() == picture
                        && !item->property("loading").toBool() && item->implicitWidth() > 0;
            });
        };
        QTRY_VERIFY(isShown());
    }

    void shouldReportClipsThatCannotBePlayed()
    {
        const DebugLog log;
        HVVideoSourceFFMPEG source;
        source.setSource(QUrl::fromLocalFile(text(":/content/App.hovlets/Resources/pen.mp4")));
        source.start();
        QTRY_COMPARE(log.lines().size(), 1);
        source.quit();
        QCOMPARE(log.lines().constFirst(),
                 text("Could not open media at: :/content/App.hovlets/Resources/pen.mp4 "
                      "(FFmpeg cannot read Qt resources)"));
    }

    void shouldEndTheSearchForAPackageAtTheRoot()
    {
        HVContext settings;
        HVIndex index(&settings, {});
        QVERIFY(index.packageNameForLocation(text(":/content/nowhere.xml")).isNull());
    }
};

HOVLETS_TEST_MAIN(tst_HVManagerResources)
#include "tst_hvmanager_resources.moc"
