// SPDX-License-Identifier: Apache-2.0
#include "HVFolderFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#ifdef Q_OS_LINUX
#    include <dirent.h>
#    include <fcntl.h>
#    include <sys/stat.h>
#    include <unistd.h>

#    include <memory>
#endif

namespace Hovlets {

namespace {

QStringList listedByQt(const QString &folder, QLatin1String ending)
{
    return QDir(folder).entryList({ QLatin1Char('*') + ending },
                                  QDir::Files | QDir::NoSymLinks | QDir::Readable, QDir::Unsorted);
}

#ifdef Q_OS_LINUX

/// Uses the type in the directory entry where the file system stores it, as common ones do.
bool isRegularFile(int folder, const dirent &entry)
{
    if (entry.d_type != DT_UNKNOWN)
        return entry.d_type == DT_REG;
    struct stat status = {};
    return ::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
            && S_ISREG(status.st_mode);
}

QStringList listedBySystem(const QString &path, QLatin1String ending)
{
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(
            ::opendir(QFile::encodeName(path).constData()), &::closedir);
    if (!folder)
        return {};
    const int descriptor = ::dirfd(folder.get());
    QStringList names;
    while (const dirent *entry = ::readdir(folder.get())) {
        const QString name = QFile::decodeName(entry->d_name);
        if (name.endsWith(ending, Qt::CaseInsensitive) && !name.startsWith(QLatin1Char('.'))
            && isRegularFile(descriptor, *entry)
            && ::faccessat(descriptor, entry->d_name, R_OK, 0) == 0)
            names += name;
    }
    return names;
}

#endif

} // namespace

QStringList filesIn(const QString &folder, QLatin1String ending)
{
#ifdef Q_OS_LINUX
    if (!folder.startsWith(QLatin1Char(':'))) // in Qt's resources
        return listedBySystem(folder, ending);
#endif
    return listedByQt(folder, ending);
}

} // namespace Hovlets
