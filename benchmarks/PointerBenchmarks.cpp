// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"
#include "HVContext.h"
#include "HVInterface.h"
#include "HVManager.h"
#include "HVSafePath.h"
#include "HVWidget.h"
#include "Suites.h"

#include <QtWidgets/QWidget>

#include <vector>

namespace {

constexpr QRect Control(200, 200, 40, 30);
constexpr QRect Popup(200, 260, 300, 200);

/// A pointer that crosses what lies around a control and its popup, in small steps.
std::vector<QPoint> moves()
{
    std::vector<QPoint> points;
    for (int y = 150; y < 260; y += 10) {
        for (int x = 100; x < 600; x += 3)
            points.emplace_back(y % 20 == 0 ? x : 700 - x, y);
    }
    return points;
}

/// One move: is the pointer on its way to the popup?
void followPath(benchmark::State &state)
{
    const std::vector<QPoint> points = moves();
    constexpr int Dwell = 180;
    Hovlets::HVSafePath path;
    path.begin(Control, Popup, Dwell);
    size_t next = 0;
    qint64 time = 0;
    for (auto _ : state) {
        const QPoint &point = points[next];
        next = (next + 1) % points.size();
        benchmark::DoNotOptimize(path.pointerMoved(point, ++time, Hovlets::HVSafePath::Over::Other,
                                                   quint64(point.x() / 32)));
    }
}

/// A pointer that trembles where it rests, for which the path looks back the farthest.
void followRest(benchmark::State &state)
{
    constexpr int Dwell = 180;
    Hovlets::HVSafePath path;
    path.begin(Control, Popup, Dwell);
    qint64 time = 0;
    for (auto _ : state) {
        ++time;
        benchmark::DoNotOptimize(path.pointerMoved({ 150 + int(time % 2), 220 }, time,
                                                   Hovlets::HVSafePath::Over::Other, 1));
    }
}

/// One move without it: is the pointer over the control, or near the popup?
void checkSafe(benchmark::State &state)
{
    const std::vector<QPoint> points = moves();
    HVContext context;
    Hovlets::HVInterface host(context, {});
    Hovlets::HVManager manager(&host, context, {}, nullptr);
    QWidget window;
    window.setGeometry(100, 100, 600, 500);
    QWidget control(&window);
    control.setGeometry(Control.translated(-window.pos()));
    window.show();
    Hovlets::HVWidget popup(&manager, nullptr, &control);
    popup.setGeometry(Popup);
    size_t next = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(popup.isSafe(points[next]));
        next = (next + 1) % points.size();
    }
}

} // namespace

void registerPointerBenchmarks(Comparisons &comparisons)
{
    const std::string peer = "pointer move/near the popup";
    benchmark::RegisterBenchmark(peer.c_str(), checkSafe);
    benchmark::RegisterBenchmark("pointer move/Hovlets", followPath);
    comparisons.add("pointer move/Hovlets", { peer }, 1.0);
    benchmark::RegisterBenchmark("pointer tremble/Hovlets", followRest);
    comparisons.add("pointer tremble/Hovlets", { peer }, 1.0);
}
