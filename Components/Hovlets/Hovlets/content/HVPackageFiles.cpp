// SPDX-License-Identifier: Apache-2.0
#include "HVPackageFiles.h"

#include "HVFolderFiles.h"

#include <QtCore/QDir>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr QDir::Filters Listed = QDir::NoSymLinks | QDir::Readable | QDir::NoDotAndDotDot;
bool isBefore(const QString &left, const QString &right)
{
    const int order = left.compare(right, Qt::CaseInsensitive);
    return order != 0 ? order < 0 : left < right;
}

} // namespace

QList<QFileInfo> packagesIn(const QDir &directory, const QString &filter)
{
    return directory.entryInfoList({ filter }, QDir::Dirs | Listed, QDir::Name | QDir::IgnoreCase);
}

QStringList controlFilesIn(const QFileInfo &folder)
{
    QStringList files = filesIn(folder.absoluteFilePath(), QLatin1String(".xml"));
    std::sort(files.begin(), files.end(), &isBefore);
    // No entry is a symbolic link, so the folder's canonical path is valid for all its files.
    const QDir canonical(folder.canonicalFilePath());
    for (QString &file : files)
        file = canonical.filePath(file);
    return files;
}

QString folderAbove(const QString &path, int levels)
{
    QDir folder(path);
    for (int level = 0; level < levels; ++level)
        folder.cdUp();
    return folder.canonicalPath();
}

} // namespace Hovlets
