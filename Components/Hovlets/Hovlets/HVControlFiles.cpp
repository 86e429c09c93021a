// SPDX-License-Identifier: Apache-2.0
#include "HVControlFiles.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

namespace Hovlets {

namespace {

/// The number of steps up from \a folder to \a location, or -1 when the walk ends at the root.
int levelsUp(const QString &folder, const QString &location)
{
    const QString target = QFileInfo(location).canonicalFilePath();
    int levels = 0;
    for (QFileInfo info(folder); !target.isEmpty(); info.setFile(info.absolutePath()), ++levels) {
        if (info.canonicalFilePath() == target)
            return levels;
        if (info.isRoot() || info.filePath().isEmpty())
            return -1;
    }
    return -1;
}

} // namespace

bool HVControlFiles::insert(const File &file)
{
    const auto size = m_known.size();
    m_known.insert(file);
    return m_known.size() > size;
}

bool HVControlFiles::prepend(const File &file)
{
    if (!insert(file))
        return false;
    m_files.prepend(file);
    return true;
}

bool HVControlFiles::append(const File &file)
{
    if (!insert(file))
        return false;
    m_files.append(file);
    return true;
}

int HVControlFiles::depthBelow(const QString &file, const QString &location)
{
    if (!file.startsWith(location))
        return -1;
    if (file == location)
        return 0;
    const QString folder = QFileInfo(file).absolutePath();
    if (folder != m_folder || location != m_location || m_folderDepth < 0) {
        m_folder = folder;
        m_location = location;
        m_folderDepth = levelsUp(folder, location);
    }
    return m_folderDepth < 0 ? -1 : m_folderDepth + 1;
}

bool HVControlFiles::isControlFile(const QString &file)
{
    // Wants a character of the tag's rest on the same line: a root tag whose name ends its line is
    // not recognised.
    static const QRegularExpression startTag(QStringLiteral("<(\\w+)\\s*(\\w|>|/>)"),
                                             QRegularExpression::UseUnicodePropertiesOption);
    constexpr qint64 LongestLine = 1024;

    QFile device(file);
    if (!device.open(QIODevice::ReadOnly))
        return false;
    while (!device.atEnd()) {
        const QByteArray line = device.readLine(LongestLine);
        if (line.isEmpty())
            return false; // a read error, or a folder
        if (!line.contains('<'))
            continue;
        const QRegularExpressionMatch match = startTag.match(QString::fromUtf8(line));
        if (match.hasMatch())
            return match.capturedView(1) == QLatin1String("hovlets");
    }
    return false;
}

} // namespace Hovlets
