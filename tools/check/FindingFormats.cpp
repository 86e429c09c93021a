// SPDX-License-Identifier: Apache-2.0
#include "FindingFormats.h"

#include "Findings.h"
#include "GivenPaths.h"
#include "Output.h"

#include <QtCore/QJsonArray>
#include <QtCore/QUrl>
#include <QtCore/QHash>
#include <QtCore/QXmlStreamWriter>

#include <cstdio>

#ifdef Q_OS_UNIX
#    include <unistd.h>
#endif

namespace HovletsTool {

namespace {

bool isColourWanted()
{
#ifdef Q_OS_UNIX
    return qEnvironmentVariableIsEmpty("NO_COLOR") && ::isatty(STDOUT_FILENO);
#else
    return false;
#endif
}

void printAsText(const FindingList &findings, const GivenPaths &paths)
{
    const bool colour = isColourWanted();
    const QList<Finding> all = findings.sorted();
    for (const Finding &finding : all) {
        QString level = nameOf(finding.rule().level);
        if (colour) {
            const int number = finding.rule().level == Level::Error ? 31 : 33;
            level = QStringLiteral("\x1b[1;%1m%2\x1b[0m").arg(number).arg(level);
        }
        printText(QStringLiteral("%1:%2:%3: ")
                          .arg(paths.shown(finding.file), QString::number(finding.position.line),
                               QString::number(finding.position.column))
                  + level + QStringLiteral(": ") + finding.text() + QStringLiteral(" [")
                  + finding.code + QStringLiteral("]\n"));
    }
}

void printAsJson(const FindingList &findings)
{
    QJsonArray array;
    const QList<Finding> all = findings.sorted();
    for (const Finding &finding : all) {
        array += QJsonObject {
            { QStringLiteral("code"), finding.code },
            { QStringLiteral("level"), nameOf(finding.rule().level) },
            { QStringLiteral("file"), finding.file },
            { QStringLiteral("line"), finding.position.line },
            { QStringLiteral("column"), finding.position.column },
            { QStringLiteral("message"), finding.message },
            { QStringLiteral("remedy"), QLatin1String(finding.rule().remedy) },
        };
    }
    printJson({ { QStringLiteral("files"), QJsonArray::fromStringList(findings.files()) },
                { QStringLiteral("findings"), array } });
}

QJsonObject sarifText(const QString &text)
{
    return { { QStringLiteral("text"), text } };
}

QJsonObject sarifResult(const Finding &finding)
{
    const QJsonObject region { { QStringLiteral("startLine"), finding.position.line },
                               { QStringLiteral("startColumn"), finding.position.column } };
    const QString uri = QUrl::fromLocalFile(finding.file).toString(QUrl::FullyEncoded);
    const QJsonObject place { { QStringLiteral("artifactLocation"),
                                QJsonObject { { QStringLiteral("uri"), uri } } },
                              { QStringLiteral("region"), region } };
    return { { QStringLiteral("ruleId"), finding.code },
             { QStringLiteral("level"), nameOf(finding.rule().level) },
             { QStringLiteral("message"), sarifText(finding.text()) },
             { QStringLiteral("locations"),
               QJsonArray { QJsonObject { { QStringLiteral("physicalLocation"), place } } } } };
}

void printAsSarif(const FindingList &findings)
{
    QJsonArray known, results;
    for (const Rule &rule : rules()) {
        known += QJsonObject {
            { QStringLiteral("id"), QLatin1String(rule.code) },
            { QStringLiteral("shortDescription"), sarifText(QLatin1String(rule.title)) },
            { QStringLiteral("help"), sarifText(QLatin1String(rule.remedy)) },
        };
    }
    const QList<Finding> all = findings.sorted();
    for (const Finding &finding : all)
        results += sarifResult(finding);
    const QJsonObject driver { { QStringLiteral("name"), QStringLiteral("hovlets") },
                               { QStringLiteral("version"),
                                 QStringLiteral(HOVLETS_PROGRAM_VERSION) },
                               { QStringLiteral("rules"), known } };
    const QJsonObject run {
        { QStringLiteral("tool"), QJsonObject { { QStringLiteral("driver"), driver } } },
        { QStringLiteral("columnKind"), QStringLiteral("utf16CodeUnits") },
        { QStringLiteral("results"), results },
    };
    printJson({ { QStringLiteral("$schema"),
                  QStringLiteral("https://json.schemastore.org/sarif-2.1.0.json") },
                { QStringLiteral("version"), QStringLiteral("2.1.0") },
                { QStringLiteral("runs"), QJsonArray { run } } });
}

/// Every file is a test case, so files without findings are listed, too.
void printAsJunit(const FindingList &findings)
{
    const QList<Finding> all = findings.sorted();
    QHash<QString, QList<Finding>> failed; // a file with several findings fails once
    for (const Finding &finding : all)
        failed[finding.file] += finding;
    QString text;
    QXmlStreamWriter xml(&text);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(QStringLiteral("testsuites"));
    xml.writeStartElement(QStringLiteral("testsuite"));
    xml.writeAttribute(QStringLiteral("name"), QStringLiteral("hovlets check"));
    xml.writeAttribute(QStringLiteral("tests"), QString::number(findings.files().size()));
    xml.writeAttribute(QStringLiteral("failures"), QString::number(failed.size()));
    for (const QString &file : findings.files()) {
        xml.writeStartElement(QStringLiteral("testcase"));
        xml.writeAttribute(QStringLiteral("classname"), QStringLiteral("hovlets"));
        xml.writeAttribute(QStringLiteral("name"), file);
        const QList<Finding> findingsInFile = failed.value(file);
        for (const Finding &finding : findingsInFile) {
            xml.writeStartElement(QStringLiteral("failure"));
            xml.writeAttribute(QStringLiteral("type"), finding.code);
            xml.writeAttribute(QStringLiteral("message"), finding.text());
            xml.writeCharacters(QStringLiteral("%1:%2:%3")
                                        .arg(file, QString::number(finding.position.line),
                                             QString::number(finding.position.column)));
            xml.writeEndElement();
        }
        xml.writeEndElement();
    }
    xml.writeEndDocument();
    printText(text);
}

} // namespace

const std::vector<std::string> &findingFormats()
{
    static const std::vector<std::string> names { "text", "json", "sarif", "junit" };
    return names;
}

void printFindings(const FindingList &findings, const std::string &format, const GivenPaths &paths)
{
    if (format == "json")
        printAsJson(findings);
    else if (format == "sarif")
        printAsSarif(findings);
    else if (format == "junit")
        printAsJunit(findings);
    else
        printAsText(findings, paths);
}

void printRules(const std::string &format)
{
    QJsonArray array;
    for (const Rule &rule : rules()) {
        if (format != "json") {
            printText(QStringLiteral("%1\t%2\t%3; %4\n")
                              .arg(QLatin1String(rule.code), nameOf(rule.level),
                                   QLatin1String(rule.title), QLatin1String(rule.remedy)));
            continue;
        }
        array += QJsonObject { { QStringLiteral("code"), QLatin1String(rule.code) },
                               { QStringLiteral("level"), nameOf(rule.level) },
                               { QStringLiteral("title"), QLatin1String(rule.title) },
                               { QStringLiteral("remedy"), QLatin1String(rule.remedy) } };
    }
    if (format == "json")
        printJson({ { QStringLiteral("codes"), array } });
}

} // namespace HovletsTool
