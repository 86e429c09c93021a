// SPDX-License-Identifier: Apache-2.0
#include "PackageCheck.h"

#include "ContentIndex.h"
#include "Findings.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QFile>

namespace {

const QLatin1String ControlFolder("Control");
const QLatin1String PackageSuffix("hovlets");

bool isXml(const QFileInfo &file)
{
    return file.fileName().endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
}

QByteArray head(const QFileInfo &file)
{
    QFile device(file.filePath());
    return device.open(QIODevice::ReadOnly) ? device.read(4) : QByteArray();
}

bool isWide(const QFileInfo &file)
{
    const QByteArray bytes = head(file);
    return bytes.startsWith("\xff\xfe") || bytes.startsWith("\xfe\xff") || bytes.contains('\0');
}

QString rootOf(const XmlDocument &document)
{
    return document.elements().empty() ? QString() : document.elements().front().name;
}

bool isLikeControlFile(const QFileInfo &file)
{
    return file.isReadable() && rootOf(XmlDocument(file.filePath())) == QLatin1String("hovlets");
}

/// Why a file with the right name in the control folder is not indexed.
void explain(const QFileInfo &file, FindingList &findings)
{
    const QString path = file.filePath();
    if (!file.isReadable())
        return findings.add("HV116", path, QStringLiteral("the file cannot be read"));
    if (isWide(file))
        return findings.add("HV115", path, QStringLiteral("the file is in UTF-16 or UTF-32"));
    const XmlDocument document(path);
    const QString root = rootOf(document);
    if (!document.isWellFormed() && root.isEmpty())
        return findings.add("HV101", path, document.errorPosition(), document.error());
    const Position position = document.position(document.elements().front().offset);
    if (root != QLatin1String("hovlets"))
        return findings.add("HV102", path, position,
                            QStringLiteral("the root element is \"%1\"").arg(root));
    findings.add("HV114", path, position,
                 QStringLiteral("the name of the root tag is not followed by anything on its line, "
                                "so that the file is not indexed"));
}

void checkFile(const QFileInfo &file, bool isInControlFolder, const QStringList &indexed,
               FindingList &findings)
{
    const QString path = file.filePath();
    if (indexed.contains(path))
        return findings.addFile(path);
    if (!isInControlFolder) {
        if (isXml(file) && isLikeControlFile(file))
            findings.add("HV110", path,
                         QStringLiteral("only files directly in the package's folder Control are "
                                        "indexed"));
        return;
    }
    if (isXml(file) && (file.isSymLink() || file.isHidden()))
        return findings.add("HV113", path,
                            QStringLiteral("symbolic links and hidden files are not indexed"));
    if (isXml(file))
        return explain(file, findings);
    if (isLikeControlFile(file))
        findings.add("HV111", path, QStringLiteral("only files named *.xml are indexed"));
}

void checkPackage(const QFileInfo &package, const QStringList &indexed, FindingList &findings)
{
    const QDir root(package.canonicalFilePath());
    const QString control = root.filePath(ControlFolder);
    if (QFileInfo(control).isSymLink() && !QFileInfo::exists(control))
        findings.add("HV113", control, QStringLiteral("the symbolic link leads nowhere"));
    QDirIterator files(root.path(), QDir::Files | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        if (file.exists() || file.isSymLink())
            checkFile(file, file.path() == control, indexed, findings);
    }
}

/// A folder beside packages, or in the place of one.
void checkFolder(const QFileInfo &folder, FindingList &findings)
{
    const bool hasSuffix = folder.suffix() == PackageSuffix;
    if (hasSuffix && (folder.isSymLink() || folder.isHidden()))
        return findings.add("HV113", folder.filePath(),
                            QStringLiteral("symbolic links and hidden folders are no packages"));
    if (!hasSuffix && QDir(folder.filePath()).exists(ControlFolder))
        findings.add("HV112", folder.filePath(),
                     QStringLiteral("the folder has control files but is no package by its name"));
}

} // namespace

void checkPackages(const std::vector<std::string> &paths, const ContentIndex &content,
                   FindingList &findings)
{
    const QList<QFileInfo> packages = content.packages();
    const QStringList indexed = content.controlFiles();
    for (const QFileInfo &package : packages)
        checkPackage(package, indexed, findings);
    for (const std::string &name : paths) {
        const QFileInfo path(QFileInfo(QString::fromLocal8Bit(name.c_str())).absoluteFilePath());
        if (path.suffix() == PackageSuffix)
            continue;
        checkFolder(path, findings);
        const QFileInfoList folders =
                QDir(path.filePath())
                        .entryInfoList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot);
        for (const QFileInfo &folder : folders)
            checkFolder(folder, findings);
    }
    if (packages.isEmpty() && findings.isEmpty() && !paths.empty())
        findings.add("HV117", QString::fromLocal8Bit(paths.front().c_str()),
                     QStringLiteral("there is no package here"));
}
