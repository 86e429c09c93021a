// SPDX-License-Identifier: Apache-2.0
#include "HVLimits.h"
#include "HVMarkup.h"
#include "HVTipText.h"
#include "MarkupReading.h"
#include "TestMain.h"
#include "Text.h"
#include "ThreadTime.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>
#include <QtGui/QTextDocument>

using namespace Hovlets;

namespace {

/// Adds the columns "written" and \a expected. Returns a function that adds a row.
auto textRows(const char *expected)
{
    QTest::addColumn<QString>("written");
    QTest::addColumn<QString>(expected);
    return [](const char *written, const char *becomes) {
        QTest::newRow(written) << QString::fromUtf8(written) << QString::fromUtf8(becomes);
    };
}

} // namespace

/// Tests markup from anywhere.
class tst_HVMarkup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldDistinguishMarkupFromPlainText_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<bool>("markup");
        const auto row = [](const char *written, bool markup) {
            QTest::newRow(written) << QString::fromLatin1(written) << markup;
        };
        for (const char *written : { "<b>", "a</i>", "<BR/>", "<p >", "<a href='x'>", "<ul\n>",
                                     "&lt;", "&#65;", "&#xaf;", "&NBSP;" })
            row(written, true);
        for (const char *written :
             { "", "a < b", "<html>", "<bold>", "<b", "<b <i", "</ b>", "< b>", "&", "&;", "&lt",
               "&euro;", "&#;", "Q&A", "<b/x>", "%(a)s" })
            row(written, false);
    }

    void shouldDistinguishMarkupFromPlainText()
    {
        QFETCH(QString, written);
        QTEST(isMarkup(written), "markup");
    }

    void shouldKeepHarmlessMarkup_data()
    {
        QTest::addColumn<QString>("written");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("format");
        const auto row = [](const char *written, const char *text, int format) {
            QTest::newRow(written)
                    << QString::fromUtf8(written) << QString::fromUtf8(text) << format;
        };
        const int styled = int(HVShownText::Format::Styled);
        const int rich = int(HVShownText::Format::Rich);
        row("a <b>b</b> c", "a <b>b</b> c", styled);
        row("<EM>a</EM> <Strong>b</sTrong>", "<i>a</i> <strong>b</strong>", styled);
        row("a<br/>b<br />c<br>d", "a<br>b<br>c<br>d", styled);
        row("<ul><li>a</li></ul>", "<ul><li>a</li></ul>", rich);
        row("<ol type='A'><li>a</ol>", "<ol type=\"A\"><li>a</li></ol>", rich);
        row("<font color=red size=\"+1\">a</font>", "<font color=\"red\" size=\"+1\">a</font>",
            rich);
        row("<p align='center' dir=rtl>a", "<p align=\"center\" dir=\"rtl\">a</p>", rich);
        row("<span style='color: #f00; FONT-WEIGHT: bold'>a</span>",
            "<span style=\"color:#f00;font-weight:bold;\">a</span>", rich);
        row("<p style=\"background-color:rgb(1, 2, 3);font-size:20px\">a</p>",
            "<p style=\"background-color:rgb(1, 2, 3);font-size:20px;\">a</p>", rich);
        row("<a href=\"a/b\">c</a>", "<a href=\"a/b\">c</a>", styled);
        row("<a title=x href = 'a/b' >c</a>", "<a href=\"a/b\">c</a>", styled);
        row("<a href=\"a/?b&amp;c\">d</a>", "<a href=\"a/?b&amp;c\">d</a>", rich);
        row("a &lt; b &amp; c &gt; d", "a &lt; b &amp; c > d", styled);
        row("a&nbsp;b\xc2\xa0"
            "c",
            "a&nbsp;b&nbsp;c", styled);
        row("&#x20ac;&#65;&apos;&quot;",
            "\xe2\x82\xac"
            "A'\"",
            styled);
        row("<b>&euro;</b>", "<b>&euro;</b>", rich);
    }

    void shouldKeepHarmlessMarkup()
    {
        QFETCH(QString, written);
        const HVShownText result = shown(written);
        QTEST(result.text, "text");
        QTEST(int(result.format), "format");
        QVERIFY(!result.isCut);
    }

    void shouldRemoveMarkupThatNamesFilesOrAddresses_data()
    {
        const auto row = textRows("text");
        row("<p style=\"background-image:url(http://a/b)\">a</p>", "<p>a</p>");
        row("<p style=\"color:red;background:url(/a)\">a</p>", "<p style=\"color:red;\">a</p>");
        row("<span style='list-style-image:url(a)'>a</span>", "<span>a</span>");
        row("<span style='color:red/**/;color:url(a)'>a</span>", "<span>a</span>");
        row("<span style='color:\\75rl(a)'>a</span>", "<span>a</span>");
        row("<span style='color:rgb(url(a))'>a</span>", "<span>a</span>");
        row("<ul background='a' style='-qt-list-indent:9'><li>a</li></ul>", "<ul><li>a</li></ul>");
        row("<font face='Some Font' src='a'>a</font>", "<font>a</font>");
        row("<span style='font-family:a'>a</span>", "<span>a</span>");
        row("<span style='font-size:4000px'>a</span>", "<span>a</span>");
        row("<b style='color:red' onclick=a>a</b>", "<b>a</b>");
        row("<br clear=all style='page-break-before:always'>", "<br>");
        row("<img src='http://a/b'>", "&lt;img src='http://a/b'>");
        row("<table background=a><tr><td>b</td></tr></table>",
            "&lt;table background=a>&lt;tr>&lt;td>b&lt;/td>&lt;/tr>&lt;/table>");
        row("<style>b { background: url(a) }</style><b>c</b>",
            "&lt;style>b { background: url(a) }&lt;/style><b>c</b>");
        row("<!-- <b>a</b> -->", "&lt;!-- <b>a</b> -->");
        row("<link rel=stylesheet href=a><b>c</b>", "&lt;link rel=stylesheet href=a><b>c</b>");
        row("<a name='x'>a</a>", "a");
        row("<a href=''>a</a>", "a");
        row("<a href='Topic'>a</a>", "a");
    }

    void shouldRemoveMarkupThatNamesFilesOrAddresses()
    {
        QFETCH(QString, written);
        QTEST(shown(written).text, "text");
    }

    void shouldWriteEachStyleOnce()
    {
        QCOMPARE(shown(text("<p style='color:red;font-size:9pt;COLOR: blue; font-size:7000pt'>a"))
                         .text,
                 text("<p style=\"color:blue;font-size:9pt;\">a</p>"));
        const QString longest = text("<p style='") + text("color:red;").repeated(100) + text("'>a");
        QCOMPARE(shown(longest).text, text("<p style=\"color:red;\">a</p>"));
    }

    void shouldRemoveLongAttributes()
    {
        const QString style =
                text("<p align=left style='color:red;") + QString(1020, QLatin1Char(' '));
        QCOMPARE(shown(style + text("'>a")).text, text("<p align=\"left\">a</p>"));
    }

    void shouldBalanceTags_data()
    {
        const auto row = textRows("text");
        row("<b>a", "<b>a</b>");
        row("a</b>", "a");
        row("<b><i>a</b>b</i>", "<b><i>a</i></b>b");
        row("<b/>a", "<b></b>a");
        row("<p>a<p>b", "<p>a</p><p>b</p>");
        row("<ul><li>a<li>b</ul>", "<ul><li>a</li><li>b</li></ul>");
        row("<ul><li>a<ul><li>b</ul><li>c</ul>",
            "<ul><li>a<ul><li>b</li></ul></li><li>c</li></ul>");
        row("<p>a<ul><li>b", "<p>a</p><ul><li>b</li></ul>");
        row("<a href='a/b'>c<a href='a/d'>e", "<a href=\"a/b\">c</a><a href=\"a/d\">e</a>");
        row("<a href='a/b'>c<a>d", "<a href=\"a/b\">c</a>d");
    }

    void shouldBalanceTags()
    {
        QFETCH(QString, written);
        QTEST(shown(written).text, "text");
        QVERIFY(isBalanced(shown(written).text));
    }

    void shouldFollowLinksToTopicsIfTheHostOpensThem()
    {
        QCOMPARE(shown(text("<a href='Topic'>a</a>"), withTopics()).text,
                 text("<a href=\"Topic\">a</a>"));
    }

    void shouldRecogniseTopics_data()
    {
        QTest::addColumn<QString>("locator");
        QTest::addColumn<bool>("topic");
        const auto row = [](const char *locator, bool topic) {
            QTest::newRow(locator) << QString::fromUtf8(locator) << topic;
        };
        row("Topic", true);
        row("Some topic", true);
        row("a/b", false);
        row("http:a", false);
        row("C:x", false);
        row("a+b-c.d:e", false);
        row("1a:b", true);
        row(":b", true);
        row("\xc3\xa4:b", true);
        row("a b:c", true);
        row("", true);
    }

    void shouldRecogniseTopics()
    {
        QFETCH(QString, locator);
        QTEST(isTopic(locator), "topic");
    }

    void shouldFillPlaceholdersWithText()
    {
        HVMarkupRules rules;
        rules.fill = [](const QString &placeholder) {
            return placeholder == QLatin1String("%(a)s") ? text("<b>&\"") : placeholder;
        };
        QCOMPARE(shown(text("<i>%(a)s</i> %(b)s %(a b)s"), rules).text,
                 text("<i>&lt;b>&amp;\"</i> %(b)s %(a b)s"));
        QCOMPARE(shown(text("<a href='x/%(a)s'>c</a>"), rules).text,
                 text("<a href=\"x/&lt;b&gt;&amp;&quot;\">c</a>"));
        QCOMPARE(shown(text("<i>%(a)s</i> %(b)s"), rules).spoken, text("<b>&\" %(b)s"));
    }

    void shouldSpeakTheWordsWithoutMarkup_data()
    {
        const auto row = textRows("spoken");
        row("<b>a</b>b &lt; c", "ab < c");
        row("a<br>b<p>c</p><ul><li>d<li>e</ul>f", "a b c d e f");
        row("&nbsp;&#x20ac; &x;", "\xc2\xa0\xe2\x82\xac &x;");
        row("<a href='a/b'>c</a><img>", "c<img>");
    }

    void shouldSpeakTheWordsWithoutMarkup()
    {
        QFETCH(QString, written);
        QTEST(shown(written).spoken, "spoken");
    }

    void shouldReplaceCharactersThatTextDocumentsReserve()
    {
        QString written = text("<b>a</b>");
        for (const int code : { 0x0, 0xb, 0xfffc, 0xfdd0, 0xfdd1, 0x2029, 0xdc00, 0xd800, 0xffff })
            written += QChar(code);
        written += text("&#0;&#xd800;&#xfffc;&#x110000;&#9999999;");
        const QString result = shown(written).text;
        QCOMPARE(result, text("<b>a</b>") + QString(14, QChar(QChar::ReplacementCharacter)));
    }

    void shouldMakeBalancedMarkupFromAnything()
    {
        const QStringList pieces =
                text("<b>|</b>|<i |<ul>|</ul>|<li>|<p>|</p>|<a href='a/b'>|</a>|<a href='T'>|<br/>|"
                     "<|>|/|'|\"|&|lt;|&#|x| |%(|a)s|style=|url(x)|<font |color=red|<img |src=|"
                     "<span style=\"color:|;")
                        .split(QLatin1Char('|'));
        QRandomGenerator random(20260731);
        for (int i = 0; i < 20000; ++i) {
            QString written;
            for (int left = random.bounded(20); left > 0; --left)
                written += pieces.at(random.bounded(int(pieces.size())));
            const QString result = shown(written).text;
            QVERIFY2(isBalanced(result), qPrintable(written + text(" -> ") + result));
            // The letters of an address may be shown as text, but never end up inside a tag.
            static const QRegularExpression reaching(QStringLiteral("<[^>]*(url|src|img)"));
            QVERIFY2(!result.contains(reaching), qPrintable(written + text(" -> ") + result));
        }
    }

    // Tips

    void shouldTurnTipsIntoParagraphs_data()
    {
        QTest::addColumn<QString>("tip");
        QTest::addColumn<QStringList>("paragraphs");
        const auto row = [](const char *name, const char *tip, const QStringList &paragraphs) {
            QTest::newRow(name) << QString::fromUtf8(tip) << paragraphs;
        };
        const auto list = [](std::initializer_list<const char *> paragraphs) {
            QStringList result;
            for (const char *paragraph : paragraphs)
                result += QString::fromUtf8(paragraph);
            return result;
        };
        row("empty", " ", {});
        row("plain", "Save", list({ "Save" }));
        row("plain lines", "Save\n a < b & \"c\" \n",
            list({ "Save<br>a &lt; b &amp; &quot;c&quot;" }));
        row("plain tag", "The tag <b", list({ "The tag &lt;b" }));
        row("plain placeholder", "100 %(name)s", list({ "100 &#37;(name)s" }));
        row("form",
            "<html><head><style>p { x }</style></head><body><p>One <b>bold</b></p>"
            "<p align=\"right\">Two</p></body></html>",
            list({ "One <b>bold</b>", "Two" }));
        row("empty head", "<html><head/><body><p>One</p></body></html>", list({ "One" }));
        row("doctype", "<!DOCTYPE HTML><!-- no --><qt>One &amp; 2</qt>", list({ "One &amp; 2" }));
        row("heading", "<h2>Save</h2>the file<hr/>now", list({ "Save", "the file", "now" }));
        row("table", "<table><tr><td>a</td><td>b</td></tr><tr><th>c</th></tr></table>",
            list({ "a  b", "c" }));
        row("list", "<ul><li><p>a</p></li><li>b</li></ul>",
            list({ "<ul><li>a </li><li>b</li></ul>" }));
        row("paragraphs in an item", "<ul><li><p>a</p><p>b</p></li></ul>",
            list({ "<ul><li>a b </li></ul>" }));
        row("entity of HTML", "<qt>2 &times; 3</qt>", list({ "2 &times; 3<span></span>" }));
        row("picture", "<b>a</b><img src=\"/etc/passwd\"/>", list({ "<b>a</b>" }));
        row("script", "<b>a</b><script>alert('<b>')", list({ "<b>a</b>" }));
        row("no tag", "<p>1 < 2</p>", list({ "1 &lt; 2" }));
        row("rich placeholder", "<b>%(name)s</b>", list({ "<b>&#37;(name)s</b>" }));
    }

    void shouldTurnTipsIntoParagraphs()
    {
        QFETCH(QString, tip);
        QTEST(tipParagraphs(tip, Qt::mightBeRichText(tip)), "paragraphs");
    }

    void shouldReadTipsInLinearTime_data()
    {
        QTest::addColumn<QString>("piece");
        for (const char *piece : { "<x", "<b", "<!--", "<style>", "</", "&", "<p>" })
            QTest::newRow(piece) << QString::fromLatin1(piece);
    }

    void shouldReadTipsInLinearTime()
    {
        QFETCH(QString, piece);
        const QString tip = piece.repeated(500000);
        const ThreadTime time;
        QVERIFY(tipParagraphs(tip, true).size() <= 1);
        QVERIFY(tipParagraphs(tip, false).size() <= 1);
        QVERIFY2(time.elapsed() < 30000, qPrintable(QString::number(time.elapsed())));
    }

    void shouldReadNoMoreParagraphsOfATipThanAreShown()
    {
        const QString tip = QStringLiteral("<p>a</p>").repeated(1000);
        // One more, by which the popup notices that it cuts the tip.
        QCOMPARE(int(tipParagraphs(tip, true).size()), HVLimits::current().shownElements + 1);
    }

    void shouldTakeOneShortLineAsTheTitleOfATip()
    {
        QVERIFY(isTipTitle(QStringLiteral("Save\n")));
        QVERIFY(!isTipTitle(QStringLiteral(" ")));
        QVERIFY(!isTipTitle(QStringLiteral("Save\nthe file")));
        QVERIFY(!isTipTitle(QString(81, QLatin1Char('x'))));
    }
};

HOVLETS_TEST_MAIN(tst_HVMarkup)

#include "tst_hvmarkup.moc"
