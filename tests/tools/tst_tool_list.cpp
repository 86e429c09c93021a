// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolRun.h"

#include <QtCore/QJsonArray>
#include <QtTest/QtTest>

class tst_ToolList : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void shouldListKeysByPackageLocaleAndFile();
    void shouldListTheSameAsJson();
    void shouldListASinglePackage();
    void shouldOmitEntriesThatTheLibraryDoesNotServe();
    void shouldKnowItsVersionAndExplainItself_data();
    void shouldKnowItsVersionAndExplainItself();
    void shouldReportMistakesInTheCommandLine_data();
    void shouldReportMistakesInTheCommandLine();

private:
    std::unique_ptr<PackageFolder> m_folder;
    QString m_english, m_german, m_other;
};

void tst_ToolList::init()
{
    m_folder = std::make_unique<PackageFolder>();
    m_other = m_folder->addControlFile(QStringLiteral("Zoom"), QStringLiteral("Zoom"),
                                       "<hovlets>\n  <hovlet key='in'/></hovlets>");
    m_english = m_folder->addControlFile(
            QStringLiteral("Draw"), QStringLiteral("Draw"),
            "<hovlets locale=\"en_US\">\n<hovlet key=\"pen\"/>\n\n<hovlet key=\"a&amp;b\"/>"
            "</hovlets>");
    m_german = m_folder->addControlFile(
            QStringLiteral("Draw"), QStringLiteral("Draw.de"),
            "<hovlets locale=\"de_DE\">\n<hovlet key=\"pen\"><hovlet key=\"inner\"/></hovlet>"
            "</hovlets>");
}

void tst_ToolList::shouldListKeysByPackageLocaleAndFile()
{
    const ToolRun run({ QStringLiteral("list"), m_folder->path() });
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.status, 0);
    const QString expected = QStringLiteral("Draw\tde_DE\tpen\t%1:2\n"
                                            "Draw\ten_US\tpen\t%2:2\n"
                                            "Draw\ten_US\ta&b\t%2:4\n"
                                            "Zoom\tany\tin\t%3:2\n")
                                     .arg(m_german, m_english, m_other);
    QCOMPARE(QString::fromUtf8(run.output), expected);
}

void tst_ToolList::shouldListTheSameAsJson()
{
    const ToolRun run({ QStringLiteral("list"), QStringLiteral("--format"), QStringLiteral("json"),
                        m_folder->path() });
    QCOMPARE(run.status, 0);
    const QJsonArray entries = run.json().value(QLatin1String("entries")).toArray();
    QCOMPARE(entries.size(), 4);
    const QJsonObject expected { { QStringLiteral("package"), QStringLiteral("Draw") },
                                 { QStringLiteral("locale"), QStringLiteral("en_US") },
                                 { QStringLiteral("key"), QStringLiteral("a&b") },
                                 { QStringLiteral("file"), m_english },
                                 { QStringLiteral("line"), 4 } };
    QCOMPARE(entries.at(2).toObject(), expected);
}

void tst_ToolList::shouldListASinglePackage()
{
    const ToolRun run(
            { QStringLiteral("list"), m_folder->path() + QStringLiteral("/Zoom.hovlets") });
    QCOMPARE(run.status, 0);
    QCOMPARE(run.output, QStringLiteral("Zoom\tany\tin\t%1:2\n").arg(m_other).toUtf8());
}

void tst_ToolList::shouldOmitEntriesThatTheLibraryDoesNotServe()
{
    m_folder->add(QStringLiteral("Zoom.hovlets/Control/below/Deep.xml"),
                  "<hovlets><hovlet key=\"deep\"/></hovlets>");
    m_folder->addControlFile(QStringLiteral("Zoom"), QStringLiteral("LineEnd"),
                             "<hovlets\n locale=\"en_US\"><hovlet key=\"end\"/></hovlets>");
    const ToolRun run(
            { QStringLiteral("list"), m_folder->path() + QStringLiteral("/Zoom.hovlets") });
    QCOMPARE(run.output.count('\n'), 1);
}

void tst_ToolList::shouldKnowItsVersionAndExplainItself_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("words");
    QTest::newRow("version") << QStringList { QStringLiteral("--version") }
                             << QStringLiteral("hovlets " HOVLETS_PROGRAM_VERSION);
    QTest::newRow("help") << QStringList { QStringLiteral("--help") } << QStringLiteral("list");
    QTest::newRow("help of a command")
            << QStringList { QStringLiteral("list"), QStringLiteral("--help") }
            << QStringLiteral("hovlets list ");
}

void tst_ToolList::shouldKnowItsVersionAndExplainItself()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, words);
    const ToolRun run(arguments);
    QCOMPARE(run.status, 0);
    QVERIFY2(run.output.contains(words.toUtf8()), run.output.constData());
}

void tst_ToolList::shouldReportMistakesInTheCommandLine_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("words");
    QTest::newRow("no command") << QStringList {} << QStringLiteral("subcommand");
    QTest::newRow("no path") << QStringList { QStringLiteral("list") } << QStringLiteral("PATH");
    QTest::newRow("missing folder")
            << QStringList { QStringLiteral("list"), QStringLiteral("nowhere/at-all") }
            << QStringLiteral("nowhere/at-all is not a readable folder");
    QTest::newRow("unknown format")
            << QStringList { QStringLiteral("list"), QStringLiteral("--format"),
                             QStringLiteral("yaml"), QStringLiteral(".") }
            << QStringLiteral("yaml");
}

void tst_ToolList::shouldReportMistakesInTheCommandLine()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, words);
    const ToolRun run(arguments);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.output, QByteArray());
    QVERIFY2(run.error.contains(words.toUtf8()), run.error.constData());
}

HOVLETS_TEST_MAIN(tst_ToolList)
#include "tst_tool_list.moc"
