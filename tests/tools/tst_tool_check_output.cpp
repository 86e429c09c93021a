// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolFindings.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QtTest>

/// Tests the formats in which the program reports its findings.
class tst_ToolCheckOutput : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldWriteSarif();
    void shouldWriteJunit();
    void shouldColourLevelsOnATerminal();
    void shouldListTheCodes();
};

void tst_ToolCheckOutput::shouldWriteSarif()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet/>"));
    const ToolRun run(checkArguments("sarif", folder.path()));
    QCOMPARE(run.status, 1);
    QCOMPARE(run.json().value(QLatin1String("version")).toString(), QStringLiteral("2.1.0"));
    const QJsonObject log = run.json().value(QLatin1String("runs")).toArray().first().toObject();
    const QJsonObject result = log.value(QLatin1String("results")).toArray().first().toObject();
    QCOMPARE(result.value(QLatin1String("ruleId")).toString(), QStringLiteral("HV201"));
    QCOMPARE(result.value(QLatin1String("level")).toString(), QStringLiteral("error"));
    const QJsonObject place = result.value(QLatin1String("locations"))
                                      .toArray()
                                      .first()
                                      .toObject()
                                      .value(QLatin1String("physicalLocation"))
                                      .toObject();
    QCOMPARE(place.value(QLatin1String("region"))
                     .toObject()
                     .value(QLatin1String("startLine"))
                     .toInt(),
             2);
    const QString uri = place.value(QLatin1String("artifactLocation"))
                                .toObject()
                                .value(QLatin1String("uri"))
                                .toString();
    QVERIFY2(uri.startsWith(QLatin1String("file:///")) && uri.endsWith(QLatin1String("A.xml")),
             qPrintable(uri));
}

void tst_ToolCheckOutput::shouldWriteJunit()
{
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet/><hovlet/>"));
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("B"), control("<hovlet key='a'/>"));
    const ToolRun run(checkArguments("junit", folder.path()));
    QXmlStreamReader xml(run.output);
    QStringList names;
    while (!xml.atEnd()) {
        if (xml.readNext() == QXmlStreamReader::StartElement)
            names += xml.name().toString();
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(names.mid(0, 2),
             (QStringList { QStringLiteral("testsuites"), QStringLiteral("testsuite") }));
    QCOMPARE(names.count(QStringLiteral("testcase")), 2);
    QCOMPARE(names.count(QStringLiteral("failure")), 2);
    QVERIFY2(run.output.contains("tests=\"2\" failures=\"1\""), run.output.constData());
    QVERIFY(run.output.contains("HV201"));
}

void tst_ToolCheckOutput::shouldColourLevelsOnATerminal()
{
    const QString script = QStandardPaths::findExecutable(QStringLiteral("script"));
    if (script.isEmpty())
        QSKIP("no program that provides a terminal is installed");
    PackageFolder folder;
    folder.addControlFile(QStringLiteral("P"), QStringLiteral("A"), control("<hovlet/>"));
    const auto output = [&](bool hasTerminal, const QString &noColour) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("NO_COLOR"), noColour);
        process.setProcessEnvironment(environment);
        const QString program = QStringLiteral(HOVLETS_PROGRAM);
        if (hasTerminal)
            process.start(
                    script,
                    { QStringLiteral("-qc"),
                      QStringLiteral("'%1' check '%2' 2>/dev/null").arg(program, folder.path()),
                      QStringLiteral("/dev/null") });
        else
            process.start(program, { QStringLiteral("check"), folder.path() });
        process.waitForFinished();
        return process.readAllStandardOutput();
    };
    const QByteArray coloured = output(true, {});
    QVERIFY2(coloured.contains("\x1b[1;31merror\x1b[0m"), coloured.constData());
    for (const QByteArray &plain : { output(true, QStringLiteral("1")), output(false, {}) }) {
        QVERIFY2(plain.contains("error"), plain.constData());
        QVERIFY2(!plain.contains('\x1b'), plain.constData());
    }
}

void tst_ToolCheckOutput::shouldListTheCodes()
{
    const ToolRun run({ QStringLiteral("check"), QStringLiteral("--list-codes") });
    QCOMPARE(run.status, 0);
    QVERIFY2(run.output.startsWith("HV101\terror\t"), run.output.constData());
}

HOVLETS_TEST_MAIN(tst_ToolCheckOutput)
#include "tst_tool_check_output.moc"
