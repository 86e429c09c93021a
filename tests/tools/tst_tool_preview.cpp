// SPDX-License-Identifier: Apache-2.0
#include "HVView.h"
#include "PackageFolder.h"
#include "PreviewPopup.h"
#include "PreviewWindow.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QToolTip>
#include <QtWidgets/QTreeWidget>

using namespace HovletsTool;

namespace {

constexpr char Ui[] =
        "import QtQuick 2.0\n"
        "Rectangle { width: 200; height: %1; property string title: hovlet.attribute(\"title\") }";

} // namespace

/// Tests the window that shows authors their popups while they write them.
class tst_ToolPreview : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_window.reset(); }

    void shouldShowTheFirstKey();
    void shouldShowTheChosenKey();
    void shouldSearchKeysAndPackages();
    void shouldWalkThroughTheKeysFromTheSearch();
    void shouldOfferTheExistingLocales();
    void shouldSwitchThePalette();
    void shouldSwitchToTheSimplePopup();
    void shouldShowFindingsBesideTheEntry();
    void shouldFollowTheControlFile();
    void shouldFollowTheUserInterface();
    void shouldFollowNewFiles();
    void shouldKeepTheChoiceWhileTheFileIsBroken();
    void shouldReportMistakesInQml();
    void shouldReportThatThereAreNoEntries();
    void shouldOutliveTheFolder();
    void shouldFillPlaceholders();
    void shouldShowWhatTheHostAdds();
    void shouldNotOpenWithoutADisplay();
    void shouldNotOpenPathsThatAreNotFolders();

private:
    void open(const QStringList &paths = {});
    void write(const QByteArray &title, const QByteArray &more = {});
    void writeUi(int height);
    template <typename Widget> Widget *find(const char *name) const;
    PreviewPopup *popup() const { return find<PreviewPopup>("popup"); }
    QString title() const;
    QString message() const;
    QStringList visibleKeys() const;

    std::unique_ptr<PackageFolder> m_folder;
    std::unique_ptr<PreviewWindow> m_window;
    PreviewOptions m_options;
};

void tst_ToolPreview::init()
{
    m_folder = std::make_unique<PackageFolder>();
    m_options = {};
    write("Pen");
    m_folder->addControlFile(text("Panel"), text("Panel"),
                             "<hovlets search=\"Draw\"><hovlet key=\"layer\" title=\"Layer\"/>"
                             "<hovlet key=\"opacity\" title=\"Opacity\"/></hovlets>");
    m_folder->addControlFile(text("Draw"), text("Draw.de"),
                             "<hovlets locale=\"de_DE\"><hovlet key=\"pen\" title=\"Stift\"/>"
                             "</hovlets>");
    writeUi(100);
    m_folder->add(text("Draw.hovlets/ui/SimpleTooltip.qml"),
                  "import QtQuick 2.0\nItem { width: 60; height: 20; property string title: "
                  "\"simple\" }");
}

void tst_ToolPreview::write(const QByteArray &title, const QByteArray &more)
{
    m_folder->addControlFile(
            text("Draw"), text("Draw"),
            "<hovlets locale=\"en_US\">\n<hovlet key=\"eraser\" title=\"Eraser\"/>\n"
            "<hovlet key=\"pen\" title=\""
                    + title + "\">" + more + "</hovlet>\n</hovlets>");
}

void tst_ToolPreview::writeUi(int height)
{
    m_folder->add(text("Draw.hovlets/ui/HovletsUI.qml"), QByteArray(text(Ui).arg(height).toUtf8()));
}

void tst_ToolPreview::open(const QStringList &paths)
{
    for (const QString &path : paths.isEmpty() ? QStringList { m_folder->path() } : paths)
        m_options.check.paths.push_back(path.toStdString());
    m_window = std::make_unique<PreviewWindow>(m_options);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.get()));
    QCoreApplication::processEvents(); // the findings come after the popup
}

template <typename Widget> Widget *tst_ToolPreview::find(const char *name) const
{
    return m_window->findChild<Widget *>(text(name));
}

QString tst_ToolPreview::title() const
{
    const Hovlets::HVView *view = popup()->view();
    const QQuickItem *root = view ? view->rootObject() : nullptr;
    return root ? root->property("title").toString() : QString();
}

QString tst_ToolPreview::message() const
{
    const auto *label = qobject_cast<QLabel *>(popup()->widget());
    return label ? label->text() : QString();
}

QStringList tst_ToolPreview::visibleKeys() const
{
    QStringList keys;
    const auto *list = find<QTreeWidget>("keys");
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        if (!list->topLevelItem(i)->isHidden())
            keys += list->topLevelItem(i)->text(0);
    }
    return keys;
}

void tst_ToolPreview::shouldShowTheFirstKey()
{
    open();
    QCOMPARE(visibleKeys(),
             QStringList({ text("eraser"), text("layer"), text("opacity"), text("pen") }));
    QCOMPARE(title(), text("Eraser"));
    QVERIFY(popup()->view()->isVisible());
    QVERIFY(!popup()->view()->window()->windowFlags().testFlag(Qt::ToolTip));
    QCOMPARE(find<QLabel>("source")->text(), text("Draw.hovlets/Control/Draw.xml:2"));
}

