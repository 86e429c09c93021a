// SPDX-License-Identifier: Apache-2.0
#include "Program.h"

#include "Output.h"
#include "ToolError.h"

#include <QtWidgets/QApplication>

#include <algorithm>
#include <sstream>

namespace HovletsTool {

namespace {

/// The parser's notes are for hosts; the commands tell of what is wrong in their own words. A build
/// machine has no session, of which Qt would warn at each run.
void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const bool isOfTheSession = message.startsWith(QLatin1String("QStandardPaths:"));
    // What the offscreen platform says of itself whenever a window is shown.
    const bool isOfThePlatform = message.startsWith(QLatin1String("This plugin does not support "));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfTheSession && !isOfThePlatform)
        printError(message);
}

/// "help check" is another way to say "check --help".
std::vector<std::string> withoutHelpCommand(std::vector<std::string> arguments)
{
    if (arguments.empty() || arguments.front() != "help")
        return arguments;
    arguments.erase(arguments.begin());
    arguments.emplace_back("--help");
    return arguments;
}

} // namespace

Program::Program()
    : m_app("Checks, shows and lists hovlet content.", "hovlets")
{
    m_app.set_version_flag("--version", std::string("hovlets ") + HOVLETS_PROGRAM_VERSION);
    m_app.require_subcommand(1);
    m_app.footer("PATH is a folder of packages (*.hovlets) or one package.\n"
                 "`hovlets help COMMAND` or `hovlets COMMAND --help` explains a command.\n"
                 "Exit status: 0 clean, 1 findings, 2 wrong usage, or what cannot be read or "
                 "written.");
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

ExitStatus Program::run(int argc, char **argv)
{
    try {
        const bool hasCommand = parse({ argv + std::min(argc, 1), argv + argc });
        const ExitStatus status = hasCommand ? runCommand(argc, argv) : ExitStatus::Clean;
        flushOutput();
        return status;
    } catch (const ToolError &error) {
        printError(error.message());
        return ExitStatus::Failed;
    }
}

/// Whether there is a command to run, and not only something to explain.
bool Program::parse(std::vector<std::string> arguments)
{
    arguments = withoutHelpCommand(std::move(arguments));
    if (!arguments.empty() && !knows(arguments.front()))
        throw ToolError(QStringLiteral("\"%1\" is no command; `hovlets --help` lists the commands")
                                .arg(QString::fromLocal8Bit(arguments.front().c_str())));
    std::reverse(arguments.begin(), arguments.end()); // as the parser takes them
    try {
        m_app.parse(arguments);
        return true;
    } catch (const CLI::Success &explanation) {
        std::ostringstream text;
        m_app.exit(explanation, text);
        printText(QString::fromStdString(text.str()));
        return false;
    } catch (const CLI::ParseError &error) {
        const auto commands = m_app.get_subcommands();
        const std::string command = commands.empty() ? "" : ' ' + commands.front()->get_name();
        throw ToolError(
                QString::fromLocal8Bit(error.what())
                + QStringLiteral("; see `hovlets%1 --help`").arg(QString::fromStdString(command)));
    }
}

/// Whether the command line may begin with \a word.
bool Program::knows(const std::string &word) const
{
    const auto isNamed = [&](const CLI::App *command) { return command->get_name() == word; };
    return m_app.get_option_no_throw(word) || !m_app.get_subcommands(isNamed).empty();
}

ExitStatus Program::runCommand(int argc, char **argv)
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

} // namespace HovletsTool
