// SPDX-License-Identifier: Apache-2.0
#include "Program.h"

#include <QtCore/QJsonDocument>
#include <QtWidgets/QApplication>

#include <cstdio>

namespace {

/// The parser's notes are for hosts; the commands tell of what is wrong in their own words. A build
/// machine has no session, of which Qt would warn at each run.
void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const bool isOfTheSession = message.startsWith(QLatin1String("QStandardPaths:"));
    // What the offscreen platform says of itself whenever a window is shown.
    const bool isOfThePlatform = message.startsWith(QLatin1String("This plugin does not support "));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfTheSession && !isOfThePlatform)
        std::fprintf(stderr, "hovlets: %s\n", qPrintable(message));
}

void write(const QByteArray &bytes)
{
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
}

} // namespace

Program::Program()
    : m_app("Checks, shows and lists hovlet content.", "hovlets")
{
    m_app.set_version_flag("--version", std::string("hovlets ") + HOVLETS_VERSION);
    m_app.require_subcommand(1);
    m_app.footer("PATH is a folder of packages (*.hovlets) or one package.\n"
                 "Exit status: 0 clean, 1 findings, 2 wrong usage or a file that cannot be read.");
}

CLI::App &Program::add(const std::string &name, const std::string &description,
                       const std::string &example, Run run, bool opensWindow)
{
    CLI::App *command = m_app.add_subcommand(name, description);
    command->footer("Example:\n  hovlets " + name + " " + example);
    command->callback([this, run = std::move(run), opensWindow] {
        m_run = run;
        m_opensWindow = opensWindow;
    });
    return *command;
}

int Program::run(int argc, char **argv)
{
    try {
        m_app.parse(argc, argv);
    } catch (const CLI::ParseError &error) {
        return m_app.exit(error) == 0 ? Clean : Failed;
    }
    try {
        return runCommand(argc, argv);
    } catch (const ToolError &error) {
        std::fprintf(stderr, "hovlets: %s\n", error.what());
        return Failed;
    }
}

int Program::runCommand(int argc, char **argv)
{
    const auto isSet = [](const char *name) { return !qEnvironmentVariableIsEmpty(name); };
    if (!m_opensWindow && !isSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
#if defined(Q_OS_UNIX) && !defined(Q_OS_DARWIN)
    // Qt would abort.
    if (m_opensWindow && !isSet("QT_QPA_PLATFORM") && !isSet("DISPLAY")
        && !isSet("WAYLAND_DISPLAY"))
        throw ToolError(QStringLiteral("there is no display to open a window on; "
                                       "`hovlets render` takes pictures without one"));
#endif
    // The offscreen platform has no OpenGL with Qt 5, which would abort.
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen") && !isSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    qInstallMessageHandler(&handleMessage);
    const QApplication application(argc, argv);
    return m_run();
}

void addPaths(CLI::App &command, std::vector<std::string> &paths)
{
    command.add_option("PATH", paths, "Folders of packages, or packages")->required();
}

void addFormat(CLI::App &command, std::string &format, const std::vector<std::string> &formats)
{
    format = formats.front();
    command.add_option("--format", format, "How to print it")
            ->check(CLI::IsMember(formats))
            ->capture_default_str();
}

void addProperties(CLI::App &command, std::vector<std::string> &properties)
{
    command.add_option("--property", properties,
                       "NAME=VALUE, what a placeholder %(NAME)s stands for; once for each")
            ->take_all()
            ->expected(1);
}

std::vector<QPair<QString, QString>> propertiesOf(const std::vector<std::string> &properties)
{
    std::vector<QPair<QString, QString>> pairs;
    for (const std::string &property : properties) {
        const QString text = QString::fromLocal8Bit(property.c_str());
        const auto equals = text.indexOf(QLatin1Char('='));
        if (equals <= 0)
            throw ToolError(QStringLiteral("--property %1: write NAME=VALUE").arg(text));
        pairs.emplace_back(text.left(equals), text.mid(equals + 1));
    }
    return pairs;
}

void printText(const QString &text)
{
    write(text.toUtf8());
}

void printJson(const QJsonObject &object)
{
    write(QJsonDocument(object).toJson());
}
