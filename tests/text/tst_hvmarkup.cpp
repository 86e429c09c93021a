// SPDX-License-Identifier: Apache-2.0
#include "HVMarkup.h"
#include "MarkupReading.h"
#include "TestMain.h"
#include "Text.h"
#include "ThreadTime.h"

#include <QtCore/QRandomGenerator>
#include <QtCore/QRegularExpression>

using namespace Hovlets;

namespace {

HVShownText shown(const QString &text, const HVMarkupRules &rules = {}, const HVLimits &limits = {})
{
    HVDisplayBudget budget(limits);
    return shownMarkup(text, rules, budget);
}

HVMarkupRules withTopics()
{
    HVMarkupRules rules;
    rules.topics = true;
    return rules;
}

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

    void shouldCutAtTheLimitOfCharacters()
    {
        HVLimits limits;
        limits.shownCharacters = 5;
        const HVShownText result = shown(text("<b>abc<i>defg</i></b>"), {}, limits);
        QCOMPARE(result.text, QString::fromUtf8("<b>abc<i>de…</i></b>"));
        QCOMPARE(result.spoken, QString::fromUtf8("abcde…"));
        QVERIFY(result.isCut);
        // Never in the middle of a character.
        QCOMPARE(shown(QString::fromUtf8("<b>abcd😀"), {}, limits).text,
                 QString::fromUtf8("<b>abcd…</b>"));
        QVERIFY(!shown(text("<b>abcde"), {}, limits).isCut);
    }

    void shouldCutAtTheLimitOfElements()
    {
        HVLimits limits;
        limits.shownElements = 2;
        QCOMPARE(shown(text("<b>a</b><i>b</i><u>c</u>"), {}, limits).text,
                 QString::fromUtf8("<b>a</b><i>b</i>…"));
    }

    void shouldReportTheFirstLimitThatWasMet()
    {
        HVLimits limits;
        limits.shownElements = 2;
        limits.shownCharacters = 5;
        HVDisplayBudget budget(limits);
        shownMarkup(text("<b>a<b>b"), {}, budget);
        QCOMPARE(budget.limitMet(), QString());
        QVERIFY(!budget.isSpent());
        shownMarkup(text("<b>b"), {}, budget);
        QCOMPARE(budget.limitMet(), text("2 elements"));
        shownMarkup(text("123456"), {}, budget);
        QCOMPARE(budget.limitMet(), text("2 elements"));
        QVERIFY(budget.isSpent());
    }

    void shouldLetLongWordsBreak()
    {
        const QString breaks(QChar(0x200b));
        const QString word(1000, QLatin1Char('w'));
        HVShownText result = shown(text("<b>a</b> ") + word);
        QCOMPARE(int(result.text.count(breaks)), 4);
        QCOMPARE(result.spoken, text("a ") + word);
        QCOMPARE(shown(text("<b>a</b> ") + QString(200, QLatin1Char('w'))).text.count(breaks), 0);
        // Tags between the letters change nothing.
        QCOMPARE(int(shown(text("wwwww<b>wwwww</b>").repeated(100)).text.count(breaks)), 4);
        QCOMPARE(int(shown(text("wwwww<br>").repeated(200)).text.count(breaks)), 0);
        // Not between a letter and its accents, nor within a flag, nor where lines break by
        // themselves.
        result = shown(text("<b>a</b> ") + QString(199, QLatin1Char('w'))
                       + QString::fromUtf8("e\u0301\u0301x"));
        QVERIFY(result.text.contains(QString::fromUtf8("e\u0301\u0301") + breaks));
        QCOMPARE(shown(text("<b>a</b> ") + QString(1000, QChar(0x6587))).text.count(breaks), 0);
    }

    void shouldLimitTheMarksOfALetter_data()
    {
        QTest::addColumn<QString>("letter");
        QTest::addColumn<QString>("mark");
        const auto row = [](const char *name, const char *letter, const char *mark) {
            QTest::newRow(name) << QString::fromUtf8(letter) << QString::fromUtf8(mark);
        };
        row("accents", "a", "\u0301");
        row("Arabic", "\u0628", "\u064b");
        row("Hebrew", "\u05d0", "\u05b0");
        row("beyond 16 bits", "a", "\U0001d165");
        row("enclosing", "a", "\u20dd");
        row("without a letter", "", "\u0301");
        row("on an emoji", "\U0001f600", "\ufe0f");
    }

