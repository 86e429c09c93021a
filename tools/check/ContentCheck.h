// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Findings.h"
#include "MediaCheck.h"

#include <string>
#include <vector>

namespace HovletsTool {

/// What to check, and against what.
struct CheckOptions
{
    std::vector<std::string> paths;
    std::vector<std::string> locales; // in which every key is to have an entry
    std::string keyData; // the host's file of attributes by key
    std::string fallbackLocale = "en_US";
    std::string extraPath; // the host's folder of components
    MediaLimits limits;
    bool tellsProgress = false; // on a terminal
};

/// Runs all checks. Throws a ToolError for a path that cannot be read.
FindingList checkContent(const CheckOptions &options);

} // namespace HovletsTool
