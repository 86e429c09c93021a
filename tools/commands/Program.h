// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <CLI/CLI.hpp>

#include <QtCore/QString>

#include <functional>
#include <string>
#include <vector>

namespace HovletsTool {

/// `hovlets attach` returns the status of the program that it starts instead.
enum class ExitStatus { Clean = 0, Findings = 1, Failed = 2 };

/*!
 * \brief The command line: registers the commands and runs the selected one.
 *
 * The application object is created after the command line is parsed. Therefore a wrong command
 * line costs nothing, and only commands that open a window need a display.
 */
class Program
{
public:
    using Run = std::function<ExitStatus()>;
    using Question = std::function<bool()>;

    Program();

    /*!
     * Adds a command and returns it, for the caller to add its options.
     * \param name after the name of its group and a space if it is in a group
     * \param opensWindow asked once the options are known; null for commands that never open one
     * \param example the arguments after the command's name in the example of its help
     */
    CLI::App &add(const std::string &name, const std::string &description,
                  const std::string &example, Run run, Question opensWindow = {});

    /// Adds a word that other commands come after, such as "translate".
    void addGroup(const std::string &name, const std::string &description);

    [[nodiscard]] ExitStatus run(int argc, char **argv);

private:
    bool parse(std::vector<std::string> arguments);
    [[nodiscard]] QString selected() const;
    [[nodiscard]] bool knows(const std::string &word) const;
    ExitStatus runCommand(int argc, char **argv);

    CLI::App m_app;
    Run m_run;
    bool m_opensWindow = false;
};

} // namespace HovletsTool
