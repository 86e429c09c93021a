// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

namespace HovletsTool {

// What the value of an option is to be; each refuses other values with what to write instead.

/// A locale that the library would not take for another one.
CLI::Validator knownLocale();

/// A number that is not negative.
CLI::Validator zeroOrMore();

/// A number from \a lowest to \a highest, both included.
CLI::Validator between(double lowest, double highest);

} // namespace HovletsTool
