// SPDX-License-Identifier: Apache-2.0
#include "TestMain.h"

#include <QtWidgets/QApplication>

#include <memory>

namespace {

void setDefault(const char *variable, const char *value)
{
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, value);
}

QtMessageHandler testLog = nullptr;

/// Drops the messages that the offscreen platform prints whenever a window is shown, and Qt 5's
/// Wayland platform whenever Qt itself activates one.
void logMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support "))
        && !text.startsWith(QLatin1String("Wayland does not support QWindow::requestActivate")))
        testLog(type, context, text);
}

} // namespace

void filterTestLog()
{
    testLog = qInstallMessageHandler(logMessage);
}

int runTest(int argc, char **argv, QObject *(*create)())
{
    setDefault("QT_QPA_PLATFORM", "offscreen");
    setDefault("QT_QUICK_BACKEND", "software");
    QApplication application(argc, argv);
    const std::unique_ptr<QObject> test(create());
    QTest::qInit(test.get(), argc, argv);
    filterTestLog();
    const int failures = QTest::qRun();
    qInstallMessageHandler(testLog);
    QTest::qCleanup();
    return failures;
}
