// SPDX-License-Identifier: Apache-2.0
#include "AttachedProgram.h"
#include "CommandOptions.h"
#include "Commands.h"
#include "FormReader.h"
#include "HostPaths.h"
#include "ImportedEntries.h"
#include "LinguistFile.h"
#include "Output.h"
#include "PackageWriting.h"
#include "Program.h"
#include "RunningControls.h"
#include "ToolError.h"
#include "Validators.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QSaveFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <functional>
#include <memory>

namespace HovletsTool {

namespace {

struct ImportCommandOptions
{
    std::vector<std::string> forms;
    std::vector<std::string> translations;
    std::string package;
    std::string locale = "en_US";
    std::string report, rules;
    int qtMajor = 0;
    bool fromRunning = false;
    bool unfinished = false;
    bool qualified = false;
};

/// The content of several files, and whether all could be read.
template <typename Content> struct FilesRead
{
    Content content = {};
    bool isWhole = true;
};

/// Calls \a read with each path. A file that cannot be read is reported and skipped.
template <typename Content, typename Read>
FilesRead<Content> readFiles(const std::vector<std::string> &paths, Read read)
{
    FilesRead<Content> files;
    for (const std::string &path : paths) {
        try {
            read(files.content, QString::fromLocal8Bit(path.c_str()));
        } catch (const ToolError &error) {
            printError(error.message());
            files.isWhole = false;
        }
    }
    return files;
}

FilesRead<std::vector<FormObject>> readForms(const std::vector<std::string> &paths)
{
    const auto files = readFiles<std::vector<FormObject>>(
            paths, [](std::vector<FormObject> &objects, const QString &path) {
                const std::vector<FormObject> form = readForm(path);
                objects.insert(objects.end(), form.begin(), form.end());
            });
    if (files.content.empty())
        throw ToolError(QStringLiteral("no named widget or action in these forms has a toolTip, "
                                       "statusTip or whatsThis; there is nothing to import"));
    return files;
}

/// One for each locale. When two files translate the same text, the first one counts.
FilesRead<std::vector<LinguistFile>> readTranslations(const std::vector<std::string> &paths)
{
    return readFiles<std::vector<LinguistFile>>(
            paths, [](std::vector<LinguistFile> &all, const QString &path) {
                const LinguistFile file(path);
                const auto same =
                        std::find_if(all.begin(), all.end(), [&](const LinguistFile &other) {
                            return other.locale() == file.locale();
                        });
                if (same == all.end())
                    all.push_back(file);
                else
                    same->add(file);
            });
}

void printConflicts(const ImportedControls &controls)
{
    const QStringList conflicts = controls.conflicts();
    if (conflicts.isEmpty())
        return;
    printError(QStringLiteral("%1 names have different texts or translations in several forms; the "
                              "keys of their "
                              "entries begin with the form, as HVStandardKeys asks for them: %2")
                       .arg(conflicts.size())
                       .arg(conflicts.join(QStringLiteral(", "))));
}

/// Lists the texts without a translation, one in a line: locale, key, state and text, separated by
/// tabs.
class Report
{
public:
    /// Writes nothing if \a path is empty.
    explicit Report(const QString &path)
        : m_file(path)
    {
        if (!path.isEmpty() && !m_file.open(QIODevice::WriteOnly))
            throw ToolError(cannotBeWritten(m_file));
    }

    void add(const QString &locale, const std::vector<UntranslatedText> &texts)
    {
        for (const UntranslatedText &each : texts) {
            const bool isMissing = each.state == LinguistFile::State::Missing;
            const QStringList columns {
                locale, each.key,
                isMissing ? QStringLiteral("missing") : QStringLiteral("unfinished"),
                QString(each.text).replace(QLatin1Char('\t'), QLatin1Char(' ')).simplified()
            };
            if (m_file.isOpen())
                m_file.write(columns.join(QLatin1Char('\t')).toUtf8() + '\n');
        }
    }

