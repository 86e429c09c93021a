// SPDX-License-Identifier: Apache-2.0
#include "DefaultUiBench.h"
#include "TestMain.h"
#include "Text.h"
#include "ToolRun.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>
#include <QtTest/QtTest>

#include <sys/stat.h>

#include <memory>

using namespace Hovlets;

namespace {

constexpr char Unfinished[] = "<translation type=\"unfinished\"></translation>";
constexpr int UserInterfaceTexts = 9;

/// A file of Qt Linguist, edited like a translator does.
class Translation
{
public:
    explicit Translation(const QString &path)
        : m_path(path)
        , m_text(readText(path))
    {
    }

    QString text() const { return m_text; }

    /// Returns whether the text was in the file, without a translation.
    bool translate(const QString &source, const QString &translation)
    {
        const QString written = QStringLiteral("<source>%1</source>")
                                        .arg(source.toHtmlEscaped().replace(
                                                QLatin1Char('\''), QStringLiteral("&apos;")));
        const auto at = m_text.indexOf(written);
        const auto place = at < 0 ? at : m_text.indexOf(QLatin1String(Unfinished), at);
        if (place < 0)
            return false;
        m_text.replace(
                int(place), int(qstrlen(Unfinished)),
                QStringLiteral("<translation>%1</translation>").arg(translation.toHtmlEscaped()));
        QFile file(m_path);
        return file.open(QIODevice::WriteOnly) && file.write(m_text.toUtf8()) > 0;
    }

private:
    QString m_path;
    QString m_text;
};

} // namespace

/// Tests translating packages, from their texts to the popup in another language.
class tst_ToolTranslate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void shouldShowTheTranslationInThePopup();
    void shouldDescribeEachTextToTheTranslator();
    void shouldLeaveOutEntriesThatTheLocaleHas();
    void shouldKeepTranslationsAndMarkObsoleteOnes();
    void shouldRemoveObsoleteTranslationsOnRequest();
    void shouldUpdateFilesForLanguages();
    void shouldReleaseUnfinishedTranslationsOnRequest();
    void shouldCountWhatIsTranslated();
    void shouldMissLocalesThatAreWanted();
    void shouldShowAPseudoTranslation();
    void shouldKeepMarkupInAPseudoTranslation();
    void shouldWriteWhereTheEntryLooksForTranslations();
    void shouldKnowTheTextsOfTheUserInterface();
    void shouldKeepTranslationsForAWrongFallbackLocale();
    void shouldNotReplaceARealTranslation();
    void shouldReplaceItsPseudoTranslation();
    void shouldRefuseSpecialFiles_data();
    void shouldRefuseSpecialFiles();
    void shouldWriteOnlyIntoThePackage_data();
    void shouldWriteOnlyIntoThePackage();
    void shouldExplainWhatIsMissing_data();
    void shouldExplainWhatIsMissing();

private:
    void make(const QByteArray &entries) { m_bench = std::make_unique<DefaultUiBench>(entries); }
    QString path() const { return m_bench->folder.path(); }
    QString file(const char *name) const
    {
        return path() + text("/Test.hovlets/l10n/") + text(name);
    }
    ToolRun run(const QStringList &arguments) const
    {
        return ToolRun(QStringList { text("translate") } + arguments + QStringList { path() });
    }
    ToolRun extractGerman() const
    {
        return run({ text("extract"), text("--locale"), text("de_DE") });
    }
    void translateAndRelease(const QString &source, const QString &translation);
    void showIn(const char *locale);

    std::unique_ptr<DefaultUiBench> m_bench;
};

void tst_ToolTranslate::initTestCase()
{
    make(DefaultUiBench::entry("title=\"Pen\""));
    if (extractGerman().error.contains(" is not installed"))
        QSKIP("needs lupdate and lrelease of the same Qt");
}

void tst_ToolTranslate::init()
{
    make(DefaultUiBench::entry("title=\"Pen\" shortcut=\"P\"",
                               "<p>Draws\n  a line.</p><p><![CDATA[Press <b>Esc</b> & go.]]></p>"
                               "<img src=\"pen.png\" alt=\"A line\"/>"
                               "<link href=\"https://example.org\">More</link>"));
}

void tst_ToolTranslate::translateAndRelease(const QString &source, const QString &translation)
{
    Translation german(file("Hovlets_de_DE.ts"));
    QVERIFY2(german.translate(source, translation), qPrintable(german.text()));
    const ToolRun released = run({ text("release") });
    QCOMPARE(released.error, QByteArray());
    QCOMPARE(released.status, 0);
}

