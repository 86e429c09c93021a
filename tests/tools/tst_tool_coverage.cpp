// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtCore/QJsonArray>

namespace {

constexpr const char Report[] = R"({
    "format": "hovlets-coverage", "version": 1,
    "controls": [
        { "key": "pen", "class": "QToolButton", "window": "Drawing", "parents": [ "tools" ],
          "covered": true, "answeredByFallback": false },
        { "key": "", "class": "QComboBox", "objectName": "", "label": "Show", "window": "Drawing",
          "parents": [ "MainWindow[0]", "settings" ], "covered": false, "answeredByFallback": true }
    ],
    "entries": [
        { "key": "pen", "asked": true, "isFallback": false },
        { "key": "generic", "asked": false, "isFallback": true },
        { "key": "lasso", "asked": false, "isFallback": false }
    ]
})";

} // namespace

/// Tests how the program evaluates a running host's report.
class tst_ToolCoverage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { m_report = m_folder.add(text("coverage.json"), Report); }

    void shouldNameControlsWithoutEntriesAndEntriesWithoutControls()
    {
        const ToolRun run({ text("coverage"), m_report });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 1);
        QCOMPARE(QString::fromUtf8(run.output),
                 text("missing\tShow\tQComboBox\tDrawing > MainWindow[0] > settings\t"
                      "the fallback answers\n"
                      "unasked\tlasso\n"
                      "1 of 2 controls have no entry; no control asked for 1 of 3 entries\n"));
    }

    void shouldFailWithMoreMissingThanAllowed_data()
    {
        QTest::addColumn<QString>("most");
        QTest::addColumn<int>("status");
        QTest::newRow("fewer") << text("0") << 1;
        QTest::newRow("as many") << text("1") << 0;
        QTest::newRow("more") << text("2") << 0;
    }

    void shouldFailWithMoreMissingThanAllowed()
    {
        QFETCH(QString, most);
        const ToolRun run({ text("coverage"), m_report, text("--max-missing"), most });
        QTEST(run.status, "status");
    }

    void shouldReportTheSameAsJson()
    {
        const ToolRun run({ text("coverage"), m_report, m_report, text("--format"), text("json") });
        QCOMPARE(run.json().value(text("missing")).toArray().size(), 2);
        QCOMPARE(run.json().value(text("unasked")).toArray().size(), 2);
        QCOMPARE(run.json().value(text("controls")).toInt(), 4);
        QCOMPARE(run.json().value(text("entries")).toInt(), 6);
    }

    void shouldRefuseFilesThatAreNotReports_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QByteArray>("words");
        QTest::newRow("not JSON") << QByteArray("<xml/>") << QByteArray("is not JSON");
        QTest::newRow("something else") << QByteArray("{}") << QByteArray("not a coverage report");
        QTest::newRow("of another version")
                << QByteArray(Report).replace("\"version\": 1", "\"version\": 2")
                << QByteArray("of version 1");
    }

    void shouldRefuseFilesThatAreNotReports()
    {
        QFETCH(QByteArray, content);
        QFETCH(QByteArray, words);
        const QString file = m_folder.add(text("bad.json"), content);
        const ToolRun run({ text("coverage"), file });
        QCOMPARE(run.status, 2);
        QVERIFY2(run.error.contains(words) && run.error.contains("bad.json"),
                 run.error.constData());
    }

    void shouldNameAFileThatIsMissing()
    {
        const ToolRun run({ text("coverage"), text("no/such.json") });
        QCOMPARE(run.status, 2);
        QVERIFY(run.error.contains("no/such.json cannot be read"));
    }

private:
    PackageFolder m_folder;
    QString m_report;
};

HOVLETS_TEST_MAIN(tst_ToolCoverage)

#include "tst_tool_coverage.moc"
