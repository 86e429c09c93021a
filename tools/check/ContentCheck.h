// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Findings.h"
#include "MediaCheck.h"

#include <string>
#include <vector>

namespace HovletsTool {

/// The paths to check, and what the host provides beside them.
struct CheckOptions
{
    std::vector<std::string> paths;
    std::vector<std::string> locales; // that need an entry for every key
    std::string keyData; // the host's key-data file
    std::string fallbackLocale = "en_US";
    std::string extraPath; // the host's extra component folder
    std::vector<std::string> hostAttributes; // that it reads of entries
    MediaLimits limits;
    bool showsProgress = false; // on a terminal
};

/// Runs all checks. Throws a ToolError for a path that cannot be read.
[[nodiscard]] FindingList checkContent(const CheckOptions &options);

} // namespace HovletsTool
