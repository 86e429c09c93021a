// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVIndex.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace Hovlets;

namespace {

constexpr const char Form[] =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<ui version=\"4.0\">\n<class>MainWindow</class>\n"
        "<widget class=\"QMainWindow\" name=\"MainWindow\">\n"
        " <property name=\"windowTitle\"><string>Paint</string></property>\n"
        " <widget class=\"QPushButton\" name=\"pen\">\n"
        "  <property name=\"toolTip\"><string>Draw &amp; write</string></property>\n"
        "  <property name=\"statusTip\"><string>Draws a line.</string></property>\n"
        "  <property name=\"whatsThis\"><string>&lt;html&gt;&lt;b&gt;Hold&lt;/b&gt; it "
        "down.&lt;/html&gt;</string></property>\n"
        " </widget>\n"
        " <widget class=\"QLabel\" name=\"silent\"/>\n"
        " <action name=\"save\"><property name=\"statusTip\"><string>Saves.</string></property>"
        "</action>\n"
        "</widget>\n</ui>\n";

constexpr const char German[] =
        "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!DOCTYPE TS>\n"
        "<TS version=\"2.1\" language=\"de\">\n<context><name>MainWindow</name>\n"
        "<message><source>Draw &amp; write</source><translation>Zeichnen</translation></message>\n"
        "<message><source>Draws a line.</source><translation type=\"unfinished\">Nein"
        "</translation></message>\n"
        "<message><source>Paint</source><translation>Malen</translation></message>\n"
        "</context></TS>\n";

/// A form with a tooltip, written as XML.
QByteArray tip(const char *name, const QByteArray &xml)
{
    return QByteArray("<ui><class>MainWindow</class><widget class=\"QPushButton\" name=\"") + name
            + "\"><property name=\"toolTip\"><string>" + xml + "</string></property></widget></ui>";
}

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

/// The texts of an entry: its title, then its paragraphs.
QStringList textsOf(const QString &package, const QString &key, const QLocale &locale)
{
    HVContext context;
    HVIndex index(&context, {});
    const QDir control(package + text("/Control"));
    const QStringList files = control.entryList({ text("*.xml") });
    for (const QString &file : files)
        index.indexControlFile(control.filePath(file), package);
    QString path;
    int depth = 0;
    HVXmlElement *root = nullptr;
    const HVXmlElement *entry = index.retrieve(key, locale, path, depth, root);
    const std::unique_ptr<HVXmlElement> owner(root);
    if (!entry)
        return {};
    QStringList texts { entry->attribute(text("title")) };
    for (const QObject *child : entry->children())
        texts += static_cast<const HVXmlElement *>(child)->content();
    return texts;
}

} // namespace

