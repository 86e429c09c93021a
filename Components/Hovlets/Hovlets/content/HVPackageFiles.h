// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QFileInfo>
#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

class QDir;

// Where packages and their control files lie on disk. What is hidden, a symbolic link or not to be
// read is left out, silently. They come by name, so that the same entry answers on every machine.

namespace Hovlets {

/// The package folders in the data path \a directory, by a wildcard such as "*.hovlets".
QList<QFileInfo> packagesIn(const QDir &directory, const QString &filter);

/// Canonical paths of the control files in \a folder; those in its sub-folders do not count.
QStringList controlFilesIn(const QFileInfo &folder);

/// The folder \a levels above \a path, canonical; a null string when it does not exist.
QString folderAbove(const QString &path, int levels);

} // namespace Hovlets
