// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"

#include "Property.h"
#include "ToolError.h"

namespace HovletsTool {

void addPaths(CLI::App &command, std::vector<std::string> &paths)
{
    command.add_option("PATH", paths, "Folders of packages, or single packages")->required();
}

void addFormat(CLI::App &command, std::string &format, const std::vector<std::string> &formats)
{
    format = formats.front();
    command.add_option("--format", format, "Output format")
            ->check(CLI::IsMember(formats))
            ->capture_default_str();
}

CLI::Option *addRepeatable(CLI::App &command, const std::string &name,
                           std::vector<std::string> &values, const std::string &description)
{
    return command.add_option(name, values, description)
            ->take_all()
            ->expected(1)
            ->allow_extra_args(false);
}

void addProperties(CLI::App &command, std::vector<std::string> &properties)
{
    addRepeatable(command, "--property", properties,
                  "NAME=VALUE, the text for the placeholder %(NAME)s; may be repeated");
}

std::vector<Property> propertiesOf(const std::vector<std::string> &properties)
{
    std::vector<Property> pairs;
    for (const std::string &property : properties) {
        const QString text = QString::fromLocal8Bit(property.c_str());
        const auto equals = text.indexOf(QLatin1Char('='));
        if (equals <= 0)
            throw ToolError(QStringLiteral("--property %1: use NAME=VALUE").arg(text));
        pairs.push_back({ text.left(equals), text.mid(equals + 1) });
    }
    return pairs;
}

} // namespace HovletsTool
