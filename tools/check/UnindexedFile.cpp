// SPDX-License-Identifier: Apache-2.0
#include "UnindexedFile.h"

#include "Findings.h"
#include "XmlDocument.h"

#include <HVLimits.h>

#include <QtCore/QRegularExpression>

#include <limits>
#include <optional>

namespace HovletsTool {

using namespace Hovlets;

namespace {

const QLatin1String RootName("hovlets");

constexpr int HeadSize = 65536; // enough for a root tag after a long licence

bool isWide(const QByteArray &bytes)
{
    return bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")
            || bytes.left(4).contains('\0');
}

struct Tag
{
    int offset;
    QString name;
};

/// The start tag that the library would find. It searches line by line.
std::optional<Tag> findTag(const QByteArray &bytes)
{
    static const QRegularExpression tag(QStringLiteral("<([\\w\\p{M}]+)\\s*([\\w\\p{M}]|>|/>)"),
                                        QRegularExpression::UseUnicodePropertiesOption);
    for (qsizetype begin = 0; begin < bytes.size();) {
        const auto end = bytes.indexOf('\n', static_cast<int>(begin));
        const auto length = (end < 0 ? bytes.size() : end) - begin;
        const QString line = QString::fromUtf8(bytes.constData() + begin, static_cast<int>(length));
        const auto match = tag.match(line);
        if (match.hasMatch())
            return Tag { static_cast<int>(begin + line.left(match.capturedStart()).toUtf8().size()),
                         match.captured(1) };
        begin += length + 1;
    }
    return std::nullopt;
}

} // namespace

void addUnreadable(const QString &path, const HVFileBytes &file, FindingList &findings)
{
    switch (file.result) {
    case HVFileBytes::Result::Read:
        return;
    case HVFileBytes::Result::Unreadable:
        return findings.add("HV116", path, QStringLiteral("the file cannot be read"));
    case HVFileBytes::Result::NotRegular:
        return findings.add("HV113", path,
                            QStringLiteral("pipes, sockets and devices are not indexed"));
    case HVFileBytes::Result::TooLarge:
        return findings.add("HV119", path,
                            QStringLiteral("the file is larger than the %1 bytes that the library "
                                           "reads")
                                    .arg(HVLimits::current().controlFileSize));
    }
}

bool isLikeControlFile(const QFileInfo &file)
{
    if (!file.isFile() || !file.isReadable())
        return false;
    const qint64 most = std::numeric_limits<qint64>::max(); // only the head is read
    const XmlDocument document(HVFileBytes::head(file.filePath(), HeadSize, most).bytes);
    const XmlDocument::Element *root = document.root();
    return root && root->name == RootName;
}

void explainUnindexed(const QFileInfo &file, FindingList &findings)
{
    const QString path = file.filePath();
    const qint64 most = HVLimits::current().controlFileSize;
    const HVFileBytes head = HVFileBytes::head(path, HeadSize, most);
    if (head.result != HVFileBytes::Result::Read)
        return addUnreadable(path, head, findings);
    const QByteArray &bytes = head.bytes;
    if (isWide(bytes))
        return findings.add("HV115", path, QStringLiteral("the file is in UTF-16 or UTF-32"));
    XmlDocument document(bytes);
    if (!document.root() && bytes.size() == HeadSize)
        document = XmlDocument(HVFileBytes::all(path, most)
                                       .bytes); // the library also continues until it finds a tag
    const XmlDocument::Element *root = document.root();
    if (!root)
        return findings.add("HV101", path, document.errorPosition(), document.error());
    const Position position = document.position(root->offset);
    if (root->name != RootName)
        return findings.add("HV102", path, position,
                            QStringLiteral("the root element is \"%1\"").arg(root->name));
    if (const auto tag = findTag(document.bytes().left(root->offset)))
        return findings.add(
                "HV118", path, document.position(tag->offset),
                QStringLiteral("\"<%1\" in a comment or declaration is mistaken for the "
                               "root tag")
                        .arg(tag->name));
    findings.add(
            "HV114", path, position,
            QStringLiteral("the file is not indexed, because nothing follows the name of the root "
                           "tag on its line, or because the line is too long"));
}

} // namespace HovletsTool
