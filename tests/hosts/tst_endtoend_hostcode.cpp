// SPDX-License-Identifier: Apache-2.0
#include "HoverTest.h"
#include "InterruptingHost.h"
#include "Pointer.h"
#include "TestMain.h"

#include <QtCore/QProcess>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cstdio>
#include <cstring>

using namespace Hovlets;

namespace {

constexpr auto LateHost = "--late-host";
constexpr QRect LateControl(60, 60, 200, 80); // global

/// Its bindings ask the host for a translation, and send it a message.
constexpr auto UserInterface = R"(import QtQuick 2.15
Rectangle {
    property string title: hovletView.translate(hovlet.childElement("title").content, "context")
    property var log: hovletView.debugLog("Bound to " + hovlet.attribute("key"))
    width: 200; height: 100; color: "steelblue"
})";

std::unique_ptr<HVInterface> lateHost;

void deleteLateHost()
{
    lateHost.reset();
    std::puts("deleted");
}

int visiblePopups()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    return int(std::count_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return qobject_cast<const HVWidget *>(window) && window->isVisible();
    }));
}

/// A program that deletes its interface in a post routine of the application, as plug-ins do. The
/// routine is registered before the first popup, and therefore runs after Qt Quick's own.
int runLateHost(int argc, char **argv)
{
    QApplication application(argc, argv);
    qAddPostRoutine(&deleteLateHost);
    HVContext settings;
    settings.set(HVKeyTrackHover, true);
    lateHost = std::make_unique<HVInterface>(settings, application.arguments().mid(2));
    QPushButton control;
    control.setObjectName(QStringLiteral("a"));
    control.setWindowFlag(Qt::FramelessWindowHint);
    control.setGeometry(LateControl);
    control.show();
    control.activateWindow();
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, [] {
        if (visiblePopups() == 0)
            return;
        std::puts("shown");
        QApplication::quit();
    });
    look.start(20);
    return QApplication::exec();
}

} // namespace

/// Tests with a real pointer that no code of the host makes a popup fail.
class tst_EndToEndHostCode : public HoverTest
{
    Q_OBJECT

public:
    tst_EndToEndHostCode()
    {
        m_folder.add(QStringLiteral("Pack.hovlets/ui/HovletsUI.qml"), UserInterface);
        m_other.addPackage(QStringLiteral("Other"), { QStringLiteral("b") });
        m_other.add(QStringLiteral("Other.hovlets/ui/HovletsUI.qml"), UserInterface);
    }

private Q_SLOTS:
    void init()
    {
        HoverTest::init();
        HVContext settings;
        settings.set(HVKeyTrackHover, true);
        settings.set(HVKeyHideFadeDuration, 0);
        settings.set(HVKeyHideDelay, 60000);
        settings.set(HVKeyMessageLevel, HVMessageDebug);
        m_host.reset();
        auto host = std::make_unique<InterruptingHost>(
                settings, QStringList { m_folder.path(), m_other.path() });
        m_interrupting = host.get();
        m_host = std::move(host);
        showWindow(QPoint(400, 300)); // last, to see tooltip events before the host
    }

    void shouldShowWhatIsHoveredWhileBindingsRun_data()
    {
        QTest::addColumn<bool>("inMessage");
        QTest::newRow("in a translation") << false;
        QTest::newRow("in a message") << true;
    }

    void shouldShowWhatIsHoveredWhileBindingsRun()
    {
        QFETCH(bool, inMessage);
        bool shown = false;
        interrupt(inMessage, [&] { shown = hover("b"); }); // moves the pointer and handles events
        QVERIFY(rest(m_window->centerOf("a"), [&] { return shown; }));
        QVERIFY(isShowing("b"));
        QCOMPARE(visiblePopups(), 1);
        QVERIFY(hover("a"));
        QCOMPARE(title(), QStringLiteral("Title of a"));
    }

    void shouldSurviveAPopupThatTheHostDeletesWhileBindingsRun_data()
    {
        shouldShowWhatIsHoveredWhileBindingsRun_data();
    }

    void shouldSurviveAPopupThatTheHostDeletesWhileBindingsRun()
    {
        QFETCH(bool, inMessage);
        QVERIFY(hover("a"));
        const QPointer<HVWidget> deleted(popup());
        interrupt(inMessage, [&] {
            delete popup();
            InterruptingHost::runEvents();
        });
        QVERIFY(rest(m_window->centerOf("b"), [&] { return !deleted; }));
        QVERIFY(hover("b"));
        QCOMPARE(title(), QStringLiteral("Title of b"));
    }

    void shouldShowAgainAfterTheHostHidItWhileBindingsRan()
    {
        bool hidden = false;
        interrupt(false, [&] {
            popup()->hide();
            hidden = true;
        });
        QVERIFY(hover("a"));
        QVERIFY(hidden);
    }

    void shouldBelongToNoWindowWithoutAControl()
    {
        QVERIFY(hover("a"));
        QCOMPARE(popup()->windowHandle()->transientParent(), m_window->windowHandle());
        stopAskingForTooltips();
        Pointer::moveAway();
        popup()->hide();
        QVERIFY(m_host->manager()->show(QStringLiteral("b"), { 20, 20 }, nullptr));
        QVERIFY(QTest::qWaitForWindowExposed(popup()));
        QCOMPARE(popup()->windowHandle()->transientParent(), nullptr);
        m_window->showMinimized(); // takes only its own popups along
        QTRY_VERIFY(m_window->windowHandle()->windowState() == Qt::WindowMinimized);
        QTRY_COMPARE(pixelOnScreen(popup()->pos() + QPoint(50, 50)), QColor("steelblue"));
        QVERIFY(isShowing("b"));
    }

    void shouldEndWithAnInterfaceThatIsDeletedLast()
    {
        m_window.reset();
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(QCoreApplication::applicationFilePath(),
                      { QString::fromUtf8(LateHost), m_folder.path() });
        QVERIFY(program.waitForStarted());
        for (int i = 0; i < 30 && program.state() != QProcess::NotRunning; ++i) {
            Pointer::moveTo(LateControl.center() + QPoint(i % 2, 0));
            program.waitForFinished(2000); // longer than a tooltip takes
        }
        QCOMPARE(program.state(), QProcess::NotRunning);
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        QCOMPARE(program.readAllStandardOutput(), QByteArray("shown\ndeleted\n"));
    }

private:
    void interrupt(bool inMessage, const std::function<void()> &deed)
    {
        m_interrupting->awaitedMessage = QStringLiteral("Bound to");
        (inMessage ? m_interrupting->atMessage : m_interrupting->atTranslation) = deed;
    }

    PackageFolder m_other; // "b" with another user interface
    InterruptingHost *m_interrupting = nullptr;
};

int main(int argc, char **argv)
{
    if (argc > 1 && std::strcmp(argv[1], LateHost) == 0)
        return runLateHost(argc, argv);
    return runTest(argc, argv, []() -> QObject * { return new tst_EndToEndHostCode; });
}

#include "tst_endtoend_hostcode.moc"
