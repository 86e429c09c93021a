// SPDX-License-Identifier: Apache-2.0
#include "Comparisons.h"

#include <algorithm>
#include <cstdio>

void Comparisons::add(const std::string &ours, const std::vector<std::string> &peers, double limit)
{
    m_comparisons.push_back({ ours, peers, limit });
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
    int missed = 0;
    for (const Comparison &comparison : m_comparisons) {
        const std::string peer = fastest(comparison.peers);
        if (peer.empty() || median(comparison.ours) <= 0)
            continue;
        const std::string group = comparison.ours.substr(0, comparison.ours.rfind('/') + 1);
        const bool together = peer.compare(0, group.size(), group) == 0;
        const double ratio = median(comparison.ours) / median(peer);
        const bool met = ratio <= comparison.limit;
        missed += met ? 0 : 1;
        std::printf("%-34s  %-32s  %6.2f  %6.2f  <=%5.1f  %s\n",
                    group.substr(0, group.size() - 1).c_str(),
                    (together ? peer.substr(group.size()) : peer).c_str(), ratio,
                    best(comparison.ours) / best(peer), comparison.limit, met ? "met" : "MISSED");
    }
    std::printf("\n%s\n", missed == 0 ? "All targets are met." : "Some targets are missed.");
}
