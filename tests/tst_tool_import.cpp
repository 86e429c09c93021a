// SPDX-License-Identifier: Apache-2.0
#include "HVContext.h"
#include "HVIndex.h"
#include "HVXmlElement.h"
#include "PackageFolder.h"
#include "TestMain.h"
#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

using namespace Hovlets;

namespace {

QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

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

/// Packages made of the files of Qt Designer and Qt Linguist.
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

    void shouldMakeEntriesOfTips()
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
                                 << QByteArray("bad.ui is no file of Qt Designer");
        QTest::newRow("not well-formed")
                << form.left(300) << text("P.hovlets") << QByteArray("bad.ui:");
        QTest::newRow("nothing in it") << QByteArray("<ui><class>A</class></ui>")
                                       << text("P.hovlets") << QByteArray("nothing to import");
        QTest::newRow("name") << form << text("P.package") << QByteArray("ends in .hovlets");
        QTest::newRow("there already")
                << form << text("Old.hovlets") << QByteArray("is there already");
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
