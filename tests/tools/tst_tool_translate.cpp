// SPDX-License-Identifier: Apache-2.0
#include "TranslateBench.h"

#include <QtCore/QDir>
#include <QtCore/QJsonArray>
#include <QtCore/QRegularExpression>

/// Tests translating packages, from their texts to the popup in another language.
class tst_ToolTranslate : public QObject, private TranslateBench
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { skipWithoutLinguist(); }
    void init() { reset(); }
    void shouldShowTheTranslationInThePopup();
    void shouldDescribeEachTextToTheTranslator();
    void shouldExtractCaptionsAndButtons_data();
    void shouldExtractCaptionsAndButtons();
    void shouldExtractTextsOfSeveralLines_data();
    void shouldExtractTextsOfSeveralLines();
    void shouldSkipTextsThatOnlyHaveAnId();
    void shouldLeaveOutEntriesThatTheLocaleHas();
    void shouldKeepTranslationsAndMarkObsoleteOnes();
    void shouldRemoveObsoleteTranslationsOnRequest();
    void shouldReleaseUnfinishedTranslationsOnRequest();
    void shouldCountWhatIsTranslated();
    void shouldMissLocalesThatAreWanted();
    void shouldKnowTheTextsOfTheUserInterface();
    void shouldTranslateTheUserInterfaceOfThePackage();
    void shouldTranslateTheUserInterfaceOfASearchedPackage();
};

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

    m_bench->context().set(Hovlets::HVKeyLocale, text("de_DE"));
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

void tst_ToolTranslate::shouldExtractCaptionsAndButtons_data()
{
    QTest::addColumn<QByteArray>("attribute");
    QTest::addColumn<QString>("captions");
    QTest::newRow("beside the clip") << QByteArray() << text("clips/pen.vtt");
    QTest::newRow("named") << QByteArray("captions=\"words.vtt\"") << text("words.vtt");
}

void tst_ToolTranslate::shouldExtractCaptionsAndButtons()
{
    QFETCH(QByteArray, attribute);
    QFETCH(QString, captions);
    make(DefaultUiBench::entry("title=\"Pen\" clip=\"clips/pen.mp4\" " + attribute,
                               "<button href=\"app:reset\">Reset</button>"));
    const QString resources = text("Test.hovlets/Resources/");
    m_bench->folder.add(resources + text("clips/pen.mp4"), "a clip");
    m_bench->folder.add(resources + captions,
                        "WEBVTT\n\n00:01.000 --> 00:02.000\nPress here\n\n"
                        "01:01:05.500 --> 01:01:06.000\nDone\n");
    QCOMPARE(extractGerman().status, 0);
    const QString german = readText(file("Hovlets_de_DE.ts"));
    for (const char *comment :
         { "Caption of the clip clips/pen.mp4 at 0:01.",
           "Caption of the clip clips/pen.mp4 at 1:01:05.", "Label of the button for app:reset." })
        QVERIFY2(german.contains(QStringLiteral("<extracomment>%1<").arg(text(comment))),
                 qPrintable(german));
    translateAndRelease(text("Press here"), text("Hier klicken"));
    QCOMPARE(run({ text("update") }).status, 0);
    const QString updated = readText(file("Hovlets_de_DE.ts"));
    QVERIFY2(updated.contains(text("<translation>Hier klicken</translation>")),
             qPrintable(updated));
}

void tst_ToolTranslate::shouldExtractTextsOfSeveralLines_data()
{
    QTest::addColumn<QByteArray>("literal"); // of JavaScript
    QTest::addColumn<QString>("source"); // in the file
    QTest::newRow("line feed") << QByteArray("First\\nSecond") << text("First\nSecond");
    QTest::newRow("carriage return")
            << QByteArray("First\\rSecond") << text("First<byte value=\"xd\"/>Second");
    QTest::newRow("tab") << QByteArray("First\\tSecond") << text("First\tSecond");
}

