// SPDX-License-Identifier: Apache-2.0
#include "TestMain.h"

#include <QtWidgets/QApplication>

#include <algorithm>
#include <iterator>
#include <memory>

namespace {

void setDefault(const char *variable, const char *value)
{
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, value);
}

QtMessageHandler testLog = nullptr;

/// Messages of Qt's platforms about what no test does wrong.
constexpr const char *Expected[] = {
    // The offscreen platform prints it whenever a window is shown.
    "This plugin does not support ",
    // Qt 5 prints it on Wayland whenever it activates a window itself.
    "Wayland does not support QWindow::requestActivate",
    // Qt 5 looks for the window at a position frame by frame; the window manager may have removed
    // the frame of a closed one meanwhile.
    "QXcbConnection: XCB error: 3 (BadWindow)",
};

void logMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    const bool isExpected =
            std::any_of(std::begin(Expected), std::end(Expected),
                        [&](const char *start) { return text.startsWith(QLatin1String(start)); });
    if (!isExpected)
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
