// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Program.h"
#include "UiTexts.h"
#include "Validators.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QXmlStreamWriter>

#include <memory>

namespace {

struct Options
{
    std::vector<std::string> forms;
    std::vector<std::string> translations;
    std::string package;
    std::string locale = "en_US";
};

QStringList toList(const std::vector<std::string> &paths)
{
    QStringList list;
    for (const std::string &path : paths)
        list += QString::fromLocal8Bit(path.c_str());
    return list;
}

/// The first line is the title, as it is of tooltips that have more than one.
void writeEntry(QXmlStreamWriter &writer, const UiEntry &entry, const UiTranslation *translation)
{
    const auto translated = [&](const QString &text) {
        return translation ? translation->translate(entry.context, text) : text;
    };
    QStringList paragraphs;
    for (const QString &source : { entry.toolTip, entry.statusTip, entry.whatsThis }) {
        const QString text = plainText(translated(source));
        if (!text.isEmpty() && !paragraphs.contains(text))
            paragraphs += text;
    }
    writer.writeStartElement(QStringLiteral("hovlet"));
    writer.writeAttribute(QStringLiteral("key"), entry.name);
    writer.writeAttribute(QStringLiteral("title"), paragraphs.takeFirst());
    for (const QString &paragraph : std::as_const(paragraphs))
        writer.writeTextElement(QStringLiteral("p"), paragraph);
    writer.writeEndElement();
}

void writeControlFile(const QString &path, const std::vector<UiEntry> &entries,
                      const QString &locale, const UiTranslation *translation)
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
    for (const UiEntry &entry : entries) {
        if (!translation || translation->hasAny(entry))
            writeEntry(writer, entry, translation);
    }
    writer.writeEndElement();
    writer.writeEndDocument();
    if (!file.commit())
        throw ToolError(QStringLiteral("%1 cannot be written: %2").arg(path, file.errorString()));
}

int run(const Options &options)
{
    std::vector<UiEntry> entries;
    const QStringList forms = toList(options.forms);
    for (const QString &form : forms) {
        for (const UiEntry &entry : readForm(form))
            addEntry(entries, entry);
    }
    if (entries.empty())
        throw ToolError(QStringLiteral("No named widget or action in these forms has a toolTip, "
                                       "statusTip or whatsThis; there is nothing to import"));

    std::vector<UiTranslation> translations;
    const QStringList files = toList(options.translations);
    for (const QString &file : files)
        translations.emplace_back(file);

    const QDir package(QString::fromLocal8Bit(options.package.c_str()));
    if (QFileInfo(package.path()).suffix() != QLatin1String("hovlets"))
        throw ToolError(
                QStringLiteral("%1: the name of a package ends in .hovlets").arg(package.path()));
    if (package.exists())
        throw ToolError(QStringLiteral("%1 is there already; import into a new package and move "
                                       "over what you want")
                                .arg(package.path()));
    if (!package.mkpath(QStringLiteral("Control")))
        throw ToolError(
                QStringLiteral("%1 cannot be made; is its folder writable?").arg(package.path()));
    const QString base = package.filePath(QStringLiteral("Control/")
                                          + QFileInfo(package.path()).completeBaseName());
    writeControlFile(base + QStringLiteral(".xml"), entries, QString::fromStdString(options.locale),
                     nullptr);
    for (const UiTranslation &translation : translations)
        writeControlFile(base + QLatin1Char('.') + translation.locale() + QStringLiteral(".xml"),
                         entries, translation.locale(), &translation);
    printText(QStringLiteral("%1: %2 entries\n").arg(package.path()).arg(entries.size()));
    return Clean;
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
