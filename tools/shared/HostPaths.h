// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <string>

namespace HovletsTool {

// What a host has beside its packages, as the command line names it. The library passes over what
// is not there; who names it here means it.

/// The folder of components. Throws a ToolError when it cannot be read; empty without a name.
QString extraPath(const std::string &name);

/// The file of attributes by key. Throws a ToolError when it cannot be read; empty without a name.
QString keyDataFile(const std::string &name);

} // namespace HovletsTool
