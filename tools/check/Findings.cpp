// SPDX-License-Identifier: Apache-2.0
#include "Findings.h"

#include <QtCore/QRegularExpression>

#include <algorithm>
#include <tuple>

namespace HovletsTool {

QLatin1String nameOf(Level level)
{
    return QLatin1String(level == Level::Error ? "error" : "warning");
}

const std::vector<Rule> &rules()
{
    static const std::vector<Rule> all = {
        { "HV101", Level::Error, "not well-formed", "correct the XML here" },
        { "HV102", Level::Error, "wrong root element", "make \"hovlets\" the root element" },
        { "HV103", Level::Error, "does not match the schema", "correct what the schema names" },
        { "HV104", Level::Error, "wrong root element of key data",
          "make \"hovletkeys\" the root element" },
        { "HV105", Level::Error, "nested too deeply", "use fewer levels" },
        { "HV110", Level::Error, "not in the control folder", "move it into the folder Control" },
        { "HV111", Level::Error, "name does not end in .xml", "rename it to end in .xml" },
        { "HV112", Level::Error, "folder without the package suffix",
          "rename the folder to end in .hovlets" },
        { "HV113", Level::Error, "symbolic link, hidden file or special file",
          "replace it with a regular file or folder" },
        { "HV114", Level::Error, "root tag followed by a line end",
          "start a line with \"<hovlets\" and put its first attribute or \">\" on the same line" },
        { "HV115", Level::Error, "not UTF-8", "save the file as UTF-8" },
        { "HV116", Level::Error, "cannot be read", "make it readable" },
        { "HV117", Level::Warning, "no package in the folder",
          "give a folder of packages (*.hovlets) or a package" },
        { "HV118", Level::Error, "tag before the root tag",
          "remove its \"<\", or move it after the root tag" },
        { "HV119", Level::Error, "beyond a limit", "make it smaller or simpler" },
        { "HV120", Level::Warning, "character reference that Qt 5 misreads",
          "write the character itself" },
        { "HV201", Level::Error, "entry without a key", "add the attribute \"key\"" },
        { "HV202", Level::Error, "duplicate key in a file",
          "keep only one: the library serves neither" },
        { "HV203", Level::Warning, "key shadowed by another file", "remove one of the entries" },
        { "HV204", Level::Error, "unknown locale", "use a locale such as en_US" },
        { "HV205", Level::Error, "reserved attribute", "remove it" },
        { "HV206", Level::Error, "unknown package in \"search\"",
          "name a package that has control files" },
        { "HV207", Level::Warning, "entry missing in the fallback locale",
          "add the entry for the fallback locale" },
        { "HV208", Level::Warning, "entry missing in a locale", "add the entry for the locale" },
        { "HV209", Level::Warning, "key data for an unknown key",
          "correct the name, or add an entry for the key" },
        { "HV210", Level::Error, "key data without a key", "add the attribute \"name\"" },
        { "HV301", Level::Error, "missing resource", "put the file into the package's resources" },
        { "HV302", Level::Error, "unreadable picture", "save it as PNG or JPEG" },
        { "HV303", Level::Error, "unreadable clip",
          "encode it again, for example as H.264 in MP4" },
        { "HV304", Level::Warning, "clip too long", "shorten it, or raise --max-seconds" },
        { "HV305", Level::Warning, "file too large", "make it smaller, or raise --max-megabytes" },
        { "HV306", Level::Error, "missing user interface",
          "correct its path, or add a package that has it to \"search\", such as Default" },
        { "HV307", Level::Error, "unreadable user interface", "replace it with a readable file" },
        { "HV308", Level::Error, "picture too large", "scale it down" },
        { "HV309", Level::Warning, "clip too large for the memory of clips",
          "shorten it, or scale it down" },
        { "HV310", Level::Error, "unreadable captions", "write them as WebVTT" },
        { "HV311", Level::Warning, "variant of another size",
          "make \"@2x\" files twice as large, and \"-dark\" files as large as the usual ones" },
        { "HV312", Level::Warning, "more captions than a clip shows",
          "shorten or divide the clip" },
        { "HV401", Level::Error, "unterminated placeholder", "write %(name)s" },
        { "HV402", Level::Error, "invalid link",
          "use an address with its scheme, a path with \"/\" or a topic" },
        { "HV403", Level::Warning, "more content than a popup shows", "divide or shorten it" },
        { "HV404", Level::Warning, "unknown element or attribute",
          "use one that the user interface shows, or permit an attribute of the host with "
          "--host-attribute" },
        { "HV405", Level::Warning, "markup outside a text",
          "write it in CDATA, or with &lt; and &gt;" },
        { "HV406", Level::Warning, "unsupported tag in a text", "use a tag that texts may have" },
    };
    return all;
}

namespace {

/// Makes a finding fit on one line of output, even if its message quotes several lines of content.
/// Shortens long quotes.
QString asLine(const QString &message)
{
    constexpr int Longest = 1000; // characters
    static const QRegularExpression lineEnds(QStringLiteral("\\s*[\\r\\n]+\\s*"));
    QString line = message;
    if (line.size() > Longest)
        line = line.left(Longest / 2) + QStringLiteral(" … ") + line.right(Longest / 2);
    return line.replace(lineEnds, QStringLiteral(" "));
}

} // namespace

const Rule &rule(const QString &code)
{
    return *std::find_if(rules().begin(), rules().end(),
                         [&](const Rule &rule) { return code == QLatin1String(rule.code); });
}

QString Finding::text() const
{
    return message + QStringLiteral("; ") + QLatin1String(rule().remedy);
}

void FindingList::addFile(const QString &file)
{
    if (m_known.contains(file))
        return;
    m_known += file;
    m_files += file;
}

void FindingList::add(const char *code, const QString &file, Position position,
                      const QString &message)
{
    constexpr int Longest = 1000; // findings of a series; more are of no use
    addFile(file);
    const int number = ++m_series[file + QLatin1Char('\n') + QLatin1String(code)];
    if (number > Longest)
        return;
    QString line = message;
    if (number == Longest)
        line += QStringLiteral("; further findings of this kind in the file are not listed");
    m_findings += Finding { QLatin1String(code), file, position, asLine(line) };
}

QList<Finding> FindingList::sorted() const
{
    QList<Finding> findings = m_findings;
    std::stable_sort(
            findings.begin(), findings.end(), [](const Finding &left, const Finding &right) {
                return std::tie(left.file, left.position.line, left.position.column, left.code)
                        < std::tie(right.file, right.position.line, right.position.column,
                                   right.code);
            });
    return findings;
}

} // namespace HovletsTool
