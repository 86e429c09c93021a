// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <benchmark/benchmark.h>

#include <limits>
#include <map>
#include <string>
#include <vector>

/*!
 * \brief Prints the benchmarks as they finish, and at the end a table that compares them.
 *
 * Times depend on the machine. Only the ratio of two benchmarks of the same run is meaningful
 * elsewhere.
 */
class Comparisons : public benchmark::ConsoleReporter
{
public:
    Comparisons()
        : ConsoleReporter(OO_Tabular)
    {
    }

    /*!
     * Adds a line to the table: the time of \a ours divided by that of the fastest of \a peers, at
     * most \a limit. Names are those of registered benchmarks.
     */
    void add(const std::string &ours, const std::vector<std::string> &peers, double limit);

    /// No target: the line is for information.
    static constexpr double NoLimit = std::numeric_limits<double>::infinity();

    /// Adds a line with the additional time of \a ours over \a peer, at most \a limit, in seconds.
    void addDelay(const std::string &ours, const std::string &peer, double limit);

    /*!
     * Adds a line with a ratio that a benchmark measures besides its time, at most \a limit.
     * \a ratio is read when the table is printed; 0 omits the line.
     */
    void addFigure(const std::string &name, const std::string &peer, const double &ratio,
                   double limit);

    void ReportRuns(const std::vector<Run> &runs) override;

    /// Prints the table, without the lines whose benchmarks did not run.
    void printTable() const;

private:
    struct Comparison
    {
        std::string ours;
        std::vector<std::string> peers;
        double limit;
    };

    /// Median of the repetitions in seconds, or 0 if the benchmark did not run.
    double median(const std::string &name) const;
    double best(const std::string &name) const;
    std::string fastest(const std::vector<std::string> &names) const;

    struct Figure
    {
        std::string name;
        std::string peer;
        const double *ratio;
        double limit;
    };

    bool printRatios() const;
    bool printFigures() const;
    bool printDelays() const;

    std::vector<Comparison> m_comparisons;
    std::vector<Comparison> m_delays;
    std::vector<Figure> m_figures;
    std::map<std::string, std::vector<double>> m_seconds; // by name, one per repetition
};