    void finish()
    {
        if (m_file.isOpen() && !m_file.commit())
            throw ToolError(cannotBeWritten(m_file));
    }

private:
    QSaveFile m_file;
};

void importTranslation(const ImportedControls &controls, const LinguistFile &translation,
                       const QString &base, bool unfinished, Report &report)
{
    const QString locale = translation.locale();
    const TranslatedEntries all = controls.translated(translation, unfinished);
    report.add(locale, all.untranslated);
    if (all.entries.empty()) {
        printError(QStringLiteral("no text in the forms has a translation for %1; no control file "
                                  "is created for it")
                           .arg(locale));
        return;
    }
    writeControlFile(base + QLatin1Char('.') + locale + QStringLiteral(".xml"), all.entries,
                     locale);
    const auto isUnfinished = [](const UntranslatedText &text) {
        return text.state == LinguistFile::State::Unfinished;
    };
    printText(QStringLiteral("%1: %2 entries; %3 texts translated, %4 unfinished, %5 missing\n")
                      .arg(locale)
                      .arg(all.entries.size())
                      .arg(all.translated)
                      .arg(std::count_if(all.untranslated.begin(), all.untranslated.end(),
                                         isUnfinished))
                      .arg(std::count_if(all.untranslated.begin(), all.untranslated.end(),
                                         std::not_fn(isUnfinished))));
}

/// Runs the program until it ends, and imports what it says about its controls.
ExitStatus importFromRunning(const ImportCommandOptions &options)
{
    if (!options.translations.empty() || !options.report.empty())
        throw ToolError(QStringLiteral("--ts and --report are for forms; `hovlets translate` "
                                       "translates what --from-running has made"));
    if (options.unfinished || options.qualified)
        throw ToolError(QStringLiteral("--unfinished and --qualified are for forms; remove them, "
                                       "or import without --from-running"));
    const QDir package(QString::fromLocal8Bit(options.package.c_str()));
    refuseBadName(package);
    const AttachedProgram program(QString::fromLocal8Bit(options.forms.front().c_str()),
                                  options.qtMajor);
    QStringList arguments;
    for (std::size_t i = 1; i < options.forms.size(); ++i)
        arguments += QString::fromLocal8Bit(options.forms.at(i).c_str());
    const RunningControls controls = [&] {
        const QTemporaryDir folder;
        const QString inventory = folder.filePath(QStringLiteral("controls.json"));
        QJsonObject plan { { QStringLiteral("dataPaths"), QJsonArray { defaultPackages() } },
                           { QStringLiteral("inventory"), inventory } };
        if (!options.rules.empty())
            plan.insert(QStringLiteral("rules"), existingFile(options.rules, "--rules"));
        (void)program.run(arguments, plan); // how it ends does not matter
        return readRunningControls(inventory);
    }();
    const ImportedControls imported(controls.objects, {}, false);
    const QString base = makePackage(package);
    // The control file first: without icons, it still has the texts.
    writeControlFile(base + QStringLiteral(".xml"), imported.entries(),
                     QString::fromStdString(options.locale));
    writeResources(package, controls.icons);
    printText(QStringLiteral("%1: %2 entries\n").arg(package.path()).arg(imported.all().size()));
    return ExitStatus::Clean;
}

ExitStatus run(const ImportCommandOptions &options)
{
    if (options.fromRunning)
        return importFromRunning(options);
    if (!options.rules.empty() || options.qtMajor != 0)
        throw ToolError(QStringLiteral("--rules and --qt are for running programs; remove them, or "
                                       "add --from-running"));
    const auto forms = readForms(options.forms);
    const auto translations = readTranslations(options.translations);
    const ImportedControls controls(forms.content, translations.content, options.qualified);
    const QDir package(QString::fromLocal8Bit(options.package.c_str()));
    Report report(QString::fromLocal8Bit(options.report.c_str()));
    const QString base = makePackage(package);
    printConflicts(controls);
    writeControlFile(base + QStringLiteral(".xml"), controls.entries(),
                     QString::fromStdString(options.locale));
    printText(QStringLiteral("%1: %2 entries\n").arg(package.path()).arg(controls.all().size()));
    for (const LinguistFile &translation : translations.content)
        importTranslation(controls, translation, base, options.unfinished, report);
    report.finish();
    return forms.isWhole && translations.isWhole ? ExitStatus::Clean : ExitStatus::Findings;
}

} // namespace

void addImportCommand(Program &program)
{
    const auto options = std::make_shared<ImportCommandOptions>();
    CLI::App &command = program.add(
            "import",
            "Create a package from the tooltips, status tips and What's This texts of Qt Designer "
            "forms; the keys are the object names. Files that cannot be read are reported and "
            "skipped; the exit status is then 1. With --from-running, create it from the controls "
            "of a program.",
            "mainwindow.ui --ts app_de.ts -o MyApp.hovlets\n"
            "  hovlets import --from-running -o MyApp.hovlets -- myapp",
            [options] { return run(*options); }, [options] { return options->fromRunning; });
    command.add_option("FILE.ui", options->forms,
                       "Qt Designer forms; with --from-running, a program and its arguments, after "
                       "\"--\"")
            ->required();
    command.add_flag("--from-running", options->fromRunning,
                     "Start a program, and import the controls of its windows and menus when it "
                     "ends");
    addRepeatable(command, "--ts", options->translations,
                  "Translation file (.ts); may be repeated, files for the same locale are merged");
    command.add_option("-o,--output", options->package, "Package folder to create")->required();
    command.add_option("--locale", options->locale, "Locale of the texts in the forms")
            ->check(knownLocale())
            ->capture_default_str();
    command.add_flag("--unfinished", options->unfinished,
                     "Also use translations that are marked as unfinished");
    command.add_flag(
            "--qualified", options->qualified,
            "Begin every key with the form, as in Preferences/width; otherwise, only those "
            "of names with different texts in several forms");
    command.add_option("--report", options->report,
                       "File to list the texts without a translation in: locale, key, state and "
                       "text, separated by tabs");
    command.add_option("--rules", options->rules, "With --from-running: file with rules for keys");
    command.add_option("--qt", options->qtMajor,
                       "With --from-running: Qt of the program, 5 or 6, where it cannot be seen in "
                       "its file")
            ->check(CLI::IsMember({ 5, 6 }));
}

} // namespace HovletsTool
