// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

namespace HovletsTool {

// Checks for the values of options. The error messages say which values are valid.

/// Accepts a locale that the library knows.
[[nodiscard]] CLI::Validator knownLocale();

/// Accepts a number that is not negative.
[[nodiscard]] CLI::Validator zeroOrMore();

/// Accepts a number from \a lowest to \a highest, including both.
[[nodiscard]] CLI::Validator between(double lowest, double highest);

} // namespace HovletsTool