void tst_ToolTranslate::showIn(const char *locale)
{
    m_bench->context().set(HVKeyLocale, text(locale));
    QVERIFY(m_bench->show());
}

void tst_ToolTranslate::shouldShowTheTranslationInThePopup()
{
    const QString key = QString::fromUtf8("Stärke \"1\\2\"/x");
    make(DefaultUiBench::entry("title=\"Pen\" shortcut=\"P\"",
                               "<p>Draws\n  a line.</p><p><![CDATA[Press <b>Esc</b> & go.]]></p>"
                               "<img src=\"pen.png\" alt=\"A line\"/>"
                               "<link href=\"https://example.org\">More</link><p>Left</p>",
                               key.toHtmlEscaped().toUtf8()));
    const ToolRun extracted = extractGerman();
    QCOMPARE(extracted.error, QByteArray());
    QCOMPARE(extracted.status, 0);
    QCOMPARE(QString::fromUtf8(extracted.output),
             QStringLiteral("%1: %2 texts\n")
                     .arg(file("Hovlets_de_DE.ts"))
                     .arg(7 + UserInterfaceTexts));
    Translation german(file("Hovlets_de_DE.ts"));
    const QList<QPair<QString, QString>> translations {
        { text("Pen"), text("Stift") },
        { text("P"), text("S") },
        { text("Draws a line."), text("Zieht eine Linie.") },
        { text("Press <b>Esc</b> & go."), QString::fromUtf8("<b>Esc</b> drücken & los.") },
        { text("A line"), text("Eine Linie") },
        { text("More"), text("Mehr") }
    };
    for (const auto &[source, translation] : translations)
        QVERIFY2(german.translate(source, translation), qPrintable(source + german.text()));
    const ToolRun released = run({ text("release") });
    QCOMPARE(released.error, QByteArray());
    QCOMPARE(QString::fromUtf8(released.output), file("Hovlets_de_DE.qm") + QLatin1Char('\n'));

    m_bench->context().set(HVKeyLocale, text("de_DE"));
    QVERIFY(m_bench->show(key));
    QCOMPARE(m_bench->texts("title"), QStringList { text("Stift") });
    QCOMPARE(m_bench->texts("shortcut"), QStringList { text("S") });
    QCOMPARE(m_bench->texts("paragraph"),
             (QStringList { text("Zieht eine Linie."),
                            QString::fromUtf8("<b>Esc</b> drücken &amp; los."), text("Eine Linie"),
                            text("Left") }));
    QCOMPARE(m_bench->texts("link"), QStringList { text("Mehr") });
}

void tst_ToolTranslate::shouldDescribeEachTextToTheTranslator()
{
    make(DefaultUiBench::entry("title=\"Pen of %(application)s\" shortcut=\"P\"",
                               "<p>Draws.</p><img src=\"pen.png\" alt=\"A line\"/>"
                               "<link href=\"https://example.org\">More</link>"));
    QCOMPARE(extractGerman().status, 0);
    const QString file = readText(this->file("Hovlets_de_DE.ts"));
    QVERIFY(file.contains(
            text("<TS version=\"2.1\" language=\"de_DE\" sourcelanguage=\"en_US\">")));
    QStringList comments;
    static const QRegularExpression comment(QStringLiteral("<extracomment>(.*)</extracomment>"));
    auto matches = comment.globalMatch(
            file.section(text("<name>key</name>"), 1).section(text("</context>"), 0, 0));
    while (matches.hasNext())
        comments += matches.next().captured(1);
    QCOMPARE(comments,
             (QStringList { text("Title. Keep %(application)s unchanged."), text("Shortcut."),
                            text("Paragraph."), text("Description of the picture pen.png."),
                            text("Label of the link to https://example.org.") }));
}

void tst_ToolTranslate::shouldLeaveOutEntriesThatTheLocaleHas()
{
    m_bench->folder.addControlFile(text("Test"), text("a"),
                                   "<hovlets locale=\"de_DE\"><hovlet key=\"a\" title=\"Stift\"/>"
                                   "</hovlets>");
    m_bench->folder.addControlFile(text("Test"), text("b"),
                                   "<hovlets locale=\"en_US\"><hovlet key=\"a\" title=\"Ink\"/>"
                                   "<hovlet key=\"b\" title=\"Brush\"/></hovlets>");
    m_bench->folder.addControlFile(text("Test"), text("c"),
                                   "<hovlets locale=\"fr_FR\"><hovlet key=\"c\" title=\"Stylo\"/>"
                                   "</hovlets>");
    QCOMPARE(run({ text("extract"), text("--locale"), text("de"), text("--locale"), text("it_IT") })
                     .status,
             0);
    const QString german = readText(file("Hovlets_de_DE.ts"));
    QVERIFY(german.contains(text("<source>Brush</source>")));
    QVERIFY(german.contains(text("<source>Pen</source>")));
    QVERIFY(!german.contains(text("<source>Stift</source>")));
    QVERIFY(!german.contains(text("<source>Ink</source>")));
    QVERIFY(!german.contains(text("<source>Stylo</source>")));
    QVERIFY(readText(file("Hovlets_it_IT.ts")).contains(text("<source>Ink</source>")));
}

