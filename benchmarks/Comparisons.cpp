// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

/// Ends a line of the table. Returns true if the target is met or there is none.
bool printVerdict(double value, double limit, const char *format)
{
    if (std::isinf(limit)) {
        std::printf("no target\n");
        return true;
    }
    std::printf("<=");
    std::printf(format, limit);
    std::printf("  %s\n", value <= limit ? "met" : "MISSED");
    return value <= limit;
}

} // namespace

void Comparisons::add(const std::string &ours, const std::vector<std::string> &peers, double limit)
{
    m_comparisons.push_back({ ours, peers, limit });
}

void Comparisons::addDelay(const std::string &ours, const std::string &peer, double limit)
{
    m_delays.push_back({ ours, { peer }, limit });
}

void Comparisons::addFigure(const std::string &name, const std::string &peer, const double &ratio,
                            double limit)
{
    m_figures.push_back({ name, peer, &ratio, limit });
}

void Comparisons::ReportRuns(const std::vector<Run> &runs)
{
    std::vector<Run> printed;
    for (const Run &run : runs) {
        if (run.run_type == Run::RT_Aggregate || run.error_occurred)
            printed.push_back(run);
        else
            m_seconds[run.run_name.function_name].push_back(
                    run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit));
    }
    // A single repetition has no aggregates.
    ConsoleReporter::ReportRuns(printed.empty() ? runs : printed);
}

double Comparisons::median(const std::string &name) const
{
    const auto found = m_seconds.find(name);
    if (found == m_seconds.end())
        return 0;
    std::vector<double> seconds = found->second;
    const auto middle = seconds.begin() + static_cast<std::ptrdiff_t>(seconds.size() / 2);
    std::nth_element(seconds.begin(), middle, seconds.end());
    return *middle;
}

double Comparisons::best(const std::string &name) const
{
    const std::vector<double> &seconds = m_seconds.at(name);
    return *std::min_element(seconds.begin(), seconds.end());
}

std::string Comparisons::fastest(const std::vector<std::string> &names) const
{
    std::string fastest;
    for (const std::string &name : names) {
        if (median(name) > 0 && (fastest.empty() || median(name) < median(fastest)))
            fastest = name;
    }
    return fastest;
}

void Comparisons::printTable() const
{
    std::printf(
            "\nRatios of the times, ours / peer: of the medians, and of the best repetitions\n\n"
            "%-34s  %-32s  %6s  %6s  %7s\n",
            "", "peer", "median", "best", "target");
    const bool allMet = int(printRatios()) + int(printFigures()) + int(printDelays()) == 3;
    std::printf("\n%s\n", allMet ? "All targets are met." : "Some targets are missed.");
}

/// Returns true if every target is met, like the two functions below.
bool Comparisons::printRatios() const
{
    bool allMet = true;
    for (const Comparison &comparison : m_comparisons) {
        const std::string peer = fastest(comparison.peers);
        if (peer.empty() || median(comparison.ours) <= 0)
            continue;
        const std::string group = comparison.ours.substr(0, comparison.ours.rfind('/') + 1);
        const bool together = peer.compare(0, group.size(), group) == 0;
        const double ratio = median(comparison.ours) / median(peer);
        std::printf("%-34s  %-32s  %6.2f  %6.2f  ", group.substr(0, group.size() - 1).c_str(),
                    (together ? peer.substr(group.size()) : peer).c_str(), ratio,
                    best(comparison.ours) / best(peer));
        allMet &= printVerdict(ratio, comparison.limit, "%5.2f");
    }
    return allMet;
}

bool Comparisons::printFigures() const
{
    bool allMet = true;
    for (const Figure &figure : m_figures) {
        if (*figure.ratio <= 0)
            continue;
        std::printf("%-34s  %-32s  %6.3f  %6s  ", figure.name.c_str(), figure.peer.c_str(),
                    *figure.ratio, "");
        allMet &= printVerdict(*figure.ratio, figure.limit, "%5.2f");
    }
    return allMet;
}

bool Comparisons::printDelays() const
{
    bool allMet = true;
    for (const Comparison &delay : m_delays) {
        const std::string &peer = delay.peers.front();
        if (median(delay.ours) <= 0 || median(peer) <= 0)
            continue;
        constexpr double Milliseconds = 1000;
        const double more = (median(delay.ours) - median(peer)) * Milliseconds;
        std::printf("%s takes %.1f ms more than %s  ", delay.ours.c_str(), more, peer.c_str());
        allMet &= printVerdict(more, delay.limit * Milliseconds, "%.0f ms");
    }
    return allMet;
}
