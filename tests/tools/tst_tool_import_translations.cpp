// SPDX-License-Identifier: Apache-2.0
#include "ImportReading.h"
#include "TestMain.h"

#include <QtCore/QFile>

using namespace Hovlets;

namespace {

constexpr const char German[] =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
        "<TS version=\"2.1\" language=\"de\">\n<context><name>MainWindow</name>\n"
        "<message><source>Draw &amp; write</source><translation>Zeichnen</translation></message>\n"
        "<message><source>Draws a line.</source><translation type=\"unfinished\">Nein"
        "</translation></message>\n"
        "<message><source>Paint</source><translation>Malen</translation></message>\n"
        "</context></TS>\n";

/// A Qt Linguist file.
QByteArray translation(const QByteArray &language,
                       const std::vector<std::pair<QString, QString>> &messages)
{
    QByteArray content =
            "<TS version=\"2.1\" language=\"" + language + "\"><context><name>MainWindow</name>";
    for (const auto &[source, translated] : messages)
        content += QStringLiteral("<message><source>%1</source><translation>%2</translation>"
                                  "</message>")
                           .arg(source.toHtmlEscaped(), translated.toHtmlEscaped())
                           .toUtf8();
    return content + "</context></TS>";
}

} // namespace

/// Tests packages made from files of Qt Designer and Qt Linguist.
class tst_ToolImport_Translations : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_form = m_folder->add(text("main.ui"), PaintForm);
        m_german = m_folder->add(text("app_de.ts"), German);
        m_package = m_folder->path() + text("/Paint.hovlets");
    }

    void shouldMakeAFilePerTranslation()
    {
        const ToolRun run(
                { text("import"), m_form, text("--ts"), m_german, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        const QLocale german(text("de_DE"));
        QCOMPARE(textsOf(m_package, text("pen"), german),
                 (QStringList { text("Zeichnen"), text("Draws a line."),
                                text("<b>Hold</b> it down.") }));
        QCOMPARE(textsOf(m_package, text("save"), german), QStringList()); // nothing translated
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("en_US"))),
                 QStringList { text("Saves.") });
    }

    void shouldOmitTextsTranslatedToSpaces()
    {
        const QString blanks =
                m_folder->add(text("blanks.ts"),
                              translation("de_DE",
                                          { { text("Saves."), text("  ") },
                                            { text("Draws a line."), text("<br/>") } }));
        const ToolRun run({ text("import"), m_form, text("--ts"), blanks, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        const QLocale german(text("de_DE"));
        QCOMPARE(textsOf(m_package, text("save"), german), QStringList());
        QCOMPARE(textsOf(m_package, text("pen"), german),
                 (QStringList { text("Draw & write"), text("<b>Hold</b> it down.") }));
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("en_US"))),
                 QStringList { text("Saves.") });
    }

    void shouldReadTextsWithControlCharacters()
    {
        const QString german = m_folder->add(
                text("bytes.ts"),
                translation("de", { { text("Saves."), text("Speichert.") } })
                        .replace("<message>",
                                 "<message><source>a<byte value=\"x1b\"/></source>"
                                 "<comment><byte value=\"x1b\"/></comment>"
                                 "<translation>b<byte value=\"x1b\"/></translation></message>"
                                 "<message>"));
        const ToolRun run({ text("import"), m_form, text("--ts"), german, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("de_DE"))),
                 QStringList { text("Speichert.") });
    }

    void shouldJoinTranslationsToALocale()
    {
        const QString other =
                m_folder->add(text("lib_de.ts"),
                              translation("de_DE",
                                          { { text("Saves."), text("Speichert.") },
                                            { text("Draw & write"), text("Nein") } }));
        const QString french = m_folder->add(
                text("fr.ts"), translation("fr", { { text("Saves."), text("Enregistre.") } }));
        const ToolRun run({ text("import"), m_form, text("--ts"), m_german, text("--ts"), other,
                            text("--ts"), french, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        const QLocale german(text("de_DE"));
        QCOMPARE(textsOf(m_package, text("pen"), german).value(0), text("Zeichnen"));
        QCOMPARE(textsOf(m_package, text("save"), german), QStringList { text("Speichert.") });
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("fr_FR"))),
                 QStringList { text("Enregistre.") });
        QCOMPARE(QDir(m_package + text("/Control")).entryList(QDir::Files),
                 (QStringList { text("Paint.de_DE.xml"), text("Paint.fr_FR.xml"),
                                text("Paint.xml") }));
    }

    void shouldMakeNoFileForALocaleWithoutTranslations()
    {
        const QString other = m_folder->add(
                text("other.ts"), translation("fr_FR", { { text("Other"), text("Autre") } }));
        const ToolRun run({ text("import"), m_form, text("--ts"), other, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        QVERIFY2(run.error.contains("no text in the forms has a translation for fr_FR"),
                 run.error.constData());
        QCOMPARE(QDir(m_package + text("/Control")).entryList(QDir::Files),
                 QStringList { text("Paint.xml") });
    }

    void shouldTakeTheLanguagesOfTranslations_data()
    {
        QTest::addColumn<QByteArray>("language");
        QTest::addColumn<QString>("locale");
        QTest::newRow("language") << QByteArray("de") << text("de_DE");
        QTest::newRow("territory") << QByteArray("de_AT") << text("de_AT");
        QTest::newRow("script") << QByteArray("zh_Hant") << text("zh_TW");
        QTest::newRow("unknown") << QByteArray("xx") << QString();
        QTest::newRow("unknown territory") << QByteArray("de_QQ") << QString();
    }

    void shouldTakeTheLanguagesOfTranslations()
    {
        QFETCH(QByteArray, language);
        QFETCH(QString, locale);
        const QString file = m_folder->add(
                text("some.ts"), translation(language, { { text("Saves."), text("S") } }));
        const ToolRun run({ text("import"), m_form, text("--ts"), file, text("-o"), m_package });
        const QString made = m_package + text("/Control/Paint.%1.xml").arg(locale);
        QCOMPARE(QFile::exists(made), !locale.isEmpty());
        if (!locale.isEmpty())
            return;
        QCOMPARE(run.status, 1);
        QCOMPARE(run.error,
                 "hovlets: " + file.toUtf8() + ": unknown language \"" + language
                         + "\"; use a locale such as de_DE\n");
        QVERIFY(QFile::exists(m_package + text("/Control/Paint.xml")));
    }

    /// Reading them level by level would exhaust the stack.
    void shouldReadTextsWithDeeplyNestedElements()
    {
        constexpr int Levels = 200000;
        const QString nested = m_folder->add(
                text("nested.ts"),
                "<TS language=\"de_DE\"><context><name>MainWindow</name><message><source>Sav"
                        + QByteArray("<a>").repeated(Levels) + "es."
                        + QByteArray("</a>").repeated(Levels)
                        + "</source><translation>Speichert.</translation></message></context></"
                          "TS>");
        const ToolRun run({ text("import"), m_form, text("--ts"), nested, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("de_DE"))),
                 QStringList { text("Speichert.") });
    }

    void shouldSkipATranslationWithoutALanguage()
    {
        const QString bad = m_folder->add(text("program.ts"), "<TS><context/></TS>");
        const ToolRun run({ text("import"), m_form, text("--ts"), bad, text("-o"), m_package });
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains("names no language"), run.error.constData());
        QVERIFY(QFile::exists(m_package + text("/Control/Paint.xml")));
    }

    void shouldTakeTheLanguageOfTheFileName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("locale");
        const auto row = [](const char *name, const char *locale) {
            QTest::newRow(name) << text(name) << text(locale);
        };
        row("app_de.ts", "de_DE");
        row("my_app_es_ec.ts", "es_EC");
        row("app-pt-BR.ts", "pt_BR");
        row("app_zh_hant_tw.ts", "zh_TW");
        row("fr.ts", "fr_FR");
    }

    void shouldTakeTheLanguageOfTheFileName()
    {
        QFETCH(QString, name);
        QFETCH(QString, locale);
        const QString file = m_folder->add(
                name,
                translation({}, { { text("Saves."), text("S") } }).replace(" language=\"\"", ""));
        const ToolRun run({ text("import"), m_form, text("--ts"), file, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QVERIFY(QFile::exists(m_package + text("/Control/Paint.%1.xml").arg(locale)));
    }

    void shouldUseUnfinishedTranslationsOnRequest()
    {
        const ToolRun run({ text("import"), m_form, text("--ts"), m_german, text("--unfinished"),
                            text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(textsOf(m_package, text("pen"), QLocale(text("de_DE"))).value(1), text("Nein"));
    }

    void shouldListWhatIsNotTranslated()
    {
        const QString report = m_folder->path() + text("/report");
        const ToolRun run({ text("import"), m_form, text("--ts"), m_german, text("--report"),
                            report, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QVERIFY2(run.output.contains(
                         "de_DE: 1 entries; 1 texts translated, 1 unfinished, 2 missing"),
                 run.output.constData());
        QFile file(report);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QByteArray lines = file.readAll();
        QVERIFY2(lines.startsWith("de_DE\tpen\tunfinished\tDraws a line.\n"), lines.constData());
        QVERIFY2(lines.endsWith("de_DE\tsave\tmissing\tSaves.\n"), lines.constData());
    }

    void shouldTranslateTextsOfEachForm()
    {
        const QString pens = m_folder->add(text("pens.ui"), formOf("Pens", "Pen", "Draw"));
        const QString inks = m_folder->add(text("inks.ui"), formOf("Inks", "Ink", "Draw"));
        const QString german =
                m_folder->add(text("de.ts"),
                              translation("de", { { text("Draw"), text("Zeichnen") } })
                                      .replace("MainWindow", "Inks"));
        const ToolRun run(
                { text("import"), pens, inks, text("--ts"), german, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(textsOf(m_package, text("button"), QLocale(text("de_DE"))),
                 QStringList { text("Zeichnen") });
    }

    void shouldQualifyNamesWithDifferentTranslations()
    {
        const QString pens = m_folder->add(text("pens.ui"), formOf("Pens", "Pen", "Draw"));
        const QString inks = m_folder->add(text("inks.ui"), formOf("Inks", "Ink", "Draw"));
        const auto german = [](const char *form, const char *becomes) {
            return translation("de", { { text("Draw"), text(becomes) } })
                    .replace("MainWindow", form);
        };
        const QString one = m_folder->add(text("1.ts"), german("Pens", "Zeichnen"));
        const QString two = m_folder->add(text("2.ts"), german("Inks", "Malen"));
        const ToolRun run({ text("import"), pens, inks, text("--ts"), one, text("--ts"), two,
                            text("-o"), m_package });
        QVERIFY2(run.error.contains("button (Pens, Inks)"), run.error.constData());
        const QLocale locale(text("de_DE"));
        QCOMPARE(textsOf(m_package, text("Pens/button"), locale), QStringList { text("Zeichnen") });
        QCOMPARE(textsOf(m_package, text("Inks/button"), locale), QStringList { text("Malen") });
    }

    void shouldFollowCommentsOfTranslators()
    {
        const QByteArray form = formOf("MainWindow", "Pen", "Draw");
        const QString commented = m_folder->add(
                text("pens.ui"),
                QByteArray(form).replace("<string>Draw", "<string comment=\"verb\">Draw"));
        const QString fixed =
                m_folder->add(text("fixed.ui"),
                              QByteArray(form)
                                      .replace("<string>Draw", "<string notr=\"true\">Draw")
                                      .replace("\"button\"", "\"fixed\""));
        const QByteArray german =
                translation(
                        "de",
                        { { text("Draw"), text("Ziehung") }, { text("Draw"), text("Zeichnen") } })
                        .replace("</source><translation>Zeichnen",
                                 "</source><comment>verb</comment><translation>Zeichnen");
        const ToolRun run({ text("import"), commented, fixed, text("--ts"),
                            m_folder->add(text("de.ts"), german), text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        const QLocale locale(text("de_DE"));
        QCOMPARE(textsOf(m_package, text("button"), locale), QStringList { text("Zeichnen") });
        QCOMPARE(textsOf(m_package, text("fixed"), locale), QStringList());
    }

private:
    std::unique_ptr<PackageFolder> m_folder;
    QString m_form, m_german, m_package;
};

HOVLETS_TEST_MAIN(tst_ToolImport_Translations)

#include "tst_tool_import_translations.moc"
