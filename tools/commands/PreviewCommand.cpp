// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContentIndex.h"
#include "PreviewWindow.h"
#include "Program.h"
#include "Validators.h"

#include <QtWidgets/QApplication>

#include <memory>

namespace HovletsTool {

namespace {

struct Options
{
    PreviewOptions preview;
    std::string key, palette = "light";
    std::vector<std::string> properties;
};

ExitStatus run(Options &options)
{
    const ContentIndex readable(options.preview.check.paths); // throws; later, files come and go
    options.preview.properties = propertiesOf(options.properties);
    options.preview.look.dark = options.palette == "dark";
    qputenv("QML_DISABLE_DISK_CACHE", "1"); // QML that was just saved is not in it
    PreviewWindow window(options.preview);
    if (!options.key.empty())
        window.chooseKey(QString::fromLocal8Bit(options.key.c_str()));
    window.show();
    QApplication::exec();
    return ExitStatus::Clean;
}

} // namespace

void addPreviewCommand(Program &program)
{
    const auto options = std::make_shared<Options>();
    constexpr bool OpensWindow = true;
    CLI::App &command = program.add(
            "preview", "Opens a window with the popups; follows the files while they are edited.",
            "examples/drawing/packages", [options] { return run(*options); }, OpensWindow);
    PreviewOptions &preview = options->preview;
    addPaths(command, preview.check.paths);
    command.add_option("--key", options->key, "The key to begin with");
    command.add_option("--locale", preview.look.locale, "The locale to begin with, such as de_DE")
            ->check(knownLocale());
    command.add_option("--palette", options->palette, "The colours to begin with")
            ->check(CLI::IsMember({ "light", "dark" }))
            ->capture_default_str();
    command.add_flag("--simple", preview.look.simple, "Begin with the simple popup");
    addProperties(command, options->properties);
    command.add_option("--key-data", preview.check.keyData, "The host's file of attributes by key");
    command.add_option("--extra-path", preview.check.extraPath, "The host's folder of components");
}

} // namespace HovletsTool
