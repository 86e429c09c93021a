// SPDX-License-Identifier: Apache-2.0
#include "Commands.h"
#include "ContentIndex.h"
#include "Program.h"
#include "XmlDocument.h"

#include <QtCore/QJsonArray>

#include <algorithm>
#include <memory>
#include <tuple>

namespace {

struct Options
{
    std::vector<std::string> paths;
    std::string format;
};

struct Row
{
    QString package, locale, file, key;
    int line = 0;
};

std::vector<Row> rowsOf(const ContentIndex &content, const QString &file)
{
    const XmlDocument document(file);
    std::vector<Row> rows;
    QString locale;
    for (const XmlDocument::Element &element : document.elements()) {
        if (element.level == 0)
            locale = element.value(QStringLiteral("locale"));
        if (element.level == 1 && element.name == QLatin1String("hovlet")
            && element.has(QStringLiteral("key")))
            rows.push_back({ content.packageOf(file), locale, file,
                             element.value(QStringLiteral("key")),
                             document.position(element.offset).line });
    }
    return rows;
}

int run(const Options &options)
{
    const ContentIndex content(options.paths);
    std::vector<Row> rows;
    const QStringList files = content.controlFiles();
    for (const QString &file : files) {
        const std::vector<Row> more = rowsOf(content, file);
        rows.insert(rows.end(), more.begin(), more.end());
    }
    std::stable_sort(rows.begin(), rows.end(), [](const Row &left, const Row &right) {
        return std::tie(left.package, left.locale, left.file, left.line)
                < std::tie(right.package, right.locale, right.file, right.line);
    });

    QJsonArray entries;
    for (const Row &row : rows) {
        if (options.format == "json") {
            entries += QJsonObject { { QStringLiteral("key"), row.key },
                                     { QStringLiteral("package"), row.package },
                                     { QStringLiteral("locale"), row.locale },
                                     { QStringLiteral("file"), row.file },
                                     { QStringLiteral("line"), row.line } };
            continue;
        }
        const QString locale = row.locale.isEmpty() ? QStringLiteral("any") : row.locale;
        printText(QStringLiteral("%1\t%2\t%3\t%4:%5\n")
                          .arg(row.package, locale, row.key, row.file, QString::number(row.line)));
    }
    if (options.format == "json")
        printJson({ { QStringLiteral("entries"), entries } });
    return Clean;
}

} // namespace

void addListCommand(Program &program)
{
    const auto options = std::make_shared<Options>();
    CLI::App &command =
            program.add("list", "Lists the keys: package, locale, key, file and line.",
                        "examples/drawing/packages", [options] { return run(*options); });
    addPaths(command, options->paths);
    addFormat(command, options->format, { "text", "json" });
}
