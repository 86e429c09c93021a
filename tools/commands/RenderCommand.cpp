// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContactSheet.h"
#include "Output.h"
#include "PictureComparison.h"
#include "PopupRenderer.h"
#include "Program.h"
#include "Progress.h"
#include "ToolError.h"
#include "Validators.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace HovletsTool {

namespace {

struct RenderCommandOptions
{
    std::vector<std::string> arguments;
    std::string output;
    std::string folder;
    std::string compare;
    std::string palette = "light";
    std::string format;
    double tolerance = 0;
    bool all = false;
    std::vector<std::string> properties;
    PopupLook look;
};

void save(const QImage &picture, const QString &file)
{
    const QDir folder = QFileInfo(file).dir();
    if (!folder.mkpath(QStringLiteral(".")) || !picture.save(file, "PNG"))
        throw ToolError(QStringLiteral("%1 cannot be written; is its folder writable?").arg(file));
}

/// Encodes the characters of a key that a file name cannot contain.
QString fileNameOf(const QString &key)
{
    QByteArray name = key.toUtf8().toPercentEncoding(" ()+,");
    return QString::fromLatin1(name) + QStringLiteral(".png");
}

/// Prints the error and returns a null picture when the popup cannot be shown.
QImage pictureOf(const QString &key, PopupRenderer &renderer)
{
    try {
        return renderer.render(key);
    } catch (const ToolError &error) {
        printError(error.message());
        return {};
    }
}

/// The pictures of all keys that can be shown.
std::vector<NamedPicture> renderAll(PopupRenderer &renderer, const QStringList &keys)
{
    std::vector<NamedPicture> pictures;
    Progress progress;
    progress.begin(QStringLiteral("rendering"), static_cast<int>(keys.size()));
    for (const QString &key : keys) {
        const QImage picture = pictureOf(key, renderer);
        if (!picture.isNull())
            pictures.push_back({ key, picture });
        progress.step();
    }
    return pictures;
}

/// The differences from the expected pictures.
struct Changes
{
    QStringList changed, added, missing;

    bool isEmpty() const { return changed.isEmpty() && added.isEmpty() && missing.isEmpty(); }
};

Changes compare(const std::vector<NamedPicture> &pictures, const QDir &expected, double tolerance)
{
    if (!expected.exists())
        throw ToolError(QStringLiteral("%1 is not a folder; create it with --output-dir")
                                .arg(expected.path()));
    const QTemporaryDir scratch;
    QStringList unseen = expected.entryList({ QStringLiteral("*.png") }, QDir::Files);
    Changes changes;
    for (const auto &[key, picture] : pictures) {
        const QString name = fileNameOf(key);
        if (unseen.removeAll(name) == 0) {
            changes.added += key;
            continue;
        }
        save(picture, scratch.filePath(name));
        if (pictureDifference(expected.filePath(name), scratch.filePath(name)) > tolerance)
            changes.changed += key;
    }
    for (const QString &name : std::as_const(unseen))
        changes.missing +=
                QString::fromUtf8(QByteArray::fromPercentEncoding(name.chopped(4).toLatin1()));
    return changes;
}

ExitStatus report(const Changes &changes, const std::string &format)
{
    if (format == "json") {
        printJson({ { QStringLiteral("changed"), QJsonArray::fromStringList(changes.changed) },
                    { QStringLiteral("added"), QJsonArray::fromStringList(changes.added) },
                    { QStringLiteral("missing"), QJsonArray::fromStringList(changes.missing) } });
    } else {
        const auto print = [](const char *what, const QStringList &keys) {
            for (const QString &key : keys)
                printText(QStringLiteral("%1\t%2\n").arg(QLatin1String(what), key));
        };
        print("changed", changes.changed);
        print("added", changes.added);
        print("missing", changes.missing);
    }
    return changes.isEmpty() ? ExitStatus::Clean : ExitStatus::Findings;
}

ExitStatus renderOne(const RenderCommandOptions &options, PopupRenderer &renderer)
{
    const QString key = QString::fromLocal8Bit(options.arguments.front().c_str());
    const QImage picture = pictureOf(key, renderer);
    if (picture.isNull())
        return ExitStatus::Findings;
    save(picture, QString::fromLocal8Bit(options.output.c_str()));
    return ExitStatus::Clean;
}

ExitStatus renderMany(const RenderCommandOptions &options, PopupRenderer &renderer)
{
    const QStringList keys = renderer.keys();
    if (keys.isEmpty())
        throw ToolError(QStringLiteral("there are no entries in these folders; "
                                       "`hovlets check` says why files are not read"));
    const std::vector<NamedPicture> pictures = renderAll(renderer, keys);
    const ExitStatus status = pictures.size() == static_cast<size_t>(keys.size())
            ? ExitStatus::Clean
            : ExitStatus::Findings;
    if (pictures.empty())
        return status;
    if (!options.output.empty())
        save(contactSheet(pictures), QString::fromLocal8Bit(options.output.c_str()));
    if (!options.folder.empty()) {
        const QDir folder(QString::fromLocal8Bit(options.folder.c_str()));
        for (const auto &[key, picture] : pictures)
            save(picture, folder.filePath(fileNameOf(key)));
    }
    if (options.compare.empty())
        return status;
    const QDir expected(QString::fromLocal8Bit(options.compare.c_str()));
    return std::max(status, report(compare(pictures, expected, options.tolerance), options.format));
}

ExitStatus run(RenderCommandOptions &options)
{
    const bool many = options.all || !options.folder.empty() || !options.compare.empty();
    std::vector<std::string> paths = options.arguments;
    if (!many) {
        if (paths.size() < 2 || options.output.empty())
            throw ToolError(QStringLiteral("give a key, one or more paths and -o FILE.png, or "
                                           "--all for all keys; see `hovlets render --help`"));
        paths.erase(paths.begin());
    }
    if (many && options.output.empty() && options.folder.empty() && options.compare.empty())
        throw ToolError(QStringLiteral("give -o FILE.png for a contact sheet, or --output-dir DIR "
                                       "for one picture per key"));
    options.look.dark = options.palette == "dark";
    PopupRenderer renderer(paths, options.look);
    for (const auto &[name, value] : propertiesOf(options.properties))
        renderer.setProperty(name, value);
    const ExitStatus status = many ? renderMany(options, renderer) : renderOne(options, renderer);
    const QStringList complaints = renderer.complaints();
    for (const QString &complaint : complaints)
        printError(complaint);
    return complaints.isEmpty() ? status : ExitStatus::Findings;
}

} // namespace

