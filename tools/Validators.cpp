// SPDX-License-Identifier: Apache-2.0
#include "Validators.h"

#include "ControlFile.h"

#include <QtCore/QString>

// Without descriptions, which would stand in the help as the type of each value.

CLI::Validator knownLocale()
{
    const auto complaint = [](const std::string &name) -> std::string {
        if (isKnownLocale(QString::fromLocal8Bit(name.c_str())))
            return {};
        return '"' + name + "\" is no known locale; write one such as de_DE";
    };
    return { complaint, {} };
}

CLI::Validator zeroOrMore()
{
    const auto complaint = [](const std::string &text) -> std::string {
        double number = 0;
        const bool isNumber = CLI::detail::lexical_cast(text, number);
        return isNumber && number >= 0 ? std::string() : text + " must be 0 or more";
    };
    return { complaint, {} };
}
