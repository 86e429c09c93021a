// SPDX-License-Identifier: Apache-2.0
#include "ContentCheck.h"

#include "ContentIndex.h"
#include "ControlFile.h"
#include "EntryCheck.h"
#include "HostPaths.h"
#include "PackageCheck.h"
#include "Progress.h"

#include <HVControlFiles.h>
#include <HVPackageFiles.h>

#include <QtCore/QDir>
#include <QtCore/QHash>

#include <algorithm>

namespace HovletsTool {

namespace {

/// The library finds a package through its control files.
bool hasControlFiles(const QFileInfo &package)
{
    const QFileInfo control(QDir(package.canonicalFilePath()).filePath(QStringLiteral("Control")));
    const QStringList files = Hovlets::controlFilesIn(control);
    return std::any_of(files.begin(), files.end(), &Hovlets::HVControlFiles::isControlFile);
}

/// The packages that "search" may name: those in the paths, their neighbours on disk and "Default".
class KnownPackages
{
public:
    explicit KnownPackages(const ContentIndex &content)
    {
        const QStringList files = content.controlFiles();
        for (const QString &file : files)
            m_given += content.packageOf(file);
        m_given.removeDuplicates();
    }

    QStringList beside(const QFileInfo &package)
    {
        const QString folder = package.path();
        if (!m_byFolder.contains(folder)) {
            QStringList names = m_given;
            const QList<QFileInfo> neighbours =
                    Hovlets::packagesIn(QDir(folder), QStringLiteral("*.hovlets"));
            for (const QFileInfo &neighbour : neighbours) {
                if (hasControlFiles(neighbour))
                    names += neighbour.completeBaseName();
            }
            m_byFolder.insert(folder, names);
        }
        return m_byFolder.value(folder);
    }

private:
    QStringList m_given { QStringLiteral("Default") };
    QHash<QString, QStringList> m_byFolder;
};

/// The control files in the given packages, without those of the packages in the library.
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
    const QString extra = extraPath(options.extraPath);
    if (!extra.isEmpty())
        context.set(Hovlets::HVKeyExtraComponentPath, extra);
    const QString keyData = keyDataFile(options.keyData);
    ContentIndex content(options.paths, context);
    FindingList findings;
    checkPackages(options.paths, content, findings);
    const ControlFiles files = controlFiles(content);
    KnownPackages known(content);
    for (const ControlFile &file : files)
        checkControlFile(file, known.beside(QFileInfo(file.package())), findings);
    QStringList required;
    for (const std::string &locale : options.locales)
        required += QString::fromStdString(locale);
    checkLocales(files, QString::fromStdString(options.fallbackLocale), required, findings);
    size_t entries = 0;
    for (const ControlFile &file : files)
        entries += file.entries().size();
    Progress progress(QStringLiteral("checking"), static_cast<int>(entries), options.showsProgress);
    checkMedia(files, content, options.limits, progress, findings);
    if (!keyData.isEmpty())
        checkKeyData(QFileInfo(keyData).absoluteFilePath(), files, findings);
    return findings;
}

} // namespace HovletsTool
