// SPDX-License-Identifier: Apache-2.0
#include "UnindexedFile.h"

#include "Findings.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <optional>

namespace HovletsTool {

namespace {

const QLatin1String RootName("hovlets");

constexpr qint64 HeadSize = 65536; // holds the root tag, even behind a long licence

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

/// What the library takes for a start tag, which looks for one line by line.
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
        document = XmlDocument(path); // as the library did, which looks on until it finds a tag
    const XmlDocument::Element *root = rootOf(document);
    if (!root)
        return findings.add("HV101", path, document.errorPosition(), document.error());
    const Position position = document.position(root->offset);
    if (root->name != RootName)
        return findings.add("HV102", path, position,
                            QStringLiteral("the root element is \"%1\"").arg(root->name));
    if (const auto tag = findTag(document.bytes().left(root->offset)))
        return findings.add("HV118", path, document.position(tag->offset),
                            QStringLiteral("\"<%1\" is taken for the root tag, although it stands "
                                           "in a comment or declaration")
                                    .arg(tag->name));
    findings.add("HV114", path, position,
                 QStringLiteral("the name of the root tag is not followed by anything on its line, "
                                "or stands far behind in it, so that the file is not indexed"));
}

} // namespace HovletsTool
