// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <string>

namespace HovletsTool {

// What a host provides beside its packages, as named on the command line. The library ignores paths
// that do not exist; here they are mistakes.

/// The host's extra component folder, or an empty string for an empty name. Throws a ToolError when
/// the folder cannot be read.
[[nodiscard]] QString extraPath(const std::string &name);

/// The host's key-data file, or an empty string for an empty name. Throws a ToolError when the file
/// cannot be read.
[[nodiscard]] QString keyDataFile(const std::string &name);

/// The absolute path of a folder or of a file. Throws a ToolError that names \a option if there is
/// none.
[[nodiscard]] QString existingFolder(const std::string &name, const char *option);
[[nodiscard]] QString existingFile(const std::string &name, const char *option);

} // namespace HovletsTool
