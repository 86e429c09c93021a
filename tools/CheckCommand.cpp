// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "ContentIndex.h"
#include "ControlFile.h"
#include "EntryCheck.h"
#include "FindingFormats.h"
#include "Findings.h"
#include "MediaCheck.h"
#include "PackageCheck.h"
#include "Program.h"

#include <QtCore/QDir>

#include <memory>

namespace {

struct Options
{
    std::vector<std::string> paths, locales;
    std::string format, keyData, fallbackLocale = "en_US", extraPath;
    MediaLimits limits;
    bool listCodes = false;
};

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

HVContext contextOf(const Options &options)
{
    HVContext context;
    if (!options.extraPath.empty())
        context.set(Hovlets::HVKeyExtraComponentPath, QString::fromStdString(options.extraPath));
    return context;
}

int run(const Options &options)
{
    if (options.listCodes) {
        printRules(options.format);
        return Clean;
    }
    if (options.paths.empty())
        throw ToolError(QStringLiteral("PATH is required; give a folder of packages or a package"));
    ContentIndex content(options.paths, contextOf(options));
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
    printFindings(findings, options.format);
    return findings.isEmpty() ? Clean : Findings;
}

} // namespace

void addCheckCommand(Program &program)
{
    const auto options = std::make_shared<Options>();
    CLI::App &command = program.add(
            "check", "Checks content: what is not shown, or not as written, and what to do.",
            "--key-data examples/drawing/packages/keys.xml examples/drawing/packages",
            [options] { return run(*options); });
    addPaths(command, options->paths);
    command.get_option("PATH")->required(false);
    command.add_flag("--list-codes", options->listCodes, "List what can be found, and end");
    command.add_option("--key-data", options->keyData, "The host's file of attributes by key");
    command.add_option("--extra-path", options->extraPath, "The host's folder of components");
    command.add_option("--fallback-locale", options->fallbackLocale,
                       "The locale that answers where another has no entry")
            ->capture_default_str();
    command.add_option("--locale", options->locales, "Every key is to have an entry for it")
            ->take_all()
            ->expected(1);
    command.add_option("--max-seconds", options->limits.seconds, "How long a clip may be")
            ->capture_default_str();
    command.add_option("--max-megabytes", options->limits.megabytes,
                       "How large a clip or picture may be")
            ->capture_default_str();
    addFormat(command, options->format, findingFormats());
}
