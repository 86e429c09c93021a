// SPDX-License-Identifier: Apache-2.0
#include "DebugLog.h"
#include "HVContext.h"
#include "HVIndex.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVView.h"
#include "HVWidget.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QUrl>
#include <QtGui/QDesktopServices>
#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

/// The popup, found among the application's widgets.
HVWidget *findPopup()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *window : windows) {
        auto *popup = qobject_cast<HVWidget *>(window);
        if (popup && popup->isVisible())
            return popup;
    }
    return nullptr;
}

/// Overrides everything and records each call.
class Host : public HVInterface
{
    Q_OBJECT

public:
    using HVInterface::HVInterface;

    QWidget *createWindow(HVWindowType type) override
    {
        calls += text("createWindow %1").arg(type);
        return nullptr;
    }

    QString keyForObject(QObject *object) override
    {
        calls += text("keyForObject ") + object->objectName();
        return text("a");
    }

    bool openExternalResource(HVExternalResourceType type, const QString &resource) override
    {
        calls += text("openExternalResource %1 ").arg(type) + resource;
        return true;
    }

    void handleMessage(HVMessageType type, const QString &message) override
    {
        messages += QString::number(type) + QLatin1Char(' ') + message;
    }

    QString translateString(const QString &string, const QString &context) override
    {
        calls += text("translateString %1 %2").arg(string, context);
        return text("translated");
    }

    QString shortCutForObject(const QString &key, QObject *object, const QString &shortcut) override
    {
        calls += text("shortCutForObject %1 %2 %3").arg(key, object->objectName(), shortcut);
        return text("F5");
    }

    QStringList calls;
    QStringList messages;
};

} // namespace

