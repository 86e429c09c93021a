// SPDX-License-Identifier: Apache-2.0
#include "FuzzTarget.h"

#include <QtWidgets/QApplication>

#include <cstdio>
#include <memory>

namespace {

/// Nearly every input is bad content, which the library reports as debug output.
void dropDebugOutput(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        fprintf(stderr, "%s\n", qPrintable(message));
}

} // namespace

int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    qInstallMessageHandler(&dropDebugOutput);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const auto application = std::make_unique<QApplication>(*argc, *argv);
    return 0;
}
