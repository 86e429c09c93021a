// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContentTexts.h"
#include "GivenPaths.h"
#include "HostPaths.h"
#include "Output.h"
#include "Program.h"
#include "ToolError.h"
#include "TranslationFile.h"
#include "Validators.h"

#include <QtCore/QJsonArray>

#include <functional>
#include <memory>

namespace HovletsTool {

namespace {

using Texts = std::vector<TranslatableText>;

struct TranslateCommandOptions
{
    std::vector<std::string> paths, locales;
    std::string fallbackLocale = "en_US", keyData, name = "Hovlets", format;
    std::string pseudoLocale = "en_ZW";
    int expansion = 40; // per cent
    bool noObsolete = false;
    bool unfinished = false;
};

QString nameOf(const TranslateCommandOptions &options)
{
    return QString::fromLocal8Bit(options.name.c_str());
}

void printPath(const QString &path, const TranslateCommandOptions &options)
{
    printText(GivenPaths(options.paths).shown(path) + QLatin1Char('\n'));
}

void printCount(const QString &path, const Texts &texts, const TranslateCommandOptions &options)
{
    printText(QStringLiteral("%1: %2 texts\n")
                      .arg(GivenPaths(options.paths).shown(path))
                      .arg(texts.size()));
}

/// The texts by folder. Throws a ToolError if there are none.
QMap<QString, Texts> textsFor(ContentTexts &content, const QLocale &locale)
{
    QMap<QString, Texts> texts = content.textsFor(locale);
    if (texts.isEmpty())
        throw ToolError(QStringLiteral("no entry in these folders needs a translation for %1; does "
                                       "--fallback-locale name the locale of the texts?")
                                .arg(locale.name()));
    return texts;
}

ExitStatus extract(const TranslateCommandOptions &options, ContentTexts &content)
{
    for (const std::string &name : options.locales) {
        const QLocale locale(QString::fromStdString(name));
        const QMap<QString, Texts> texts = textsFor(content, locale);
        for (auto each = texts.begin(); each != texts.end(); ++each) {
            const TranslationFile file(each.key(), nameOf(options), locale.name());
            file.update(*each, content.source(), true);
            printCount(file.path(), *each, options);
        }
    }
    return ExitStatus::Clean;
}

using Visit = std::function<void(const TranslationFile &, const QString &locale, const Texts &)>;

/// Looks up the texts for a locale: textsFor(), or ContentTexts::textsFor() where no text is
/// needed.
using LookUp = std::function<QMap<QString, Texts>(ContentTexts &, const QLocale &)>;

/// Calls \a visit with each existing file for translators, and with the texts that it should have.
/// Returns whether there is one.
bool forEachFile(const TranslateCommandOptions &options, ContentTexts &content,
                 const LookUp &lookUp, const Visit &visit)
{
    bool isAny = false;
    QMap<QString, QMap<QString, Texts>> byLocale;
    const QStringList folders = content.folders();
    for (const QString &folder : folders) {
        const QStringList locales = TranslationFile::localesIn(folder, nameOf(options));
        for (const QString &locale : locales) {
            if (!byLocale.contains(locale))
                byLocale.insert(locale, lookUp(content, QLocale(locale)));
            visit({ folder, nameOf(options), locale }, locale,
                  byLocale.value(locale).value(folder));
            isAny = true;
        }
    }
    return isAny;
}

ToolError noFiles(const TranslateCommandOptions &options)
{
    return ToolError(QStringLiteral("no %1_LOCALE.ts in these packages; `hovlets translate "
                                    "extract` creates one")
                             .arg(nameOf(options)));
}

ExitStatus update(const TranslateCommandOptions &options, ContentTexts &content)
{
    const bool isAny =
            forEachFile(options, content, textsFor,
                        [&](const TranslationFile &file, const QString &, const Texts &texts) {
                            file.update(texts, content.source(), !options.noObsolete);
                            printCount(file.path(), texts, options);
                        });
    if (!isAny)
        throw noFiles(options);
    return ExitStatus::Clean;
}

ExitStatus release(const TranslateCommandOptions &options, ContentTexts &content)
{
    const bool isAny =
            forEachFile(options, content, &ContentTexts::textsFor,
                        [&](const TranslationFile &file, const QString &, const Texts &) {
                            file.release(options.unfinished);
                            printPath(file.releasedPath(), options);
                        });
    if (!isAny)
        throw noFiles(options);
    return ExitStatus::Clean;
}

struct FileStatus
{
    QString path, locale;
    TranslationStatus status;
};

/// Adds the folders that lack a file for one of the locales that the caller wants.
void addMissing(const TranslateCommandOptions &options, ContentTexts &content,
                std::vector<FileStatus> &all)
{
    for (const std::string &name : options.locales) {
        const QLocale locale(QString::fromStdString(name));
        const QMap<QString, Texts> texts = content.textsFor(locale);
        for (auto each = texts.begin(); each != texts.end(); ++each) {
            const TranslationFile file(each.key(), nameOf(options), locale.name());
            if (!file.exists())
                all.push_back({ file.path(),
                                locale.name(),
                                { 0, static_cast<int>(each->size()), 0, true } });
        }
    }
}

void printStatus(const FileStatus &file, const TranslateCommandOptions &options)
{
    const auto &[done, unfinished, stale, isReleased] = file.status;
    printText(QStringLiteral("%1\t%2 done\t%3 unfinished\t%4 stale\t%5\t%6\n")
                      .arg(file.locale)
                      .arg(done)
                      .arg(unfinished)
                      .arg(stale)
                      .arg(isReleased ? QStringLiteral("released") : QStringLiteral("not released"),
                           GivenPaths(options.paths).shown(file.path)));
}

QJsonObject jsonOf(const FileStatus &file)
{
    return { { QStringLiteral("file"), file.path },
             { QStringLiteral("locale"), file.locale },
             { QStringLiteral("done"), file.status.done },
             { QStringLiteral("unfinished"), file.status.unfinished },
             { QStringLiteral("stale"), file.status.stale },
             { QStringLiteral("released"), file.status.isReleased } };
}

ExitStatus status(const TranslateCommandOptions &options, ContentTexts &content)
{
    std::vector<FileStatus> all;
    addMissing(options, content, all);
    const bool isAny = forEachFile(
            options, content, textsFor,
            [&](const TranslationFile &file, const QString &locale, const Texts &texts) {
                all.push_back({ file.path(), locale, file.status(texts) });
            });
    if (!isAny && all.empty())
        throw noFiles(options);
    bool isComplete = true;
    QJsonArray files;
    for (const FileStatus &file : all) {
        isComplete = isComplete && file.status.isComplete();
        files += jsonOf(file);
        if (options.format == "text")
            printStatus(file, options);
    }
    if (options.format == "json")
        printJson({ { QStringLiteral("files"), files } });
    return isComplete ? ExitStatus::Clean : ExitStatus::Findings;
}

ExitStatus pseudo(const TranslateCommandOptions &options, ContentTexts &content)
{
    const QLocale locale(QString::fromStdString(options.pseudoLocale));
    const QMap<QString, Texts> texts = textsFor(content, locale);
    const auto fileIn = [&](const QString &folder) {
        return TranslationFile(folder, nameOf(options), locale.name());
    };
    for (auto each = texts.begin(); each != texts.end(); ++each)
        fileIn(each.key()).refuseRealTranslation();
    for (auto each = texts.begin(); each != texts.end(); ++each) {
        const TranslationFile file = fileIn(each.key());
        file.releasePseudo(*each, options.expansion);
        printPath(file.releasedPath(), options);
    }
    return ExitStatus::Clean;
}

using Action = ExitStatus (*)(const TranslateCommandOptions &, ContentTexts &);

/// Entries that have to be left out are findings.
ExitStatus run(const TranslateCommandOptions &options, Action action)
{
    ContentTexts content(options.paths, QString::fromStdString(options.fallbackLocale),
                         keyDataFile(options.keyData),
                         [&](const QString &controlFile, const QString &problem) {
                             printError(GivenPaths(options.paths).shown(controlFile)
                                        + QStringLiteral(": ") + problem);
                         });
    const ExitStatus status = action(options, content);
    return content.hasProblems() && status == ExitStatus::Clean ? ExitStatus::Findings : status;
}

/// Adds a command with the options that all of them have.
CLI::App &add(Program &program, const std::shared_ptr<TranslateCommandOptions> &options,
              const std::string &name, const std::string &description, const std::string &example,
              Action action)
{
    CLI::App &command = program.add("translate " + name, description, example,
                                    [options, action] { return run(*options, action); });
    addPaths(command, options->paths);
    command.add_option("--fallback-locale", options->fallbackLocale,
                       "Locale of the texts to translate")
            ->check(knownLocale())
            ->capture_default_str();
    command.add_option("--name", options->name, "First part of the names of translation files")
            ->capture_default_str();
    command.add_option("--key-data", options->keyData, "Key-data file of the host");
    return command;
}

} // namespace

void addTranslateCommand(Program &program)
{
    const auto options = std::make_shared<TranslateCommandOptions>();
    program.addGroup("translate", "Translate content with files of Qt Linguist.");
    CLI::App &extracting =
            add(program, options, "extract",
                "Write all texts that popups show to a file for translators, "
                "l10n/Hovlets_LOCALE.ts in each package. Existing translations stay.",
                "--locale de_DE examples/drawing/packages", &extract);
    addRepeatable(extracting, "--locale", options->locales,
                  "Locale to translate into, such as de_DE; may be repeated")
            ->required()
            ->check(knownLocale());
    CLI::App &updating =
            add(program, options, "update",
                "Bring all files for translators up to date with the content. Existing "
                "translations stay; those of texts that are gone are marked as obsolete.",
                "examples/drawing/packages", &update);
    updating.add_flag("--no-obsolete", options->noObsolete, "Remove obsolete translations");
    CLI::App &releasing =
            add(program, options, "release",
                "Convert the files of translators to those that the library reads (.qm).",
                "examples/drawing/packages", &release);
    releasing.add_flag("--unfinished", options->unfinished,
                       "Also release translations that are marked as unfinished");
    CLI::App &counting = add(program, options, "status",
                             "Count for each locale the texts that are translated, those that are "
                             "not, and translations of texts that are gone. The exit status is 1 "
                             "unless everything is translated and released.",
                             "--locale de_DE examples/drawing/packages", &status);
    addRepeatable(counting, "--locale", options->locales,
                  "Locale that needs a translation; may be repeated")
            ->check(knownLocale());
    addFormat(counting, options->format, { "text", "json" });
    CLI::App &imitating =
            add(program, options, "pseudo",
                "Make a translation with accents, brackets and longer texts, which shows texts "
                "that cannot be translated and popups without room for translations.",
                "examples/drawing/packages", &pseudo);
    imitating.add_option("--locale", options->pseudoLocale, "Locale to use for it")
            ->check(knownLocale())
            ->capture_default_str();
    imitating
            .add_option("--expansion", options->expansion,
                        "Additional length of the texts in per cent, from 0 to 300")
            ->check(between(0, 300))
            ->capture_default_str();
}

} // namespace HovletsTool
