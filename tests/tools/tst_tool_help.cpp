// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolHelp.h"

#include <QtTest/QtTest>

#include <algorithm>

namespace {

/// The manual without markup, except for the names of macros.
QString manual()
{
    static const QRegularExpression markup(QStringLiteral("\\\\f[BIR]|\\\\"));
    return readText(QStringLiteral(HOVLETS_SOURCE_DIR "/tools/hovlets.1")).remove(markup);
}

/// The completions that bash offers after "hovlets" and \a words, the last of which is incomplete.
QStringList completionsOf(const QStringList &words)
{
    const QString script =
            QStringLiteral("source '" HOVLETS_SOURCE_DIR "/tools/completions/hovlets'"
                           " && COMP_WORDS=(hovlets \"$@\") && COMP_CWORD=$#"
                           " && _hovlets && printf '%s\\n' \"${COMPREPLY[@]}\"");
    QProcess bash;
    bash.start(QStringLiteral("bash"),
               QStringList { QStringLiteral("-euc"), script, QStringLiteral("bash") } + words);
    if (!bash.waitForFinished(60000) || bash.exitCode() != 0)
        return { QString::fromUtf8(bash.readAllStandardError()) };
    return QString::fromUtf8(bash.readAllStandardOutput())
            .split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList sorted(QStringList list)
{
    std::sort(list.begin(), list.end());
    return list;
}

} // namespace

/// Tests that the program's help, its manual and its completion agree.
class tst_ToolHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldExplainACommandInBothWays_data() { addCommands(); }
    void shouldExplainACommandInBothWays();
    void shouldExplainItselfInBothWays();
    void shouldAgreeWithTheManual_data() { addCommands(); }
    void shouldAgreeWithTheManual();
    void shouldExplainItsOwnOptionsInTheManual();
    void shouldCompleteOptionsAndTheirValues_data() { addCommands(); }
    void shouldCompleteOptionsAndTheirValues();
    void shouldCompleteWords_data();
    void shouldCompleteWords();
    void shouldCompletePaths();

private:
    static void addCommands()
    {
        QTest::addColumn<QString>("command");
        const QStringList commands = ToolHelp::commands();
        for (const QString &command : commands)
            QTest::newRow(qPrintable(command)) << command;
    }
};

void tst_ToolHelp::shouldExplainACommandInBothWays()
{
    QFETCH(QString, command);
    const QStringList words = ToolHelp::words(command);
    const ToolRun help(words + QStringList { QStringLiteral("--help") });
    QVERIFY2(help.output.contains("Usage: hovlets " + command.toUtf8()), help.output.constData());
    const ToolRun other(QStringList { QStringLiteral("help") } + words);
    QCOMPARE(other.error, QByteArray());
    QCOMPARE(other.status, 0);
    QCOMPARE(other.output, help.output);
}

void tst_ToolHelp::shouldExplainItselfInBothWays()
{
    const ToolRun help({ QStringLiteral("--help") });
    QVERIFY2(help.output.contains("Usage: hovlets "), help.output.constData());
    const ToolRun other({ QStringLiteral("help") });
    QCOMPARE(other.status, 0);
    QCOMPARE(other.output, help.output);
}

void tst_ToolHelp::shouldAgreeWithTheManual()
{
    QFETCH(QString, command);
    const QString text = manual();
    const QString section =
            text.section(QStringLiteral(".SS %1\n").arg(command), 1, 1)
                    .section(QRegularExpression(QStringLiteral("\n\\.S[SH] ")), 0, 0);
    const ToolHelp help(command);
    QStringList said, expected;
    static const QRegularExpression entry(QStringLiteral("^\\.TP\n\\.[BI] (.*)\n(.*)$"),
                                          QRegularExpression::MultilineOption);
    auto entries = entry.globalMatch(section);
    while (entries.hasNext()) {
        const auto match = entries.next();
        said += match.captured(1).replace(QLatin1String(", --"), QLatin1String(",--"))
                + QLatin1Char('\n') + match.captured(2);
    }
    for (const ToolHelp::Item &item : help.items) {
        if (item.longName() != QLatin1String("--help")) // documented once for all commands
            expected += QString(item.name + QLatin1Char(' ') + item.kind).trimmed()
                    + QLatin1Char('\n') + item.description;
    }
    QCOMPARE(said, expected);
    const QString synopsis = text.section(QStringLiteral(".SH "), 2, 2)
                                     .replace(QStringLiteral("\n["), QStringLiteral(" ["));
    QVERIFY2(synopsis.contains(QStringLiteral(".B %1\n").arg(help.usage)), qPrintable(help.usage));
}

