// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContentCheck.h"
#include "FindingFormats.h"
#include "Program.h"
#include "ToolError.h"
#include "Validators.h"

#include <memory>

namespace HovletsTool {

namespace {

struct Options
{
    CheckOptions check;
    std::string format;
    bool listCodes = false;
};

ExitStatus run(const Options &options)
{
    if (options.listCodes) {
        printRules(options.format);
        return ExitStatus::Clean;
    }
    if (options.check.paths.empty())
        throw ToolError(QStringLiteral("PATH is required; give a folder of packages or a package"));
    CheckOptions check = options.check;
    check.tellsProgress = true;
    const FindingList findings = checkContent(check);
    printFindings(findings, options.format);
    return findings.isEmpty() ? ExitStatus::Clean : ExitStatus::Findings;
}

} // namespace

void addCheckCommand(Program &program)
{
    const auto options = std::make_shared<Options>();
    CheckOptions &check = options->check;
    CLI::App &command = program.add(
            "check", "Checks content: what is not shown, or not as written, and what to do.",
            "--key-data examples/drawing/packages/keys.xml examples/drawing/packages",
            [options] { return run(*options); });
    addPaths(command, check.paths);
    command.get_option("PATH")->required(false);
    command.add_flag("--list-codes", options->listCodes, "List what can be found, and end");
    command.add_option("--key-data", check.keyData, "The host's file of attributes by key");
    command.add_option("--extra-path", check.extraPath, "The host's folder of components");
    command.add_option("--fallback-locale", check.fallbackLocale,
                       "The locale that answers where another has no entry")
            ->check(knownLocale())
            ->capture_default_str();
    addRepeatable(command, "--locale", check.locales,
                  "Every key is to have an entry for it; once for each")
            ->check(knownLocale());
    command.add_option("--max-seconds", check.limits.seconds, "How long a clip may be")
            ->check(zeroOrMore())
            ->capture_default_str();
    command.add_option("--max-megabytes", check.limits.megabytes,
                       "How large a clip or picture may be")
            ->check(zeroOrMore())
            ->capture_default_str();
    addFormat(command, options->format, findingFormats());
}

} // namespace HovletsTool
