// SPDX-License-Identifier: Apache-2.0
#include "UnindexedFile.h"

#include "Findings.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <optional>

namespace HovletsTool {

namespace {

const QLatin1String RootName("hovlets");

constexpr qint64 HeadSize = 65536; // enough for a root tag after a long licence

QByteArray head(const QFileInfo &file)
{
    QFile device(file.filePath());
    return device.open(QIODevice::ReadOnly) ? device.read(HeadSize) : QByteArray();
}

bool isWide(const QByteArray &bytes)
{
    return bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff")
            || bytes.left(4).contains('\0');
}

const XmlDocument::Element *rootOf(const XmlDocument &document)
{
    return document.elements().empty() ? nullptr : &document.elements().front();
}

struct Tag
{
    int offset;
    QString name;
};

/// The start tag that the library finds, which it looks for line by line.
std::optional<Tag> findTag(const QByteArray &bytes)
{
    static const QRegularExpression tag(QStringLiteral("<([\\w\\p{M}]+)\\s*([\\w\\p{M}]|>|/>)"),
                                        QRegularExpression::UseUnicodePropertiesOption);
    int offset = 0;
    const QList<QByteArray> lines = bytes.split('\n');
    for (const QByteArray &line : lines) {
        const QString text = QString::fromUtf8(line);
        const auto match = tag.match(text);
        if (match.hasMatch())
            return Tag {
                offset + static_cast<int>(text.left(match.capturedStart()).toUtf8().size()),
                match.captured(1)
            };
        offset += static_cast<int>(line.size()) + 1;
    }
    return std::nullopt;
}

} // namespace

bool isLikeControlFile(const QFileInfo &file)
{
    if (!file.isFile() || !file.isReadable())
        return false;
    const XmlDocument document(head(file));
    const XmlDocument::Element *root = rootOf(document);
    return root && root->name == RootName;
}

void explainUnindexed(const QFileInfo &file, FindingList &findings)
{
    const QString path = file.filePath();
    if (!file.isReadable())
        return findings.add("HV116", path, QStringLiteral("the file cannot be read"));
    const QByteArray bytes = head(file);
    if (isWide(bytes))
        return findings.add("HV115", path, QStringLiteral("the file is in UTF-16 or UTF-32"));
    XmlDocument document(bytes);
    if (!rootOf(document) && bytes.size() == HeadSize)
        document = XmlDocument(path); // the library, too, reads on until it finds a tag
    const XmlDocument::Element *root = rootOf(document);
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
