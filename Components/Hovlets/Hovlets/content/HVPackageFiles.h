// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QDir;

// Lists packages and their control files on disk. Hidden and unreadable ones and symbolic links are
// omitted silently. The lists are sorted by name, which gives the same entry on every machine.

namespace Hovlets {

/// The package folders in the data path \a directory whose names match \a filter, a wildcard such
/// as "*.hovlets".
QList<QFileInfo> packagesIn(const QDir &directory, const QString &filter);

/// Canonical paths of the control files in \a folder, but not in its subfolders.
QStringList controlFilesIn(const QFileInfo &folder);

/// The folder \a levels above \a path, canonical; a null string if it does not exist.
QString folderAbove(const QString &path, int levels);

} // namespace Hovlets
