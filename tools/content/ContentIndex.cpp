// SPDX-License-Identifier: Apache-2.0
#include "ContentIndex.h"

#include "ToolError.h"

#include <HVPackageFiles.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

#include <algorithm>

namespace HovletsTool {

using Hovlets::HVControlFiles;

void ContentIndex::Index::indexControlFile(const QString &file, const QString &location)
{
    HVIndex::indexControlFile(file, location);
    const bool isBelow = places.depthBelow(file, location) >= 0; // links do not count
    if (isBelow && HVControlFiles::isControlFile(file) && !known.contains(file)) {
        known.insert(file);
        files.prepend(file);
    }
}

ContentIndex::ContentIndex(const std::vector<std::string> &paths, const HVContext &context,
                           Hovlets::HVInterface *host)
    : m_context(context)
    , m_index(&m_context, {})
    , m_manager(host, m_context, {}, &m_index)
{
    for (const std::string &path : paths)
        addPath(QString::fromLocal8Bit(path.c_str()));
    addDefaultPackages();
}

/// Hosts have the packages that come with the library, too. A package "Default" in the paths
/// replaces them.
void ContentIndex::addDefaultPackages()
{
    const auto isDefault = [](const QFileInfo &package) {
        return package.completeBaseName() == QLatin1String("Default");
    };
    if (std::none_of(m_packages.cbegin(), m_packages.cend(), isDefault))
        m_manager.loadDataPath({ QDir(QCoreApplication::applicationDirPath())
                                         .filePath(QStringLiteral(HOVLETS_DEFAULT_PACKAGES)) });
}

void ContentIndex::addPath(const QString &path)
{
    const QFileInfo info(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (!info.isDir() || !info.isReadable()) {
        throw ToolError(QStringLiteral("%1 is not a readable folder; "
                                       "give a folder of packages or a package")
                                .arg(path));
    }
    if (info.suffix() == QLatin1String("hovlets")) {
        m_packages += info;
        m_manager.loadPackage(info);
        return;
    }
    m_packages += Hovlets::packagesIn(QDir(info.filePath()), QStringLiteral("*.hovlets"));
    m_manager.loadDataPath({ info.filePath() });
}

} // namespace HovletsTool
