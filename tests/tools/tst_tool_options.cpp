// SPDX-License-Identifier: Apache-2.0
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolHelp.h"

#include <QtTest/QtTest>

namespace {

/// A command that accepts one valid argument and then reports a missing one, which it can do only
/// if each argument counts separately.
struct Command
{
    QString name, good, missing;
    QStringList more = {}; // what else it needs
};

} // namespace

/// Tests the options of each command and their values. The commands of a group share options, which
/// are tested with the first of them.
class tst_ToolOptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldAcceptOptionsAnywhere_data();
    void shouldAcceptOptionsAnywhere();
    void shouldCoverEachCommandWithOptions();
    void shouldAcceptAnOptionOnceForEachOfItsValues();
    void shouldAcceptNamesOfCommandsAsArguments();
    void shouldRefuseUnknownLocales_data();
    void shouldRefuseUnknownLocales();
    void shouldAcceptKnownLocales_data();
    void shouldAcceptKnownLocales();
    void shouldRefuseLimitsBelowZero_data();
    void shouldRefuseLimitsBelowZero();
    void shouldReportTheNumbersThatItAccepts_data();
    void shouldReportTheNumbersThatItAccepts();
    void shouldRefuseUnknownCommands_data();
    void shouldRefuseUnknownCommands();

private:
    QList<Command> commands() const;
    QList<QPair<QString, ToolHelp::Item>> optionsOfCommands() const;
    QString valueOf(const ToolHelp::Item &option) const;
    void verifyThatBothArgumentsAreRead(const QStringList &arguments, const QString &missing) const;

    const PackageFolder m_folder;
    const QString m_form = m_folder.add(
            text("good.ui"),
            "<ui><class>A</class><widget class=\"QLabel\" name=\"a\"><property name=\"toolTip\">"
            "<string>Tip</string></property></widget></ui>");
    const QString m_report =
            m_folder.add(text("good.json"), "{\"format\": \"hovlets-coverage\", \"version\": 1}");
};

QList<Command> tst_ToolOptions::commands() const
{
    const QString folder = m_folder.path();
    const QString package = folder + text("/Made.hovlets");
    const QString missing = text("nowhere/at-all");
    return { { text("check"), folder, missing },
             { text("coverage"), m_report, missing },
             { text("import"), m_form, missing, { text("--output"), package } },
             { text("list"), folder, missing },
             { text("preview"), folder, missing },
             { text("render"), text("pen"), missing, { text("--output"), text("made.png") } },
             { text("show"), text("pen"), missing },
             { text("translate extract"), folder, missing, { text("--locale"), text("de_DE") } },
             { text("translate pseudo"), folder, missing },
             { text("translate release"), folder, missing },
             { text("translate status"), folder, missing },
             { text("translate update"), folder, missing } };
}

/// The options of all commands, each with a command.
QList<QPair<QString, ToolHelp::Item>> tst_ToolOptions::optionsOfCommands() const
{
    QList<QPair<QString, ToolHelp::Item>> options;
    QStringList known; // after the group
    const QList<Command> all = commands();
    for (const Command &command : all) {
        const QList<ToolHelp::Item> items = ToolHelp(command.name).items;
        for (const ToolHelp::Item &item : items) {
            const QString shared = ToolHelp::words(command.name).constFirst() + item.name;
            if (item.isOption() && !known.contains(shared))
                options.append({ command.name, item });
            known += shared;
        }
    }
    return options;
}

/// A valid value of an option.
QString tst_ToolOptions::valueOf(const ToolHelp::Item &option) const
{
    if (!option.values().isEmpty())
        return option.values().constFirst();
    if (option.longName().endsWith(text("locale")))
        return text("de_DE");
    if (option.longName() == text("--extra-path"))
        return m_folder.path();
    if (option.longName() == text("--key-data"))
        return m_report;
    if (option.longName() == text("--property"))
        return text("name=value");
    if (option.longName() == text("--font-size"))
        return text("12");
    return option.kind.startsWith(text("TEXT")) ? text("nowhere/value") : text("1");
}