void tst_ToolTranslate::shouldExtractTextsOfSeveralLines()
{
    QFETCH(QByteArray, literal);
    QFETCH(QString, source);
    m_bench->folder.add(text("Test.hovlets/ui/Own.qml"),
                        "import QtQuick 2.15\nText { text: qsTr(\"" + literal + "\") }\n");
    write("<hovlets ui=\"ui/Own.qml\"><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    const ToolRun extracted = extractGerman();
    const int reported = 2 + UserInterfaceTexts;
    QVERIFY2(extracted.output.endsWith(": " + QByteArray::number(reported) + " texts\n"),
             extracted.output.constData());
    const QString german = readText(file("Hovlets_de_DE.ts"));
    QCOMPARE(german.count(text("<message>")), reported);
    QVERIFY2(german.contains(QStringLiteral("<source>%1</source>").arg(source)),
             qPrintable(german));
    const QByteArray status = run({ text("status") }).output;
    QVERIFY2(status.startsWith("de_DE\t0 done\t" + QByteArray::number(reported) + " unfinished"),
             status.constData());
}

void tst_ToolTranslate::shouldSkipTextsThatOnlyHaveAnId()
{
    m_bench->folder.add(text("Test.hovlets/ui/Own.qml"),
                        "import QtQuick 2.15\n"
                        "Text { text: qsTrId(\"own-id\") + qsTr(\"Draw\") }\n");
    write("<hovlets ui=\"ui/Own.qml\"><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    const ToolRun extracted = extractGerman();
    QVERIFY2(extracted.output.endsWith(": " + QByteArray::number(2 + UserInterfaceTexts)
                                       + " texts\n"),
             extracted.output.constData());
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
    write("<hovlets search=\"Default\"><hovlet key=\"key\" title=\"Pen\">"
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
    write("<hovlets><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    QCOMPARE(run({ text("update"), text("--no-obsolete") }).status, 0);
    QVERIFY(!readText(file("Hovlets_de_DE.ts")).contains(text("Mehr")));
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
    const QStringList texts { text("Pen"),        text("Keep open"),  text("Close"),
                              text("Play"),       text("Play again"), text("Position in the clip"),
                              text("Pause"),      text("Scroll"),     text("Note"),
                              text("Warning"),    text("Pinned"),     text("Keep open (%1)"),
                              text("%1 for more") };
    for (const QString &source : texts)
        QVERIFY2(german.translate(source, source + text(" auf Deutsch")), qPrintable(source));
    status = run({ text("status") });
    QCOMPARE(status.status, 1);
    QCOMPARE(QString::fromUtf8(status.output), line(texts.size(), 0, 0, "not released"));

    QCOMPARE(run({ text("release") }).status, 0);
    status = run({ text("status"), text("--locale"), text("de_DE") });
    QCOMPARE(status.status, 0);
    QCOMPARE(QString::fromUtf8(status.output), line(texts.size(), 0, 0, "released"));

    write("<hovlets><hovlet key=\"key\" title=\"Brush\"/></hovlets>");
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
    QVERIFY2(status.output.startsWith("fr_FR\t0 done\t18 unfinished"), status.output.constData());
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

void tst_ToolTranslate::shouldTranslateTheUserInterfaceOfThePackage()
{
    m_bench->folder.add(text("Test.hovlets/ui/Own.qml"),
                        "import QtQuick 2.15\nimport \"words.js\" as Words\n"
                        "Rectangle {\n width: 200; height: 60\n"
                        "Text { objectName: \"own\"; property string source: text;"
                        " text: hovlet ? hovletView.translate(qsTr(\"Draw\"), \"Own\") : \"\" }\n"
                        "Text { objectName: \"words\"; property string source: text; text: hovlet "
                        "? Words.shut(hovletView) : \"\" }\n}\n");
    m_bench->folder.add(
            text("Test.hovlets/ui/words.js"),
            ".pragma library\nfunction shut(view) {\n"
            "//: Button of the drawer\n"
            "return view.translate(QT_TRANSLATE_NOOP(\"Words\", \"Shut\"), \"Words\");\n}\n");
    write("<hovlets ui=\"ui/Own.qml\"><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    const ToolRun extracted = extractGerman();
    QCOMPARE(extracted.error, QByteArray());
    QVERIFY2(readText(file("Hovlets_de_DE.ts")).contains(text("Button of the drawer")),
             qPrintable(readText(file("Hovlets_de_DE.ts"))));
    translateAndRelease(text("Draw"), text("Zeichnen"));
    translateAndRelease(text("Shut"), text("Zu"));
    const QByteArray status = run({ text("status") }).output;
    QVERIFY2(status.startsWith("de_DE\t2 done\t13 unfinished\t0 stale\treleased"),
             status.constData());
    showIn("de_DE");
    QCOMPARE(m_bench->texts("own"), QStringList { text("Zeichnen") });
    QCOMPARE(m_bench->texts("words"), QStringList { text("Zu") });
    QCOMPARE(m_bench->complaints(), QStringList());
}

void tst_ToolTranslate::shouldTranslateTheUserInterfaceOfASearchedPackage()
{
    m_bench->folder.addControlFile(text("Look"), text("empty"), "<hovlets >\n</hovlets>");
    m_bench->folder.add(text("Look.hovlets/ui/HovletsUI.qml"),
                        "import QtQuick 2.15\nText { text: qsTr(\"Draw\") }\n");
    write("<hovlets search=\"Look\"><hovlet key=\"key\" title=\"Pen\"/></hovlets>");
    QCOMPARE(extractGerman().output.count('\n'), 1);
    const QString german = readText(file("Hovlets_de_DE.ts"));
    QVERIFY2(german.contains(text("<source>Draw</source>")), qPrintable(german));
}

HOVLETS_TEST_MAIN(tst_ToolTranslate)
#include "tst_tool_translate.moc"
