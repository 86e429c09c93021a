// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace HovletsTool {

class ContentIndex;
class FindingList;

/// Finds files in the paths that look like content but are not indexed, and reports the reason.
void checkPackages(const std::vector<std::string> &paths, const ContentIndex &content,
                   FindingList &findings);

} // namespace HovletsTool
