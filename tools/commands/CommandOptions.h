// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Property.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace HovletsTool {

// Options that several commands share.

/// Adds PATH, which takes one or more values.
void addPaths(CLI::App &command, std::vector<std::string> &paths);

/// Adds --format with these names; the first is the default.
void addFormat(CLI::App &command, std::string &format, const std::vector<std::string> &formats);

/// Adds an option that is repeated for each value, and takes only the next word each time.
CLI::Option *addRepeatable(CLI::App &command, const std::string &name,
                           std::vector<std::string> &values, const std::string &description);

/// Adds --property NAME=VALUE, which may be repeated.
void addProperties(CLI::App &command, std::vector<std::string> &properties);

/// The values of --property. Throws a ToolError for a value that is not NAME=VALUE.
[[nodiscard]] std::vector<Property> propertiesOf(const std::vector<std::string> &properties);

} // namespace HovletsTool
