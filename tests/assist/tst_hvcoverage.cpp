// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVInterface.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"

#include <HovletsAssist/HVCoverage.h>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QtWidgets>
// The module of this class depends on the major version of Qt.
#include <QAction>

#include <memory>

using namespace Hovlets;

namespace {

/// A window with a covered and a missing control, and a host with entries for "a", "b" and
/// "generic".
class Scene
{
public:
    Scene()
    {
        packages.addPackage(text("Scene"), { text("a"), text("b"), text("generic") });
        settings.set(HVKeyTrackHover, true);
        host = std::make_unique<HVInterface>(settings, QStringList { packages.path() });
        window.setWindowTitle(text("Window"));
        covered = add<QPushButton>("a");
        missing = add<QPushButton>("nobody");
        missing->setText(text("&No one"));
        window.resize(300, 300);
    }

    template <typename Widget> Widget *add(const char *name)
    {
        auto *widget = new Widget;
        widget->setObjectName(text(name));
        layout->addWidget(widget);
        return widget;
    }

    PackageFolder packages;
    HVContext settings;
    std::unique_ptr<HVInterface> host;
    QWidget window;
    QVBoxLayout *layout = new QVBoxLayout(&window);
    QPushButton *covered;
    QPushButton *missing;
};

/// A host that records the keys that it is asked for.
class AskedHost : public HVInterface
{
public:
    using HVInterface::HVInterface;

    QString keyForObject(QObject *object) override
    {
        asked += object->objectName();
        return HVInterface::keyForObject(object);
    }

    QStringList asked;
};

QJsonObject find(const QJsonObject &report, const char *list, const QString &key)
{
    const QJsonArray items = report[text(list)].toArray();
    for (const auto &item : items) {
        if (item.toObject()[text("key")].toString() == key)
            return item.toObject();
    }
    return {};
}

QJsonObject control(const QJsonObject &report, const char *key)
{
    return find(report, "controls", text(key));
}

int total(const QJsonObject &report, const char *name)
{
    return report[text("totals")].toObject()[text(name)].toInt(-1);
}

QStringList controlKeys(const QJsonObject &report)
{
    QStringList keys;
    const QJsonArray controls = report[text("controls")].toArray();
    for (const auto &item : controls)
        keys += item.toObject()[text("key")].toString();
    keys.sort();
    return keys;
}

QWidget *overlayOf(const QWidget &window)
{
    return window.findChild<QWidget *>(text("qt_hovlets_coverage_overlay"));
}

} // namespace