void tst_ToolPreview::shouldShowTheChosenKey()
{
    open();
    m_window->chooseKey(text("layer"));
    QCOMPARE(title(), text("Layer"));
    QCOMPARE(find<QTreeWidget>("keys")->currentItem()->text(1), text("Panel"));
    m_window->chooseKey(text("nothing"));
    QVERIFY(message().startsWith(text("There is no entry for \"nothing\" in en_US")));
}

void tst_ToolPreview::shouldSearchKeysAndPackages()
{
    open();
    auto *search = find<QLineEdit>("search");
    QTest::keyClicks(search, text("OPA"));
    QCOMPARE(visibleKeys(), QStringList { text("opacity") });
    QCOMPARE(title(), text("Opacity"));
    search->setText(text("panel"));
    QCOMPARE(visibleKeys(), QStringList({ text("layer"), text("opacity") }));
    search->setText(text("none of them"));
    QCOMPARE(visibleKeys(), QStringList());
    search->clear();
    QCOMPARE(visibleKeys().size(), 4);
}

void tst_ToolPreview::shouldWalkThroughTheKeysFromTheSearch()
{
    open();
    auto *search = find<QLineEdit>("search");
    search->setFocus();
    QTest::keyClick(search, Qt::Key_Down);
    QCOMPARE(title(), text("Layer"));
    QTest::keyClick(search, Qt::Key_Up);
    QCOMPARE(title(), text("Eraser"));
    QTest::keyClick(search, Qt::Key_Up); // the first one remains selected
    QCOMPARE(title(), text("Eraser"));
}

void tst_ToolPreview::shouldOfferTheExistingLocales()
{
    open();
    auto *locale = find<QComboBox>("locale");
    QCOMPARE(locale->count(), 2);
    m_window->chooseKey(text("pen"));
    QCOMPARE(title(), text("Pen"));
    QTest::keyClick(locale, Qt::Key_Home); // de_DE
    QCOMPARE(locale->currentText(), text("de_DE"));
    QCOMPARE(title(), text("Stift"));
    QVERIFY(find<QLabel>("source")->text().endsWith(text("Draw.de.xml:1")));
}

void tst_ToolPreview::shouldSwitchThePalette()
{
    open();
    const int light = m_window->palette().color(QPalette::Window).lightness();
    QTest::keyClick(find<QComboBox>("palette"), Qt::Key_End);
    QVERIFY(QToolTip::palette().color(QPalette::ToolTipBase).lightness() < 80);
    QTRY_VERIFY(m_window->palette().color(QPalette::Window).lightness() < light);
    QTest::keyClick(find<QComboBox>("palette"), Qt::Key_Home);
    QVERIFY(QToolTip::palette().color(QPalette::ToolTipBase).lightness() > 200);
    QTRY_COMPARE(m_window->palette().color(QPalette::Window).lightness(), light);
}

void tst_ToolPreview::shouldSwitchToTheSimplePopup()
{
    open();
    find<QCheckBox>("simple")->click();
    QCOMPARE(title(), text("simple"));
    find<QCheckBox>("simple")->click();
    QCOMPARE(title(), text("Eraser"));
}

void tst_ToolPreview::shouldShowFindingsBesideTheEntry()
{
    write("Pen", "<p>%(never ends</p>");
    m_options.check.locales = { "de_DE" };
    open();
    const auto *list = find<QTreeWidget>("ofEntry");
    QCOMPARE(list->topLevelItemCount(), 1); // the eraser has no German entry
    QVERIFY(list->topLevelItem(0)->text(1).startsWith(text("Draw.xml:2:")));
    QCOMPARE(find<QTreeWidget>("keys")->topLevelItem(3)->text(2), text("1"));
    m_window->chooseKey(text("pen"));
    QCOMPARE(list->topLevelItemCount(), 1);
    QVERIFY(list->topLevelItem(0)->text(0).startsWith(text("HV")));
    QVERIFY(list->topLevelItem(0)->text(1).startsWith(text("Draw.xml:3:")));
    QCOMPARE(find<QTreeWidget>("all")->topLevelItemCount(), 2);
}

void tst_ToolPreview::shouldFollowTheControlFile()
{
    open();
    m_window->chooseKey(text("pen"));
    write("Broad pen");
    QTRY_COMPARE(title(), text("Broad pen"));
    write("Narrow pen"); // a second time, because the new file is watched, too
    QTRY_COMPARE(title(), text("Narrow pen"));
}

void tst_ToolPreview::shouldFollowTheUserInterface()
{
    open();
    QCOMPARE(popup()->view()->height(), 100);
    writeUi(140);
    QTRY_COMPARE(popup()->view()->height(), 140);
}

