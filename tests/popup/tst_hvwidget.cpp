// SPDX-License-Identifier: Apache-2.0
#include "PopupBench.h"
#include "TestMain.h"

#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtGui/QWindow>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <QtWidgets/QApplication>

using namespace Hovlets;

class tst_HVWidget : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldListItsSlots_data()
    {
        using Names = QList<QByteArray>;
        QTest::addColumn<QByteArray>("slot");
        QTest::addColumn<QList<QByteArray>>("parameters");
        QTest::newRow("showWithContent")
                << QByteArray("showWithContent(QObject*,QPoint,HVXmlElement*,QString)")
                << Names { "reference", "pos", "content", "rootPath" };
        QTest::newRow("findVisibleGeometry")
                << QByteArray("findVisibleGeometry(QRect,bool*)") << Names { "geometry", "move" };
        QTest::newRow("findVisibleGeometry, one argument")
                << QByteArray("findVisibleGeometry(QRect)") << Names { "geometry" };
        for (const char *name :
             { "reposition()", "hideAnimated()", "hideAnimationFinished()", "showAnimated()",
               "setTimer()", "contentReservedChanged()", "contentResized()" })
            QTest::newRow(name) << QByteArray(name) << Names();
    }

    void shouldListItsSlots()
    {
        QFETCH(QByteArray, slot);
        const QMetaObject &meta = HVWidget::staticMetaObject;
        const int index = meta.indexOfSlot(slot.constData());
        QVERIFY(index >= meta.methodOffset());
        QCOMPARE(meta.method(index).access(), QMetaMethod::Public);
        QTEST(meta.method(index).parameterNames(), "parameters");
    }

    void shouldBeATooltipWindowUnlessTheSettingsSayOtherwise()
    {
        RecordingHost host(m_settings, {});
        const HVWidget toolTip(host.manager(), nullptr, nullptr);
        QCOMPARE(toolTip.windowType(), Qt::ToolTip);
        QCOMPARE(toolTip.windowFlags(), QWidget(nullptr, Qt::ToolTip).windowFlags());

        host.manager()->context().set(HVKeyPopupIsWindow, true);
        const HVWidget window(host.manager(), nullptr, nullptr);
        QCOMPARE(window.windowFlags(), QWidget().windowFlags());
        QWidget parent;
        const HVWidget child(host.manager(), &parent, nullptr);
        QVERIFY(!child.isWindow());
    }

    void shouldStartHiddenAndEmpty()
    {
        RecordingHost host(m_settings, {});
        QWidget parent;
        QWidget reference;
        const HVWidget popup(host.manager(), &parent, &reference);
        QCOMPARE(popup.parentWidget(), &parent);
        QCOMPARE(popup.referenceWidget(), &reference);
        QCOMPARE(popup.manager(), host.manager());
        QVERIFY(!popup.view());
        QVERIFY(!popup.isVisible());
        const auto *timer = popup.findChild<QTimer *>();
        QVERIFY(timer && timer->isSingleShot() && !timer->isActive());
        const auto *fade = popup.findChild<QPropertyAnimation *>();
        QVERIFY(fade);
        QCOMPARE(fade->targetObject(), &popup);
        QCOMPARE(fade->propertyName(), QByteArray("windowOpacity"));
        QCOMPARE(fade->easingCurve().type(), QEasingCurve::Linear);
        QCOMPARE(fade->state(), QAbstractAnimation::Stopped);
    }

    void shouldReplaceItsView()
    {
        PopupBench bench;
        const QPointer<HVView> first = bench.view;
        auto *second = new HVView(bench.host->manager(), bench.popup.get());
        second->move(10, 10);
        bench.popup->setView(second);
        QVERIFY(!first);
        QCOMPARE(bench.popup->view(), second);
        QCOMPARE(second->pos(), QPoint(0, 0));

        bench.show();
        QCOMPARE(bench.popup->size(), QSize(201, 101)); // follows the size of the new view

        const QPointer<HVView> last = second;
        bench.popup->setView(nullptr);
        QVERIFY(!last);
        QVERIFY(!bench.popup->view());
    }

    void shouldDeleteItsViewAndContent()
    {
        PopupBench bench;
        HVXmlElement *content = bench.content(QStringLiteral("a"));
        const QPointer<QObject> watchedContent = content;
        const QPointer<HVView> view = bench.view;
        bench.popup->showWithContent(&bench.control, QPoint(), content, QString());
        bench.popup.reset();
        QVERIFY(!view);
        QVERIFY(!watchedContent);
    }

    void shouldDoNothingWithoutContent()
    {
        PopupBench bench;
        bench.popup->showWithContent(&bench.control, QPoint(100, 100), nullptr,
                                     bench.folder.path());
        QVERIFY(!bench.popup->isVisible());
        QVERIFY(!bench.popup->referenceWidget());
        QVERIFY(!bench.view->content());
        QVERIFY(bench.host->messages.isEmpty());
    }

    void shouldWorkWithoutAView()
    {
        PopupBench bench;
        bench.popup->setView(nullptr);
        const std::unique_ptr<HVXmlElement> content(bench.content(QStringLiteral("a")));
        bench.popup->showWithContent(&bench.control, QPoint(), content.get(), QString());
        QVERIFY(!bench.popup->isVisible());
        bench.popup->contentResized();
        bench.popup->contentReservedChanged();
        bench.popup->showAnimated();
        bench.popup->setTimer();
        bench.popup->hideAnimated();
        QVERIFY(!bench.popup->isVisible());
    }

    void shouldShowContent()
    {
        PopupBench bench;
        HVXmlElement *content = bench.content(QStringLiteral("a"));
        bench.popup->showWithContent(&bench.control, QPoint(120, 140), content,
                                     bench.folder.path());
        QVERIFY(bench.popup->isVisible());
        QCOMPARE(bench.popup->pos(), QPoint(120, 140));
        QCOMPARE(bench.popup->referenceWidget(), &bench.control);
        QCOMPARE(bench.view->content(), content);
        QCOMPARE(bench.view->packageRoot().path(), bench.folder.path());
        QCOMPARE(bench.view->source(), QUrl::fromLocalFile(bench.ui()));
        QVERIFY(bench.view->rootObject());
    }

    void shouldAcceptOnlyAWidgetAsReference()
    {
        PopupBench bench;
        bench.show();
        QCOMPARE(bench.popup->referenceWidget(), &bench.control);
        QObject object;
        bench.popup->showWithContent(&object, QPoint(), bench.content(QStringLiteral("b")),
                                     QString());
        QVERIFY(!bench.popup->referenceWidget());
        bench.show();
        bench.popup->showWithContent(nullptr, QPoint(), bench.content(QStringLiteral("c")),
                                     QString());
        QVERIFY(!bench.popup->referenceWidget());
    }

    void shouldForgetADeletedReference()
    {
        PopupBench bench;
        auto control = std::make_unique<QWidget>();
        bench.popup->showWithContent(control.get(), QPoint(), bench.content(QStringLiteral("a")),
                                     QString());
        control.reset();
        QVERIFY(!bench.popup->referenceWidget());
        bench.popup->checkMousePosition(PopupBench::away());
        bench.popup->reposition();
    }

    void shouldDeleteOnlyReplacedContent()
    {
        PopupBench bench;
        const QPointer<HVXmlElement> first = bench.content(QStringLiteral("a"));
        const QPointer<HVXmlElement> second = bench.content(QStringLiteral("b"));
        bench.popup->showWithContent(&bench.control, QPoint(), first, QString());
        bench.popup->showWithContent(&bench.control, QPoint(), first, QString());
        QVERIFY(first);
        bench.popup->showWithContent(&bench.control, QPoint(), second, QString());
        QVERIFY(!first);
        QVERIFY(second);
        QCOMPARE(bench.view->content(), second.data());
    }

    void shouldPassTheContentToQml()
    {
        PopupBench bench;
        const QString ui = bench.ui("Names.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100
    property string key: hovlet.attribute("key")
    property string title: hovlet.childElement("title").content
    property string location: dataLocation
    property bool same: hovletView.content === hovlet
})");
        HVXmlElement *content = bench.content(QStringLiteral("a"), ui);
        bench.popup->showWithContent(&bench.control, QPoint(), content, QStringLiteral("/some/p"));
        const QObject *root = bench.view->rootObject();
        QVERIFY(root);
        QCOMPARE(root->property("key").toString(), QStringLiteral("a"));
        QCOMPARE(root->property("title").toString(), QStringLiteral("Title of a"));
        QCOMPARE(root->property("location").toString(), QStringLiteral("/some/p"));
        QVERIFY(root->property("same").toBool());

        const QQmlContext *context = bench.view->engine()->rootContext();
        QCOMPARE(context->contextProperty(QStringLiteral("hovlet")).value<QObject *>(), content);
        QCOMPARE(context->contextProperty(QStringLiteral("hovletView")).value<QObject *>(),
                 bench.view);
        QCOMPARE(context->contextProperty(QStringLiteral("dataLocation")),
                 QVariant(QStringLiteral("/some/p")));
    }

    void shouldReplaceContentWithoutAWarningOfQml()
    {
        PopupBench bench;
        const QString ui = bench.ui("Bound.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100
    property var title: hovlet.childElement("title")
    property string text: title.content + hovlet.attribute("key") + hovlet.toXml()
    property var list: hovlet.childElementList("")
    Repeater { model: list; Text { text: modelData.content } }
})");
        for (const QString &key :
             { QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c") }) {
            bench.popup->showWithContent(&bench.control, QPoint(), bench.content(key, ui),
                                         QString());
            QVERIFY(bench.view->rootObject()->property("text").toString().startsWith(
                    QStringLiteral("Title of %1%1<").arg(key)));
        }
        bench.popup.reset();
        QCOMPARE(bench.host->messagesOf(HVMessageDebug), QStringList());
    }

    void shouldNotShowNewContentBesideTheOldFolder()
    {
        PopupBench bench;
        const QString ui = bench.ui("Pairs.qml", R"(import QtQuick 2.15
Rectangle {
    width: 100; height: 100
    property var seen: []
    property string pair: hovlet.attribute("key") + dataLocation
    onPairChanged: seen.push(pair)
})");
        for (const QString &key : { QStringLiteral("a"), QStringLiteral("b") })
            bench.popup->showWithContent(&bench.control, QPoint(), bench.content(key, ui), key);
        QCOMPARE(bench.view->rootObject()->property("seen").toStringList(),
                 (QStringList { QStringLiteral("aa"), QStringLiteral("bb") }));
    }

    void shouldKeepTheLastUserInterfaceWhenTheNewOneIsMissing()
    {
        PopupBench bench;
        bench.show();
        bench.popup->hide();
        const QPointer<QObject> root = bench.view->rootObject();
        const QString missing = bench.folder.path() + QStringLiteral("/Missing.qml");
        bench.popup->showWithContent(&bench.control, QPoint(),
                                     bench.content(QStringLiteral("b"), missing), QString());
        QCOMPARE(bench.host->messagesOf(HVMessageDebug),
                 QStringList { QStringLiteral("Can't find :%1").arg(missing) });
        QVERIFY(root);
        QCOMPARE(bench.view->rootObject(), root.data());
        QVERIFY(bench.popup->isVisible());
    }

    void shouldPaintTheUserInterface()
    {
        PopupBench bench;
        const QString red =
                bench.ui("Red.qml",
                         "import QtQuick 2.15\nRectangle { width: 80; height: 60; color: 'red'\n"
                         "Rectangle { x: 79; y: 59; width: 1; height: 1; color: 'lime' } }");
        const QString bound =
                bench.ui("Bound.qml",
                         "import QtQuick 2.15\n"
                         "Rectangle { width: 80; height: 60; color: hovlet.attribute('key') }");
        const auto show = [&](const char *key, const QString &ui) {
            bench.popup->showWithContent(&bench.control, QPoint(100, 100),
                                         bench.content(QString::fromUtf8(key), ui), QString());
        };
        show("a", red);
        QTRY_COMPARE(bench.view->grab().toImage().pixelColor(40, 30), QColor(Qt::red));
        const QImage image = bench.popup->grab().toImage();
        QCOMPARE(image.size(), QSize(81, 61));
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(image.pixelColor(79, 59), QColor(Qt::green));

        show("blue", bound);
        QTRY_COMPARE(bench.view->grab().toImage().pixelColor(40, 30), QColor(Qt::blue));
        // The file is the same, so only the content determines the colour.
        show("yellow", bound);
        QTRY_COMPARE(bench.view->grab().toImage().pixelColor(40, 30), QColor(Qt::yellow));
    }

    void shouldBelongToTheWindowOfItsControl()
    {
        PopupBench bench;
        bench.show();
        QVERIFY(!bench.popup->parentWidget());
        QVERIFY(bench.popup->windowHandle());
        QCOMPARE(bench.popup->windowHandle()->transientParent(), bench.control.windowHandle());
        QVERIFY(bench.popup->testAttribute(Qt::WA_ShowWithoutActivating));
    }

    void shouldNotTakeTheFocus()
    {
        PopupBench bench;
        bench.control.activateWindow();
        QTRY_VERIFY(bench.control.isActiveWindow());
        bench.show();
        QVERIFY(QTest::qWaitForWindowExposed(bench.popup.get()));
        QVERIFY(bench.control.isActiveWindow());
    }

    /// Programs ask the offscreen platform for the widget at a position. It finds the newest
    /// window, also where that lets clicks through.
    void shouldNotHideControlsFromTheApplication()
    {
        QWidget window;
        window.setGeometry(0, 0, 700, 500);
        window.show();
        PopupBench bench;
        bench.context().set(HVKeySurface, true);
        HVWidget popup(bench.host->manager(), nullptr, &window);
        auto *view = new HVView(bench.host->manager(), &popup);
        popup.setView(view);
        popup.showWithContent(&window, { 100, 100 }, bench.content(QStringLiteral("a"), bench.ui()),
                              bench.folder.path());
        QVERIFY(popup.isVisible());
        QCOMPARE(QApplication::widgetAt(popup.geometry().center()), view);
        QCOMPARE(QApplication::widgetAt(popup.geometry().topRight() + QPoint(10, 10)), &window);
    }

private:
    HVContext m_settings;
};

HOVLETS_TEST_MAIN(tst_HVWidget)
#include "tst_hvwidget.moc"
