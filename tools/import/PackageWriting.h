// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ImportedEntries.h"

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFileDevice>
#include <QtCore/QMap>
#include <QtCore/QString>

#include <vector>

namespace HovletsTool {

// Writing a new package. The functions throw a ToolError if a file cannot be written.

/// The message about a file that could not be written.
[[nodiscard]] QString cannotBeWritten(const QFileDevice &file);

/// Throws a ToolError if no package can be created at that path.
void refuseBadName(const QDir &package);

/// Creates the folder. Returns the path for its control file, without ".xml".
[[nodiscard]] QString makePackage(const QDir &package);

void writeControlFile(const QString &path, const std::vector<ImportedEntry> &entries,
                      const QString &locale);

/// Writes files into the resources of a package.
/// \param files their contents by their paths in the resources
void writeResources(const QDir &package, const QMap<QString, QByteArray> &files);

} // namespace HovletsTool
