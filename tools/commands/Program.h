// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QJsonObject>
#include <QtCore/QPair>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <CLI/CLI.hpp>

#include <functional>
#include <stdexcept>

/// What ends the program with status 2: one message that says what to do.
class ToolError : public std::runtime_error
{
public:
    explicit ToolError(const QString &message)
        : std::runtime_error(message.toStdString())
    {
    }
};

/// The exit statuses.
enum Status { Clean = 0, Findings = 1, Failed = 2 };

/*!
 * \brief The command line: the commands, and which of them was asked for.
 *
 * The application object is made between the parsing of the command line and the run, so that a
 * wrong command line costs nothing, and only a command that opens a window needs a display.
 */
class Program
{
public:
    using Run = std::function<int()>;

    Program();

    /*!
     * Adds a command.
     * \param example what follows the command's name in the example of its help
     * \return where the caller adds its options
     */
    CLI::App &add(const std::string &name, const std::string &description,
                  const std::string &example, Run run, bool opensWindow = false);

    int run(int argc, char **argv);

private:
    bool parse(std::vector<std::string> arguments);
    bool knows(const std::string &word) const;
    int runCommand(int argc, char **argv);

    CLI::App m_app;
    Run m_run;
    bool m_opensWindow = false;
};

/// The PATHs of a command, one or more.
void addPaths(CLI::App &command, std::vector<std::string> &paths);

/// "--format", of the names in \a formats; the first is the default.
void addFormat(CLI::App &command, std::string &format, const std::vector<std::string> &formats);

/// An option that is given once for each of its values, and takes no word but the next.
CLI::Option *addRepeatable(CLI::App &command, const std::string &name,
                           std::vector<std::string> &values, const std::string &description);

/// "--property NAME=VALUE", any number of times.
void addProperties(CLI::App &command, std::vector<std::string> &properties);

/// The names and values; throws a ToolError for what is not such a pair.
std::vector<QPair<QString, QString>> propertiesOf(const std::vector<std::string> &properties);

// What cannot be written throws a ToolError, here or at the end of the program.
void printText(const QString &text);
void printJson(const QJsonObject &object);