class tst_HVCoverage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldDistinguishCoveredControlsFromMissingOnes()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        const QJsonObject report = coverage.report();
        QCOMPARE(report[text("format")].toString(), text("hovlets-coverage"));
        QCOMPARE(report[text("version")].toInt(), 1);
        QCOMPARE(controlKeys(report), QStringList({ text("a"), text("nobody") }));
        QVERIFY(control(report, "a")[text("covered")].toBool());
        const QJsonObject missing = control(report, "nobody");
        QVERIFY(!missing[text("covered")].toBool());
        QCOMPARE(missing[text("class")].toString(), text("QPushButton"));
        QCOMPARE(missing[text("objectName")].toString(), text("nobody"));
        QCOMPARE(missing[text("label")].toString(), text("No one"));
        QCOMPARE(missing[text("window")].toString(), text("Window"));
        QCOMPARE(missing[text("parents")].toArray(), QJsonArray { text("QWidget[0]") });
        QCOMPARE(total(report, "controls"), 2);
        QCOMPARE(total(report, "covered"), 1);
        QCOMPARE(total(report, "missing"), 1);
        QCOMPARE(total(report, "answeredByFallback"), 0);
    }

    void shouldReportEntriesThatNoControlAsksFor()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        const QJsonObject report = coverage.report();
        QVERIFY(find(report, "entries", text("a"))[text("asked")].toBool());
        QVERIFY(!find(report, "entries", text("b"))[text("asked")].toBool());
        QCOMPARE(total(report, "entries"), 3);
        QCOMPARE(total(report, "asked"), 1);
        QCOMPARE(total(report, "unasked"), 2);
    }

    void shouldReportControlsThatTheFallbackAnswers()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        scene.host->context().set(HVKeyFallbackKey, text("generic"));
        const QJsonObject report = coverage.report();
        QVERIFY(!control(report, "a")[text("answeredByFallback")].toBool());
        QVERIFY(control(report, "nobody")[text("answeredByFallback")].toBool());
        QCOMPARE(total(report, "answeredByFallback"), 1);
        const QJsonObject entry = find(report, "entries", text("generic"));
        QVERIFY(entry[text("asked")].toBool());
        QVERIFY(entry[text("isFallback")].toBool());
        QCOMPARE(report[text("fallbackKey")].toString(), text("generic"));
    }

    void shouldReportTheEntryOfAParent()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        auto *group = scene.add<QGroupBox>("b");
        auto *inside = new QLineEdit(group);
        inside->setObjectName(text("inside"));
        scene.window.show();
        const QJsonObject report = coverage.report();
        QCOMPARE(control(report, "inside")[text("parentKey")].toString(), text("b"));
        QCOMPARE(control(report, "nobody")[text("parentKey")].toString(), QString());
        QVERIFY(control(report, "b")[text("covered")].toBool()); // has an entry, so it counts
    }

    void shouldCountWhatAPersonUses_data()
    {
        QTest::addColumn<QString>("className");
        QTest::addColumn<bool>("counts");
        const auto row = [](const char *name, bool counts) {
            QTest::newRow(name) << text(name) << counts;
        };
        for (const char *name : { "QPushButton", "QLineEdit", "QComboBox", "QSpinBox", "QSlider",
                                  "QListWidget", "QTabBar", "QTextEdit" })
            row(name, true);
        for (const char *name : { "QLabel", "QFrame", "QGroupBox", "QScrollArea", "QTabWidget",
                                  "QStackedWidget", "QToolBar" })
            row(name, false);
    }

    void shouldCountWhatAPersonUses()
    {
        QFETCH(QString, className);
        QFETCH(bool, counts);
        const QHash<QString, std::function<QWidget *()>> makers {
            { text("QPushButton"), [] { return new QPushButton; } },
            { text("QLineEdit"), [] { return new QLineEdit; } },
            { text("QComboBox"),
              [] {
                  auto *b = new QComboBox;
                  b->setEditable(true);
                  return b;
              } },
            { text("QSpinBox"), [] { return new QSpinBox; } },
            { text("QSlider"), [] { return new QSlider; } },
            { text("QListWidget"), [] { return new QListWidget; } },
            { text("QTabBar"), [] { return new QTabBar; } },
            { text("QTextEdit"), [] { return new QTextEdit; } },
            { text("QLabel"), [] { return new QLabel; } },
            { text("QFrame"), [] { return new QFrame; } },
            { text("QGroupBox"), [] { return new QGroupBox; } },
            { text("QScrollArea"), [] { return new QScrollArea; } },
            { text("QTabWidget"), [] { return new QTabWidget; } },
            { text("QStackedWidget"), [] { return new QStackedWidget; } },
            { text("QToolBar"), [] { return new QToolBar; } },
        };
        Scene scene;
        HVCoverage coverage(*scene.host);
        QWidget *widget = makers[className]();
        widget->setObjectName(text("it"));
        scene.layout->addWidget(widget);
        scene.window.show();
        // Its parts do not count either.
        QStringList expected { text("a"), text("nobody") };
        if (counts)
            expected.insert(1, text("it"));
        QCOMPARE(controlKeys(coverage.report()), expected);
        widget->setToolTip(text("Something"));
        QVERIFY(!control(coverage.report(), "it").isEmpty());
    }

    void shouldLabelAControlWithItsVisibleText()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        auto *field = scene.add<QLineEdit>("field");
        field->setText(text("secret"));
        scene.window.show();
        const auto label = [&] {
            return control(coverage.report(), "field")[text("label")].toString();
        };
        QCOMPARE(label(), QString()); // never text that the user has typed
        field->setToolTip(text("The name\nin full"));
        QCOMPARE(label(), text("The name"));
        scene.add<QLabel>("")->setBuddy(field);
        scene.window.findChild<QLabel *>()->setText(text("&Name:"));
        QCOMPARE(label(), text("Name:"));
        field->setAccessibleName(text("Name of the layer"));
        QCOMPARE(label(), text("Name of the layer"));
    }

    void shouldFindControlsInsideContainers()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        auto *area = scene.add<QScrollArea>("");
        auto *tabs = new QTabWidget;
        tabs->setObjectName(text("tabs"));
        auto *page = new QPushButton;
        page->setObjectName(text("page"));
        tabs->addTab(page, text("Page"));
        area->setWidget(tabs);
        scene.window.show();
        QVERIFY(!control(coverage.report(), "page").isEmpty());
    }

    void shouldSkipHiddenControlsAndIgnoredClasses()
    {
        Scene scene;
        HVCoverageSettings settings;
        settings.ignoredClasses = QStringList { text("QGroupBox") };
        HVCoverage coverage(*scene.host, settings);
        auto *group = scene.add<QGroupBox>("group");
        (new QPushButton(group))->setObjectName(text("inside"));
        scene.missing->hide();
        scene.window.show();
        QCOMPARE(controlKeys(coverage.report()), QStringList { text("a") });
    }

    void shouldRememberWindowsThatAreGone()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        for (int i = 0; i < 2; ++i) {
            QDialog dialog(&scene.window);
            (new QPushButton(&dialog))->setObjectName(text("later"));
            dialog.show();
            QTRY_VERIFY(!control(coverage.report(), "later").isEmpty());
        }
        QCOMPARE(controlKeys(coverage.report()),
                 QStringList({ text("a"), text("later"), text("nobody") })); // once
    }

    void shouldWalkAutomaticallyWhenSomethingIsShown()
    {
        Scene scene;
        AskedHost host(scene.settings, QStringList { scene.packages.path() });
        HVCoverage coverage(host);
        scene.window.show();
        QTRY_VERIFY(host.asked.contains(text("a"))); // no call of the test causes this walk
        QDialog dialog;
        (new QPushButton(&dialog))->setObjectName(text("later"));
        dialog.show();
        QTRY_VERIFY(host.asked.contains(text("later")));
        scene.add<QPushButton>("more"); // in a window that is already known
        QTRY_VERIFY(host.asked.contains(text("more")));
    }

    void shouldAskForTheEntriesOfAnOpenMenu()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        QMenu menu;
        menu.addAction(text("One"))->setObjectName(text("b"));
        menu.addAction(text("Two"))->setObjectName(text("two"));
        menu.addSeparator()->setObjectName(text("separator"));
        menu.addMenu(text("More"))->setObjectName(text("more"));
        QCOMPARE(controlKeys(coverage.report()), QStringList());
        menu.popup(QPoint(10, 10));
        const QJsonObject report = coverage.report();
        QCOMPARE(controlKeys(report), QStringList({ text("b"), text("two") }));
        QVERIFY(control(report, "b")[text("covered")].toBool());
        QCOMPARE(control(report, "two")[text("label")].toString(), text("Two"));
    }

    void shouldCountAKeyThatWasHovered()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        QWidget canvas;
        canvas.setObjectName(text("b"));
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
        QApplication::sendEvent(&canvas, &event);
        QVERIFY(find(coverage.report(), "entries", text("b"))[text("asked")].toBool());
    }

    void shouldFollowTheLocale()
    {
        Scene scene;
        scene.packages.addControlFile(text("German"), text("de"),
                                      "<hovlets locale='de_DE'><hovlet key='nobody'/></hovlets>");
        scene.host = std::make_unique<HVInterface>(scene.settings,
                                                   QStringList { scene.packages.path() });
        HVCoverage coverage(*scene.host);
        scene.window.show();
        QVERIFY(!control(coverage.report(), "nobody")[text("covered")].toBool());
        scene.host->context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(control(coverage.report(), "nobody")[text("covered")].toBool());
    }

    void shouldNotCountThePopup()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        QVERIFY(scene.host->show(text("a"), QPoint(400, 400), scene.covered));
        QCOMPARE(total(coverage.report(), "controls"), 2);
    }

    void shouldWriteTheReportAtTheEnd_data()
    {
        QTest::addColumn<bool>("quits");
        QTest::newRow("the program quits") << true;
        QTest::newRow("the object goes") << false;
    }

    void shouldWriteTheReportAtTheEnd()
    {
        QFETCH(bool, quits);
        Scene scene;
        HVCoverageSettings settings;
        settings.reportFile = scene.packages.path() + text("/report.json");
        auto coverage = std::make_unique<HVCoverage>(*scene.host, settings);
        scene.window.show();
        coverage->walk();
        scene.window.hide();
        QVERIFY(!QFile::exists(settings.reportFile));
        if (quits) {
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
            QCoreApplication::exec();
        } else {
            coverage.reset();
        }
        QFile file(settings.reportFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonObject report = QJsonDocument::fromJson(file.readAll()).object();
        QCOMPARE(controlKeys(report), QStringList({ text("a"), text("nobody") }));
    }

    void shouldDoNothingWithoutTheInterface()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        scene.host.reset();
        coverage.walk();
        QVERIFY(coverage.report().isEmpty());
        QVERIFY(!coverage.writeReport(scene.packages.path() + text("/report.json")));
    }

    void shouldOutlineControlsInTheOverlay()
    {
        Scene scene;
        HVCoverage coverage(*scene.host);
        scene.window.show();
        coverage.walk();
        QVERIFY(!overlayOf(scene.window)); // off by default
        coverage.setOverlayVisible(true);
        const QImage image = scene.window.grab().toImage();
        const auto cornerOf = [&](const QWidget *widget) {
            return QColor(image.pixel(widget->geometry().topLeft() + QPoint(1, 1)));
        };
        const QColor green = cornerOf(scene.covered), red = cornerOf(scene.missing);
        QVERIFY2(green.green() > green.red() + 50, qPrintable(green.name()));
        QVERIFY2(red.red() > red.green() + 50, qPrintable(red.name()));
        coverage.setOverlayVisible(false);
        QVERIFY(!overlayOf(scene.window));
    }

    void shouldLetTheMouseThroughTheOverlay()
    {
        Scene scene;
        HVCoverageSettings settings;
        settings.overlay = true;
        HVCoverage coverage(*scene.host, settings);
        scene.window.show();
        QTRY_VERIFY(overlayOf(scene.window));
        QVERIFY(overlayOf(scene.window)->geometry().contains(scene.covered->geometry()));
        QCOMPARE(scene.window.childAt(scene.covered->geometry().center()), scene.covered);
        QSignalSpy clicks(scene.covered, &QPushButton::clicked);
        QTest::mouseClick(scene.window.windowHandle(), Qt::LeftButton, {},
                          scene.covered->geometry().center());
        QCOMPARE(clicks.count(), 1);
        QCOMPARE(total(coverage.report(), "controls"), 2); // the overlay itself does not count
    }

    void shouldMoveTheOutlinesWithTheControls()
    {
        Scene scene;
        HVCoverageSettings settings;
        settings.overlay = true;
        HVCoverage coverage(*scene.host, settings);
        scene.window.show();
        QTRY_VERIFY(overlayOf(scene.window));
        scene.window.resize(400, 500);
        QTRY_COMPARE(overlayOf(scene.window)->size(), QSize(400, 500));
        const auto corner = [&] {
            const QImage image = scene.window.grab().toImage();
            return QColor(image.pixel(scene.covered->geometry().topLeft() + QPoint(1, 1)));
        };
        QTRY_VERIFY(corner().green() > corner().red() + 50);
    }
};

HOVLETS_TEST_MAIN(tst_HVCoverage)
#include "tst_hvcoverage.moc"
