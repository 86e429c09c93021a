// SPDX-License-Identifier: Apache-2.0
#include "ImportReading.h"
#include "TestMain.h"

#include <QtCore/QFile>

#include <sys/stat.h>

using namespace Hovlets;

namespace {

/// A form with a tooltip, written as XML.
QByteArray tip(const char *name, const QByteArray &xml)
{
    return QByteArray("<ui><class>MainWindow</class><widget class=\"QPushButton\" name=\"") + name
            + "\"><property name=\"toolTip\"><string>" + xml + "</string></property></widget></ui>";
}

QByteArray attributes(int count)
{
    QByteArray all;
    for (int i = 0; i < count; ++i)
        all += " a" + QByteArray::number(i) + "=''";
    return all;
}

} // namespace

/// Tests packages made from files of Qt Designer.
class tst_ToolImport : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<PackageFolder>();
        m_form = m_folder->add(text("main.ui"), PaintForm);
        m_package = m_folder->path() + text("/Paint.hovlets");
    }

    void shouldMakeEntriesFromTips()
    {
        const ToolRun run({ text("import"), m_form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(textsOf(m_package, text("pen"), m_english),
                 (QStringList { text("Draw & write"), text("Draws a line."),
                                text("<b>Hold</b> it down.") }));
        QCOMPARE(textsOf(m_package, text("save"), m_english), QStringList { text("Saves.") });
        QCOMPARE(textsOf(m_package, text("silent"), m_english), QStringList());
        QCOMPARE(textsOf(m_package, text("MainWindow"), m_english), QStringList());
    }

    void shouldJoinFormsWithTheSameNames()
    {
        const QString other = m_folder->add(
                text("other.ui"),
                QByteArray(PaintForm).replace("Saves.", "Stores.").replace("\"pen\"", "\"fill\""));
        const ToolRun run({ text("import"), m_form, other, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        QCOMPARE(textsOf(m_package, text("save"), m_english), QStringList { text("Saves.") });
        QCOMPARE(textsOf(m_package, text("fill"), m_english).size(), 3);
    }

    void shouldRefuseWhatItCannotDo_data()
    {
        QTest::addColumn<QByteArray>("form");
        QTest::addColumn<QString>("package");
        QTest::addColumn<QByteArray>("words");
        const QByteArray form(PaintForm);
        QTest::newRow("no form") << QByteArray("<x/>") << text("P.hovlets")
                                 << QByteArray("bad.ui is not a Qt Designer form");
        QTest::newRow("many attributes")
                << "<ui" + attributes(100000) + "/>" << text("P.hovlets")
                << QByteArray("bad.ui: an element has more than 1000 attributes");
        QTest::newRow("not well-formed")
                << form.left(300) << text("P.hovlets") << QByteArray("bad.ui:");
        QTest::newRow("more than a form")
                << form + "<ui/>" << text("P.hovlets") << QByteArray("bad.ui:");
        QTest::newRow("nothing in it") << QByteArray("<ui><class>A</class></ui>")
                                       << text("P.hovlets") << QByteArray("nothing to import");
        QTest::newRow("translation")
                << QByteArray("<TS version=\"2.1\"/>") << text("P.hovlets")
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

    void shouldNotReadTheFilesThatATipNames()
    {
        const QString pipe = m_folder->path() + text("/pipe");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        const QByteArray head = "&lt;html&gt;&lt;head&gt;&lt;link rel=\"stylesheet\" "
                                "type=\"text/css\" href=\"file://"
                + QFile::encodeName(pipe) + "\"/&gt;&lt;/head&gt;&lt;body&gt;Saves.";
        const QString form = m_folder->add(text("bad.ui"), tip("save", head));
        const ToolRun run({ text("import"), form, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        QCOMPARE(textsOf(m_package, text("save"), m_english), QStringList { text("Saves.") });
    }

    void shouldReadTheStartOfHugeTips_data()
    {
        QTest::addColumn<QByteArray>("huge");
        QTest::newRow("nested tags") << QByteArray("&lt;b&gt;&lt;i&gt;x").repeated(40000);
        QTest::newRow("nested lists") << QByteArray("&lt;ul&gt;&lt;li&gt;x").repeated(20000);
        QTest::newRow("nested tables")
                << QByteArray("&lt;table&gt;&lt;tr&gt;&lt;td&gt;x").repeated(20000);
        QTest::newRow("wide cells") << "&lt;table&gt;&lt;tr&gt;"
                        + QByteArray("&lt;td title=\"&gt;\" colspan=\"20000\" ROWSPAN = "
                                     "\"20000\"&gt;x")
                                  .repeated(100);
    }

    void shouldReadTheStartOfHugeTips()
    {
        QFETCH(QByteArray, huge);
        const QString form =
                m_folder->add(text("huge.ui"), tip("save", "Saves.&lt;br/&gt;" + huge));
        const ToolRun run({ text("import"), form, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        const QStringList texts = textsOf(m_package, text("save"), m_english);
        QVERIFY2(texts.join(QLatin1Char(' ')).contains(text("Saves.")),
                 qPrintable(texts.join(QLatin1Char('\n')).left(200)));
    }

    void shouldOmitTextsWithNothingToRead()
    {
        const QString blank =
                m_folder->add(text("blank.ui"),
                              QByteArray(tip("save", " ")).replace("</ui>", tip("b", "\n").mid(4)));
        const ToolRun run({ text("import"), blank, m_form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(run.status, 0);
        QCOMPARE(textsOf(m_package, text("save"), m_english), QStringList { text("Saves.") });
        QCOMPARE(textsOf(m_package, text("b"), m_english), QStringList());
    }

    void shouldSkipAFormThatCannotBeRead()
    {
        const QString bad = m_folder->add(text("bad.ui"), "<ui><widget>");
        const ToolRun run({ text("import"), bad, m_form, text("-o"), m_package });
        QCOMPARE(run.status, 1);
        QVERIFY2(run.error.contains("bad.ui:1:"), run.error.constData());
        QCOMPARE(textsOf(m_package, text("save"), m_english), QStringList { text("Saves.") });
    }

    void shouldRefuseOptionsForRunningPrograms_data()
    {
        QTest::addColumn<QStringList>("options");
        QTest::newRow("rules") << QStringList { text("--rules"), m_form };
        QTest::newRow("Qt") << QStringList { text("--qt"), text("6") };
    }

    void shouldRefuseOptionsForRunningPrograms()
    {
        QFETCH(QStringList, options);
        const ToolRun run(QStringList { text("import"), m_form, text("-o"), m_package } + options);
        QCOMPARE(run.error,
                 QByteArray("hovlets: --rules and --qt are for running programs; remove them, or "
                            "add --from-running\n"));
        QCOMPARE(run.status, 2);
        QVERIFY(!QFile::exists(m_package));
    }

    void shouldChooseATitle_data()
    {
        QTest::addColumn<QByteArray>("label");
        QTest::addColumn<QByteArray>("tip");
        QTest::addColumn<QStringList>("texts");
        const QString sentences = text("Draws a line. Hold Shift to keep it straight.");
        const QString longText = text("word ").repeated(20).trimmed();
        QTest::newRow("short tip") << QByteArray("Pen") << QByteArray("Draw with a pen")
                                   << QStringList { text("Draw with a pen") };
        QTest::newRow("sentences") << QByteArray("Pen") << sentences.toUtf8()
                                   << QStringList { text("Pen"), sentences };
        QTest::newRow("long text")
                << QByteArray("Pen") << longText.toUtf8() << QStringList { text("Pen"), longText };
        QTest::newRow("no label") << QByteArray() << sentences.toUtf8()
                                  << QStringList { sentences };
        QTest::newRow("two paragraphs") << QByteArray() << QByteArray("Pen\n\nDraws a line.")
                                        << QStringList { text("Pen"), text("Draws a line.") };
        for (const char *label : { "&amp;Pen...", "P&amp;en:", "Pen(&amp;P)", "Pen\xe2\x80\xa6" })
            QTest::newRow(label) << QByteArray(label) << sentences.toUtf8()
                                 << QStringList { text("Pen"), sentences };
        QTest::newRow("ampersand") << QByteArray("Pen &amp;&amp; Ink") << sentences.toUtf8()
                                   << QStringList { text("Pen & Ink"), sentences };
    }

    void shouldChooseATitle()
    {
        QFETCH(QByteArray, label);
        QFETCH(QByteArray, tip);
        const QString form = m_folder->add(text("pen.ui"), formOf("Pens", label, tip));
        const ToolRun run({ text("import"), form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QTEST(textsOf(m_package, text("button"), m_english), "texts");
    }

    void shouldKeepMarkup_data()
    {
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QString>("becomes");
        const auto row = [](const char *tip, const char *becomes) {
            QTest::newRow(tip) << text(tip) << text(becomes);
        };
        row("<p>a <b>b</b> <i>c</i></p>", "a <b>b</b> <i>c</i>");
        row("<p><span style=\"font-weight:600\">a</span></p>", "<b>a</b>");
        row("<p>a<br>b</p>", "a<br/>b");
        row("<ul><li>a</li><li><b>b</b></li></ul>", "<ul><li>a</li><li><b>b</b></li></ul>");
        row("<ol><li>a</li></ol>", "<ol><li>a</li></ol>");
        row("<a href=\"https://a/b\">c</a>", "<a href=\"https://a/b\">c</a>");
        row("<a href=\"file:///b\">c</a>", "c");
        row("<b>a &lt; b</b>", "<b>a &lt; b</b>");
        row("<p>a &lt; b</p>", "a < b");
        row("Press &lt;b&gt;", "Press &lt;b&gt;");
    }

    void shouldKeepMarkup()
    {
        QFETCH(QString, tip);
        const QByteArray sentences = "Draws a line. Then another.";
        const QString form = m_folder->add(text("pen.ui"),
                                           formOf("Pens", "Pen", sentences,
                                                  "<property name=\"whatsThis\"><string>"
                                                          + tip.toHtmlEscaped().toUtf8()
                                                          + "</string></property>"));
        const ToolRun run({ text("import"), form, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QTEST(textsOf(m_package, text("button"), m_english).value(2), "becomes");
    }

    void shouldKeepShortcuts()
    {
        const QString form = m_folder->add(
                text("pen.ui"),
                formOf("Pens", "Pen", "Draw",
                       "<property name=\"shortcut\"><string>Ctrl+P</string></property>"));
        QCOMPARE(ToolRun({ text("import"), form, text("-o"), m_package }).status, 0);
        QFile file(m_package + text("/Control/Paint.xml"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("shortcut=\"Ctrl+P\""));
    }

    void shouldQualifyNamesWithDifferentTexts()
    {
        const QString pens = m_folder->add(text("pens.ui"), formOf("Pens", "Pen", "Draw"));
        const QString inks = m_folder->add(text("inks.ui"), formOf("Inks", "Ink", "Fill"));
        const ToolRun run({ text("import"), pens, inks, m_form, text("-o"), m_package });
        QCOMPARE(run.status, 0);
        QVERIFY2(run.error.contains("button (Pens, Inks)"), run.error.constData());
        QCOMPARE(textsOf(m_package, text("Pens/button"), m_english), QStringList { text("Draw") });
        QCOMPARE(textsOf(m_package, text("Inks/button"), m_english), QStringList { text("Fill") });
        QCOMPARE(textsOf(m_package, text("button"), m_english), QStringList());
        QCOMPARE(textsOf(m_package, text("save"), m_english), QStringList { text("Saves.") });
    }

    void shouldShareAnEntryAmongFormsThatAgree()
    {
        const QString pens = m_folder->add(text("pens.ui"), formOf("Pens", "Pen", "Draw"));
        const QString inks = m_folder->add(text("inks.ui"), formOf("Inks", "Ink", "Draw"));
        const ToolRun run({ text("import"), pens, inks, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        QCOMPARE(textsOf(m_package, text("button"), m_english), QStringList { text("Draw") });
    }

    void shouldQualifyAllNamesOnRequest()
    {
        const QString pens = m_folder->add(text("pens.ui"), formOf("Pens", "Pen", "Draw"));
        const QString inks = m_folder->add(text("inks.ui"), formOf("Inks", "Ink", "Draw"));
        const ToolRun run(
                { text("import"), text("--qualified"), pens, inks, text("-o"), m_package });
        QCOMPARE(run.error, QByteArray());
        for (const char *key : { "Pens/button", "Inks/button" })
            QCOMPARE(textsOf(m_package, text(key), m_english), QStringList { text("Draw") });
        QCOMPARE(textsOf(m_package, text("button"), m_english), QStringList());
    }

    void shouldMakeContentWithoutFindings()
    {
        const QString form =
                m_folder->add(text("pen.ui"),
                              formOf("Pens", "&amp;Pen...",
                                     "&lt;ul&gt;&lt;li&gt;a &amp;amp; b&lt;/li&gt;&lt;/ul&gt;"));
        QCOMPARE(ToolRun({ text("import"), form, m_form, text("-o"), m_package }).status, 0);
        const ToolRun check({ text("check"), m_package });
        QCOMPARE(check.output, QByteArray());
        QCOMPARE(check.status, 0);
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
        QCOMPARE(textsOf(m_package, text("tree"), m_english),
                 (QStringList { text("Tree"), text("All rows.") }));
        QCOMPARE(textsOf(m_package, text("inner"), m_english), QStringList { text("Inner") });
    }

private:
    std::unique_ptr<PackageFolder> m_folder;
    const QLocale m_english { text("en_US") };
    QString m_form, m_package;
};

HOVLETS_TEST_MAIN(tst_ToolImport)

#include "tst_tool_import.moc"
