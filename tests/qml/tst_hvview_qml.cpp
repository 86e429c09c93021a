// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"
#include "TestMain.h"

#include <QtGui/QImage>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>

using namespace Hovlets;

namespace {

/// The methods of one kind with the names of their parameters.
QList<QByteArray> signatures(QMetaMethod::MethodType type)
{
    QList<QByteArray> found;
    const QMetaObject &meta = HVView::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        if (method.methodType() != type)
            continue;
        if (method.access() != QMetaMethod::Public)
            found += "not public";
        QList<QByteArray> parameters = method.parameterTypes();
        for (int p = 0; p < parameters.size(); ++p)
            parameters[p] += ' ' + method.parameterNames().at(p);
        found += method.name() + '(' + parameters.join(',') + ')';
    }
    return found;
}

} // namespace

class tst_HVViewQml : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_bench = std::make_unique<PopupBench>(); }
    void cleanup() { m_bench.reset(); }

    void shouldListItsSignalsInOrder()
    {
        QCOMPARE(signatures(QMetaMethod::Signal),
                 (QList<QByteArray> { "stayOpenChanged()", "reservedChanged()", "contentChanged()",
                                      "contentSizeChanged()", "documentationAvailableChanged()",
                                      "resourceDirectoryChanged()" }));
    }

    void shouldListItsSlotsInOrder()
    {
        QCOMPARE(signatures(QMetaMethod::Slot),
                 (QList<QByteArray> { "statusHasChanged(DECLARATIVEVIEW_STATUS s)",
                                      "loadQML(QString path)",
                                      "handleWarnings(QList<QQmlError> warnings)", "resetState()",
                                      "managerContextSettingDidChange(HVContextKey key)" }));
    }

    void shouldListItsInvokablesInOrder()
    {
        QCOMPARE(signatures(QMetaMethod::Method),
                 (QList<QByteArray> {
                         "setItemCursor(QQuickItem* object,QString shape,QString tag)",
                         "debugLog(QString msg)", "openExternalResource(QString resourceLocator)",
                         "interpolate(QString string)", "setOverrideCursor(QString shape)",
                         "restoreOverrideCursor()", "translate(QString string,QString context)",
                         "findResource(QString relativePath)" }));
    }

    void shouldFindFilesThatAreNewInAFolder()
    {
        HVView &view = *m_bench->view;
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("Part is not a type")));
        view.loadQML(m_bench->ui("First.qml", "import QtQuick 2.15\nPart {}"));
        QVERIFY(!view.rootObject());
        m_bench->ui("Part.qml", "import QtQuick 2.15\nRectangle { property int part: 7 }");
        view.loadQML(m_bench->ui("Second.qml", "import QtQuick 2.15\nPart {}"));
        QVERIFY(view.rootObject());
        QCOMPARE(view.rootObject()->property("part").toInt(), 7);
    }

    void shouldListItsProperties_data()
    {
        QTest::addColumn<QByteArray>("type");
        QTest::addColumn<bool>("writable");
        QTest::addColumn<QByteArray>("notify");
        const QByteArray none;
        QTest::newRow("stayOpen") << QByteArray("bool") << true << QByteArray("stayOpenChanged");
        QTest::newRow("reserved") << QByteArray("bool") << true << QByteArray("reservedChanged");
        QTest::newRow("content") << QByteArray("Hovlets::HVXmlElement*") << true
                                 << QByteArray("contentChanged");
        QTest::newRow("documentationAvailable")
                << QByteArray("bool") << false << QByteArray("documentationAvailableChanged");
        QTest::newRow("resourceDirectory") << QByteArray("QString") << false << none;
    }

    void shouldListItsProperties()
    {
        const QMetaObject &meta = HVView::staticMetaObject;
        QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 5);
        const int index = meta.indexOfProperty(QTest::currentDataTag());
        QVERIFY(index >= meta.propertyOffset());
        const QMetaProperty property = meta.property(index);
        QTEST(QByteArray(property.typeName()), "type");
        QTEST(property.isWritable(), "writable");
        QTEST(property.notifySignal().name(), "notify");
    }

    void shouldTakeTheSizeOfTheRootItem()
    {
        QCOMPARE(view().resizeMode(), QQuickWidget::SizeViewToRootObject);
        view().loadQML(m_bench->ui("Size.qml", PackageFolder::userInterface(120, 90)));
        QCOMPARE(view().size(), QSize(120, 90));
    }

    void shouldAnnounceItsSizeOnlyWithARootItem()
    {
        m_bench->popup->setView(nullptr);
        HVView view(m_bench->host->manager(), nullptr);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QSignalSpy resized(&view, &HVView::contentSizeChanged);
        view.resize(300, 200);
        QCOMPARE(resized.count(), 0);
        view.loadQML(m_bench->ui("Size.qml", PackageFolder::userInterface(120, 90)));
        QTRY_COMPARE(view.size(), QSize(120, 90));
        QVERIFY(resized.count() >= 1);
        resized.clear();
        view.rootObject()->setProperty("height", 50);
        QTRY_COMPARE(view.size(), QSize(120, 50));
        QCOMPARE(resized.count(), 1);
    }

    void shouldReportAMissingFile()
    {
        const QString path = m_bench->folder.path() + QStringLiteral("/No %1.qml");
        view().loadQML(path);
        QCOMPARE(messages(), QStringList { QStringLiteral("Can't find :") + path });
        QVERIFY(view().source().isEmpty());
    }

    void shouldKeepThePreviousFileWhenTheNextIsMissing()
    {
        const QString path = m_bench->ui();
        view().loadQML(path);
        const QPointer<QObject> root = view().rootObject();
        view().loadQML(QStringLiteral("/Missing.qml"));
        QCOMPARE(messages(), QStringList { QStringLiteral("Can't find :/Missing.qml") });
        QCOMPARE(view().source(), QUrl::fromLocalFile(path));
        QVERIFY(root);
    }

    void shouldKeepRunningWhenTheSameFileIsLoadedAgain()
    {
        const QString path = m_bench->ui();
        view().loadQML(path);
        const QPointer<QQuickItem> root = view().rootObject();
        root->setState(QStringLiteral("expanded"));
        view().loadQML(path);
        QVERIFY(root);
        QCOMPARE(root->state(), QStringLiteral("expanded"));
        view().loadQML(m_bench->ui("Other.qml"));
        QVERIFY(!root);
    }

    void shouldResetTheStateOfTheRootItem()
    {
        view().resetState(); // without a root item
        view().loadQML(m_bench->ui());
        view().rootObject()->setState(QStringLiteral("expanded"));
        view().resetState();
        QCOMPARE(view().rootObject()->state(), QString());
    }

    void shouldReportMistakesInAQmlFile()
    {
        const QString path =
                m_bench->ui("Wrong.qml", "import QtQuick 2.15\nItem {\n  none: 1\n}\n");
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("Wrong.qml:3:3.*non-existent")));
        view().loadQML(path);
        QVERIFY(!view().rootObject());
        QCOMPARE(view().errors().size(), 1);

        // The slot is not connected to anything; it reports errors when it is called.
        QCOMPARE(messages(), QStringList());
        view().statusHasChanged(QQuickWidget::Ready);
        view().statusHasChanged(QQuickWidget::Null);
        view().statusHasChanged(QQuickWidget::Loading);
        QCOMPARE(messages(), QStringList());
        view().statusHasChanged(QQuickWidget::Error);
        QCOMPARE(messages(),
                 QStringList { QStringLiteral(
                         "Error 3:3:Cannot assign to non-existent property \"none\"") });
    }

    void shouldReportEachErrorInOrder()
    {
        m_bench->ui("Piece.qml", "import QtQuick 2.15\nItem {\n  id: piece\n  none: 1\n}\n");
        const QString path =
                m_bench->ui("Whole.qml", "import QtQuick 2.15\nItem {\n    Piece {}\n}\n");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Whole.qml:3")));
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Piece.qml:4")));
        view().loadQML(path);
        view().statusHasChanged(QQuickWidget::Error);
        QCOMPARE(messages(),
                 QStringList({ QStringLiteral("Error 3:5:Type Piece unavailable"),
                               QStringLiteral("Error 4:3:Cannot assign to non-existent property "
                                              "\"none\"") }));
    }

    void shouldReportErrorsWhenConnected()
    {
        connect(&view(), &QQuickWidget::statusChanged, &view(), &HVView::statusHasChanged);
        const QString path = m_bench->ui("Broken.qml", "import QtQuick 2.15\nItem {\n");
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("Broken.qml:3")));
        view().loadQML(path);
        QCOMPARE(messages().size(), 1);
        QVERIFY(messages().constFirst().startsWith(QStringLiteral("Error 3:1:Expected token")));
    }

    void shouldReportWarningsOfQml()
    {
        const QString path = m_bench->ui("Warns.qml",
                                         "import QtQuick 2.15\nItem {\n  width: 10; height: 10\n"
                                         "  property var value: nothing.at.all\n}\n");
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(QStringLiteral("Warns.qml:4:.*ReferenceError")));
        view().loadQML(path);
        QCOMPARE(messages().size(), 1);
        const QRegularExpression expected(
                QStringLiteral("^QML Warning 4:-?\\d+:ReferenceError: nothing is not defined$"));
        QVERIFY2(expected.match(messages().constFirst()).hasMatch(),
                 qPrintable(messages().constFirst()));
    }

    void shouldReportEachWarningInOrder()
    {
        QQmlError first;
        first.setLine(12);
        first.setColumn(3);
        first.setDescription(QStringLiteral("100%1 of %2"));
        first.setUrl(QUrl(QStringLiteral("file:///x.qml")));
        QQmlError second;
        second.setLine(1);
        second.setColumn(2);
        second.setDescription(QStringLiteral("second"));
        view().handleWarnings({ first, second });
        QCOMPARE(messages(),
                 (QStringList { QStringLiteral("QML Warning 12:3:100%1 of %2"),
                                QStringLiteral("QML Warning 1:2:second") }));
    }

    void shouldServeQml()
    {
        m_bench->host->manager()->setGlobalProperty(QStringLiteral("key"), QStringLiteral("F1"));
        const QString path = m_bench->ui("Serves.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100
    property string pressed: hovletView.interpolate("Press %(key)s")
    property string translated: hovletView.translate("text", "context")
    property string resource: hovletView.findResource("clip.avi")
    property bool available: hovletView.documentationAvailable
    Component.onCompleted: {
        hovletView.debugLog("from QML")
        hovletView.openExternalResource("Topic")
        hovletView.stayOpen = true
        hovletView.setOverrideCursor("BlankCursor")
        hovletView.restoreOverrideCursor()
        hovletView.setItemCursor(null, "ArrowCursor", "")
    }
})");
        show(path);
        const QObject *root = view().rootObject();
        QVERIFY(root);
        QCOMPARE(root->property("pressed").toString(), QStringLiteral("Press F1"));
        QCOMPARE(root->property("translated").toString(), QStringLiteral("text"));
        QCOMPARE(root->property("resource").toString(), QStringLiteral("Resources"));
        QVERIFY(!root->property("available").toBool());
        QCOMPARE(messages(), QStringList { QStringLiteral("from QML") });
        QCOMPARE(m_bench->host->opened.size(), 1);
        QVERIFY(view().stayOpen());

        m_bench->context().set(HVKeyDocumentationEnabled, true);
        view().managerContextSettingDidChange(HVKeyDocumentationEnabled);
        QVERIFY(root->property("available").toBool());
    }

    void shouldKeepContentFromTheGarbageCollector()
    {
        const QString path = m_bench->ui("Collects.qml", R"(import QtQuick 2.15
Item {
    width: 10; height: 10
    property string title
    function collect() {
        for (var i = 0; i < 20; ++i) {
            hovlet.childElement("title")
            hovlet.childElementList("").length
            hovletView.content.childElement("title").content
            gc()
        }
        title = hovlet.childElement("title").content
    }
})");
        HVXmlElement *content = show(path);
        const QPointer<HVXmlElement> entry = content;
        const QPointer<HVXmlElement> title = content->childElement(QStringLiteral("title"));
        const QPointer<QObject> themeOwner = m_bench->view;
        QVERIFY(QMetaObject::invokeMethod(view().rootObject(), "collect"));
        view().engine()->collectGarbage();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(entry);
        QVERIFY(title);
        QVERIFY(themeOwner);
        QCOMPARE(view().rootObject()->property("title").toString(), QStringLiteral("Title of a"));
    }

    void shouldKeepContentWithoutAParentFromTheGarbageCollector()
    {
        const QString path = m_bench->ui("Collects.qml", R"(import QtQuick 2.15
Item {
    width: 10; height: 10
    function collect() { for (var i = 0; i < 20; ++i) { hovletView.content.toXml(); gc() } }
})");
        const QPointer<HVXmlElement> content = new HVXmlElement; // an index may return one
        content->setAttribute(QStringLiteral("ui"), path);
        m_bench->popup->showWithContent(nullptr, QPoint(), content, QString());
        QVERIFY(QMetaObject::invokeMethod(view().rootObject(), "collect"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(content);
        m_bench->popup.reset();
        QVERIFY(!content);
    }

    void shouldPaint()
    {
        view().loadQML(m_bench->ui("Red.qml",
                                   "import QtQuick 2.15\n"
                                   "Rectangle { width: 60; height: 40; color: 'red' }"));
        m_bench->popup->show();
        const QImage image = view().grab().toImage();
        QCOMPARE(image.size(), QSize(60, 40));
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(image.pixelColor(59, 39), QColor(Qt::red));
        view().loadQML(m_bench->ui("Blue.qml",
                                   "import QtQuick 2.15\n"
                                   "Rectangle { width: 60; height: 40; color: 'blue' }"));
        QTRY_COMPARE(view().grab().toImage().pixelColor(30, 20), QColor(Qt::blue));
    }

    void shouldEndWithoutAWarningOfQml()
    {
        const QString path = m_bench->ui("Ends.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100; color: hovletTheme.base
    property string text: hovlet.attribute("key") + hovletView.interpolate("x")
    property string title: hovletView.content.childElement("title").content
})");
        show(path);
        m_bench->popup.reset();
        QCOMPARE(messages(), QStringList());
    }

private:
    HVView &view() { return *m_bench->view; }
    QStringList messages() const { return m_bench->host->messagesOf(HVMessageDebug); }

    HVXmlElement *show(const QString &ui)
    {
        HVXmlElement *content = m_bench->content(QStringLiteral("a"), ui);
        m_bench->popup->showWithContent(&m_bench->control, QPoint(10, 10), content,
                                        m_bench->folder.path());
        return content;
    }

    std::unique_ptr<PopupBench> m_bench;
};

HOVLETS_TEST_MAIN(tst_HVViewQml)
#include "tst_hvview_qml.moc"