void tst_ToolOptions::shouldAcceptOptionsAnywhere_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("value");
    const auto all = optionsOfCommands();
    for (const auto &[command, option] : all) {
        // Some options are for running programs, which end the list of arguments.
        const bool isForPrograms = command == text("import")
                && (option.longName() == text("--rules") || option.longName() == text("--qt"));
        if (!option.kind.isEmpty() && !isForPrograms)
            QTest::newRow(qPrintable(command + option.longName()))
                    << command << option.longName() << valueOf(option);
    }
}

void tst_ToolOptions::shouldAcceptOptionsAnywhere()
{
    QFETCH(QString, command);
    QFETCH(QString, option);
    QFETCH(QString, value);
    const QList<Command> all = commands();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Command &each) { return each.name == command; });
    QVERIFY(found != all.end());
    const QStringList more = found->more.contains(option) ? QStringList() : found->more;
    const bool onlyPaths = option == text("--output-dir") || option == text("--compare");
    const QString good = onlyPaths ? m_folder.path() : found->good;
    const QStringList both { good, found->missing };
    const QStringList words { option, value };
    const QStringList equals { option + QLatin1Char('=') + value };
    for (const QStringList &arguments :
         { words + both, equals + both, both + words,
           QStringList { good } + words + QStringList { both.last() } })
        verifyThatBothArgumentsAreRead(ToolHelp::words(command) + arguments + more, found->missing);
}

void tst_ToolOptions::verifyThatBothArgumentsAreRead(const QStringList &arguments,
                                                     const QString &missing) const
{
    const ToolRun run(arguments, { { text("QT_QPA_PLATFORM"), text("offscreen") } });
    const QByteArray words = "hovlets: " + missing.toUtf8() + ' ';
    QVERIFY2(run.error.startsWith(words),
             (arguments.join(QLatin1Char(' ')).toUtf8() + "\n" + run.error).constData());
    QVERIFY(run.status == 1 || run.status == 2); // 1 if the rest of an import was made
}

void tst_ToolOptions::shouldCoverEachCommandWithOptions()
{
    // The only option of "new" is --help, and "attach" takes the command line of a program.
    QStringList names { text("attach"), text("new") };
    const QList<Command> covered = commands();
    for (const Command &command : covered)
        names += command.name;
    names.sort();
    QStringList all = ToolHelp::commands();
    all.sort();
    QCOMPARE(names, all);
    QCOMPARE(ToolHelp(text("new")).items.size(), 3);
}

void tst_ToolOptions::shouldAcceptAnOptionOnceForEachOfItsValues()
{
    const QString path = m_folder.addControlFile(
            text("A"), text("A"), "<hovlets locale='en_US'><hovlet key='a'/></hovlets>");
    const ToolRun run({ text("check"), text("--locale"), text("de_DE"), text("--locale"),
                        text("fr_FR"), m_folder.path() });
    QCOMPARE(run.status, 1);
    QVERIFY2(run.output.contains("de_DE") && run.output.contains("fr_FR"), run.output.constData());
    QVERIFY(QFile::remove(path));
}

void tst_ToolOptions::shouldAcceptNamesOfCommandsAsArguments()
{
    const ToolRun run({ text("new"), text("help"), m_folder.path() + text("/list") });
    QCOMPARE(run.error, QByteArray());
    QCOMPARE(run.status, 0);
    QVERIFY(QFile::exists(m_folder.path() + text("/list/help.hovlets")));
}

void tst_ToolOptions::shouldRefuseUnknownLocales_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("locale");
    const auto all = optionsOfCommands();
    for (const auto &[command, option] : all) {
        if (!option.longName().endsWith(text("locale")))
            continue;
        for (const char *locale : { "nonsense", "xx_YYY", "de_QQ", "" })
            QTest::newRow(qPrintable(command + option.longName() + text(locale)))
                    << command << option.longName() << text(locale);
    }
}

