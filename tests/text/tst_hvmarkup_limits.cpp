// SPDX-License-Identifier: Apache-2.0
#include "HVMarkup.h"
#include "MarkupReading.h"
#include "TestMain.h"
#include "Text.h"
#include "ThreadTime.h"

#include <limits>

using namespace Hovlets;

/// Tests how much of a text is shown, and how long that takes.
class tst_HVMarkup_Limits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
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
        // Spaces at which lines do not break are letters.
        for (const int space : { 0x00a0, 0x2007, 0x202f })
            QCOMPARE(int(shown(text("<b>a</b> ") + (text("w") + QChar(space)).repeated(500))
                                 .text.count(breaks)),
                     4);
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

    void shouldCountChangesOfScriptAndDirectionEightTimes_data()
    {
        QTest::addColumn<QString>("piece");
        QTest::addColumn<int>("cost"); // of a piece
        const auto row = [](const char *name, const char *piece, int cost) {
            QTest::newRow(name) << QString::fromUtf8(piece) << cost;
        };
        row("Latin", "w, ", 3);
        row("numbers", "w1 ", 3);
        row("Hebrew", "\u05d0\u05b0 ", 3);
        row("symbols", "w\u2603\U0001f600", 4);
        row("directions", "w\u05d0", 16);
        row("directions with a space", "w \u05d0 ", 18);
        row("marks of direction", "w\u200f", 16);
        row("scripts", "w\u0430\u03b1", 24);
        row("numbers in Hebrew", "\u05d01", 16);
        row("numbers after Hebrew", "\u05d0 1", 17);
        row("beyond 16 bits", "\U00010400\U00010280", 18);
    }

    /// Each of them makes Qt start another run of text, too.
    void shouldCountChangesOfScriptAndDirectionEightTimes()
    {
        QFETCH(QString, piece);
        QFETCH(int, cost);
        constexpr int Pieces = 10;
        constexpr int FirstRun = 7; // does not count
        HVLimits limits;
        for (const int missing : { 0, 1 }) {
            limits.shownCharacters = Pieces * cost - missing - (cost > piece.size() ? FirstRun : 0);
            HVDisplayBudget budget(limits);
            QCOMPARE(shownPlainText(piece.repeated(Pieces), budget).isCut, missing == 1);
        }
    }

    void shouldLetLinesBreakInUnusualWords_data()
    {
        QTest::addColumn<QString>("piece");
        QTest::newRow("joined letters") << QString::fromUtf8("w\u200d");
        QTest::newRow("joined ideographs") << QString::fromUtf8("\u6587\u200d");
        QTest::newRow("word joiners") << QString::fromUtf8("\u6587\u2060");
        QTest::newRow("no-break spaces") << QString::fromUtf8("\u6587\u00a0");
        QTest::newRow("small kana") << QString::fromUtf8("\u3063");
        QTest::newRow("katakana") << QString::fromUtf8("\u30e7");
        QTest::newRow("punctuation") << QString::fromUtf8("\u3001");
        QTest::newRow("punctuated") << QString::fromUtf8("\u6587\u201d\u3001");
    }

    void shouldLetLinesBreakInUnusualWords()
    {
        QFETCH(QString, piece);
        HVDisplayBudget budget({});
        const QString shown = shownPlainText(piece.repeated(3000), budget).text;
        int longest = 0;
        const QStringList words = shown.split(QChar(0x200b));
        for (const QString &word : words)
            longest = qMax(longest, int(word.size()));
        QVERIFY2(longest <= 250, qPrintable(QString::number(longest)));
    }

    void shouldCountHangulSyllablesTwice()
    {
        HVLimits limits;
        limits.shownCharacters = 100;
        const QChar syllable(0xac00);
        HVDisplayBudget budget(limits);
        QCOMPARE(int(shownPlainText(QString(80, syllable), budget).text.count(syllable)), 50);
    }

    void shouldCountLargeCharactersFourTimes_data()
    {
        QTest::addColumn<QString>("markup"); // "%1" is the text
        QTest::addColumn<int>("shown");
        QTest::newRow("large") << text("<span style=\"font-size:25px\">%1</span>") << 25;
        QTest::newRow("largest") << text("<p style=\"color:red;font-size:72pt\"><b>%1</b></p>")
                                 << 25;
        QTest::newRow("ordinary") << text("<span style=\"font-size:24pt\">%1</span>") << 100;
        QTest::newRow("ordinary in large")
                << text("<p style=\"font-size:72pt\"><i style=\"font-size:9pt\"></i>"
                        "<span style=\"font-size:9pt\">%1</span></p>")
                << 100;
        QTest::newRow("address in large") << text(
                "<span style=\"font-size:72pt\"><a href=\"http://x/font-size:9px\">%1</a></span>")
                                          << 25;
        QTest::newRow("address") << text("<a href=\"http://x/font-size:72px\">%1</a>") << 100;
        QTest::newRow("after large") << text("<span style=\"font-size:72pt\"></span>%1") << 100;
    }

    void shouldCountLargeCharactersFourTimes()
    {
        QFETCH(QString, markup);
        QFETCH(int, shown);
        HVLimits limits;
        limits.shownCharacters = 100;
        HVDisplayBudget budget(limits);
        const QString letters(200, QLatin1Char('W'));
        QCOMPARE(int(shownMarkup(markup.arg(letters), {}, budget).spoken.count(QLatin1Char('W'))),
                 shown);
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
};

HOVLETS_TEST_MAIN(tst_HVMarkup_Limits)

#include "tst_hvmarkup_limits.moc"
