// SPDX-License-Identifier: Apache-2.0
#include "ContentCheck.h"

#include "ContentIndex.h"
#include "ControlFile.h"
#include "EntryCheck.h"
#include "PackageCheck.h"

#include <QtCore/QDir>

namespace {

/// Those that "search" may name: the given ones, their neighbours on disk, and the default one.
QStringList knownPackages(const ContentIndex &content, const QFileInfo &package)
{
    QStringList names { QStringLiteral("Default") };
    const QStringList files = content.controlFiles();
    for (const QString &file : files)
        names += content.packageOf(file);
    const QStringList neighbours = QDir(package.path()).entryList({ QStringLiteral("*.hovlets") });
    for (const QString &neighbour : neighbours)
        names += QFileInfo(neighbour).completeBaseName();
    return names;
}

/// The given packages' own: those that come with the library are not the author's.
ControlFiles controlFiles(const ContentIndex &content)
{
    ControlFiles files;
    const QStringList paths = content.controlFiles();
    const QList<QFileInfo> packages = content.packages();
    for (const QString &path : paths) {
        for (const QFileInfo &package : packages) {
            if (path.startsWith(package.canonicalFilePath() + QLatin1Char('/'))) {
                files.emplace_back(path, package.canonicalFilePath());
                break;
            }
        }
    }
    return files;
}

} // namespace

FindingList checkContent(const CheckOptions &options)
{
    HVContext context;
    if (!options.extraPath.empty())
        context.set(Hovlets::HVKeyExtraComponentPath, QString::fromStdString(options.extraPath));
    ContentIndex content(options.paths, context);
    FindingList findings;
    checkPackages(options.paths, content, findings);
    const ControlFiles files = controlFiles(content);
    for (const ControlFile &file : files)
        checkControlFile(file, knownPackages(content, QFileInfo(file.package())), findings);
    QStringList required;
    for (const std::string &locale : options.locales)
        required += QString::fromStdString(locale);
    checkLocales(files, QString::fromStdString(options.fallbackLocale), required, findings);
    checkMedia(files, content, options.limits, findings);
    if (!options.keyData.empty())
        checkKeyData(QFileInfo(QString::fromLocal8Bit(options.keyData.c_str())).absoluteFilePath(),
                     files, findings);
    return findings;
}