void tst_ToolHelp::shouldExplainItsOwnOptionsInTheManual()
{
    const QString text = manual();
    const QList<ToolHelp::Item> items = ToolHelp().items;
    for (const ToolHelp::Item &item : items) {
        QString name = item.name;
        if (item.isOption())
            QVERIFY2(text.contains(
                             QStringLiteral(".TP\n.B %1\n")
                                     .arg(name.replace(QLatin1String(","), QLatin1String(", ")))),
                     qPrintable(item.name));
    }
}

void tst_ToolHelp::shouldCompleteOptionsAndTheirValues()
{
    QFETCH(QString, command);
    const QStringList words = ToolHelp::words(command);
    QStringList names;
    const QList<ToolHelp::Item> items = ToolHelp(command).items;
    for (const ToolHelp::Item &item : items) {
        const QString name = item.longName();
        if (!item.isOption())
            continue;
        names += name;
        if (item.values().isEmpty())
            continue;
        const QString first = item.values().constFirst();
        const QString equals = QStringLiteral("=");
        QCOMPARE(completionsOf(words + QStringList { name, QString() }), item.values());
        QCOMPARE(completionsOf(words + QStringList { name, first.left(2) }), QStringList { first });
        QCOMPARE(completionsOf(words + QStringList { name, equals }), item.values());
        QCOMPARE(completionsOf(words + QStringList { name, equals, first.left(2) }),
                 QStringList { first });
    }
    QVERIFY(!names.isEmpty());
    QCOMPARE(sorted(completionsOf(words + QStringList { QStringLiteral("-") })), sorted(names));
}

void tst_ToolHelp::shouldCompleteWords_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QStringList>("completions");
    const QStringList commands = ToolHelp::next();
    const QString nothing, help = QStringLiteral("help"), group = QStringLiteral("translate");
    QTest::newRow("commands") << QStringList { nothing }
                              << commands
                    + QStringList { help, QStringLiteral("--help"), QStringLiteral("--version") };
    QTest::newRow("begun command")
            << QStringList { QStringLiteral("im") } << QStringList { QStringLiteral("import") };
    QTest::newRow("command to explain") << QStringList { help, nothing } << commands;
    QTest::newRow("commands of a group")
            << QStringList { group, nothing }
            << ToolHelp::next(group) + QStringList { QStringLiteral("--help") };
    QTest::newRow("command of a group to explain")
            << QStringList { help, group, nothing } << ToolHelp::next(group);
    QTest::newRow("unknown command of a group")
            << QStringList { group, QStringLiteral("chekc"), nothing } << QStringList();
    QTest::newRow("unknown command")
            << QStringList { QStringLiteral("chekc"), nothing } << QStringList();
}

void tst_ToolHelp::shouldCompleteWords()
{
    QFETCH(QStringList, words);
    QTEST(completionsOf(words), "completions");
}

void tst_ToolHelp::shouldCompletePaths()
{
    const PackageFolder folder;
    const QString file = folder.add(QStringLiteral("my content/keys.xml"), "<keys/>");
    const QString begun = folder.path() + QStringLiteral("/my content/k");
    for (const char *option : { "--key-data", "content" })
        QCOMPARE(completionsOf({ QStringLiteral("check"), QString::fromLatin1(option), begun }),
                 QStringList { file });
}

HOVLETS_TEST_MAIN(tst_ToolHelp)
#include "tst_tool_help.moc"
