// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace HovletsTool {

class FindingList;
class GivenPaths;

/// The values of --format.
[[nodiscard]] const std::vector<std::string> &findingFormats();

/// Prints the findings to standard output. Text is coloured when that is a terminal, and shows
/// files as \a paths does.
void printFindings(const FindingList &findings, const std::string &format, const GivenPaths &paths);

/// Prints the table of finding codes.
void printRules(const std::string &format);

} // namespace HovletsTool
