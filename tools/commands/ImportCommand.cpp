// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "Output.h"
#include "Program.h"
#include "ToolError.h"
#include "UiTexts.h"
#include "Validators.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamWriter>

#include <algorithm>
#include <memory>

namespace HovletsTool {

namespace {

struct ImportCommandOptions
{
    std::vector<std::string> forms;
    std::vector<std::string> translations;
    std::string package;
    std::string locale = "en_US";
};

struct ImportedEntry
{
    QString key;
    QStringList paragraphs; // the first becomes the title
};

/// Omits entries without visible text, such as those translated to spaces.
std::vector<ImportedEntry> importedEntries(const std::vector<UiEntry> &all,
                                           const UiTranslation *translation)
{
    std::vector<ImportedEntry> entries;
    for (const UiEntry &each : all) {
        if (translation && !translation->hasAny(each))
            continue;
        ImportedEntry entry { each.name, {} };
        for (const QString &source : { each.toolTip, each.statusTip, each.whatsThis }) {
            const QString text =
                    plainText(translation ? translation->translate(each.context, source) : source);
            if (!text.isEmpty() && !entry.paragraphs.contains(text))
                entry.paragraphs += text;
        }
        if (!entry.paragraphs.isEmpty())
            entries.push_back(entry);
    }
    return entries;
}

void writeEntry(QXmlStreamWriter &writer, const ImportedEntry &entry)
{
    writer.writeStartElement(QStringLiteral("hovlet"));
    writer.writeAttribute(QStringLiteral("key"), entry.key);
    writer.writeAttribute(QStringLiteral("title"), entry.paragraphs.first());
    for (const QString &paragraph : entry.paragraphs.mid(1))
        writer.writeTextElement(QStringLiteral("p"), paragraph);
    writer.writeEndElement();
}

void writeControlFile(const QString &path, const std::vector<ImportedEntry> &entries,
                      const QString &locale)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw ToolError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
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
        throw ToolError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

std::vector<UiEntry> readForms(const std::vector<std::string> &paths)
{
    std::vector<UiEntry> entries;
    for (const std::string &path : paths) {
        for (const UiEntry &entry : readForm(QString::fromLocal8Bit(path.c_str())))
            addEntry(entries, entry);
    }
    if (entries.empty())
        throw ToolError(QStringLiteral("no named widget or action in these forms has a toolTip, "
                                       "statusTip or whatsThis; there is nothing to import"));
    return entries;
}

/// One translation per locale. When two files translate the same text, the first one counts.
std::vector<UiTranslation> readTranslations(const std::vector<std::string> &paths)
{
    std::vector<UiTranslation> all;
    for (const std::string &path : paths) {
        const UiTranslation translation(QString::fromLocal8Bit(path.c_str()));
        const auto same = std::find_if(all.begin(), all.end(), [&](const UiTranslation &other) {
            return other.locale() == translation.locale();
        });
        if (same == all.end())
            all.push_back(translation);
        else
            same->add(translation);
    }
    return all;
}

/// Creates the folder. Returns the path for its control file, without ".xml".
QString makePackage(const QDir &package)
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
    if (!package.mkpath(QStringLiteral("Control")))
        throw ToolError(QStringLiteral("%1 cannot be created; is its parent folder writable?")
                                .arg(package.path()));
    return package.filePath(QStringLiteral("Control/") + name);
}

ExitStatus run(const ImportCommandOptions &options)
{
    const std::vector<UiEntry> texts = readForms(options.forms);
    const std::vector<UiTranslation> translations = readTranslations(options.translations);
    const std::vector<ImportedEntry> entries = importedEntries(texts, nullptr);
    const QDir package(QString::fromLocal8Bit(options.package.c_str()));
    const QString base = makePackage(package);
    writeControlFile(base + QStringLiteral(".xml"), entries,
                     QString::fromStdString(options.locale));
    for (const UiTranslation &translation : translations) {
        const QString locale = translation.locale();
        const std::vector<ImportedEntry> translated = importedEntries(texts, &translation);
        if (translated.empty()) {
            printError(
                    QStringLiteral("no text in the forms has a translation for %1; no control file "
                                   "is created for it")
                            .arg(locale));
            continue;
        }
        writeControlFile(base + QLatin1Char('.') + locale + QStringLiteral(".xml"), translated,
                         locale);
    }
    printText(QStringLiteral("%1: %2 entries\n").arg(package.path()).arg(entries.size()));
    return ExitStatus::Clean;
}

} // namespace

void addImportCommand(Program &program)
{
    const auto options = std::make_shared<ImportCommandOptions>();
    CLI::App &command = program.add(
            "import",
            "Create a package from the tooltips, status tips and What's This texts of Qt Designer "
            "forms; the keys are the object names.",
            "mainwindow.ui --ts app_de.ts -o MyApp.hovlets", [options] { return run(*options); });
    command.add_option("FILE.ui", options->forms, "Qt Designer forms")->required();
    addRepeatable(command, "--ts", options->translations,
                  "Translation file (.ts); may be repeated, files for the same locale are merged");
    command.add_option("-o,--output", options->package, "Package folder to create")->required();
    command.add_option("--locale", options->locale, "Locale of the texts in the forms")
            ->check(knownLocale())
            ->capture_default_str();
}

} // namespace HovletsTool
