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
        throw ToolError(QStringLiteral("--extra-path: %1 is not a folder that can be read; "
                                       "give the host's folder of components")
                                .arg(path));
    return path;
}

QString keyDataFile(const std::string &name)
{
    const QString path = QString::fromLocal8Bit(name.c_str());
    const QFileInfo info(path);
    if (!path.isEmpty() && (!info.isFile() || !info.isReadable()))
        throw ToolError(QStringLiteral("--key-data: %1 is not a file that can be read; "
                                       "give the host's file of attributes by key")
                                .arg(path));
    return path;
}

} // namespace HovletsTool
