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

struct Options
{
    std::vector<std::string> forms;
    std::vector<std::string> translations;
    std::string package;
    std::string locale = "en_US";
};

struct Entry
{
    QString key;
    QStringList paragraphs; // the first is the title, as it is of tooltips that have more than one
};

/// Without those that have nothing to read, as after a translation to blanks.
std::vector<Entry> entriesOf(const std::vector<UiEntry> &all, const UiTranslation *translation)
{
    std::vector<Entry> entries;
    for (const UiEntry &each : all) {
        if (translation && !translation->hasAny(each))
            continue;
        Entry entry { each.name, {} };
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

void writeEntry(QXmlStreamWriter &writer, const Entry &entry)
{
    writer.writeStartElement(QStringLiteral("hovlet"));
    writer.writeAttribute(QStringLiteral("key"), entry.key);
    writer.writeAttribute(QStringLiteral("title"), entry.paragraphs.first());
    for (const QString &paragraph : entry.paragraphs.mid(1))
        writer.writeTextElement(QStringLiteral("p"), paragraph);
    writer.writeEndElement();
}

void writeControlFile(const QString &path, const std::vector<Entry> &entries, const QString &locale)
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
    for (const Entry &entry : entries)
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
        throw ToolError(QStringLiteral("No named widget or action in these forms has a toolTip, "
                                       "statusTip or whatsThis; there is nothing to import"));
    return entries;
}

/// One for each locale; where two files translate a text, the first does.
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

/// Makes the folder, and returns where its control files are to be, without ".xml".
QString makePackage(const QDir &package)
{
    const QFileInfo info(package.path());
    const QString name = info.completeBaseName();
    if (info.suffix() != QLatin1String("hovlets"))
        throw ToolError(
                QStringLiteral("%1: the name of a package ends in .hovlets").arg(package.path()));
    if (name.isEmpty() || name.startsWith(QLatin1Char('.')))
        throw ToolError(QStringLiteral("%1 would be hidden; write a name before .hovlets")
                                .arg(package.path()));
    if (package.exists())
        throw ToolError(QStringLiteral("%1 is there already; import into a new package and move "
                                       "over what you want")
                                .arg(package.path()));
    if (!package.mkpath(QStringLiteral("Control")))
        throw ToolError(
                QStringLiteral("%1 cannot be made; is its folder writable?").arg(package.path()));
    return package.filePath(QStringLiteral("Control/") + name);
}

ExitStatus run(const Options &options)
{
    const std::vector<UiEntry> texts = readForms(options.forms);
    const std::vector<UiTranslation> translations = readTranslations(options.translations);
    const std::vector<Entry> entries = entriesOf(texts, nullptr);
    const QDir package(QString::fromLocal8Bit(options.package.c_str()));
    const QString base = makePackage(package);
    writeControlFile(base + QStringLiteral(".xml"), entries,
                     QString::fromStdString(options.locale));
    for (const UiTranslation &translation : translations) {
        const QString locale = translation.locale();
        const std::vector<Entry> translated = entriesOf(texts, &translation);
        if (translated.empty()) {
            printError(
                    QStringLiteral("none of the forms' texts is translated for %1; no control file "
                                   "is made for it")
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
    const auto options = std::make_shared<Options>();
    CLI::App &command = program.add(
            "import",
            "Makes a package from the tool tips, status tips and What's This texts of Qt Designer "
            "files; keys are object names.",
            "mainwindow.ui --ts app_de.ts -o MyApp.hovlets", [options] { return run(*options); });
    command.add_option("FILE.ui", options->forms, "Files of Qt Designer")->required();
    addRepeatable(command, "--ts", options->translations,
                  "A translation file (.ts); once for each, those of a locale become one control "
                  "file");
    command.add_option("-o,--output", options->package, "The package folder to make")->required();
    command.add_option("--locale", options->locale, "The locale of the texts in the forms")
            ->check(knownLocale())
            ->capture_default_str();
}

} // namespace HovletsTool
