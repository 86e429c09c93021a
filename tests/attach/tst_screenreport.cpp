// SPDX-License-Identifier: Apache-2.0
#include "AttachedHost.h"
#include "KeysHost.h"
#include "PackageFolder.h"
#include "ScreenReport.h"
#include "TestMain.h"

#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

using namespace Hovlets;

namespace {

QJsonObject reportIn(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

QStringList keysIn(const QString &path)
{
    QStringList keys;
    const QJsonArray controls = reportIn(path).value(text("controls")).toArray();
    for (const auto &control : controls)
        keys += control.toObject().value(text("key")).toString();
    return keys;
}

/// The kinds of the controls with a key.
QStringList kindsIn(const QString &path, const char *key)
{
    QStringList kinds;
    const QJsonArray controls = reportIn(path).value(text("controls")).toArray();
    for (const auto &each : controls) {
        const QJsonObject control = each.toObject();
        if (control.value(text("key")).toString() == text(key))
            kinds += control.value(text("kind")).toString();
    }
    return kinds;
}

QStringList placesIn(const QString &path)
{
    QStringList places;
    const QJsonArray controls = reportIn(path).value(text("controls")).toArray();
    for (const auto &each : controls) {
        const QJsonObject control = each.toObject();
        places += text("%1,%2")
                          .arg(control.value(text("x")).toInt())
                          .arg(control.value(text("y")).toInt());
    }
    return places;
}

} // namespace

class tst_ScreenReport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFollowWhatIsOnScreen()
    {
        PackageFolder folder;
        folder.addPackage(text("Pack"), { text("spin") });
        const QString path = folder.path() + text("/screen.json");
        HVContext settings;
        AttachedHost host(settings, { folder.path() }, QString());
        KeysWindow window;
        window.show();
        const ScreenReport report(host, path);
        QTRY_VERIFY(keysIn(path).contains(text("tabs/Network")));
        QCOMPARE(reportIn(path).value(text("format")).toString(), text("hovlets-screen"));
        const QStringList keys = keysIn(path);
        for (const char *key : { "actionOpen", "File", "pageGeneral", "table/Size", "list/Security",
                                 "spin", "combo", "group/Apply all" })
            QVERIFY2(keys.contains(text(key)), key);
        QCOMPARE(kindsIn(path, "actionOpen"), QStringList { text("action") });
        QCOMPARE(kindsIn(path, "File"), QStringList { text("menu title") });
        QCOMPARE(kindsIn(path, "tabs/Network"), QStringList { text("tab") });
        QVERIFY(kindsIn(path, "table/Size").contains(text("header section")));
        QCOMPARE(kindsIn(path, "list/Security"), QStringList { text("item") });
        QCOMPARE(kindsIn(path, "spin"), QStringList { text("widget") });
        QVERIFY(!keys.contains(text("File/Open Recent/Clear List"))); // its menu is closed
        QStringList places = placesIn(path);
        QVERIFY(!places.isEmpty());
        QCOMPARE(places.removeDuplicates(), 0);

        QVERIFY(host.show(text("spin"), QPoint(10, 10), window.spin));
        QTRY_COMPARE(reportIn(path).value(text("shown")).toString(), text("spin"));
        QCOMPARE(reportIn(path).value(text("title")).toString(), text("Title of spin"));
        window.hide();
        QTRY_VERIFY(keysIn(path).isEmpty());
    }
};

HOVLETS_TEST_MAIN(tst_ScreenReport)
#include "tst_screenreport.moc"
