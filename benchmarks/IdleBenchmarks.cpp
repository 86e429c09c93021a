// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "GeneratedContent.h"
#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVWidget.h"
#include "Suites.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <chrono>
#include <sys/resource.h>

namespace {

using namespace std::chrono_literals;

void runEvents(std::chrono::milliseconds time)
{
    QEventLoop loop;
    QTimer::singleShot(time, &loop, &QEventLoop::quit);
    loop.exec();
}

/// How often any thread of the process goes to sleep, and so wakes up, while the host is idle.
long wakeUps()
{
    const auto count = [] {
        rusage usage {};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_nvcsw;
    };
    runEvents(1s); // what windows and popups leave to do
    const long before = count();
    runEvents(10s);
    return count() - before;
}

/// The host with a hidden popup beside the host without the library.
void idle(benchmark::State &state, double &ratio)
{
    const GeneratedContent content(1, 3000, 1);
    QWidget window;
    window.show();
    for (auto _ : state) {
        const long without = wakeUps();
        HVContext settings;
        Hovlets::useRecommendedSettings(settings);
        settings.set(Hovlets::HVKeyExtraComponentPath,
                     QStringLiteral(HOVLETS_PACKAGES "/Default.hovlets"));
        Hovlets::HVInterface host(settings, {});
        Hovlets::HVManager manager(&host, settings, { content.path() }, nullptr);
        if (!manager.show(GeneratedContent::key(0, 0), { 100, 100 }, &window)) {
            state.SkipWithError("no popup");
            return;
        }
        runEvents(500ms);
        manager.widget()->hide();
        const long with = wakeUps();
        state.counters["with"] = double(with);
        state.counters["without"] = double(without);
        ratio = (double(with) + 1) / (double(without) + 1); // an idle host may sleep throughout
    }
}

} // namespace

void registerIdleBenchmarks(Comparisons &comparisons)
{
    static double ratio = 0;
    benchmark::RegisterBenchmark("idle host, 10 s/Hovlets",
                                 [](benchmark::State &state) { idle(state, ratio); })
            ->Iterations(1)
            ->Repetitions(1)
            ->Unit(benchmark::kSecond);
    comparisons.addFigure("wake-ups of an idle host", "without the library", ratio, 1.5);
}
