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

struct PreviewCommandOptions
{
    PreviewOptions preview;
    std::string key, palette = "light";
    std::vector<std::string> properties;
};

ExitStatus run(PreviewCommandOptions &options)
{
    const ContentIndex readable(
            options.preview.check.paths); // throws; once the window is open, paths may come and go
    options.preview.properties = propertiesOf(options.properties);
    options.preview.look.dark = options.palette == "dark";
    qputenv("QML_DISABLE_DISK_CACHE", "1"); // it may lack changes that were just saved
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
    const auto options = std::make_shared<PreviewCommandOptions>();
    CLI::App &command = program.add(
            "preview", "Open a window that shows the popups and follows changes to the files.",
            "examples/drawing/packages", [options] { return run(*options); }, [] { return true; });
    PreviewOptions &preview = options->preview;
    addPaths(command, preview.check.paths);
    command.add_option("--key", options->key, "Key to select at first");
    command.add_option("--locale", preview.look.locale, "Locale to select at first, such as de_DE")
            ->check(knownLocale());
    command.add_option("--palette", options->palette, "Palette to select at first")
            ->check(CLI::IsMember({ "light", "dark" }))
            ->capture_default_str();
    command.add_flag("--simple", preview.look.simple, "Show the simple popup at first");
    addProperties(command, options->properties);
    command.add_option("--key-data", preview.check.keyData, "Key-data file of the host");
    command.add_option("--extra-path", preview.check.extraPath,
                       "Extra component folder of the host");
}

} // namespace HovletsTool