/// Tests packages made from files of Qt Designer and Qt Linguist.
class tst_ToolImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_form = m_folder->add(text("main.ui"), Form);
        m_german = m_folder->add(text("app_de.ts"), German);
        m_package = m_folder->path() + text("/Paint.hovlets");
    }

    void shouldMakeEntriesFromTips()
    {
        const ToolRun run({ text("import"), m_form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        const QLocale english(text("en_US"));
        QCOMPARE(textsOf(m_package, text("pen"), english),
                 (QStringList { text("Draw & write"), text("Draws a line."),
                                text("Hold it down.") }));
        QCOMPARE(textsOf(m_package, text("save"), english), QStringList { text("Saves.") });
        QCOMPARE(textsOf(m_package, text("silent"), english), QStringList());
        QCOMPARE(textsOf(m_package, text("MainWindow"), english), QStringList());
    }

    void shouldMakeAFilePerTranslation()
    {
        const ToolRun run(
                { text("import"), m_form, text("--ts"), m_german, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        const QLocale german(text("de_DE"));
        QCOMPARE(textsOf(m_package, text("pen"), german),
                 (QStringList { text("Zeichnen"), text("Draws a line."), text("Hold it down.") }));
        QCOMPARE(textsOf(m_package, text("save"), german), QStringList()); // nothing translated
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("en_US"))),
                 QStringList { text("Saves.") });
    }

    void shouldJoinFormsWithTheSameNames()
    {
        const QString other = m_folder->add(
                text("other.ui"),
                QByteArray(Form).replace("Saves.", "Stores.").replace("\"pen\"", "\"fill\""));
        const ToolRun run({ text("import"), m_form, other, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        const QLocale english(text("en_US"));
        QCOMPARE(textsOf(m_package, text("save"), english), QStringList { text("Saves.") });
        QCOMPARE(textsOf(m_package, text("fill"), english).size(), 3);
    }

    void shouldRefuseWhatItCannotDo_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<QString>("package");
        QTest::addColumn<QByteArray>("words");
        const QByteArray form(Form);
        QTest::newRow("no form") << QByteArray("<x/>") << text("P.hovlets")
                                 << QByteArray("bad.ui is not a Qt Designer form");
        QTest::newRow("not well-formed")
                << form.left(300) << text("P.hovlets") << QByteArray("bad.ui:");
        QTest::newRow("more than a form")
                << form + "<ui/>" << text("P.hovlets") << QByteArray("bad.ui:");
        QTest::newRow("nothing in it") << QByteArray("<ui><class>A</class></ui>")
                                       << text("P.hovlets") << QByteArray("nothing to import");
        QTest::newRow("translation")
                << QByteArray(German) << text("P.hovlets")
                << QByteArray("bad.ui is a translation file; put --ts before it");
        QTest::newRow("name") << form << text("P.package") << QByteArray("must end in .hovlets");
        QTest::newRow("no name") << form << text(".hovlets")
                                 << QByteArray("/.hovlets would be hidden; put a name before");
        QTest::newRow("hidden") << form << text(".P.hovlets")
                                << QByteArray("/.P.hovlets would be hidden");
        for (const char *blank :
             { "  ", "&lt;p&gt;&lt;br/&gt;&lt;/p&gt;", "&#160;", "&lt;img src=\"pen.png\"/&gt;" })
            QTest::newRow(blank) << tip("button", blank) << text("P.hovlets")
                                 << QByteArray("nothing to import");
        QTest::newRow("there already")
                << form << text("Old.hovlets") << QByteArray("already exists");
    }

    void shouldRefuseWhatItCannotDo()
    {
        QFETCH(QByteArray, form);
        QFETCH(QString, package);
        QFETCH(QByteArray, words);
        const QString old = m_folder->add(text("Old.hovlets/Control/Old.xml"), "<hovlets/>");
        const QString bad = m_folder->add(text("bad.ui"), form);
        const ToolRun run(
                { text("import"), bad, text("-o"), m_folder->path() + QLatin1Char('/') + package });
        QCOMPARE(run.status, 2);
        QVERIFY2(run.error.contains(words), run.error.constData());
        QVERIFY(QFile::exists(old));
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot),
                 QStringList { text("Old.hovlets") });
    }

    void shouldOmitTextsWithNothingToRead()
    {
        const QString blank =
                m_folder->add(text("blank.ui"),
                              QByteArray(tip("save", " ")).replace("</ui>", tip("b", "\n").mid(4)));
        const ToolRun run({ text("import"), blank, m_form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        const QLocale english(text("en_US"));
        QCOMPARE(textsOf(m_package, text("save"), english), QStringList { text("Saves.") });
        QCOMPARE(textsOf(m_package, text("b"), english), QStringList());
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
                 (QStringList { text("Draw & write"), text("Hold it down.") }));
        QCOMPARE(textsOf(m_package, text("save"), QLocale(text("en_US"))),
                 QStringList { text("Saves.") });
    }

    void shouldGiveAWidgetOnlyItsOwnTips()
    {
        const QString form = m_folder->add(
                text("tree.ui"),
                "<ui><class>Tree</class><widget class=\"QTreeWidget\" name=\"tree\">"
                "<property name=\"toolTip\"><string>Tree</string></property>"
                "<column><property name=\"toolTip\"><string>Column tip</string></property>"
                "<property name=\"statusTip\"><string>Column</string></property></column>"
                "<item><property name=\"toolTip\"><string>Row tip</string></property>"
                "<item><property name=\"whatsThis\"><string>Row</string></property></item></item>"
                "<layout class=\"QVBoxLayout\"><item><widget class=\"QLabel\" name=\"inner\">"
                "<property name=\"toolTip\"><string>Inner</string></property></widget></item>"
                "</layout><property name=\"statusTip\"><string>All rows.</string></property>"
                "</widget></ui>");
        const ToolRun run({ text("import"), form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        const QLocale english(text("en_US"));
        QCOMPARE(textsOf(m_package, text("tree"), english),
                 (QStringList { text("Tree"), text("All rows.") }));
        QCOMPARE(textsOf(m_package, text("inner"), english), QStringList { text("Inner") });
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
        QCOMPARE(run.status, 2);
        QCOMPARE(run.error,
                 "hovlets: " + file.toUtf8() + ": unknown language \"" + language
                         + "\"; use a locale such as de_DE\n");
        QVERIFY(!QFile::exists(m_package));
    }

    void shouldRefuseATranslationWithoutALanguage()
    {
        const QString bad = m_folder->add(text("bad.ts"), "<TS><context/></TS>");
        const ToolRun run({ text("import"), m_form, text("--ts"), bad, text("-o"), m_package });
        QCOMPARE(run.status, 2);
        QVERIFY2(run.error.contains("names no language"), run.error.constData());
        QVERIFY(!QFile::exists(m_package));
    }

private:
    std::unique_ptr<PackageFolder> m_folder;
    QString m_form, m_german, m_package;
};

HOVLETS_TEST_MAIN(tst_ToolImport)

#include "tst_tool_import.moc"
