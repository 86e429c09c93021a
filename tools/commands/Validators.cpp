// SPDX-License-Identifier: Apache-2.0
#include "Validators.h"

#include "ControlFile.h"
#include "KnownLocale.h"

#include <QtCore/QString>

#include <optional>

namespace HovletsTool {

namespace {

std::optional<double> numberOf(const std::string &text)
{
    double number = 0;
    return CLI::detail::lexical_cast(text, number) ? std::optional(number) : std::nullopt;
}

} // namespace

// The validators have no descriptions, which the help would show as the types of the values.

CLI::Validator knownLocale()
{
    const auto complaint = [](const std::string &name) -> std::string {
        if (isKnownLocale(QString::fromLocal8Bit(name.c_str())))
            return {};
        return "unknown locale \"" + name + "\"; use a locale such as de_DE";
    };
    return { complaint, {} };
}

CLI::Validator zeroOrMore()
{
    const auto complaint = [](const std::string &text) -> std::string {
        const std::optional<double> number = numberOf(text);
        return number && *number >= 0 ? std::string() : text + " must be 0 or more";
    };
    return { complaint, {} };
}

CLI::Validator between(double lowest, double highest)
{
    const auto complaint = [lowest, highest](const std::string &text) -> std::string {
        const std::optional<double> number = numberOf(text);
        if (number && *number >= lowest && *number <= highest)
            return {};
        return QStringLiteral("%1 must be from %2 to %3")
                .arg(QString::fromStdString(text))
                .arg(lowest)
                .arg(highest)
                .toStdString();
    };
    return { complaint, {} };
}

} // namespace HovletsTool
