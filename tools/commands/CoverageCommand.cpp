// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "Output.h"
#include "Program.h"
#include "ReadFile.h"
#include "ToolError.h"
#include "Validators.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>

#include <memory>

namespace HovletsTool {

namespace {

struct CoverageCommandOptions
{
    std::vector<std::string> reports;
    std::string format;
    int mostMissing = 0;
};

QJsonObject readReport(const QString &path)
{
    constexpr qint64 MaxSize = qint64 { 64 } * 1024 * 1024; // bytes, far more than in any report
    QJsonParseError error;
    const QJsonObject report = QJsonDocument::fromJson(readFile(path, MaxSize), &error).object();
    if (error.error != QJsonParseError::NoError)
        throw ToolError(QStringLiteral("%1 is not JSON: %2 at byte %3")
                                .arg(path, error.errorString())
                                .arg(error.offset));
    constexpr int Version = 1;
    if (report.value(QLatin1String("format")).toString() != QLatin1String("hovlets-coverage")
        || report.value(QLatin1String("version")).toInt() != Version)
        throw ToolError(QStringLiteral("%1 is not a coverage report of version 1; a host writes "
                                       "one with Hovlets::HVCoverage")
                                .arg(path));
    return report;
}

/// The objects in the list \a name whose flag \a what is \a value.
QJsonArray those(const QJsonObject &report, const char *name, const char *what, bool value)
{
    QJsonArray found;
    const QJsonArray all = report.value(QLatin1String(name)).toArray();
    for (const auto &one : all) {
        if (one.toObject().value(QLatin1String(what)).toBool() == value)
            found += one;
    }
    return found;
}

/// The most helpful name of the control in the report.
QString nameOf(const QJsonObject &control)
{
    for (const char *name : { "key", "objectName", "label" }) {
        const QString value = control.value(QLatin1String(name)).toString();
        if (!value.isEmpty())
            return value;
    }
    return QStringLiteral("(no name)");
}

QString placeOf(const QJsonObject &control)
{
    QStringList place { control.value(QLatin1String("window")).toString() };
    const QJsonArray parents = control.value(QLatin1String("parents")).toArray();
    for (const auto &parent : parents)
        place += parent.toString();
    return place.join(QStringLiteral(" > "));
}

struct Result
{
    QJsonArray missing, unasked;
    int controls = 0;
    int entries = 0;
};

void printResult(const Result &result)
{
    for (const auto &value : result.missing) {
        const QJsonObject control = value.toObject();
        const bool falls = control.value(QLatin1String("answeredByFallback")).toBool();
        printText(QStringLiteral("missing\t%1\t%2\t%3%4\n")
                          .arg(nameOf(control), control.value(QLatin1String("class")).toString(),
                               placeOf(control),
                               falls ? QStringLiteral("\tthe fallback answers") : QString()));
    }
    for (const auto &entry : result.unasked)
        printText(QStringLiteral("unasked\t%1\n")
                          .arg(entry.toObject().value(QLatin1String("key")).toString()));
    printText(QStringLiteral("%1 of %2 controls have no entry; no control asked for %3 of %4 "
                             "entries\n")
                      .arg(result.missing.size())
                      .arg(result.controls)
                      .arg(result.unasked.size())
                      .arg(result.entries));
}

ExitStatus run(const CoverageCommandOptions &options)
{
    Result result;
    for (const std::string &path : options.reports) {
        const QJsonObject report = readReport(QString::fromLocal8Bit(path.c_str()));
        const QJsonArray missing = those(report, "controls", "covered", false);
        for (const auto &control : missing)
            result.missing += control;
        const QJsonArray unasked = those(report, "entries", "asked", false);
        for (const auto &entry : unasked) {
            // The fallback entry serves controls without content; none asks for its key.
            if (!entry.toObject().value(QLatin1String("isFallback")).toBool())
                result.unasked += entry;
        }
        result.controls +=
                static_cast<int>(report.value(QLatin1String("controls")).toArray().size());
        result.entries += static_cast<int>(report.value(QLatin1String("entries")).toArray().size());
    }
    if (options.format == "json")
        printJson({ { QStringLiteral("missing"), result.missing },
                    { QStringLiteral("unasked"), result.unasked },
                    { QStringLiteral("controls"), result.controls },
                    { QStringLiteral("entries"), result.entries } });
    else
        printResult(result);
    return result.missing.size() > options.mostMissing ? ExitStatus::Findings : ExitStatus::Clean;
}

} // namespace

void addCoverageCommand(Program &program)
{
    const auto options = std::make_shared<CoverageCommandOptions>();
    CLI::App &command =
            program.add("coverage",
                        "Read the report of a running host: list controls without an entry, and "
                        "entries that no "
                        "control asked for.",
                        "coverage.json --max-missing 10", [options] { return run(*options); });
    command.add_option("REPORT", options->reports, "Coverage reports of hosts")->required();
    command.add_option("--max-missing", options->mostMissing,
                       "Number of controls without an entry that still gives exit status 0")
            ->check(zeroOrMore())
            ->capture_default_str();
    addFormat(command, options->format, { "text", "json" });
}

} // namespace HovletsTool
