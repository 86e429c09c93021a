// SPDX-License-Identifier: Apache-2.0
#include "TranslateBench.h"

#include <QtCore/QDir>

#include <sys/stat.h>

/// Tests which files translating reads and writes, and which it refuses.
class tst_ToolTranslateFiles : public QObject, private TranslateBench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { skipWithoutLinguist(); }
    void init() { reset(); }
    void shouldUpdateFilesForLanguages();
    void shouldWriteWhereTheEntryLooksForTranslations();
    void shouldShowPathsAsTheyWereGiven();
    void shouldKeepTranslationsForAWrongFallbackLocale();
    void shouldRefuseSpecialFiles_data();
    void shouldRefuseSpecialFiles();
    void shouldWriteOnlyIntoThePackage_data();
    void shouldWriteOnlyIntoThePackage();
    void shouldExplainWhatIsMissing_data();
    void shouldExplainWhatIsMissing();
};

void tst_ToolTranslateFiles::shouldUpdateFilesForLanguages()
{
    QCOMPARE(extractGerman().status, 0);
    for (const char *name : { "Hovlets_fr.ts", "Hovlets_xx.ts", "Hovlets.ts" })
        QVERIFY(QFile::copy(file("Hovlets_de_DE.ts"), file(name)));
    const ToolRun updated = run({ text("update") });
    QCOMPARE(updated.error, QByteArray());
    QCOMPARE(updated.output.count('\n'), 2);
    QVERIFY2(updated.output.contains("Hovlets_fr.ts: "), updated.output.constData());
}

void tst_ToolTranslateFiles::shouldWriteWhereTheEntryLooksForTranslations()
{
    write("<hovlets search=\"Default\" l10n_name=\"words\">"
          "<hovlet key=\"key\" title=\"Pen\"/>"
          "<hovlet key=\"b\" l10n_name=\"b\" title=\"Brush\"/></hovlets>");
    const ToolRun made = run({ text("pseudo"), text("--expansion"), text("0") });
    QCOMPARE(QString::fromUtf8(made.output),
             QStringLiteral("%1/Test.hovlets/b/Hovlets_en_ZW.qm\n"
                            "%1/Test.hovlets/words/Hovlets_en_ZW.qm\n")
                     .arg(path()));
    showIn("en_ZW");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[Þéñ]") });
    QVERIFY(m_bench->show(text("b")));
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[Ɓŕûšĥ]") });
}

void tst_ToolTranslateFiles::shouldShowPathsAsTheyWereGiven()
{
    const auto inFolder = [this](const QStringList &arguments) {
        const ToolRun run(QStringList { text("translate") } + arguments, {},
                          { QStringLiteral(HOVLETS_PROGRAM) }, path());
        return QString::fromUtf8(run.error + run.output);
    };
    const QString file = text("Test.hovlets/l10n/Hovlets_de_DE");
    const int count = 6 + UserInterfaceTexts;
    QCOMPARE(inFolder({ text("extract"), text("--locale"), text("de_DE"), text(".") }),
             QStringLiteral("%1.ts: %2 texts\n").arg(file).arg(count));
    QCOMPARE(inFolder({ text("update"), text("Test.hovlets/") }),
             QStringLiteral("%1.ts: %2 texts\n").arg(file).arg(count));
    QCOMPARE(inFolder({ text("release"), text(".") }), file + text(".qm\n"));
    QVERIFY(inFolder({ text("status"), text(".") }).endsWith(text("\t") + file + text(".ts\n")));
    QCOMPARE(inFolder({ text("release"), path() }), path() + text("/") + file + text(".qm\n"));
}

void tst_ToolTranslateFiles::shouldKeepTranslationsForAWrongFallbackLocale()
{
    write("<hovlets locale=\"en_GB\"><hovlet key=\"key\" title=\"Pen\"/>"
          "</hovlets>");
    QCOMPARE(run({ text("extract"), text("--fallback-locale"), text("en_GB"), text("--locale"),
                   text("de_DE") })
                     .status,
             0);
    translateAndRelease(text("Pen"), text("Stift"));
    const QString translated = readText(file("Hovlets_de_DE.ts"));
    for (const char *command : { "update", "status" }) {
        const ToolRun refused = run({ text(command) });
        QVERIFY2(refused.error.contains("does --fallback-locale name the locale of the texts?"),
                 refused.error.constData());
        QCOMPARE(refused.status, 2);
    }
    QCOMPARE(readText(file("Hovlets_de_DE.ts")), translated);
    QCOMPARE(run({ text("update"), text("--fallback-locale"), text("en_GB") }).status, 0);
    QVERIFY(readText(file("Hovlets_de_DE.ts")).contains(text("<translation>Stift</translation>")));
}

void tst_ToolTranslateFiles::shouldRefuseSpecialFiles_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("isLink");
    QTest::addColumn<QStringList>("arguments");
    const QStringList extracting { text("extract"), text("--locale"), text("de_DE") };
    const QStringList imitating { text("pseudo"), text("--locale"), text("de_DE") };
    QTest::newRow("pipe to extract to") << text(".ts") << false << extracting;
    QTest::newRow("link to extract to") << text(".ts") << true << extracting;
    QTest::newRow("link to update") << text(".ts") << true << QStringList { text("update") };
    QTest::newRow("link to count") << text(".ts") << true << QStringList { text("status") };
    QTest::newRow("pipe to release to") << text(".qm") << false << QStringList { text("release") };
    QTest::newRow("link to release to") << text(".qm") << true << QStringList { text("release") };
    QTest::newRow("pipe for a pseudo-locale") << text(".qm") << false << imitating;
    QTest::newRow("link for a pseudo-locale") << text(".qm") << true << imitating;
}

