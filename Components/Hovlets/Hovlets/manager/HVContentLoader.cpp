// SPDX-License-Identifier: Apache-2.0
#include "HVContentLoader.h"

#include "HVManager.h"
#include "HVPackageFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace Hovlets {

HVContentLoader::HVContentLoader(HVManager &manager)
    : m_manager(manager)
{
}

void HVContentLoader::loadDataPaths(const QStringList &paths)
{
    for (const QString &path : paths) {
        if (!QFileInfo(path).isDir())
            continue;
        const QDir directory(QFileInfo(path).absoluteFilePath());
        const QString filter =
                QStringLiteral("*.%1").arg(m_manager.context().get(HVKeyPackageSuffix).toString());
        inform(QStringLiteral("indexing packages (%2) in %1 ")
                       .arg(directory.absolutePath(), filter));
        const QList<QFileInfo> packages = packagesIn(directory, filter);
        for (const QFileInfo &package : packages)
            loadPackage(package);
        const QString canonical = directory.canonicalPath();
        if (!m_loadedDirectories.contains(canonical))
            m_loadedDirectories.prepend(canonical);
    }
}

void HVContentLoader::loadPackage(const QFileInfo &package) const
{
    const QDir directory(package.absoluteFilePath());
    inform(QStringLiteral("indexing control files in %1").arg(directory.absolutePath()));
    const QFileInfo control(
            directory.absoluteFilePath(m_manager.context().get(HVKeyControlFolderName).toString()));
    inform(QStringLiteral("looking for control files in :%1").arg(control.absoluteFilePath()));
    const QStringList files = controlFilesIn(control);
    for (const QString &file : files) {
        inform(QStringLiteral("found control file :%1").arg(file));
        m_manager.indexControFile(file, package.canonicalFilePath());
    }
}

void HVContentLoader::inform(const QString &message) const
{
    m_manager.handleMessage(HVMessageInformation, message);
}

} // namespace Hovlets
