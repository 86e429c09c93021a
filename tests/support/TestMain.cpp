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

} // namespace

int runTest(int argc, char **argv, QObject *(*create)())
{
    setDefault("QT_QPA_PLATFORM", "offscreen");
    setDefault("QT_QUICK_BACKEND", "software");
    QApplication application(argc, argv);
    const std::unique_ptr<QObject> test(create());
    return QTest::qExec(test.get(), argc, argv);
}
