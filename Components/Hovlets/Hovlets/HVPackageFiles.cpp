// SPDX-License-Identifier: Apache-2.0
#include "HVPackageFiles.h"

#include <QtCore/QDir>

namespace Hovlets {

namespace {

constexpr QDir::Filters Listed = QDir::NoSymLinks | QDir::Readable | QDir::NoDotAndDotDot;

} // namespace

QList<QFileInfo> packagesIn(const QDir &directory, const QString &filter)
{
    return directory.entryInfoList({ filter }, QDir::Dirs | Listed, QDir::NoSort);
}

QStringList controlFilesIn(const QFileInfo &folder)
{
    // Not a name filter of QDir, whose regular expression doubles the time of the listing.
    const QStringList names =
            QDir(folder.absoluteFilePath()).entryList(QDir::Files | Listed, QDir::NoSort);
    // No entry is a symbolic link, so the folder's canonical path serves all its files.
    const QDir canonical(folder.canonicalFilePath());
    QStringList files;
    for (const QString &name : names) {
        if (name.endsWith(QLatin1String(".xml"), Qt::CaseInsensitive))
            files += canonical.filePath(name);
    }
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
