// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "FirstShow.h"
#include "Suites.h"

#include <QtWidgets/QApplication>

#include <string_view>
#include <vector>

namespace {

void setDefault(const char *variable, const char *value)
{
    if (!qEnvironmentVariableIsSet(variable))
        qputenv(variable, value);
}

QtMessageHandler standardLog = nullptr;

/// Suppresses the message that the offscreen platform prints for every window.
void logMessage(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(QLatin1String("This plugin does not support ")))
        standardLog(type, context, text);
}

} // namespace

int main(int argc, char **argv)
{
    setDefault("QT_QPA_PLATFORM", "offscreen");
    setDefault("QT_QUICK_BACKEND", "software");

    constexpr std::string_view FirstShow = "--first-show=";
    const std::string_view option = argc == 2 ? argv[1] : "";
    if (option.substr(0, FirstShow.size()) == FirstShow) {
        const QApplication application(argc, argv);
        standardLog = qInstallMessageHandler(logMessage);
        return measureFirstShow(option.substr(FirstShow.size()) == "warm");
    }

    // Interleaved: other load on the machine then affects a benchmark and its peer alike.
    char repetitions[] = "--benchmark_repetitions=9";
    char interleaving[] = "--benchmark_enable_random_interleaving=true";
    char duration[] = "--benchmark_min_time=0.05";
    std::vector<char *> arguments { argv[0], repetitions, interleaving, duration };
    arguments.insert(arguments.end(), argv + 1, argv + argc);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;

    standardLog = qInstallMessageHandler(logMessage);
    QApplication application(argc, argv);
    Comparisons comparisons;
    registerLookUpBenchmarks(comparisons);
    registerStartUpBenchmarks(comparisons);
    registerShowBenchmarks(comparisons);
    registerWarmUpBenchmarks(comparisons);
    registerPointerBenchmarks(comparisons);
    registerIdleBenchmarks(comparisons);
    registerVideoBenchmarks(comparisons);
    benchmark::RunSpecifiedBenchmarks(&comparisons);
    comparisons.printTable();
    return 0;
}
