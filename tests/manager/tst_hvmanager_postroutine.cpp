// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVView.h"
#include "HVWidget.h"
#include "PackageFolder.h"
#include "RecordingHost.h"
#include "TestMain.h"
#include "Text.h"

#include <QtTest/QtTest>
#include <QtWidgets/QApplication>

using namespace Hovlets;

namespace {

std::unique_ptr<RecordingHost> host;

void deleteHost()
{
    host.reset();
}

} // namespace

/// Tests an interface that is deleted by a post routine of the application, as plug-ins do.
class tst_HVManagerPostRoutine : public QObject
{
    Q_OBJECT

public:
    tst_HVManagerPostRoutine(int &argc, char **argv)
        : m_application(std::make_unique<QApplication>(argc, argv))
    {
    }

private Q_SLOTS:
    /// A routine that is registered before the first popup runs after Qt Quick's own.
    void shouldEndAfterQtQuickHasCleanedUp()
    {
        filterTestLog();
        qAddPostRoutine(&deleteHost);
        PackageFolder packages;
        packages.addPackage(text("P"), { text("a") });
        packages.add(text("P.hovlets/ui/HovletsUI.qml"),
                     "import QtQuick 2.15\nText { text: hovlet.attribute('key') }");
        HVContext context;
        host = std::make_unique<RecordingHost>(context, QStringList { packages.path() });
        QVERIFY(host->manager()->show(text("a"), {}, nullptr));
        const QPointer<HVWidget> popup(host->popup());
        m_application.reset();
        QVERIFY(!host);
        QVERIFY(!popup);
    }

private:
    std::unique_ptr<QApplication> m_application;
};

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QUICK_BACKEND", "software");
    tst_HVManagerPostRoutine test(argc, argv);
    return QTest::qExec(&test, argc, argv);
}

#include "tst_hvmanager_postroutine.moc"
