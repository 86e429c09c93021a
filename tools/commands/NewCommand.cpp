// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "Output.h"
#include "Program.h"
#include "ToolError.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

#include <memory>

namespace HovletsTool {

namespace {

struct NewCommandOptions
{
    std::string name, folder = ".";
};

QByteArray starter(const QString &name)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<!-- Without the attribute \"locale\", the entries are for all locales. "
                          "Default contains the user interface. -->\n"
                          "<hovlets search=\"Default\">\n"
                          "    <!-- The key identifies the control. By default it is the object "
                          "name. -->\n"
                          "    <hovlet key=\"%1\" title=\"%1\">\n"
                          "        <p>One sentence that says what the control does.</p>\n"
                          "        <p><![CDATA[More details, with <b>emphasis</b> where it "
                          "helps.]]></p>\n"
                          "        <link href=\"https://example.org\">Learn more</link>\n"
                          "    </hovlet>\n"
                          "</hovlets>\n")
            .arg(name)
            .toUtf8();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(bytes) != bytes.size())
        throw ToolError(QStringLiteral("%1 cannot be written: %2; choose another DIR")
                                .arg(path, file.errorString()));
}

ExitStatus run(const NewCommandOptions &options)
{
    constexpr QLatin1String Suffix(".hovlets");
    QString name = QString::fromLocal8Bit(options.name.c_str());
    if (name.endsWith(Suffix))
        name.chop(Suffix.size());
    static const QRegularExpression allowed(QStringLiteral("^\\w[-.\\w]*$"));
    if (!allowed.match(name).hasMatch())
        throw ToolError(QStringLiteral("\"%1\" is not a valid package name; use letters, digits, "
                                       "\"_\", \"-\" and \".\"")
                                .arg(QString::fromLocal8Bit(options.name.c_str())));
    const QDir folder(QString::fromLocal8Bit(options.folder.c_str()));
    const QString package = folder.filePath(name + Suffix);
    if (QFileInfo::exists(package) || QFileInfo(package).isSymLink())
        throw ToolError(QStringLiteral("%1 already exists; choose another name").arg(package));
    for (const char *part : { "Control", "Resources" }) {
        if (!QDir().mkpath(package + QLatin1Char('/') + QLatin1String(part)))
            throw ToolError(QStringLiteral("the folder %1 cannot be created; choose another DIR")
                                    .arg(package));
    }
    write(QStringLiteral("%1/Control/%2.xml").arg(package, name), starter(name));
    printText(package + QLatin1Char('\n'));
    return ExitStatus::Clean;
}

} // namespace

void addNewCommand(Program &program)
{
    const auto options = std::make_shared<NewCommandOptions>();
    CLI::App &command =
            program.add("new", "Create a package to start from, without overwriting anything.",
                        "Help packages", [options] { return run(*options); });
    command.add_option("NAME", options->name, "Name of the package")->required();
    command.add_option("DIR", options->folder, "Folder to create it in")->capture_default_str();
}

} // namespace HovletsTool