void addRenderCommand(Program &program)
{
    const auto options = std::make_shared<RenderCommandOptions>();
    CLI::App &command = program.add(
            "render", "Render popups to pictures, without a display.",
            "pen examples/drawing/packages -o pen.png\n"
            "  hovlets render --all examples/drawing/packages -o sheet.png --palette dark\n"
            "  hovlets render --compare pictures examples/drawing/packages",
            [options] { return run(*options); });
    command.add_option(
                   "KEY_PATH", options->arguments,
                   "A key and the paths to search for it; only paths with --all, --output-dir or "
                   "--compare")
            ->required();
    command.add_option("-o,--output", options->output,
                       "PNG file to write; a contact sheet for several keys");
    command.add_flag("--all", options->all, "Render all keys");
    command.add_option("--output-dir", options->folder, "Folder to write one picture per key to");
    command.add_option("--compare", options->compare,
                       "Folder of pictures to compare with; lists the keys whose pictures differ");
    command.add_option("--tolerance", options->tolerance,
                       "Fraction of the pixels that may differ, from 0 to 1")
            ->check(between(0, 1))
            ->capture_default_str();
    command.add_option("--locale", options->look.locale, "Preferred locale, such as de_DE")
            ->check(knownLocale());
    command.add_option("--fallback-locale", options->look.fallbackLocale,
                       "Locale that is used when the preferred one has no entry")
            ->check(knownLocale());
    command.add_option("--palette", options->palette, "Colours of the desktop")
            ->check(CLI::IsMember({ "light", "dark" }))
            ->capture_default_str();
    command.add_option_function<double>(
                   "--scale",
                   [](const double &scale) { // read by Qt when the application starts
                       qputenv("QT_SCALE_FACTOR", QByteArray::number(scale));
                   },
                   "Scale factor of the screen, from 0.5 to 8")
            ->check(between(0.5, 8));
    command.add_option("--font-size", options->look.fontSize, "Font size in points, from 4 to 96")
            ->check(between(4, 96));
    command.add_flag("--simple", options->look.simple, "Render the simple popup");
    command.add_flag("--surface", options->look.surface,
                     "Render rounded corners, a shadow and an arrow on a transparent ground, as "
                     "with HVKeySurface");
    command.add_flag("--pinned", options->look.pinned,
                     "Render pinned popups with their own title bar, as with HVKeyOwnTitleBar");
    addProperties(command, options->properties);
    command.add_option("--key-data", options->look.keyData, "Key-data file of the host");
    command.add_option("--extra-path", options->look.extraPath,
                       "Extra component folder of the host");
    addFormat(command, options->format, { "text", "json" });
}

} // namespace HovletsTool
