// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContentCheck.h"
#include "FindingFormats.h"
#include "GivenPaths.h"
#include "Program.h"
#include "ToolError.h"
#include "Validators.h"

#include <memory>

namespace HovletsTool {

namespace {

struct CheckCommandOptions
{
    CheckOptions check;
    std::string format;
    bool listCodes = false;
};

ExitStatus run(const CheckCommandOptions &options)
{
    if (options.listCodes) {
        printRules(options.format);
        return ExitStatus::Clean;
    }
    if (options.check.paths.empty())
        throw ToolError(QStringLiteral("PATH is required; give a folder of packages or a package"));
    CheckOptions check = options.check;
    check.showsProgress = true;
    const FindingList findings = checkContent(check);
    std::vector<std::string> given = check.paths;
    given.push_back(check.keyData);
    printFindings(findings, options.format, GivenPaths(given));
    return findings.isEmpty() ? ExitStatus::Clean : ExitStatus::Findings;
}

} // namespace

void addCheckCommand(Program &program)
{
    const auto options = std::make_shared<CheckCommandOptions>();
    CheckOptions &check = options->check;
    CLI::App &command = program.add(
            "check", "Check content: report what is not shown as written, and how to fix it.",
            "--key-data examples/drawing/packages/keys.xml examples/drawing/packages",
            [options] { return run(*options); });
    addPaths(command, check.paths);
    command.get_option("PATH")->required(false);
    command.add_flag("--list-codes", options->listCodes, "List all finding codes and exit");
    command.add_option("--key-data", check.keyData, "Key-data file of the host");
    command.add_option("--extra-path", check.extraPath, "Extra component folder of the host");
    addRepeatable(command, "--host-attribute", check.hostAttributes,
                  "Attribute that the host reads, although it resembles another; may be repeated");
    command.add_option("--fallback-locale", check.fallbackLocale,
                       "Locale that is used when another one has no entry")
            ->check(knownLocale())
            ->capture_default_str();
    addRepeatable(command, "--locale", check.locales,
                  "Locale that needs an entry for every key; may be repeated")
            ->check(knownLocale());
    command.add_option("--max-seconds", check.limits.seconds, "Maximum length of a clip")
            ->check(zeroOrMore())
            ->capture_default_str();
    command.add_option("--max-megabytes", check.limits.megabytes,
                       "Maximum size of a clip or picture")
            ->check(zeroOrMore())
            ->capture_default_str();
    addFormat(command, options->format, findingFormats());
}

} // namespace HovletsTool
