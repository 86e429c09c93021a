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

struct Options
{
    std::string name, folder = ".";
};

QByteArray starter(const QString &name)
{
    return QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                          "<!-- Without a \"locale\" the entries are for all of them. Default has "
                          "the user "
                          "interface. -->\n"
                          "<hovlets search=\"Default\">\n"
                          "    <!-- The key is what the control asks for: by default its object "
                          "name. -->\n"
                          "    <hovlet key=\"%1\" title=\"%1\">\n"
                          "        <p>What the control does, in a sentence.</p>\n"
                          "        <p><![CDATA[What else to know, with <b>stress</b> where it "
                          "helps.]]></p>\n"
                          "        <link href=\"https://example.org\">More about it</link>\n"
                          "    </hovlet>\n"
                          "</hovlets>\n")
            .arg(name)
            .toUtf8();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(bytes) != bytes.size())
        throw ToolError(QStringLiteral("cannot write %1: %2; choose another DIR")
                                .arg(path, file.errorString()));
}

ExitStatus run(const Options &options)
{
    constexpr QLatin1String Suffix(".hovlets");
    QString name = QString::fromLocal8Bit(options.name.c_str());
    if (name.endsWith(Suffix))
        name.chop(Suffix.size());
    static const QRegularExpression allowed(QStringLiteral("^\\w[-.\\w]*$"));
    if (!allowed.match(name).hasMatch())
        throw ToolError(QStringLiteral("\"%1\" cannot name a package; use letters, digits, \"_\", "
                                       "\"-\" and \".\"")
                                .arg(QString::fromLocal8Bit(options.name.c_str())));
    const QDir folder(QString::fromLocal8Bit(options.folder.c_str()));
    const QString package = folder.filePath(name + Suffix);
    if (QFileInfo::exists(package) || QFileInfo(package).isSymLink())
        throw ToolError(QStringLiteral("%1 is there already; choose another name").arg(package));
    for (const char *part : { "Control", "Resources" }) {
        if (!QDir().mkpath(package + QLatin1Char('/') + QLatin1String(part)))
            throw ToolError(
                    QStringLiteral("cannot make the folder %1; choose another DIR").arg(package));
    }
    write(QStringLiteral("%1/Control/%2.xml").arg(package, name), starter(name));
    printText(package + QLatin1Char('\n'));
    return ExitStatus::Clean;
}

} // namespace

void addNewCommand(Program &program)
{
    const auto options = std::make_shared<Options>();
    CLI::App &command = program.add("new", "Makes a package to start from; overwrites nothing.",
                                    "Help packages", [options] { return run(*options); });
    command.add_option("NAME", options->name, "The package's name")->required();
    command.add_option("DIR", options->folder, "The folder to make it in")->capture_default_str();
}

} // namespace HovletsTool