    /// Fonts need more than linear time to order and place them.
    void shouldLimitTheMarksOfALetter()
    {
        QFETCH(QString, letter);
        QFETCH(QString, mark);
        constexpr int Most = 30;
        const QString longest = letter + mark.repeated(Most);
        HVDisplayBudget budget({});
        QCOMPARE(shown(text("<i>") + longest).text, text("<i>") + longest + text("</i>"));
        for (const int marks : { Most + 1, 5000 }) {
            const QString written = letter + mark.repeated(marks) + text(" ") + longest;
            const QString becomes = longest + text(" ") + longest;
            QCOMPARE(shownPlainText(written, budget).text, becomes);
            QCOMPARE(shown(text("<i>") + written).spoken, becomes);
            QCOMPARE(shown(text("<i>")
                           + QString(written).insert(letter.size() + mark.size(), text("</i>")))
                             .spoken,
                     becomes);
        }
        // They count as characters nevertheless.
        HVLimits limits;
        limits.shownCharacters = 100;
        QVERIFY(shown(mark.repeated(101), {}, limits).isCut);
    }

    /// Each of them makes Qt start another run of text.
    void shouldCountDirectionalControlsTenTimes()
    {
        HVLimits limits;
        limits.shownCharacters = 100;
        for (const int code : { 0x202a, 0x202e, 0x2066, 0x2069 }) {
            const QString control { QChar(code) };
            HVDisplayBudget budget(limits);
            QCOMPARE(int(shownPlainText((control + text("x")).repeated(20), budget)
                                 .text.count(control)),
                     9);
        }
        HVDisplayBudget budget(limits);
        QVERIFY(!shownPlainText(QString(100, QChar(0x200f)), budget).isCut);
    }

    void shouldKeepTheMarksOfWriting_data()
    {
        QTest::addColumn<QString>("written");
        const auto row = [](const char *name, const char *written) {
            QTest::newRow(name) << QString::fromUtf8(written).repeated(20);
        };
        row("Vietnamese", "Tie\u0302\u0301ng Vie\u0323\u0302t ");
        row("Hebrew", "\u05d1\u05bc\u05b0\u05e8\u05b5\u05d0\u05e9\u05c1\u05b4\u0596\u05d9\u05ea ");
        row("Arabic", "\u0627\u0644\u0633\u0651\u064e\u0644\u064e\u0627\u0645\u064f ");
        row("Thai", "\u0e17\u0e35\u0e48\u0e19\u0e35\u0e48 ");
        row("Devanagari", "\u0915\u094d\u0937\u093f ");
        row("Tibetan", "\u0f66\u0f92\u0fb2\u0f74\u0f56 ");
    }

    void shouldKeepTheMarksOfWriting()
    {
        QFETCH(QString, written);
        HVDisplayBudget budget({});
        QCOMPARE(shownPlainText(written, budget).text, written);
    }

    void shouldNestWithinBounds()
    {
        const QString lists = shown(text("<ul><li>x").repeated(100)).text;
        QCOMPARE(int(lists.count(text("<ul>"))), 8);
        QVERIFY(isBalanced(lists));
        const QString words = shown(text("<tt><b>x").repeated(100)).text;
        QCOMPARE(int(words.count(text("<tt>"))), 16);
        QCOMPARE(int(words.count(QLatin1Char('x'))), 100);
        QVERIFY(isBalanced(words));
    }

    void shouldTakeLinearTime_data()
    {
        QTest::addColumn<QString>("piece");
        for (const char *piece : { "<a href=\"x\">", "<b", "<", "</b>", "<ul><li>", "<b><i>", "&",
                                   "&lt", "%(", "%(a", "%(a)s", "<a href='", "<p style='color:red;",
                                   "<a x=", "\"<'>", "w", " ", "<b></i>", "<li>" })
            QTest::newRow(piece) << QString::fromLatin1(piece);
    }

    void shouldTakeLinearTime()
    {
        QFETCH(QString, piece);
        HVLimits limits;
        limits.shownElements = limits.shownCharacters = std::numeric_limits<int>::max();
        HVMarkupRules rules = withTopics();
        rules.fill = [](const QString &placeholder) { return placeholder; };
        // A text of a million characters takes about 20 ms; in quadratic time, it would take hours.
        const QString written = text("<b>") + piece.repeated(1000000 / int(piece.size()));
        const ThreadTime time;
        const HVShownText result = shown(written, rules, limits);
        QVERIFY2(time.elapsed() < 5000, qPrintable(QString::number(time.elapsed())));
        QVERIFY(isBalanced(result.text));
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
};

HOVLETS_TEST_MAIN(tst_HVMarkup)

#include "tst_hvmarkup.moc"