void tst_ToolTranslate::shouldKeepTranslationsAndMarkObsoleteOnes()
{
    QCOMPARE(extractGerman().status, 0);
    translateAndRelease(text("Pen"), text("Stift"));
    translateAndRelease(text("More"), text("Mehr"));
    m_bench->folder.addControlFile(text("Test"), text("content"),
                                   "<hovlets search=\"Default\"><hovlet key=\"key\" title=\"Pen\">"
                                   "<p>New here</p></hovlet></hovlets>");
    const ToolRun updated = run({ text("update") });
    QCOMPARE(updated.error, QByteArray());
    QCOMPARE(updated.status, 0);
    const QString german = readText(file("Hovlets_de_DE.ts"));
    QVERIFY(german.contains(text("<translation>Stift</translation>")));
    QVERIFY(german.contains(text("<translation type=\"vanished\">Mehr</translation>")));
    QVERIFY(german.contains(text("<source>New here</source>")));
    QVERIFY(!german.contains(text("<source>A line</source>"))); // was never translated
}

void tst_ToolTranslate::shouldRemoveObsoleteTranslationsOnRequest()
{
    QCOMPARE(extractGerman().status, 0);
    translateAndRelease(text("More"), text("Mehr"));
    m_bench->folder.addControlFile(text("Test"), text("content"),
                                   "<hovlets><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    QCOMPARE(run({ text("update"), text("--no-obsolete") }).status, 0);
    QVERIFY(!readText(file("Hovlets_de_DE.ts")).contains(text("Mehr")));
}

void tst_ToolTranslate::shouldUpdateFilesForLanguages()
{
    QCOMPARE(extractGerman().status, 0);
    for (const char *name : { "Hovlets_fr.ts", "Hovlets_xx.ts", "Hovlets.ts" })
        QVERIFY(QFile::copy(file("Hovlets_de_DE.ts"), file(name)));
    const ToolRun updated = run({ text("update") });
    QCOMPARE(updated.error, QByteArray());
    QCOMPARE(updated.output.count('\n'), 2);
    QVERIFY2(updated.output.contains("Hovlets_fr.ts: "), updated.output.constData());
}

void tst_ToolTranslate::shouldReleaseUnfinishedTranslationsOnRequest()
{
    QCOMPARE(extractGerman().status, 0);
    const QString path = file("Hovlets_de_DE.ts");
    Translation(path).translate(text("Pen"), text("Stift"));
    QFile german(path);
    QVERIFY(german.open(QIODevice::ReadWrite));
    const QByteArray content = german.readAll().replace("<translation>Stift",
                                                        "<translation type=\"unfinished\">Stift");
    QVERIFY(german.resize(0) && german.seek(0) && german.write(content) == content.size());
    german.close();

    QCOMPARE(run({ text("release") }).status, 0);
    showIn("de_DE");
    QCOMPARE(m_bench->texts("title"), QStringList { text("Pen") });
    QCOMPARE(run({ text("release"), text("--unfinished") }).status, 0);
    m_bench->host.popup()->hide();
    showIn("de_DE");
    QCOMPARE(m_bench->texts("title"), QStringList { text("Stift") });
}

void tst_ToolTranslate::shouldCountWhatIsTranslated()
{
    make(DefaultUiBench::entry("title=\"Pen\""));
    QCOMPARE(extractGerman().status, 0);
    const auto line = [this](int done, int unfinished, int stale, const char *released) {
        return QStringLiteral("de_DE\t%1 done\t%2 unfinished\t%3 stale\t%4\t%5\n")
                .arg(done)
                .arg(unfinished)
                .arg(stale)
                .arg(text(released), file("Hovlets_de_DE.ts"));
    };
    ToolRun status = run({ text("status") });
    QCOMPARE(status.error, QByteArray());
    QCOMPARE(status.status, 1);
    QCOMPARE(QString::fromUtf8(status.output), line(0, 1 + UserInterfaceTexts, 0, "released"));

    Translation german(file("Hovlets_de_DE.ts"));
    const QStringList texts { text("Pen"),    text("Keep open"),  text("Close"),
                              text("Play"),   text("Play again"), text("Position in the clip"),
                              text("Pause"),  text("Scroll"),     text("Note"),
                              text("Warning") };
    for (const QString &source : texts)
        QVERIFY2(german.translate(source, source + text(" auf Deutsch")), qPrintable(source));
    status = run({ text("status") });
    QCOMPARE(status.status, 1);
    QCOMPARE(QString::fromUtf8(status.output), line(texts.size(), 0, 0, "not released"));

    QCOMPARE(run({ text("release") }).status, 0);
    status = run({ text("status"), text("--locale"), text("de_DE") });
    QCOMPARE(status.status, 0);
    QCOMPARE(QString::fromUtf8(status.output), line(texts.size(), 0, 0, "released"));

    m_bench->folder.addControlFile(text("Test"), text("content"),
                                   "<hovlets><hovlet key=\"key\" title=\"Brush\"/></hovlets>");
    const ToolRun json = run({ text("status"), text("--format"), text("json") });
    QCOMPARE(json.status, 1);
    const QJsonObject german2 = json.json().value(text("files")).toArray().at(0).toObject();
    QCOMPARE(german2.value(text("unfinished")).toInt(), 1);
    QCOMPARE(german2.value(text("stale")).toInt(), 1);
    QCOMPARE(german2.value(text("done")).toInt(), UserInterfaceTexts);
    QCOMPARE(german2.value(text("released")).toBool(), true);
}

void tst_ToolTranslate::shouldMissLocalesThatAreWanted()
{
    const ToolRun status = run({ text("status"), text("--locale"), text("fr_FR") });
    QCOMPARE(status.error, QByteArray());
    QCOMPARE(status.status, 1);
    QVERIFY2(status.output.startsWith("fr_FR\t0 done\t15 unfinished"), status.output.constData());
}

void tst_ToolTranslate::shouldShowAPseudoTranslation()
{
    const ToolRun made = run({ text("pseudo"), text("--expansion"), text("100") });
    QCOMPARE(made.error, QByteArray());
    QCOMPARE(QString::fromUtf8(made.output), file("Hovlets_en_ZW.qm") + QLatin1Char('\n'));
    showIn("en_ZW");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[Þéñ ~~~]") });
    QCOMPARE(m_bench->texts("link"), QStringList { QString::fromUtf8("[Ṁöŕé ~~~~]") });
}

void tst_ToolTranslate::shouldKeepMarkupInAPseudoTranslation()
{
    make(DefaultUiBench::entry("title=\"%(name)s x\"", "<p><![CDATA[<b>a</b> &lt; c]]></p>"));
    QCOMPARE(run({ text("pseudo"), text("--locale"), text("nl"), text("--expansion"), text("0") })
                     .status,
             0);
    m_bench->host.manager()->setGlobalProperty(text("name"), text("ink"));
    showIn("nl");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[ink ẋ]") });
    QCOMPARE(m_bench->texts("paragraph"), QStringList { QString::fromUtf8("[<b>å</b> &lt; ç]") });
}

void tst_ToolTranslate::shouldWriteWhereTheEntryLooksForTranslations()
{
    m_bench->folder.addControlFile(text("Test"), text("content"),
                                   "<hovlets search=\"Default\" l10n_name=\"words\">"
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

void tst_ToolTranslate::shouldKnowTheTextsOfTheUserInterface()
{
    QCOMPARE(extractGerman().status, 0);
    const QString german = readText(file("Hovlets_de_DE.ts"));
    static const QRegularExpression call(QStringLiteral("translated\\(\\w+, ([^()]*)\\)"));
    static const QRegularExpression literal(QStringLiteral("\"([^\"]*)\""));
    int count = 0;
    const QDir folder(text(HOVLETS_PACKAGES "/Default.hovlets/ui"));
    const QStringList files = folder.entryList({ text("*.qml") });
    for (const QString &file : files) {
        auto calls = call.globalMatch(readText(folder.filePath(file)));
        while (calls.hasNext()) {
            auto literals = literal.globalMatch(calls.next().captured(1));
            for (; literals.hasNext(); ++count) {
                const QString source = literals.next().captured(1);
                QVERIFY2(german.contains(QStringLiteral("<source>%1</source>").arg(source)),
                         qPrintable(source));
            }
        }
    }
    QVERIFY(count >= UserInterfaceTexts);
}

void tst_ToolTranslate::shouldKeepTranslationsForAWrongFallbackLocale()
{
    m_bench->folder.addControlFile(text("Test"), text("content"),
                                   "<hovlets locale=\"en_GB\"><hovlet key=\"key\" title=\"Pen\"/>"
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

void tst_ToolTranslate::shouldNotReplaceARealTranslation()
{
    QCOMPARE(extractGerman().status, 0);
    translateAndRelease(text("Close"), text("Zu"));
    QVERIFY(QFile::remove(file("Hovlets_de_DE.ts")));
    const QByteArray released = readText(file("Hovlets_de_DE.qm")).toLatin1();
    const ToolRun refused = run({ text("pseudo"), text("--locale"), text("de_DE") });
    QCOMPARE(QString::fromUtf8(refused.error),
             QStringLiteral("hovlets: %1 is a real translation; choose another --locale\n")
                     .arg(file("Hovlets_de_DE.qm")));
    QCOMPARE(refused.status, 2);
    QCOMPARE(readText(file("Hovlets_de_DE.qm")).toLatin1(), released);
}

void tst_ToolTranslate::shouldReplaceItsPseudoTranslation()
{
    QCOMPARE(run({ text("pseudo"), text("--expansion"), text("0") }).status, 0);
    const ToolRun again = run({ text("pseudo"), text("--expansion"), text("100") });
    QCOMPARE(again.error, QByteArray());
    showIn("en_ZW");
    QCOMPARE(m_bench->texts("title"), QStringList { QString::fromUtf8("[Þéñ ~~~]") });
}

void tst_ToolTranslate::shouldRefuseSpecialFiles_data()
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

void tst_ToolTranslate::shouldRefuseSpecialFiles()
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

void tst_ToolTranslate::shouldWriteOnlyIntoThePackage_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("linkTarget"); // of l10n; empty for no link
    QTest::newRow("parent folder") << text("../outside") << QString();
    QTest::newRow("absolute path") << text("%1/outside") << QString();
    QTest::newRow("link") << text("l10n") << text("%1/outside");
    QTest::newRow("folder in a link") << text("l10n/new") << text("%1/outside");
    QTest::newRow("broken link") << text("l10n") << text("%1/outside/none");
}

void tst_ToolTranslate::shouldWriteOnlyIntoThePackage()
{
    QFETCH(QString, name);
    QFETCH(QString, linkTarget);
    m_bench->folder.add(text("outside/note.txt"), "x");
    const QString filled = name.contains(text("%1")) ? name.arg(path()) : name;
    const QString controlFile = m_bench->folder.addControlFile(
            text("Test"), text("content"),
            "<hovlets l10n_name=\"" + filled.toUtf8()
                    + "\"><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    if (!linkTarget.isEmpty())
        QVERIFY(QFile::link(linkTarget.arg(path()), path() + text("/Test.hovlets/l10n")));
    for (const QStringList &arguments :
         { QStringList { text("extract"), text("--locale"), text("de_DE") },
           QStringList { text("pseudo") }, QStringList { text("release") } }) {
        const ToolRun refused = run(arguments);
        const QString expected =
                QStringLiteral("hovlets: %1: translations belong into the package, but the folder ")
                        .arg(controlFile);
        QVERIFY2(refused.error.startsWith(expected.toUtf8()), refused.error.constData());
        QCOMPARE(refused.status, 2);
    }
    QCOMPARE(QDir(path() + text("/outside")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList { text("note.txt") });
}

void tst_ToolTranslate::shouldExplainWhatIsMissing_data()
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

void tst_ToolTranslate::shouldExplainWhatIsMissing()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, linguist);
    QFETCH(QByteArray, error);
    if (error.isEmpty()) {
        m_bench->folder.addControlFile(text("Test"), text("content"),
                                       "<hovlets locale=\"en_US\"><hovlet key=\"a\" title=\"A\"/>"
                                       "</hovlets>");
        error = "hovlets: no entry in these folders needs a translation for en_US; does "
                "--fallback-locale name the locale of the texts?\n";
    }
    const ToolRun run(QStringList { text("translate") } + arguments + QStringList { path() },
                      { { text("HOVLETS_LINGUIST_PATH"), linguist } });
    QCOMPARE(run.error, error);
    QCOMPARE(run.status, 2);
}

HOVLETS_TEST_MAIN(tst_ToolTranslate)
#include "tst_tool_translate.moc"
