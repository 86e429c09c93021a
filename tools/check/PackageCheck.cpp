// SPDX-License-Identifier: Apache-2.0
#include "PackageCheck.h"

#include "ContentIndex.h"
#include "Findings.h"
#include "UnindexedFile.h"

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QSet>

namespace HovletsTool {

namespace {

const QLatin1String ControlFolder("Control");
const QLatin1String PackageSuffix("hovlets");

bool isXml(const QFileInfo &file)
{
    return file.fileName().endsWith(QLatin1String(".xml"), Qt::CaseInsensitive);
}

/// Whether the files in the folder can be listed and opened.
bool isOpen(const QFileInfo &folder)
{
    return folder.isReadable() && folder.isExecutable();
}

void addClosed(const QFileInfo &folder, FindingList &findings)
{
    findings.add("HV116", folder.filePath(),
                 QStringLiteral("the folder and the files in it cannot be read"));
}

void checkFile(const QFileInfo &file, bool isInControlFolder, const QSet<QString> &indexed,
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
    if (isXml(file) && !file.isFile())
        return findings.add("HV113", path,
                            QStringLiteral("pipes, sockets and devices are not indexed"));
    if (isXml(file))
        return explainUnindexed(file, findings);
    if (isLikeControlFile(file))
        findings.add("HV111", path, QStringLiteral("only files named *.xml are indexed"));
}

/// The library follows the link, but indexes only files in the package.
void checkControlLink(const QFileInfo &control, const QString &package, FindingList &findings)
{
    if (!control.exists())
        return findings.add("HV113", control.filePath(),
                            QStringLiteral("the symbolic link is broken"));
    const QString target = control.canonicalFilePath();
    if (!target.startsWith(package + QLatin1Char('/')))
        findings.add("HV113", control.filePath(),
                     QStringLiteral("the symbolic link leads out of the package to %1, where "
                                    "control files are not indexed")
                             .arg(target));
}

void checkPackage(const QFileInfo &package, const QSet<QString> &indexed, FindingList &findings)
{
    if (!isOpen(package))
        return addClosed(package, findings);
    const QDir root(package.canonicalFilePath());
    const QFileInfo control(root.filePath(ControlFolder));
    if (control.isSymLink())
        checkControlLink(control, root.path(), findings);
    QDirIterator files(root.path(),
                       QDir::Files | QDir::Dirs | QDir::Hidden | QDir::System
                               | QDir::NoDotAndDotDot,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QFileInfo file(files.next());
        if (file.isDir() && !file.isHidden() && !isOpen(file))
            addClosed(file, findings);
        else if (!file.isDir() && (file.exists() || file.isSymLink()))
            checkFile(file, file.path() == control.filePath(), indexed, findings);
    }
}

/// Checks a folder next to packages or in place of one.
void checkFolder(const QFileInfo &folder, FindingList &findings)
{
    const bool hasSuffix = folder.suffix() == PackageSuffix;
    if (hasSuffix && (folder.isSymLink() || folder.isHidden()))
        return findings.add("HV113", folder.filePath(),
                            QStringLiteral("symbolic links and hidden folders are not packages"));
    if (hasSuffix && !folder.isReadable()) // checkPackage() handles readable ones
        return addClosed(folder, findings);
    if (!hasSuffix && QDir(folder.filePath()).exists(ControlFolder))
        findings.add(
                "HV112", folder.filePath(),
                QStringLiteral(
                        "the folder has control files, but its name is not that of a package"));
}

} // namespace

void checkPackages(const std::vector<std::string> &paths, const ContentIndex &content,
                   FindingList &findings)
{
    const QList<QFileInfo> packages = content.packages();
    const QStringList controlFiles = content.controlFiles();
    const QSet<QString> indexed(controlFiles.begin(), controlFiles.end());
    for (const QFileInfo &package : packages)
        checkPackage(package, indexed, findings);
    for (const std::string &name : paths) {
        const QString given = QFileInfo(QString::fromLocal8Bit(name.c_str())).absoluteFilePath();
        const QFileInfo path(QDir::cleanPath(given)); // cleaned because "P.hovlets/" has no suffix
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
                     QStringLiteral("the folder contains no package"));
}

} // namespace HovletsTool
