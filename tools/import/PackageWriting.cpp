// SPDX-License-Identifier: Apache-2.0
#include "PackageWriting.h"

#include "ToolError.h"

#include <QtCore/QFileInfo>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamWriter>

namespace HovletsTool {

namespace {

void writeParagraph(QXmlStreamWriter &writer, const TipParagraph &paragraph)
{
    if (paragraph.markup.isEmpty()) {
        writer.writeTextElement(QStringLiteral("p"), paragraph.plain);
        return;
    }
    writer.writeStartElement(QStringLiteral("p"));
    writer.writeCDATA(paragraph.markup);
    writer.writeEndElement();
}

void writeEntry(QXmlStreamWriter &writer, const ImportedEntry &entry)
{
    writer.writeStartElement(QStringLiteral("hovlet"));
    writer.writeAttribute(QStringLiteral("key"), entry.key);
    writer.writeAttribute(QStringLiteral("title"), entry.title);
    if (!entry.shortcut.isEmpty())
        writer.writeAttribute(QStringLiteral("shortcut"), entry.shortcut);
    for (const TipParagraph &paragraph : entry.body)
        writeParagraph(writer, paragraph);
    if (!entry.icon.isEmpty()) {
        writer.writeStartElement(QStringLiteral("img"));
        writer.writeAttribute(QStringLiteral("src"), entry.icon);
        writer.writeAttribute(QStringLiteral("alt"), entry.title);
        writer.writeEndElement();
    }
    writer.writeEndElement();
}

} // namespace

QString cannotBeWritten(const QFileDevice &file)
{
    return QStringLiteral("%1 cannot be written: %2").arg(file.fileName(), file.errorString());
}

void refuseBadName(const QDir &package)
{
    const QFileInfo info(package.path());
    const QString name = info.completeBaseName();
    if (info.suffix() != QLatin1String("hovlets"))
        throw ToolError(QStringLiteral("%1: the name of a package must end in .hovlets")
                                .arg(package.path()));
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')))
        throw ToolError(QStringLiteral("%1 would be hidden; put a name before .hovlets")
                                .arg(package.path()));
    if (package.exists())
        throw ToolError(QStringLiteral("%1 already exists; import into a new package and copy "
                                       "what you want from there")
                                .arg(package.path()));
}

QString makePackage(const QDir &package)
{
    refuseBadName(package);
    if (!package.mkpath(QStringLiteral("Control")))
        throw ToolError(QStringLiteral("%1 cannot be created; is its parent folder writable?")
                                .arg(package.path()));
    return package.filePath(QStringLiteral("Control/")
                            + QFileInfo(package.path()).completeBaseName());
}

void writeControlFile(const QString &path, const std::vector<ImportedEntry> &entries,
                      const QString &locale)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw ToolError(cannotBeWritten(file));
    QXmlStreamWriter writer(&file);
    writer.setAutoFormatting(true);
    writer.setAutoFormattingIndent(2);
    writer.writeStartDocument();
    writer.writeStartElement(QStringLiteral("hovlets"));
    writer.writeAttribute(QStringLiteral("locale"), locale);
    writer.writeAttribute(QStringLiteral("search"), QStringLiteral("Default"));
    for (const ImportedEntry &entry : entries)
        writeEntry(writer, entry);
    writer.writeEndElement();
    writer.writeEndDocument();
    if (!file.commit())
        throw ToolError(cannotBeWritten(file));
}

void writeResources(const QDir &package, const QMap<QString, QByteArray> &files)
{
    const QDir folder(package.filePath(QStringLiteral("Resources")));
    for (auto each = files.begin(); each != files.end(); ++each) {
        const QString path = folder.filePath(each.key());
        QSaveFile file(path);
        if (!folder.mkpath(QFileInfo(each.key()).path()))
            throw ToolError(
                    QStringLiteral("the folder %1 cannot be created").arg(QFileInfo(path).path()));
        if (!file.open(QIODevice::WriteOnly) || file.write(*each) != each->size() || !file.commit())
            throw ToolError(cannotBeWritten(file));
    }
}

} // namespace HovletsTool
