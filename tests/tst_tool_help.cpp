// SPDX-License-Identifier: Apache-2.0
#include "TestMain.h"
#include "ToolRun.h"

#include <QtCore/QFile>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

class tst_ToolHelp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldBeCompleteInTheManualAndTheCompletion_data();
    void shouldBeCompleteInTheManualAndTheCompletion();
};

void tst_ToolHelp::shouldBeCompleteInTheManualAndTheCompletion_data()
{
    QTest::addColumn<QString>("command");
    const QString help = QString::fromUtf8(ToolRun({ QStringLiteral("--help") }).output);
    static const QRegularExpression line(QStringLiteral("^  ([a-z]+)  "),
                                         QRegularExpression::MultilineOption);
    auto commands = line.globalMatch(help);
    while (commands.hasNext()) {
        const QString command = commands.next().captured(1);
        QTest::newRow(qPrintable(command)) << command;
    }
}

void tst_ToolHelp::shouldBeCompleteInTheManualAndTheCompletion()
{
    QFETCH(QString, command);
    QFile manualFile(QStringLiteral(HOVLETS_SOURCE_DIR "/tools/hovlets.1"));
    QFile completionFile(QStringLiteral(HOVLETS_SOURCE_DIR "/tools/completions/hovlets"));
    QVERIFY(manualFile.open(QIODevice::ReadOnly) && completionFile.open(QIODevice::ReadOnly));
    const QString manual = QString::fromUtf8(manualFile.readAll()).remove(QLatin1Char('\\'));
    const QString section = manual.section(QStringLiteral(".SS %1\n").arg(command), 1, 1)
                                    .section(QStringLiteral("\n.SS "), 0, 0);
    QVERIFY2(!section.isEmpty(), "the manual lacks the command");
    const QString completion = QString::fromUtf8(completionFile.readAll())
                                       .section(QStringLiteral("    %1) ").arg(command), 1, 1)
                                       .section(QStringLiteral(";;"), 0, 0);
    const QString help = QString::fromUtf8(ToolRun({ command, QStringLiteral("--help") }).output);
    static const QRegularExpression option(QStringLiteral("^  (?:-\\w,)?(--[a-z][-a-z]*)"),
                                           QRegularExpression::MultilineOption);
    auto options = option.globalMatch(help);
    QVERIFY(options.hasNext());
    while (options.hasNext()) {
        const QString name = options.next().captured(1);
        QVERIFY2(completion.contains(name), qPrintable(name));
        QVERIFY2(name == QLatin1String("--help") || section.contains(name), qPrintable(name));
    }
}

HOVLETS_TEST_MAIN(tst_ToolHelp)
#include "tst_tool_help.moc"
