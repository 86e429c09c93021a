// SPDX-License-Identifier: Apache-2.0
#include "GivenPaths.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace HovletsTool {

GivenPaths::GivenPaths(const std::vector<std::string> &paths)
{
    for (const std::string &name : paths) {
        const QString given = QDir::cleanPath(QString::fromLocal8Bit(name.c_str()));
        const QFileInfo folder(given);
        if (given.isEmpty() || !folder.isRelative())
            continue;
        m_relative.push_back({ given, QDir::cleanPath(folder.absoluteFilePath()) });
        m_relative.push_back({ given, folder.canonicalFilePath() }); // the index follows links
    }
}

QString GivenPaths::shown(const QString &path) const
{
    for (const Folder &folder : m_relative) {
        if (path == folder.path)
            return folder.given;
        if (!folder.path.isEmpty() && path.startsWith(folder.path + QLatin1Char('/')))
            return QDir::cleanPath(folder.given + path.mid(folder.path.size()));
    }
    return path;
}

} // namespace HovletsTool
