// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"
#include "TestMain.h"

#include "HVIndex.h"

#include <QtCore/QDir>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>

#include <sys/stat.h>

using namespace Hovlets;

namespace {

/// Marks each translation to distinguish it from the text itself.
class TranslatingHost : public RecordingHost
{
public:
    using RecordingHost::RecordingHost;

    QString translateString(const QString &text, const QString &context) override
    {
        return text + QLatin1Char('|') + context;
    }
};

/// The number of connections to the destruction of a view.
class Watchers : public HVView
{
public:
    static int of(const HVView &view)
    {
        return (view.*&Watchers::receivers)(SIGNAL(destroyed(QObject *)));
    }
};

} // namespace

class tst_HVView : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldAlwaysAnnounceStayOpen()
    {
        PopupBench bench;
        QVERIFY(!bench.view->stayOpen());
        QSignalSpy changed(bench.view, &HVView::stayOpenChanged);
        bench.view->setStayOpen(true);
        bench.view->setStayOpen(true);
        QCOMPARE(changed.count(), 2);
        QVERIFY(bench.view->property("stayOpen").toBool());
    }

    void shouldAnnounceReservedWhenItChanges()
    {
        PopupBench bench;
        QVERIFY(!bench.view->reserved());
        QSignalSpy changed(bench.view, &HVView::reservedChanged);
        bench.view->setReserved(false);
        QCOMPARE(changed.count(), 0);
        bench.view->setReserved(true);
        bench.view->setReserved(true);
        QCOMPARE(changed.count(), 1);
        QVERIFY(bench.view->property("reserved").toBool());
        bench.view->setReserved(false);
        QCOMPARE(changed.count(), 2);
    }

    void shouldNotGatherConnectionsWithEachShow()
    {
        PopupBench bench;
        bench.view->showContent(bench.content(QStringLiteral("a")), QString());
        const int watchers = Watchers::of(*bench.view);
        for (int i = 0; i < 5; ++i)
            bench.view->showContent(bench.content(QStringLiteral("b")), QString());
        QCOMPARE(Watchers::of(*bench.view), watchers);
    }

    void shouldStoreContentSilently()
    {
        PopupBench bench;
        QSignalSpy changed(bench.view, &HVView::contentChanged);
        const QPointer<HVXmlElement> first = bench.content(QStringLiteral("a"));
        bench.view->setContent(first);
        QCOMPARE(bench.view->content(), first.data());
        QCOMPARE(std::as_const(*bench.view).content(), first.data());
        const QPointer<HVXmlElement> second = bench.content(QStringLiteral("b"));
        bench.view->setContent(second);
        QVERIFY(first); // whoever replaces it deletes it
        bench.view->setContent(nullptr);
        QVERIFY(!bench.view->content());
        QVERIFY(second);
        QCOMPARE(changed.count(), 0);
    }

    void shouldDeleteTheContentStillSet()
    {
        PopupBench bench;
        const QPointer<HVXmlElement> content = bench.content(QStringLiteral("a"));
        bench.view->setContent(content);
        bench.popup->setView(nullptr);
        QVERIFY(!content);
    }

    void shouldKeepTheAbsolutePathOfThePackage()
    {
        PopupBench bench;
        bench.view->setPackageRoot(QDir(QStringLiteral("some/folder")));
        QCOMPARE(bench.view->packageRoot().path(),
                 QDir::current().filePath(QStringLiteral("some/folder")));
    }

    void shouldFindTheCategoryOfComponents_data()
    {
        QTest::addColumn<QString>("own"); // null: no such attribute
        QTest::addColumn<QString>("parent");
        QTest::addColumn<QString>("grandparent");
        QTest::addColumn<QString>("setting");
        QTest::addColumn<QString>("expected");
        const QString none;
        const QString empty(QLatin1String(""));
        const QString own = QStringLiteral("own");
        const QString parent = QStringLiteral("parent");
        const QString grand = QStringLiteral("grand");
        const QString setting = QStringLiteral("setting");
        const QString fallback = QStringLiteral("fallback");
        QTest::newRow("own") << own << parent << grand << setting << own;
        QTest::newRow("parent") << none << parent << grand << setting << parent;
        QTest::newRow("never the grandparent") << none << none << grand << setting << setting;
        QTest::newRow("setting") << none << none << none << setting << setting;
        QTest::newRow("fallback") << none << none << none << none << fallback;
        QTest::newRow("empty, not the parent") << empty << parent << none << setting << setting;
        QTest::newRow("empty") << empty << none << none << none << fallback;
        QTest::newRow("empty parent") << none << empty << none << setting << setting;
        QTest::newRow("empty setting") << none << none << none << empty << empty;
    }

    void shouldFindTheCategoryOfComponents()
    {
        QFETCH(QString, own);
        QFETCH(QString, parent);
        QFETCH(QString, grandparent);
        QFETCH(QString, setting);
        PopupBench bench;
        HVXmlElement *content = bench.content(QStringLiteral("a"));
        auto *root = qobject_cast<HVXmlElement *>(content->parent());
        HVXmlElement above;
        root->setParent(&above);
        const QString name = QStringLiteral("kind");
        const auto set = [&](HVXmlElement &element, const QString &value) {
            if (!value.isNull())
                element.setAttribute(name, value);
        };
        set(*content, own);
        set(*root, parent);
        set(above, grandparent);
        if (!setting.isNull())
            bench.context().set(HVKeyResourceFolder, setting);
        bench.view->setContent(content);
        QTEST(bench.view->categoryPath(name, QStringLiteral("fallback"), HVKeyResourceFolder),
              "expected");
    }

    void shouldFindTheCategoryWithoutContent()
    {
        PopupBench bench;
        const auto category = [&] {
            return bench.view->categoryPath(QStringLiteral("x"), QStringLiteral("fallback"),
                                            HVKeyTranslationFolder);
        };
        QCOMPARE(category(), QStringLiteral("fallback"));
        bench.context().set(HVKeyTranslationFolder, QStringLiteral("set"));
        QCOMPARE(category(), QStringLiteral("set"));
        QCOMPARE(bench.view->findResource(QStringLiteral("x")), QStringLiteral("Resources"));
        QCOMPARE(bench.view->uiRootFilePath(), QStringLiteral("ui/HovletsUI.qml"));
    }

    void shouldFindComponentsInTheOrderOfTheFolders()
    {
        HoverBench bench;
        bench.folder.addControlFile(QStringLiteral("Other"), QStringLiteral("c"), "<hovlets/>");
        const QString own = QStringLiteral("Pack.hovlets/Resources/");
        const QString other = QStringLiteral("Other.hovlets/Resources/");
        const QString extra = bench.folder.path() + QStringLiteral("/extra");
        bench.host->manager()->context().set(HVKeyExtraComponentPath, extra);
        bench.host->manager()->loadDataPath({ bench.folder.path() });
        bench.show();
        static_cast<HVXmlElement *>(bench.view()->content()->parent())
                ->setAttribute(QStringLiteral("search"), QStringLiteral("Other"));
        const auto find = [&](const char *name) {
            return bench.view()->findResource(QString::fromUtf8(name));
        };
        QCOMPARE(find("clip.avi"), QStringLiteral("Resources"));
        const QString last = bench.folder.add(other + QStringLiteral("clip.avi"), "x");
        QCOMPARE(find("clip.avi"), last);
        const QString second = bench.folder.add(QStringLiteral("extra/Resources/clip.avi"), "x");
        QCOMPARE(find("clip.avi"), second);
        const QString first = bench.folder.add(own + QStringLiteral("clip.avi"), "x");
        QCOMPARE(find("clip.avi"), first);
        QCOMPARE(find("other.avi"), QStringLiteral("Resources"));

        // Without a name, the folder itself.
        QCOMPARE(find(""), bench.folder.path() + QStringLiteral("/Pack.hovlets/Resources"));
        // A package may name files outside its resources.
        QCOMPARE(find("../Control/content.xml"),
                 bench.folder.path() + QStringLiteral("/Pack.hovlets/Control/content.xml"));
    }

    void shouldUseResourcesForFilesAndResourceForTheFolder()
    {
        PopupBench bench;
        HVXmlElement *content = bench.content(QStringLiteral("a"));
        bench.view->setContent(content);
        QCOMPARE(bench.view->resourceDirectoryPath(), QStringLiteral("Resources"));
        content->setAttribute(QStringLiteral("resource"), QStringLiteral("one"));
        content->setAttribute(QStringLiteral("resources"), QStringLiteral("many"));
        QCOMPARE(bench.view->resourceDirectoryPath(), QStringLiteral("one"));
        QCOMPARE(bench.view->property("resourceDirectory").toString(), QStringLiteral("one"));
        QCOMPARE(bench.view->findResource(QStringLiteral("x")), QStringLiteral("many"));
    }

    void shouldNotWaitForAUserInterfaceThatIsAPipe()
    {
        PopupBench bench;
        const QString pipe = bench.folder.path() + QStringLiteral("/pipe.qml");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        bench.host->forgetMessages();
        bench.view->loadQML(pipe);
        QCOMPARE(bench.host->messagesOf(HVMessageDebug),
                 QStringList { QStringLiteral("Can't find :") + pipe });
    }

    void shouldTakeTheResourcesFromTheSettings()
    {
        PopupBench bench;
        bench.view->setContent(bench.content(QStringLiteral("a")));
        bench.context().set(HVKeyResourceFolder, QStringLiteral("Media"));
        QCOMPARE(bench.view->resourceDirectoryPath(), QStringLiteral("Media"));
        QCOMPARE(bench.view->findResource(QStringLiteral("x")), QStringLiteral("Media"));
    }

    void shouldChooseTheUserInterface_data()
    {
        QTest::addColumn<bool>("simple");
        QTest::addColumn<bool>("setting");
        QTest::addColumn<bool>("attribute");
        QTest::addColumn<QString>("expected");
        QTest::newRow("rich") << false << false << false << QStringLiteral("ui/HovletsUI.qml");
        QTest::newRow("rich, set") << false << true << false << QStringLiteral("set12");
        QTest::newRow("rich, own") << false << true << true << QStringLiteral("own-ui");
        QTest::newRow("simple") << true << false << false << QStringLiteral("ui/SimpleTooltip.qml");
        QTest::newRow("simple, set") << true << true << false << QStringLiteral("set13");
        QTest::newRow("simple, own") << true << true << true << QStringLiteral("own-simple");
    }

    void shouldChooseTheUserInterface()
    {
        QFETCH(bool, simple);
        QFETCH(bool, setting);
        QFETCH(bool, attribute);
        PopupBench bench;
        HVXmlElement content;
        if (simple)
            bench.context().set(HVKeySimpleMode, true);
        if (setting) {
            bench.context().set(HVKeyRichUiFile, QStringLiteral("set12"));
            bench.context().set(HVKeySimpleUiFile, QStringLiteral("set13"));
        }
        if (attribute) {
            content.setAttribute(QStringLiteral("ui"), QStringLiteral("own-ui"));
            content.setAttribute(QStringLiteral("simple"), QStringLiteral("own-simple"));
        }
        bench.view->setContent(&content);
        QTEST(bench.view->uiRootFilePath(), "expected");
        bench.view->setContent(nullptr);
    }

    void shouldFindTheUserInterfaceOfThePackage()
    {
        HoverBench bench;
        bench.show();
        const QString package = bench.folder.path() + QStringLiteral("/Pack.hovlets");
        QCOMPARE(bench.view()->uiRootFilePath(), package + QStringLiteral("/ui/HovletsUI.qml"));
        QCOMPARE(bench.view()->packageRoot().path(), package);
    }

    void shouldSetTheCursorOfAnItem_data()
    {
        QTest::addColumn<Qt::CursorShape>("shape");
        QTest::newRow("PointingHandCursor") << Qt::PointingHandCursor;
        QTest::newRow("ArrowCursor") << Qt::ArrowCursor;
        QTest::newRow("IBeamCursor") << Qt::IBeamCursor;
        QTest::newRow("BlankCursor") << Qt::BlankCursor;
        QTest::newRow("WaitCursor") << Qt::ArrowCursor;
        QTest::newRow("pointinghandcursor") << Qt::ArrowCursor;
    }

    void shouldSetTheCursorOfAnItem()
    {
        QFETCH(Qt::CursorShape, shape);
        PopupBench bench;
        const QString name = QString::fromUtf8(QTest::currentDataTag());
        QQuickItem item;
        item.setCursor(Qt::SizeAllCursor);
        bench.view->setItemCursor(&item, name, QStringLiteral("tag"));
        QCOMPARE(item.cursor().shape(), shape);

        item.setCursor(Qt::SizeAllCursor);
        bench.view->setItemCursor(&item, QString(),
                                  QStringLiteral("tag")); // removes it
        QCOMPARE(item.cursor().shape(), Qt::ArrowCursor);

        bench.view->setOverrideCursor(name);
        QVERIFY(QApplication::overrideCursor());
        QCOMPARE(QApplication::overrideCursor()->shape(), shape);
        bench.view->restoreOverrideCursor();
        QVERIFY(!QApplication::overrideCursor());
    }

    void shouldIgnoreACursorWithoutAnItem()
    {
        PopupBench bench;
        bench.view->setItemCursor(nullptr, QStringLiteral("ArrowCursor"), QString());
        bench.view->setItemCursor(nullptr, QString(), QString());
    }

    void shouldPushAnArrowForAnEmptyName()
    {
        PopupBench bench;
        bench.view->setOverrideCursor(QStringLiteral("IBeamCursor"));
        bench.view->setOverrideCursor(QString());
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::ArrowCursor);
        bench.view->restoreOverrideCursor();
        QCOMPARE(QApplication::overrideCursor()->shape(), Qt::IBeamCursor);
        bench.view->restoreOverrideCursor();
    }

    void shouldForwardItsServicesToTheManager()
    {
        HVContext settings;
        settings.set(HVKeyMessageLevel, HVMessageDebug);
        TranslatingHost host(settings, {});
        host.forgetMessages();
        HVView view(host.manager(), nullptr);
        view.debugLog(QStringLiteral("hello"));
        QCOMPARE(host.messagesOf(HVMessageDebug), QStringList { QStringLiteral("hello") });
        host.manager()->setGlobalProperty(QStringLiteral("x"), QStringLiteral("X"));
        QCOMPARE(view.interpolate(QStringLiteral("a %(x)s")), QStringLiteral("a X"));
        QCOMPARE(view.translate(QStringLiteral("t"), QStringLiteral("c")), QStringLiteral("t|c"));
        QVERIFY(view.openExternalResource(QStringLiteral("Topic")));
        QCOMPARE(host.opened.value(0).second, QStringLiteral("Topic"));
        host.opens = false;
        QVERIFY(!view.openExternalResource(QStringLiteral("Topic")));
    }

    void shouldReportWhetherDocumentationIsAvailable()
    {
        PopupBench bench;
        QVERIFY(!bench.view->documentationAvailable());
        bench.context().set(HVKeyDocumentationEnabled, true);
        QVERIFY(bench.view->property("documentationAvailable").toBool());

        QSignalSpy changed(bench.view, &HVView::documentationAvailableChanged);
        bench.view->managerContextSettingDidChange(HVKeySimpleMode);
        QCOMPARE(changed.count(), 0);
        bench.view->managerContextSettingDidChange(21);
        QCOMPARE(changed.count(), 1);
        // The view connects neither slot; a host may.
        bench.context().set(HVKeyDocumentationEnabled, false);
        QCOMPARE(changed.count(), 1);
        connect(&bench.context(), SIGNAL(settingDidChange(HVContextKey)), bench.view,
                SLOT(managerContextSettingDidChange(HVContextKey)));
        bench.context().set(HVKeyDocumentationEnabled, true);
        QCOMPARE(changed.count(), 2);
    }
};

HOVLETS_TEST_MAIN(tst_HVView)
#include "tst_hvview.moc"
