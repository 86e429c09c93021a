// SPDX-License-Identifier: Apache-2.0
#include "Program.h"

#include "Output.h"
#include "ToolError.h"

#include <QtWidgets/QApplication>

extern "C" {
#include <libavutil/log.h>
}

#include <algorithm>
#include <sstream>

namespace HovletsTool {

namespace {

/// Drops messages of the library, because the commands report mistakes themselves, and Qt's
/// warnings about machines without a session or a display.
void handleMessage(QtMsgType type, const QMessageLogContext &, const QString &message)
{
    const bool isAboutSession = message.startsWith(QLatin1String("QStandardPaths:"));
    // The offscreen platform prints this whenever a window is shown.
    const bool isAboutPlatform = message.startsWith(QLatin1String("This plugin does not support "));
    if (type != QtDebugMsg && type != QtInfoMsg && !isAboutSession && !isAboutPlatform)
        printError(message);
}

/// Turns "help check" into "check --help".
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
    : m_app("Check, show, translate and render hovlet content.", "hovlets")
{
    m_app.set_version_flag("--version", std::string("hovlets ") + HOVLETS_PROGRAM_VERSION);
    m_app.require_subcommand(1);
    m_app.footer(
            "PATH is a folder of packages (*.hovlets) or a single package.\n"
            "`hovlets help COMMAND` or `hovlets COMMAND --help` explains a command.\n"
            "Exit status: 0 no findings, 1 findings or files that were skipped, 2 wrong usage,\n"
            "or a file that cannot be read or written. `hovlets attach` ends with the status\n"
            "of the program that it starts.");
}

CLI::App &Program::add(const std::string &name, const std::string &description,
                       const std::string &example, Run run, Question opensWindow)
{
    const auto space = name.find(' ');
    CLI::App *parent =
            space == std::string::npos ? &m_app : m_app.get_subcommand(name.substr(0, space));
    CLI::App *command = parent->add_subcommand(
            space == std::string::npos ? name : name.substr(space + 1), description);
    command->footer("Example:\n  hovlets " + name + " " + example);
    command->callback([this, run = std::move(run), opensWindow = std::move(opensWindow)] {
        m_run = run;
        m_opensWindow = opensWindow && opensWindow();
    });
    return *command;
}

void Program::addGroup(const std::string &name, const std::string &description)
{
    CLI::App *group = m_app.add_subcommand(name, description);
    group->require_subcommand(1);
    group->footer("`hovlets help " + name + " COMMAND` explains a command.");
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

/// Returns false if the command line only asked for help, so no command needs to run.
bool Program::parse(std::vector<std::string> arguments)
{
    arguments = withoutHelpCommand(std::move(arguments));
    if (!arguments.empty() && !knows(arguments.front()))
        throw ToolError(
                QStringLiteral("unknown command \"%1\"; `hovlets --help` lists the commands")
                        .arg(QString::fromLocal8Bit(arguments.front().c_str())));
    std::reverse(arguments.begin(), arguments.end()); // the parser reads them from the back
    try {
        m_app.parse(arguments);
        return true;
    } catch (const CLI::Success &explanation) {
        std::ostringstream text;
        m_app.exit(explanation, text);
        printText(QString::fromStdString(text.str()));
        return false;
    } catch (const CLI::ParseError &error) {
        throw ToolError(QString::fromLocal8Bit(error.what())
                        + QStringLiteral("; see `hovlets%1 --help`").arg(selected()));
    }
}

/// The words of the selected command, each after a space.
QString Program::selected() const
{
    QString words;
    const CLI::App *command = &m_app;
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().front();
        words += QLatin1Char(' ') + QString::fromStdString(command->get_name());
    }
    return words;
}

/// Whether \a word is a command or an option of the program.
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
    // Qt aborts when there is no display.
    if (m_opensWindow && !isSet("QT_QPA_PLATFORM") && !isSet("DISPLAY")
        && !isSet("WAYLAND_DISPLAY"))
        throw ToolError(QStringLiteral("there is no display to open a window on; "
                                       "`hovlets render` renders popups without one"));
#endif
    // Qt 5 aborts on the offscreen platform, which lacks OpenGL there.
    if (qgetenv("QT_QPA_PLATFORM").startsWith("offscreen") && !isSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    qInstallMessageHandler(&handleMessage);
    av_log_set_level(AV_LOG_QUIET); // check reports damaged clips itself
    const QApplication application(argc, argv);
    return m_run();
}

} // namespace HovletsTool
