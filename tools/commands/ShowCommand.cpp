// SPDX-License-Identifier: Apache-2.0
#include "CommandOptions.h"
#include "Commands.h"
#include "ContentIndex.h"
#include "GivenPaths.h"
#include "HostPaths.h"
#include "Output.h"
#include "Program.h"
#include "ReadFile.h"
#include "Validators.h"
#include "XmlDocument.h"

#include <HVContentLocale.h>
#include <HVContentTree.h>
#include <HVXmlElement.h>

#include <QtCore/QJsonArray>
#include <QtCore/QXmlStreamWriter>

#include <memory>

namespace HovletsTool {

using namespace Hovlets;

namespace {

struct ShowCommandOptions
{
    std::string key;
    std::vector<std::string> paths;
    std::string locale, fallbackLocale, fallbackKey, keyData, extraPath, format;
};

struct Answer
{
    HVXmlElement *entry = nullptr;
    HVXmlElement *root = nullptr;
    QString by;
};

HVContext contextOf(const ShowCommandOptions &options)
{
    HVContext context;
    const auto set = [&context](contextKey key, const QString &value) {
        if (!value.isEmpty())
            context.set(key, value);
    };
    set(HVKeyLocale, QString::fromStdString(options.locale));
    set(HVKeyFallbackLocale, QString::fromStdString(options.fallbackLocale));
    set(HVKeyKeyDataFile, keyDataFile(options.keyData));
    set(HVKeyExtraComponentPath, extraPath(options.extraPath));
    return context;
}

/// Searches in the same order as a hover.
Answer find(HVManager &manager, const ShowCommandOptions &options)
{
    const QLocale preferred = preferredContentLocale(manager.context());
    const QLocale fallback = fallbackContentLocale(manager.context());
    const struct
    {
        std::string key;
        QLocale locale;
        QString by;
    } attempts[] = {
        { options.key, preferred, QStringLiteral("locale") },
        { options.key, fallback, QStringLiteral("fallback locale") },
        { options.fallbackKey, fallback, QStringLiteral("fallback key") },
    };
    for (const auto &attempt : attempts) {
        QString path;
        int depth = 0;
        HVXmlElement *root = nullptr;
        if (attempt.key.empty())
            continue;
        HVXmlElement *entry = manager.index()->retrieve(QString::fromStdString(attempt.key),
                                                        attempt.locale, path, depth, root);
        if (entry)
            return { entry, root, attempt.by };
    }
    return {};
}

int lineOf(const QString &file, const QString &key)
{
    const XmlDocument document(readContentFile(file));
    int line = 1;
    bool isFound = false;
    document.forEachBranch([&](const XmlDocument::Branch &branch) {
        if (isFound || branch.top().name != QLatin1String("hovlet")
            || branch.top().value(QStringLiteral("key")) != key)
            return;
        isFound = true;
        line = document.position(branch.top().offset).line;
    });
    return line;
}

/// Writes the text before the children, as the element does not keep their order.
void write(QXmlStreamWriter &xml, const HVXmlElement &element)
{
    xml.writeStartElement(element.objectName());
    const QStringList names = element.attributeNames();
    for (const QString &name : names)
        xml.writeAttribute(name, element.attribute(name));
    const QString text = element.property("content").toString().trimmed();
    if (!text.isEmpty())
        xml.writeCharacters(text);
    for (const QObject *child : element.children()) {
        if (const auto *below = qobject_cast<const HVXmlElement *>(child))
            write(xml, *below);
    }
    xml.writeEndElement();
}

QString xmlOf(const HVXmlElement &element)
{
    QString text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    write(xml, element);
    return text;
}

ExitStatus run(const ShowCommandOptions &options)
{
    ContentIndex content(options.paths, contextOf(options));
    const Answer answer = find(content.manager(), options);
    if (!answer.entry) {
        printError(QStringLiteral("no entry for \"%1\" in this locale or the fallback; "
                                  "`hovlets list` lists the keys, and `hovlets check` says why one "
                                  "is not served")
                           .arg(QString::fromLocal8Bit(options.key.c_str())));
        return ExitStatus::Findings;
    }
    const HVContentTree tree(answer.entry, answer.root);
    const QString file = answer.entry->attribute(QStringLiteral("HVLocation"));
    const int line = lineOf(file, answer.entry->attribute(QStringLiteral("key")));
    const QStringList paths =
            content.manager().index()->componentPathsForElement(answer.entry, QString());
    const QString xml = xmlOf(*answer.entry);
    if (options.format == "json") {
        printJson({ { QStringLiteral("file"), file },
                    { QStringLiteral("line"), line },
                    { QStringLiteral("answeredBy"), answer.by },
                    { QStringLiteral("componentPaths"), QJsonArray::fromStringList(paths) },
                    { QStringLiteral("xml"), xml } });
        return ExitStatus::Clean;
    }
    const GivenPaths given(options.paths);
    printText(QStringLiteral("%1:%2\nanswered by: %3\n")
                      .arg(given.shown(file), QString::number(line), answer.by));
    for (const QString &path : paths)
        printText(QStringLiteral("component path: %1\n").arg(given.shown(path)));
    printText(xml.trimmed() + QLatin1Char('\n'));
    return ExitStatus::Clean;
}

} // namespace

void addShowCommand(Program &program)
{
    const auto options = std::make_shared<ShowCommandOptions>();
    CLI::App &command = program.add("show", "Show the entry that a host gets for a key.",
                                    "--locale de_DE pen examples/drawing/packages",
                                    [options] { return run(*options); });
    command.add_option("KEY", options->key, "Key to look up")->required();
    addPaths(command, options->paths);
    command.add_option("--locale", options->locale, "Locale of the host; en_US by default")
            ->check(knownLocale());
    command.add_option("--fallback-locale", options->fallbackLocale,
                       "Locale that is used when the other one has no entry; en_US by default")
            ->check(knownLocale());
    command.add_option("--fallback-key", options->fallbackKey,
                       "Key that is used when neither locale has an entry");
    command.add_option("--key-data", options->keyData, "Key-data file of the host");
    command.add_option("--extra-path", options->extraPath, "Extra component folder of the host");
    addFormat(command, options->format, { "text", "json" });
}

} // namespace HovletsTool
