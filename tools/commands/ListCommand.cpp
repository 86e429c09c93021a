// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContentIndex.h"
#include "Entries.h"
#include "GivenPaths.h"
#include "Output.h"
#include "Program.h"

#include <QtCore/QJsonArray>

#include <memory>

namespace HovletsTool {

namespace {

struct ListCommandOptions
{
    std::vector<std::string> paths;
    std::string format;
};

ExitStatus run(const ListCommandOptions &options)
{
    const ContentIndex content(options.paths);
    const GivenPaths paths(options.paths);
    QJsonArray rows;
    for (const Entry &entry : entriesOf(content)) {
        if (options.format == "json") {
            rows += QJsonObject { { QStringLiteral("key"), entry.key },
                                  { QStringLiteral("package"), entry.package },
                                  { QStringLiteral("locale"), entry.locale },
                                  { QStringLiteral("file"), entry.file },
                                  { QStringLiteral("line"), entry.line } };
            continue;
        }
        const QString locale = entry.locale.isEmpty() ? QStringLiteral("any") : entry.locale;
        printText(QStringLiteral("%1\t%2\t%3\t%4:%5\n")
                          .arg(entry.package, locale, entry.key, paths.shown(entry.file),
                               QString::number(entry.line)));
    }
    if (options.format == "json")
        printJson({ { QStringLiteral("entries"), rows } });
    return ExitStatus::Clean;
}

} // namespace

void addListCommand(Program &program)
{
    const auto options = std::make_shared<ListCommandOptions>();
    CLI::App &command =
            program.add("list", "List all entries: package, locale, key, file and line.",
                        "examples/drawing/packages", [options] { return run(*options); });
    addPaths(command, options->paths);
    addFormat(command, options->format, { "text", "json" });
}

} // namespace HovletsTool