void tst_ToolOptions::shouldRefuseUnknownLocales()
{
    QFETCH(QString, command);
    QFETCH(QString, option);
    QFETCH(QString, locale);
    const ToolRun run(ToolHelp::words(command)
                      + QStringList { m_folder.path(), m_folder.path(), option, locale });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.error,
             QStringLiteral("hovlets: %1: unknown locale \"%2\"; use a locale such as de_DE; see "
                            "`hovlets %3 --help`\n")
                     .arg(option, locale, command)
                     .toUtf8());
}

void tst_ToolOptions::shouldAcceptKnownLocales_data()
{
    QTest::addColumn<QString>("locale");
    for (const char *locale : { "de", "de_AT", "de-DE", "C", "zh_Hant", "zh_Hans_CN", "es_419" })
        QTest::newRow(locale) << text(locale);
}

void tst_ToolOptions::shouldAcceptKnownLocales()
{
    QFETCH(QString, locale);
    const ToolRun run({ text("show"), text("--locale"), locale, text("pen"), m_folder.path() });
    QVERIFY2(run.error.contains("no entry for \"pen\""), run.error.constData());
    QCOMPARE(run.status, 1);
}

void tst_ToolOptions::shouldRefuseLimitsBelowZero_data()
{
    QTest::addColumn<QStringList>("words");
    QTest::addColumn<QString>("value");
    for (const char *value : { "-1", "-0.5", "nan" }) {
        for (const char *option : { "--max-seconds", "--max-megabytes" })
            QTest::addRow("%s %s", option, value)
                    << QStringList { text("check"), text(option) } << text(value);
    }
    QTest::newRow("--max-missing")
            << QStringList { text("coverage"), text("--max-missing") } << text("-1");
}

void tst_ToolOptions::shouldRefuseLimitsBelowZero()
{
    QFETCH(QStringList, words);
    QFETCH(QString, value);
    const ToolRun run(words + QStringList { value, m_folder.path() });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.error,
             QStringLiteral("hovlets: %1: %2 must be 0 or more; see `hovlets %3 --help`\n")
                     .arg(words.last(), value, words.first())
                     .toUtf8());
}

void tst_ToolOptions::shouldReportTheNumbersThatItAccepts_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("range");
    QTest::newRow("scale") << text("--scale") << text("9") << text("from 0.5 to 8");
    QTest::newRow("font size") << text("--font-size") << text("3.9") << text("from 4 to 96");
    QTest::newRow("tolerance") << text("--tolerance") << text("1.1") << text("from 0 to 1");
    QTest::newRow("no number") << text("--scale") << text("big") << text("from 0.5 to 8");
}

void tst_ToolOptions::shouldReportTheNumbersThatItAccepts()
{
    QFETCH(QString, option);
    QFETCH(QString, value);
    QFETCH(QString, range);
    const ToolRun run({ text("render"), option, value, text("pen"), m_folder.path() });
    QCOMPARE(run.status, 2);
    QCOMPARE(run.error,
             QStringLiteral("hovlets: %1: %2 must be %3; see `hovlets render --help`\n")
                     .arg(option, value, range)
                     .toUtf8());
}

void tst_ToolOptions::shouldRefuseUnknownCommands_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("word");
    QTest::newRow("command") << QStringList { text("chekc"), text("content") } << text("chekc");
    QTest::newRow("its help") << QStringList { text("chekc"), text("--help") } << text("chekc");
    QTest::newRow("help of it") << QStringList { text("help"), text("chekc") } << text("chekc");
    QTest::newRow("option") << QStringList { text("--format"), text("json") } << text("--format");
    QTest::newRow("nothing") << QStringList { QString() } << QString();
}

void tst_ToolOptions::shouldRefuseUnknownCommands()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, word);
    const ToolRun run(arguments);
    QCOMPARE(run.status, 2);
    QCOMPARE(run.output, QByteArray());
    QCOMPARE(
            run.error,
            QStringLiteral("hovlets: unknown command \"%1\"; `hovlets --help` lists the commands\n")
                    .arg(word)
                    .toUtf8());
}

HOVLETS_TEST_MAIN(tst_ToolOptions)
#include "tst_tool_options.moc"
