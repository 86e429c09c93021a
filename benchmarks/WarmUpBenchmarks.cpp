// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "Suites.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QProcess>
#include <QtCore/QStringList>

#include <algorithm>

namespace {

enum Part { Start, First, Later };

/// The time that a new process measures for \a part; 0 if it fails.
double measure(bool warmsUp, Part part)
{
    const QString option =
            warmsUp ? QStringLiteral("--first-show=warm") : QStringLiteral("--first-show=cold");
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QCoreApplication::applicationFilePath(), { option });
    if (!process.waitForFinished() || process.exitCode() != 0)
        return 0;
    return process.readAllStandardOutput().trimmed().split(' ').value(part).toDouble();
}

std::string add(const std::string &name, bool warmsUp, Part part)
{
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State &state) {
                                     for (auto _ : state) {
                                         const double seconds = measure(warmsUp, part);
                                         state.SetIterationTime(seconds);
                                         if (seconds <= 0)
                                             state.SkipWithError("no popup");
                                     }
                                 })
            ->Unit(benchmark::kMillisecond)
            ->UseManualTime()
            ->Iterations(1);
    return name;
}

} // namespace

void registerWarmUpBenchmarks(Comparisons &comparisons)
{
    const std::string later = add("first hover, warmed up/later", true, Later);
    comparisons.add(add("first hover, warmed up/Hovlets", true, First), { later }, 1.5);
    const std::string laterCold = add("first hover, not warmed up/later", false, Later);
    comparisons.add(add("first hover, not warmed up/Hovlets", false, First), { laterCold },
                    Comparisons::NoLimit);
    const std::string without = add("host's start-up, warm-up/without", false, Start);
    comparisons.add(add("host's start-up, warm-up/Hovlets", true, Start), { without }, 1.1);
}
