// SPDX-License-Identifier: Apache-2.0
#include "ContentCheck.h"

#include "ContentIndex.h"
#include "ControlFile.h"
#include "EntryCheck.h"
#include "HostPaths.h"
#include "KeyDataCheck.h"
#include "LocaleCheck.h"
#include "PackageCheck.h"
#include "Progress.h"
#include "UnindexedFile.h"

#include <HVControlFiles.h>
#include <HVFileBytes.h>
#include <HVLimits.h>
#include <HVPackageFiles.h>

#include <QtCore/QDir>
#include <QtCore/QHash>
#include <QtCore/QSet>

#include <algorithm>
#include <utility>

namespace HovletsTool {

namespace {

/// The library finds a package through its control files.
bool hasControlFiles(const QFileInfo &package)
{
    const QFileInfo control(QDir(package.canonicalFilePath()).filePath(QStringLiteral("Control")));
    const QStringList files = Hovlets::controlFilesIn(control);
    return std::any_of(files.begin(), files.end(), &Hovlets::HVControlFiles::isControlFile);
}

/// The packages that "search" may name: those in the paths, their siblings on disk and "Default".
class KnownPackages
{
public:
    explicit KnownPackages(const ContentIndex &content)
    {
        const QStringList files = content.controlFiles();
        for (const QString &file : files)
            m_given += content.packageOf(file);
    }

    const QSet<QString> &beside(const QFileInfo &package)
    {
        const QString folder = package.path();
        const auto known = m_byFolder.constFind(folder);
        return known == m_byFolder.cend() ? *m_byFolder.insert(folder, namesIn(folder)) : *known;
    }

private:
    [[nodiscard]] QSet<QString> namesIn(const QString &folder) const
    {
        QSet<QString> names = m_given;
        const QList<QFileInfo> neighbours =
                Hovlets::packagesIn(QDir(folder), QStringLiteral("*.hovlets"));
        for (const QFileInfo &neighbour : neighbours) {
            if (hasControlFiles(neighbour))
                names += neighbour.completeBaseName();
        }
        return names;
    }

    QSet<QString> m_given { QStringLiteral("Default") };
    QHash<QString, QSet<QString>> m_byFolder;
};

/// The package folders in the paths, without those of the library's own packages.
class GivenPackages
{
public:
    explicit GivenPackages(const ContentIndex &content)
    {
        const QList<QFileInfo> packages = content.packages();
        for (const QFileInfo &package : packages)
            m_folders += package.canonicalFilePath();
    }

    /// The outermost package that holds \a file, or a null string.
    [[nodiscard]] QString packageOf(const QString &file) const
    {
        auto slash = file.indexOf(QLatin1Char('/'), 1);
        for (; slash >= 0; slash = file.indexOf(QLatin1Char('/'), slash + 1)) {
            if (m_folders.contains(file.left(slash)))
                return file.left(slash);
        }
        return {};
    }

private:
    QSet<QString> m_folders;
};

QStringList asStrings(const std::vector<std::string> &arguments)
{
    QStringList strings;
    for (const std::string &argument : arguments)
        strings += QString::fromLocal8Bit(argument.c_str());
    return strings;
}

class Check
{
public:
    explicit Check(const CheckOptions &options)
        : m_options(options)
        , m_keyData(keyDataFile(options.keyData))
        , m_content(options.paths, contextFor(options))
        , m_known(m_content)
        , m_given(m_content)
        , m_media(m_content, options.limits, asStrings(options.hostAttributes), m_findings)
        , m_progress(options.showsProgress)
    {
    }

    FindingList run()
    {
        checkPackages(m_options.paths, m_content, m_findings);
        const QStringList paths = m_content.controlFiles();
        for (const QString &path : paths) {
            const QString package = m_given.packageOf(path);
            if (!package.isNull())
                checkFile(path, package);
        }
        const QStringList required = asStrings(m_options.locales);
        checkLocales(m_entries, QString::fromStdString(m_options.fallbackLocale), required,
                     m_findings);
        if (!m_keyData.isEmpty())
            checkKeyData(QFileInfo(m_keyData).absoluteFilePath(), keys(), m_findings);
        return m_findings;
    }

private:
    static HVContext contextFor(const CheckOptions &options)
    {
        HVContext context;
        const QString extra = extraPath(options.extraPath);
        if (!extra.isEmpty())
            context.set(Hovlets::HVKeyExtraComponentPath, extra);
        return context;
    }

    /// Keeps only one file in memory at a time; of the others, only the keys of their entries.
    void checkFile(const QString &path, const QString &package)
    {
        const qint64 most = Hovlets::HVLimits::current().controlFileSize;
        auto source = Hovlets::HVFileBytes::all(path, most);
        if (source.result != Hovlets::HVFileBytes::Result::Read)
            return addUnreadable(path, source, m_findings);
        const ControlFile file(path, package, std::move(source.bytes));
        const QSet<QString> &packages = m_known.beside(QFileInfo(package));
        checkControlFile(file, packages, m_findings);
        m_progress.begin(QStringLiteral("checking %1").arg(QFileInfo(path).fileName()),
                         static_cast<int>(file.entries().entries.size()));
        m_media.check(file, packages, m_progress);
        m_entries.push_back(file.entries());
    }

    [[nodiscard]] QSet<QString> keys() const
    {
        QSet<QString> keys;
        for (const EntryList &file : m_entries) {
            for (const EntryList::Entry &entry : file.entries)
                keys.insert(entry.key);
        }
        return keys;
    }

    const CheckOptions &m_options;
    QString m_keyData;
    ContentIndex m_content;
    KnownPackages m_known;
    GivenPackages m_given;
    FindingList m_findings;
    MediaCheck m_media;
    Progress m_progress;
    std::vector<EntryList> m_entries;
};

} // namespace

FindingList checkContent(const CheckOptions &options)
{
    return Check(options).run();
}

} // namespace HovletsTool
