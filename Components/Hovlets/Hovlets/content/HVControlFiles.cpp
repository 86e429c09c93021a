// SPDX-License-Identifier: Apache-2.0
#include "HVControlFiles.h"

#include "HVFileBytes.h"
#include "HVLimits.h"

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <cctype>
#include <optional>

namespace Hovlets {

namespace {

/// The number of levels from \a folder up to \a location, or -1 if it is not above the folder.
int levelsUp(const QString &folder, const QString &location)
{
    const QString target = QFileInfo(location).canonicalFilePath();
    int levels = 0;
    for (QFileInfo info(folder); !target.isEmpty(); info.setFile(info.absolutePath()), ++levels) {
        if (info.filePath() == location || info.canonicalFilePath() == target)
            return levels;
        if (info.isRoot() || info.filePath().isEmpty())
            return -1;
    }
    return -1;
}

/// Whether \a byte may start a tag name. It may belong to a character beyond ASCII.
bool mayBeginName(char byte)
{
    return std::isalnum(static_cast<uchar>(byte)) || byte == '_'
            || static_cast<uchar>(byte) >= 0x80;
}

/// Whether \a line has a "<" that may begin a start tag, rather than a declaration or a comment.
bool mayHoldStartTag(const QByteArray &line)
{
    for (auto at = line.indexOf('<'); at >= 0; at = line.indexOf('<', at + 1)) {
        if (at + 1 < line.size() && mayBeginName(line.at(at + 1)))
            return true;
    }
    return false;
}

/// Whether the first start tag in \a text is "hovlets"; no value if no line has a start tag.
std::optional<bool> namesHovlets(const QByteArray &text)
{
    // A character must follow the name on the same line: a root tag whose name ends its line is not
    // recognised.
    static const QRegularExpression startTag(
            QStringLiteral("<([\\w\\p{M}]+)\\s*([\\w\\p{M}]|>|/>)"),
            QRegularExpression::UseUnicodePropertiesOption);
    constexpr int LongestLine = 1023; // longer lines count as several

    // Skips lines without a "<", however many there are.
    int at = 0;
    for (auto tag = text.indexOf('<'); tag >= 0; tag = text.indexOf('<', at)) {
        const QByteArray before =
                QByteArray::fromRawData(text.constData() + at, static_cast<int>(tag) - at);
        at += static_cast<int>(before.lastIndexOf('\n')) + 1;
        at += (static_cast<int>(tag) - at) / LongestLine * LongestLine;

        QByteArray line = text.mid(at, LongestLine);
        const auto end = line.indexOf('\n');
        if (end >= 0)
            line.truncate(end + 1);
        at += static_cast<int>(line.size());
        if (!mayHoldStartTag(line))
            continue;
        const QRegularExpressionMatch match = startTag.match(QString::fromUtf8(line));
        if (match.hasMatch())
            return match.capturedView(1) == QLatin1String("hovlets");
    }
    return std::nullopt;
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
    QString problem;
    return findControlFile(file, problem);
}

bool HVControlFiles::findControlFile(const QString &file, QString &problem)
{
    constexpr int Head = 4096; // has the root tag of most files, and costs no more than its line

    const qint64 limit = HVLimits::current().controlFileSize;
    HVFileBytes read = HVFileBytes::head(file, Head, limit);
    problem = read.problem(limit);
    const bool isWhole = read.bytes.size() < Head;
    if (!isWhole)
        read.bytes.truncate(read.bytes.lastIndexOf('\n') + 1);
    std::optional<bool> answer = namesHovlets(read.bytes);
    // Searches no further than a look-up may parse: the parser reads everything before the root.
    if (!answer && !isWhole) {
        const qint64 parsed = qMin<qint64>(HVLimits::current().parsedSize, 1 << 30);
        answer = namesHovlets(HVFileBytes::head(file, static_cast<int>(parsed), limit).bytes);
    }
    return answer.value_or(false);
}

} // namespace Hovlets
