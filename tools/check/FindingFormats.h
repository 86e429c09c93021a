// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <string>
#include <vector>

namespace HovletsTool {

class FindingList;

/// The names for "--format".
const std::vector<std::string> &findingFormats();

/// Prints the findings to the standard output; as text in colour when that is a terminal.
void printFindings(const FindingList &findings, const std::string &format);

/// Prints the table of codes.
void printRules(const std::string &format);

} // namespace HovletsTool
