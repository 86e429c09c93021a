// SPDX-License-Identifier: Apache-2.0
#include "AttachedProgram.h"
#include "CommandOptions.h"
#include "Commands.h"
#include "HostPaths.h"
#include "Program.h"
#include "ToolError.h"
#include "Validators.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <memory>

namespace HovletsTool {

namespace {

struct AttachCommandOptions
{
    std::vector<std::string> paths, settings, program;
    std::string rules, locale, record, report;
    int qtMajor = 0;
};

QString fromLocal(const std::string &text)
{
    return QString::fromLocal8Bit(text.c_str());
}

/// Folders of packages; a package stands for the folder that it is in.
QStringList dataPathsOf(const AttachCommandOptions &options)
{
    QStringList paths { defaultPackages() };
    for (const std::string &name : options.paths) {
        QString path = QDir::cleanPath(existingFolder(name, "--path"));
        if (path.endsWith(QLatin1String(".hovlets")))
            path = QFileInfo(path).absolutePath();
        paths += path;
    }
    paths.removeDuplicates();
    return paths;
}

/// The value as JSON, if it is JSON, and as a string otherwise.
QJsonValue jsonOf(const QString &text)
{
    const QJsonDocument document =
            QJsonDocument::fromJson(QStringLiteral("[%1]").arg(text).toUtf8());
    return document.array().size() == 1 ? document.array().at(0) : QJsonValue(text);
}

QJsonObject settingsOf(const AttachCommandOptions &options)
{
    QJsonObject settings;
    if (!options.locale.empty())
        settings.insert(QStringLiteral("HVKeyLocale"), fromLocal(options.locale));
    for (const std::string &setting : options.settings) {
        const QString text = fromLocal(setting);
        const auto equals = text.indexOf(QLatin1Char('='));
        if (equals <= 0)
            throw ToolError(QStringLiteral("--setting %1: use NAME=VALUE").arg(text));
        settings.insert(text.left(equals), jsonOf(text.mid(equals + 1)));
    }
    return settings;
}

/// What the plug-in reads.
QJsonObject plan(const AttachCommandOptions &options)
{
    QJsonObject object;
    object.insert(QStringLiteral("dataPaths"), QJsonArray::fromStringList(dataPathsOf(options)));
    object.insert(QStringLiteral("settings"), settingsOf(options));
    if (!options.rules.empty())
        object.insert(QStringLiteral("rules"), existingFile(options.rules, "--rules"));
    if (!options.record.empty()) {
        const QFileInfo package(QDir::cleanPath(fromLocal(options.record)));
        if (package.suffix() != QLatin1String("hovlets"))
            throw ToolError(
                    QStringLiteral("--record %1: the name of a package ends in \".hovlets\"")
                            .arg(package.filePath()));
        object.insert(QStringLiteral("record"), package.absoluteFilePath());
    }
    if (!options.report.empty())
        object.insert(QStringLiteral("report"),
                      QFileInfo(fromLocal(options.report)).absoluteFilePath());
    return object;
}

ExitStatus run(const AttachCommandOptions &options)
{
    const AttachedProgram program(fromLocal(options.program.front()), options.qtMajor);
    QStringList arguments;
    for (std::size_t i = 1; i < options.program.size(); ++i)
        arguments += fromLocal(options.program.at(i));
    return static_cast<ExitStatus>(program.run(arguments, plan(options)));
}

} // namespace

void addAttachCommand(Program &program)
{
    const auto options = std::make_shared<AttachCommandOptions>();
    CLI::App &command = program.add(
            "attach",
            "Start a program that was built without Hovlets, and show hovlets in it. The exit "
            "status is that of the program.",
            "--path packages -- kcalc", [options] { return run(*options); }, [] { return true; });
    command.add_option("PROGRAM", options->program, "Program and its arguments, after \"--\"")
            ->required();
    addRepeatable(command, "--path", options->paths,
                  "Folder of packages; a package selects the folder that it is in; may be "
                  "repeated");
    command.add_option("--rules", options->rules, "File with rules for keys");
    command.add_option("--locale", options->locale, "Preferred locale, such as de_DE")
            ->check(knownLocale());
    addRepeatable(command, "--setting", options->settings,
                  "NAME=VALUE, a setting such as HVKeyHideDelay=1000; may be repeated");
    command.add_option("--record", options->record,
                       "Package to write entries to, in a window beside the program");
    command.add_option("--report", options->report,
                       "File to write the controls on screen and the key of the popup to, as JSON");
    command.add_option("--qt", options->qtMajor,
                       "Qt of the program, 5 or 6, where it cannot be seen in its file")
            ->check(CLI::IsMember({ 5, 6 }));
}

} // namespace HovletsTool