void tst_ToolTranslateFiles::shouldRefuseSpecialFiles()
{
    QFETCH(QString, suffix);
    QFETCH(bool, isLink);
    QFETCH(QStringList, arguments);
    QCOMPARE(extractGerman().status, 0);
    const QString real = file("Hovlets_de_DE.ts");
    const QString special = file("Hovlets_de_DE") + suffix;
    const QString target = m_bench->folder.add(text("other.ts"), readText(real).toUtf8());
    if (special == real || arguments.first() == text("pseudo"))
        QVERIFY(QFile::remove(real));
    if (isLink)
        QVERIFY(QFile::link(target, special));
    else
        QCOMPARE(::mkfifo(QFile::encodeName(special).constData(), S_IRUSR | S_IWUSR), 0);
    const QString before = readText(target);
    const ToolRun refused = run(arguments);
    QCOMPARE(QString::fromUtf8(refused.error),
             QStringLiteral("hovlets: %1 is not a regular file; remove it\n").arg(special));
    QCOMPARE(refused.status, 2);
    QCOMPARE(readText(target), before);
}

void tst_ToolTranslateFiles::shouldWriteOnlyIntoThePackage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("linkTarget"); // of l10n; empty for no link
    QTest::newRow("parent folder") << text("../outside") << QString();
    QTest::newRow("absolute path") << text("%1/outside") << QString();
    QTest::newRow("link") << text("l10n") << text("%1/outside");
    QTest::newRow("folder in a link") << text("l10n/new") << text("%1/outside");
    QTest::newRow("broken link") << text("l10n") << text("%1/outside/none");
}

void tst_ToolTranslateFiles::shouldWriteOnlyIntoThePackage()
{
    QFETCH(QString, name);
    QFETCH(QString, linkTarget);
    m_bench->folder.add(text("outside/note.txt"), "x");
    const QString filled = name.contains(text("%1")) ? name.arg(path()) : name;
    const QString controlFile = write("<hovlets l10n_name=\"" + filled.toUtf8()
                                      + "\"><hovlet key=\"key\" title=\"Pen\"/>"
                                        "<hovlet key=\"b\" title=\"Brush\"/></hovlets>");
    m_bench->folder.addControlFile(text("Other"), text("o"),
                                   "<hovlets><hovlet key=\"o\" title=\"Other\"/></hovlets>");
    if (!linkTarget.isEmpty())
        QVERIFY(QFile::link(linkTarget.arg(path()), path() + text("/Test.hovlets/l10n")));
    for (const QStringList &arguments :
         { QStringList { text("extract"), text("--locale"), text("de_DE") },
           QStringList { text("pseudo") }, QStringList { text("release") } }) {
        const ToolRun partly = run(arguments);
        const QString expected =
                QStringLiteral("hovlets: %1: translations belong into the package, but the folder ")
                        .arg(controlFile);
        QVERIFY2(partly.error.startsWith(expected.toUtf8()), partly.error.constData());
        QCOMPARE(partly.error.count('\n'), 1);
        QVERIFY2(partly.output.contains("/Other.hovlets/l10n/Hovlets_"), partly.output.constData());
        QCOMPARE(partly.output.count('\n'), 1);
        QCOMPARE(partly.status, 1);
    }
    QCOMPARE(QDir(path() + text("/outside")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList { text("note.txt") });
}

void tst_ToolTranslateFiles::shouldExplainWhatIsMissing_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("linguist");
    QTest::addColumn<QByteArray>("error");
    const QByteArray noFile = "hovlets: no Hovlets_LOCALE.ts in these packages; `hovlets translate "
                              "extract` creates one\n";
    for (const char *command : { "update", "release", "status" })
        QTest::newRow(command) << QStringList { text(command) } << QString() << noFile;
    QTest::newRow("other name") << QStringList { text("update"), text("--name"), text("Words") }
                                << QString() << QByteArray(noFile).replace("Hovlets_", "Words_");
    QTest::newRow("nothing to translate")
            << QStringList { text("extract"), text("--locale"), text("en_US") } << QString()
            << QByteArray();
    QTest::newRow("lupdate") << QStringList { text("extract"), text("--locale"), text("de_DE") }
                             << text("/nonexistent")
                             << QByteArray("hovlets: lupdate is not installed; install Qt's "
                                           "translation tools, on Debian the package "
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
                                           "qt6-l10n-tools"
#else
                                           "qttools5-dev-tools"
#endif
                                           ", or name their folder in HOVLETS_LINGUIST_PATH\n");
}

void tst_ToolTranslateFiles::shouldExplainWhatIsMissing()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, linguist);
    QFETCH(QByteArray, error);
    if (error.isEmpty()) {
        write("<hovlets locale=\"en_US\"><hovlet key=\"a\" title=\"A\"/>"
              "</hovlets>");
        error = "hovlets: no entry in these folders needs a translation for en_US; does "
                "--fallback-locale name the locale of the texts?\n";
    }
    const ToolRun run(QStringList { text("translate") } + arguments + QStringList { path() },
                      { { text("HOVLETS_LINGUIST_PATH"), linguist } });
    QCOMPARE(run.error, error);
    QCOMPARE(run.status, 2);
}

HOVLETS_TEST_MAIN(tst_ToolTranslateFiles)
#include "tst_tool_translate_files.moc"