void tst_ToolPreview::shouldFollowNewFiles()
{
    open();
    m_folder->addControlFile(text("New"), text("New"),
                             "<hovlets search=\"Draw\"><hovlet key=\"new\"/></hovlets>");
    QTRY_VERIFY(visibleKeys().contains(text("new")));
    QVERIFY(QDir(m_folder->path() + text("/New.hovlets")).removeRecursively());
    QTRY_VERIFY(!visibleKeys().contains(text("new")));
}

void tst_ToolPreview::shouldKeepTheChoiceWhileTheFileIsBroken()
{
    open();
    m_window->chooseKey(text("pen"));
    const QString file = m_folder->addControlFile(text("Draw"), text("Draw"), "<hovlets>\n<hovlet");
    QTRY_VERIFY(message().startsWith(text("There is no entry for \"pen\" in en_US")));
    const auto *all = find<QTreeWidget>("all");
    QTRY_VERIFY(!all->findItems(text("Draw.xml:2:"), Qt::MatchStartsWith, 1).isEmpty());
    QCOMPARE(all->findItems(text("Draw.xml:2:"), Qt::MatchStartsWith, 1).first()->toolTip(1), file);
    write("Pen, mended");
    QTRY_COMPARE(title(), text("Pen, mended"));
}

void tst_ToolPreview::shouldReportMistakesInQml()
{
    open();
    // Qt's own warning.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(text("HovletsUI.qml:2")));
    m_folder->add(text("Draw.hovlets/ui/HovletsUI.qml"), "import QtQuick 2.0\nItem { width: }");
    const auto *list = find<QTreeWidget>("ofEntry");
    QTRY_VERIFY(list->topLevelItemCount() > 0);
    QCOMPARE(list->topLevelItem(0)->text(1), text("HovletsUI.qml:2:15"));
    QCOMPARE(message(), text("The user interface cannot be shown. See below why."));
    writeUi(100);
    QTRY_COMPARE(title(), text("Eraser"));
    QTRY_COMPARE(list->topLevelItemCount(), 0);
}

void tst_ToolPreview::shouldReportThatThereAreNoEntries()
{
    const PackageFolder empty;
    open({ empty.path() });
    QVERIFY(message().startsWith(text("There are no entries yet.")));
    empty.addControlFile(text("First"), text("First"), "<hovlets><hovlet key=\"one\"/></hovlets>");
    QTRY_COMPARE(visibleKeys(), QStringList { text("one") });
}

void tst_ToolPreview::shouldOutliveTheFolder()
{
    const QString package = m_folder->path() + text("/Draw.hovlets");
    open({ package });
    QCOMPARE(title(), text("Eraser"));
    QVERIFY(QDir().rename(package, package + text(".away")));
    QTRY_VERIFY(message().contains(text("Draw.hovlets is not a readable folder")));
    QCOMPARE(visibleKeys(), QStringList());
    QVERIFY(QDir().rename(package + text(".away"), package));
    QTRY_COMPARE(title(), text("Eraser"));
}

void tst_ToolPreview::shouldFillPlaceholders()
{
    m_options.properties = { { text("zoom"), text("50 %") } };
    m_folder->add(text("Draw.hovlets/ui/HovletsUI.qml"),
                  "import QtQuick 2.0\nItem { width: 60; height: 20; property string title: "
                  "hovletView.interpolate(\"%(zoom)s\") }");
    open();
    QCOMPARE(title(), text("50 %"));
}

void tst_ToolPreview::shouldShowWhatTheHostAdds()
{
    m_options.check.keyData = m_folder->add(text("keys.xml"),
                                            "<hovletkeys><key name=\"eraser\" hint=\"Rubber\"/>"
                                            "</hovletkeys>")
                                      .toStdString();
    m_folder->add(text("extra/ui/HovletsUI.qml"),
                  "import QtQuick 2.0\nItem { width: 60; height: 33; property string title: "
                  "hovlet.attribute(\"hint\") }");
    QVERIFY(QFile::remove(m_folder->path() + text("/Draw.hovlets/ui/HovletsUI.qml")));
    m_options.check.extraPath = (m_folder->path() + text("/extra")).toStdString();
    open();
    QCOMPARE(title(), text("Rubber"));
    QCOMPARE(popup()->view()->height(), 33);
}

void tst_ToolPreview::shouldNotOpenWithoutADisplay()
{
    const ToolRun run({ text("preview"), m_folder->path() });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(
            run.error,
            QByteArray("hovlets: there is no display to open a window on; `hovlets render` renders "
                       "popups without one\n"));
}

void tst_ToolPreview::shouldNotOpenPathsThatAreNotFolders()
{
    const ToolRun run({ text("preview"), text("/no/such/folder") },
                      { { text("QT_QPA_PLATFORM"), text("offscreen") } });
    QCOMPARE(run.status, 2);
    QVERIFY(run.error.startsWith("hovlets: /no/such/folder is not a readable folder"));
}

HOVLETS_TEST_MAIN(tst_ToolPreview)
#include "tst_tool_preview.moc"