class tst_HVInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_context = std::make_unique<HVContext>();
        m_packages = std::make_unique<PackageFolder>();
        m_packages->addPackage(text("P"), { text("a"), text("b") });
        QDesktopServices::setUrlHandler(text("hovletstest"), this, "open");
        m_opened.clear();
    }

    void cleanup()
    {
        QDesktopServices::unsetUrlHandler(text("hovletstest"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void shouldNumberItsEnumerators()
    {
        QCOMPARE(int(HVMessageError), 100);
        QCOMPARE(int(HVMessageWarning), 200);
        QCOMPARE(int(HVMessageInformation), 300);
        QCOMPARE(int(HVMessageDebug), 400);
        QCOMPARE(int(HVReservedWindow), 1);
        QCOMPARE(int(HVDocumentationResource), 1);
        QCOMPARE(int(HVUrlResource), 2);
        QCOMPARE(int(HVFileResource), 3);
    }

    void shouldAddNothingToTheMetaObject()
    {
        QCOMPARE(HVInterface::staticMetaObject.methodCount(),
                 QObject::staticMetaObject.methodCount());
        QCOMPARE(HVInterface::staticMetaObject.propertyCount(),
                 QObject::staticMetaObject.propertyCount());
    }

    // Defaults

    void shouldPrintMessagesByDefault_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("line");
        QTest::newRow("error") << 100 << "x y"
                               << "ERROR:x y";
        QTest::newRow("warning") << 200 << "x"
                                 << "Warning:x";
        QTest::newRow("information") << 300 << "x"
                                     << "Information:x";
        QTest::newRow("debug") << 400 << "x"
                               << "DEBUG:x";
        QTest::newRow("another") << 250 << "x"
                                 << "250:x";
        QTest::newRow("negative") << -1 << "x"
                                  << "-1:x";
        QTest::newRow("empty") << 100 << ""
                               << "ERROR:";
        QTest::newRow("percent") << 100 << "100%1 %2 %s"
                                 << "ERROR:100%1 %2 %s";
        QTest::newRow("quotes") << 100 << "a \"b\" \\"
                                << "ERROR:a \"b\" \\";
        QTest::newRow("beyond ASCII")
                << 100 << QString(QChar(0x6253)) << text("ERROR:") + QChar(0x6253);
    }

    void shouldPrintMessagesByDefault()
    {
        QFETCH(int, type);
        QFETCH(QString, message);
        HVInterface interface(*m_context, {});
        const DebugLog log;
        interface.handleMessage(HVMessageType(type), message);
        const QStringList lines = log.lines();
        QCOMPARE(lines.size(), 1);
        QTEST(lines.at(0), "line");
    }

    void shouldHandleMessagesOfTheStartInTheBaseClass()
    {
        m_context->set(HVKeyMessageLevel, 300);
        const DebugLog log;
        const Host host(*m_context, { m_packages->path() });
        QVERIFY(host.messages.isEmpty());
        QCOMPARE(log.lines().value(0),
                 text("Information:indexing packages (*.hovlets) in %1 ").arg(m_packages->path()));
        QCOMPARE(log.lines().size(), 5);
        QVERIFY(log.lines().at(4).startsWith(text("Information:Indexed packages in 0")));
    }

    void shouldAnswerByDefault()
    {
        HVInterface interface(*m_context, {});
        QCOMPARE(interface.parent(), nullptr);
        QCOMPARE(interface.createWindow(HVReservedWindow), nullptr);
        QObject object;
        QCOMPARE(interface.keyForObject(&object), QString());
        QCOMPARE(interface.keyForObject(nullptr), QString());
        object.setObjectName(text("Name"));
        QCOMPARE(interface.keyForObject(&object), text("Name"));
        QCOMPARE(interface.shortCutForObject(text("a"), &object, text("F3")), text("F3"));
        QCOMPARE(interface.shortCutForObject(text("a"), nullptr, QString()), QString());
        QCOMPARE(interface.translateString(text("Open"), text("Menu")), text("Open"));
    }

    void shouldOpenOnlyAddressesByDefault()
    {
        HVInterface interface(*m_context, {});
        const QString address = text("hovletstest://host/path?a=b");
        QVERIFY(!interface.openExternalResource(HVDocumentationResource, address));
        QVERIFY(!interface.openExternalResource(HVFileResource, address));
        QVERIFY(!interface.openExternalResource(HVExternalResourceType(4), address));
        QVERIFY(m_opened.isEmpty());
        QVERIFY(interface.openExternalResource(HVUrlResource, address));
        QCOMPARE(m_opened, QList<QUrl> { QUrl(address) });
    }

    void shouldReportWhetherAnAddressOpened()
    {
        HVInterface interface(*m_context, {});
        QVERIFY(!interface.openExternalResource(HVUrlResource, QString()));
        QVERIFY(m_opened.isEmpty());
    }

    void shouldShowContentByTheNamesOfControlsByDefault()
    {
        m_context->set(HVKeyTrackHover, true);
        HVInterface interface(*m_context, { m_packages->path() });
        QWidget control;
        control.setObjectName(text("b"));
        QHelpEvent event(QEvent::ToolTip, QPoint(), QPoint(300, 300));
        QApplication::sendEvent(&control, &event);
        HVWidget *popup = findPopup();
        QVERIFY(popup);
        QCOMPARE(popup->view()->content()->attribute(text("key")), text("b"));
        popup->view()->setReserved(true);
        QCOMPARE(popup->windowType(), Qt::Tool); // a separate window
        delete popup;
    }

    // Answers of a host

    void shouldAskTheHost()
    {
        m_context->set(HVKeyTrackHover, true);
        Host host(*m_context, { m_packages->path() });
        QWidget control;
        control.setObjectName(text("control"));
        QHelpEvent event(QEvent::ToolTip, QPoint(), QPoint(300, 300));
        QApplication::sendEvent(&control, &event);
        QCOMPARE(host.calls,
                 (QStringList { text("keyForObject control"),
                                text("shortCutForObject a control ") }));
        HVWidget *popup = findPopup();
        QVERIFY(popup);
        HVView *view = popup->view();
        QCOMPARE(view->content()->attribute(text("shortcut")), text("F5"));

        host.calls.clear();
        QVERIFY(view->openExternalResource(text("docs/x")));
        QCOMPARE(view->translate(text("Open"), text("Menu")), text("translated"));
        host.context().set(HVKeyMessageLevel, 400);
        view->debugLog(text("x"));
        QCOMPARE(host.messages, QStringList { text("400 x") });
        view->setReserved(true);
        QCOMPARE(host.calls,
                 (QStringList { text("openExternalResource 3 docs/x"),
                                text("translateString Open Menu"), text("createWindow 1") }));
        delete popup;
    }

    // What the interface passes on

    void shouldGiveAccessToTheCurrentSettings()
    {
        m_context->set(HVKeyLocale, text("de_DE"));
        auto given = std::make_unique<HVContext>(*m_context);
        HVInterface interface(*given, {});
        QVERIFY(&interface.context() != given.get());
        QCOMPARE(&std::as_const(interface).context(), &interface.context());
        given->set(HVKeyLocale, text("fr_FR"));
        given.reset(); // the interface has a copy
        QCOMPARE(interface.context().get(HVKeyLocale, {}).toString(), text("de_DE"));
    }

    void shouldListTheKeys()
    {
        HVInterface interface(*m_context, { m_packages->path() });
        QCOMPARE(interface.keys(), (QStringList { text("a"), text("b") }));
    }

    void shouldUseTheIndexOfTheHost()
    {
        HVIndex index(nullptr, {});
        {
            HVInterface interface(*m_context, { m_packages->path() }, &index);
        }
        QCOMPARE(index.keys(), (QStringList { text("a"), text("b") }));
    }

    void shouldShowAndFollowTheMouseWhenTheHostAsks()
    {
        m_context->set(HVKeyHideDelay, 1);
        m_context->set(HVKeyHideFadeDuration, 0);
        QCursor::setPos(400, 350);
        QWidget control;
        HVInterface interface(*m_context, { m_packages->path() });
        QVERIFY(!interface.show(text("unknown"), { 300, 300 }, &control));
        QVERIFY(interface.show(text("a"), { 300, 300 }, &control));
        QPointer<HVWidget> popup = findPopup();
        QVERIFY(popup);
        QCOMPARE(popup->referenceWidget(), &control);
        QMouseEvent move(QEvent::MouseMove, QPointF(), QPointF(20, 20), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QVERIFY(!interface.mouseMoveEventFilter(&control, &move));
        QTRY_VERIFY(!popup->isVisible());

        QVERIFY(interface.show(text("a"), { 300, 300 }, &control));
        QVERIFY(popup->isVisible());
        QMouseEvent press(QEvent::MouseButtonPress, QPointF(), QPointF(400, 350), Qt::LeftButton,
                          Qt::LeftButton, Qt::NoModifier);
        QVERIFY(!interface.mouseButtonEventFilter(&control, &press));
        QVERIFY(!popup->isVisible());
    }

    void shouldPassOnTextServices()
    {
        HVInterface interface(*m_context, { m_packages->path() });
        QCOMPARE(interface.hovletAttribute(text("a"), text("key"), text("none")), text("a"));
        QCOMPARE(interface.hovletAttribute(text("a"), text("other"), text("none")), text("none"));
        QCOMPARE(interface.hovletAttribute(text("unknown"), text("key"), text("none")),
                 text("none"));
        interface.setGlobalProperty(text("name"), text("value"));
        QVERIFY(interface.show(text("a"), { 300, 300 }, nullptr));
        const HVWidget *popup = findPopup();
        QVERIFY(popup);
        QCOMPARE(popup->view()->interpolate(text("%(name)s")), text("value"));
    }

    void shouldEndEverythingWhenItGoes()
    {
        m_context->set(HVKeyTrackHover, true);
        QWidget control;
        control.setObjectName(text("a"));
        QPointer<HVWidget> popup;
        {
            HVInterface interface(*m_context, { m_packages->path() });
            QVERIFY(interface.show(text("a"), { 300, 300 }, &control));
            popup = findPopup();
            QVERIFY(popup);
        }
        QTRY_VERIFY(!popup);
        QHelpEvent event(QEvent::ToolTip, QPoint(), QPoint(300, 300));
        QApplication::sendEvent(&control, &event);
        QVERIFY(!findPopup());
    }

public Q_SLOTS:
    void open(const QUrl &url) { m_opened += url; }

private:
    std::unique_ptr<HVContext> m_context;
    std::unique_ptr<PackageFolder> m_packages;
    QList<QUrl> m_opened;
};

HOVLETS_TEST_MAIN(tst_HVInterface)
#include "tst_hvinterface.moc"
