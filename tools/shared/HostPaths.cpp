// SPDX-License-Identifier: Apache-2.0
#include "HostPaths.h"

#include "ToolError.h"

#include <QtCore/QFileInfo>

namespace HovletsTool {

QString extraPath(const std::string &name)
{
    const QString path = QString::fromLocal8Bit(name.c_str());
    const QFileInfo info(path);
    if (!path.isEmpty() && (!info.isDir() || !info.isReadable()))
        throw ToolError(QStringLiteral("--extra-path: %1 is not a readable folder; "
                                       "give the host's extra component folder")
                                .arg(path));
    return path;
}

QString keyDataFile(const std::string &name)
{
    const QString path = QString::fromLocal8Bit(name.c_str());
    const QFileInfo info(path);
    if (!path.isEmpty() && (!info.isFile() || !info.isReadable()))
        throw ToolError(QStringLiteral("--key-data: %1 is not a readable file; "
                                       "give the host's key-data file")
                                .arg(path));
    return path;
}

QString existingFolder(const std::string &name, const char *option)
{
    const QFileInfo info(QString::fromLocal8Bit(name.c_str()));
    if (!info.isDir())
        throw ToolError(QStringLiteral("%1 %2 is not a folder")
                                .arg(QLatin1String(option), info.filePath()));
    return info.absoluteFilePath();
}

QString existingFile(const std::string &name, const char *option)
{
    const QFileInfo info(QString::fromLocal8Bit(name.c_str()));
    if (!info.isFile())
        throw ToolError(
                QStringLiteral("%1 %2 is not a file").arg(QLatin1String(option), info.filePath()));
    return info.absoluteFilePath();
}

} // namespace HovletsTool
