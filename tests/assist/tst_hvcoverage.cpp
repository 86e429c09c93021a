// SPDX-License-Identifier: Apache-2.0
#include "CoverageReport.h"
#include "CoverageScene.h"
#include "TestMain.h"

#include <QtCore/QJsonDocument>
#include <QtGui/QHelpEvent>
#include <QtWidgets/QtWidgets>
// The module of this class depends on the major version of Qt.
#include <QAction>

#include <memory>

using namespace Hovlets;

namespace {

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

using Maker = QWidget *(*)();

/// A row for each of the classes.
template <typename... Kinds> void addKinds(bool counts)
{
    const auto add = [&](const QMetaObject &kind, Maker make) {
        QTest::newRow(kind.className()) << make << counts;
    };
    (add(Kinds::staticMetaObject, []() -> QWidget * { return new Kinds; }), ...);
}

} // namespace

Q_DECLARE_METATYPE(Maker)

class tst_HVCoverage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldDistinguishCoveredControlsFromMissingOnes()
    {
        CoverageScene scene;
        scene.window.show();
        const QJsonObject report = scene.report();
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
        CoverageScene scene;
        scene.window.show();
        const QJsonObject report = scene.report();
        QVERIFY(find(report, "entries", text("a"))[text("asked")].toBool());
        QVERIFY(!find(report, "entries", text("b"))[text("asked")].toBool());
        QCOMPARE(total(report, "entries"), 3);
        QCOMPARE(total(report, "asked"), 1);
        QCOMPARE(total(report, "unasked"), 2);
    }

    void shouldReportControlsThatTheFallbackAnswers()
    {
        CoverageScene scene;
        scene.window.show();
        scene.host->context().set(HVKeyFallbackKey, text("generic"));
        const QJsonObject report = scene.report();
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
        CoverageScene scene;
        auto *group = scene.add<QGroupBox>("b");
        auto *inside = new QLineEdit(group);
        inside->setObjectName(text("inside"));
        scene.window.show();
        const QJsonObject report = scene.report();
        QCOMPARE(control(report, "inside")[text("parentKey")].toString(), text("b"));
        QCOMPARE(control(report, "nobody")[text("parentKey")].toString(), QString());
        QVERIFY(control(report, "b")[text("covered")].toBool()); // has an entry, so it counts
    }

    void shouldCountWhatAPersonUses_data()
    {
        QTest::addColumn<Maker>("make");
        QTest::addColumn<bool>("counts");
        addKinds<QPushButton, QLineEdit, QComboBox, QSpinBox, QSlider, QListWidget, QTabBar,
                 QTextEdit>(true);
        addKinds<QLabel, QFrame, QGroupBox, QScrollArea, QTabWidget, QStackedWidget, QToolBar>(
                false);
    }

    void shouldCountWhatAPersonUses()
    {
        QFETCH(Maker, make);
        QFETCH(bool, counts);
        CoverageScene scene;
        QWidget *widget = make();
        if (auto *box = qobject_cast<QComboBox *>(widget))
            box->setEditable(true);
        widget->setObjectName(text("it"));
        scene.window.layout()->addWidget(widget);
        scene.window.show();
        // Its parts do not count either.
        QStringList expected { text("a"), text("nobody") };
        if (counts)
            expected.insert(1, text("it"));
        QCOMPARE(controlKeys(scene.report()), expected);
        widget->setToolTip(text("Something"));
        QVERIFY(!control(scene.report(), "it").isEmpty());
    }

    void shouldLabelAControlWithItsVisibleText()
    {
        CoverageScene scene;
        auto *field = scene.add<QLineEdit>("field");
        field->setText(text("secret"));
        scene.window.show();
        const auto label = [&] {
            return control(scene.report(), "field")[text("label")].toString();
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
        CoverageScene scene;
        auto *area = scene.add<QScrollArea>("");
        auto *tabs = new QTabWidget;
        tabs->setObjectName(text("tabs"));
        auto *page = new QPushButton;
        page->setObjectName(text("page"));
        tabs->addTab(page, text("Page"));
        area->setWidget(tabs);
        scene.window.show();
        QVERIFY(!control(scene.report(), "page").isEmpty());
    }

    void shouldSkipHiddenControlsAndIgnoredClasses()
    {
        HVCoverageSettings settings;
        settings.ignoredClasses = QStringList { text("QGroupBox") };
        CoverageScene scene(settings);
        auto *group = scene.add<QGroupBox>("group");
        (new QPushButton(group))->setObjectName(text("inside"));
        scene.missing->hide();
        scene.window.show();
        QCOMPARE(controlKeys(scene.report()), QStringList { text("a") });
    }

    void shouldRememberWindowsThatAreGone()
    {
        CoverageScene scene;
        scene.window.show();
        for (int i = 0; i < 2; ++i) {
            QDialog dialog(&scene.window);
            (new QPushButton(&dialog))->setObjectName(text("later"));
            dialog.show();
            QTRY_VERIFY(!control(scene.report(), "later").isEmpty());
        }
        QCOMPARE(controlKeys(scene.report()),
                 QStringList({ text("a"), text("later"), text("nobody") })); // once
    }

    void shouldCountAControlOnceWhateverTheTitleOfItsWindow_data()
    {
        QTest::addColumn<QString>("name");
        QTest::newRow("window with a name") << text("Main");
        QTest::newRow("window without a name") << QString();
    }

    void shouldCountAControlOnceWhateverTheTitleOfItsWindow()
    {
        QFETCH(QString, name);
        CoverageScene scene;
        scene.window.setObjectName(name);
        scene.window.show();
        QCOMPARE(total(scene.report(), "controls"), 2);
        scene.window.setWindowTitle(text("Another document"));
        const QJsonObject report = scene.report();
        QCOMPARE(controlKeys(report), QStringList({ text("a"), text("nobody") }));
        QCOMPARE(control(report, "a")[text("window")].toString(), text("Another document"));
    }

    void shouldDistinguishDialogsWithoutNames()
    {
        CoverageScene scene;
        scene.window.show();
        for (const char *label : { "Overwrite", "Skip" }) {
            QDialog dialog(&scene.window);
            auto *button = new QPushButton(text(label), &dialog);
            dialog.show();
            scene.coverage->walk();
            button->hide(); // before the report
        }
        QCOMPARE(total(scene.report(), "controls"), 4);
    }

    void shouldWalkAutomaticallyWhenSomethingIsShown()
    {
        CoverageScene scene;
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
        CoverageScene scene;
        QMenu menu;
        menu.addAction(text("One"))->setObjectName(text("b"));
        menu.addAction(text("Two"))->setObjectName(text("two"));
        menu.addSeparator()->setObjectName(text("separator"));
        menu.addMenu(text("More"))->setObjectName(text("more"));
        QCOMPARE(controlKeys(scene.report()), QStringList());
        menu.popup(QPoint(10, 10));
        const QJsonObject report = scene.report();
        QCOMPARE(controlKeys(report), QStringList({ text("b"), text("two") }));
        QVERIFY(control(report, "b")[text("covered")].toBool());
        QCOMPARE(control(report, "two")[text("label")].toString(), text("Two"));
    }

    void shouldCountAKeyThatWasHovered()
    {
        CoverageScene scene;
        QWidget canvas;
        canvas.setObjectName(text("b"));
        QHelpEvent event(QEvent::ToolTip, QPoint(1, 1), QPoint(1, 1));
        QApplication::sendEvent(&canvas, &event);
        QVERIFY(find(scene.report(), "entries", text("b"))[text("asked")].toBool());
    }

    void shouldFollowTheLocale()
    {
        CoverageScene scene;
        scene.packages.addControlFile(text("German"), text("de"),
                                      "<hovlets locale='de_DE'><hovlet key='nobody'/></hovlets>");
        scene.createHost();
        scene.coverage = std::make_unique<HVCoverage>(*scene.host);
        scene.window.show();
        QVERIFY(!control(scene.report(), "nobody")[text("covered")].toBool());
        scene.host->context().set(HVKeyLocale, text("de_DE"));
        QVERIFY(control(scene.report(), "nobody")[text("covered")].toBool());
    }

    void shouldNotCountThePopup()
    {
        CoverageScene scene;
        scene.window.show();
        QVERIFY(scene.host->show(text("a"), QPoint(400, 400), scene.covered));
        QCOMPARE(total(scene.report(), "controls"), 2);
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
        const QTemporaryDir folder;
        HVCoverageSettings settings;
        settings.reportFile = folder.filePath(text("report.json"));
        CoverageScene scene(settings);
        scene.window.show();
        scene.coverage->walk();
        scene.window.hide();
        QVERIFY(!QFile::exists(settings.reportFile));
        if (quits) {
            QTimer::singleShot(0, qApp, [] { QCoreApplication::exit(); });
            QCoreApplication::exec();
        } else {
            scene.coverage.reset();
        }
        QFile file(settings.reportFile);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QJsonObject report = QJsonDocument::fromJson(file.readAll()).object();
        QCOMPARE(controlKeys(report), QStringList({ text("a"), text("nobody") }));
    }

    void shouldDoNothingWithoutTheInterface()
    {
        CoverageScene scene;
        scene.window.show();
        scene.host.reset();
        scene.coverage->walk();
        QVERIFY(scene.report().isEmpty());
        QVERIFY(!scene.coverage->writeReport(scene.packages.path() + text("/report.json")));
    }
};

HOVLETS_TEST_MAIN(tst_HVCoverage)
#include "tst_hvcoverage.moc"
