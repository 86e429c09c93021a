// SPDX-License-Identifier: Apache-2.0
#include "HVCaptions.h"
#include "TestMain.h"
#include "Text.h"

#include <QtCore/QElapsedTimer>

using namespace Hovlets;

/// Tests how the captions of a clip are read.
class tst_HVCaptions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReadTimesAndTexts_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("expected"); // "begin-end text"
        const auto row = [](const char *name, const char *body, const char *expected) {
            QTest::newRow(name) << QByteArray("WEBVTT\n\n") + body
                                << QString::fromUtf8(expected).split(QLatin1Char('|'),
                                                                     Qt::SkipEmptyParts);
        };
        row("one", "00:00.000 --> 00:01.500\nPress the button", "0-1.5 Press the button");
        row("hours", "01:00:01.000 --> 01:00:02.000\nLater", "3601-3602 Later");
        row("two, with identifiers",
            "1\n00:01.000 --> 00:02.000\nOne\n\nsecond one\n00:02.000 --> 00:03.000\nTwo\n",
            "1-2 One|2-3 Two");
        row("several lines", "00:01.000 --> 00:02.000\n- Yes.\n- No.", "1-2 - Yes. - No.");
        row("settings", "00:01.000 --> 00:02.000 line:0 align:start\nTop", "1-2 Top");
        row("tags", "00:01.000 --> 00:02.000\n<v Ann>A <i>fine</i> <00:01.500>day",
            "1-2 A fine day");
        row("references", "00:01.000 --> 00:02.000\n1 &lt; 2 &amp;lt; &gt;", "1-2 1 < 2 &lt; >");
        row("comment", "NOTE 00:01\nnot shown\n\n00:01.000 --> 00:02.000\nA", "1-2 A");
        row("style", "STYLE\n::cue { color: red }\n\n00:01.000 --> 00:02.000\nA", "1-2 A");
        row("without text", "00:01.000 --> 00:02.000\n\n00:02.000 --> 00:03.000\nA", "2-3 A");
        row("Unicode", "00:01.000 --> 00:02.000\nGrüße", "1-2 Grüße");
    }

    void shouldReadTimesAndTexts()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, expected);
        QString problem;
        QCOMPARE(lines(readCaptions(file, &problem)), expected);
        QCOMPARE(problem, QString());
        QCOMPARE(lines(readCaptions(QByteArray(file).replace("\n", "\r\n"))), expected);
        QCOMPARE(lines(readCaptions(QByteArray(file).replace("\n", "\r"))), expected);
        QCOMPARE(lines(readCaptions("\xef\xbb\xbf" + file)), expected);
    }

    void shouldReportMistakesAndKeepTheRest_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QStringList>("expected");
        QTest::addColumn<QString>("problem");
        const QStringList none;
        const QStringList second { text("2-3 B") };
        const QString times = text("line 3: the times are not valid");
        QTest::newRow("empty") << QByteArray() << none
                               << text("line 1: the file does not begin with \"WEBVTT\"");
        QTest::newRow("another format") << QByteArray("1\n00:00:01,000 --> 00:00:02,000\nA") << none
                                        << text("line 1: the file does not begin with \"WEBVTT\"");
        for (const char *wrong : { "00:01 --> 00:02", "00:01,000 --> 00:02,000", "--> 00:02.000",
                                   "00:02.000 --> 00:01.000", "00:61.000 --> 00:62.000" })
            QTest::newRow(wrong) << QByteArray("WEBVTT\n\n") + wrong
                            + "\nA\n\n00:02.000 --> 00:03.000\nB"
                                 << second << times;
    }

    void shouldReportMistakesAndKeepTheRest()
    {
        QFETCH(QByteArray, file);
        QFETCH(QStringList, expected);
        QFETCH(QString, problem);
        QString found;
        QCOMPARE(lines(readCaptions(file, &found)), expected);
        QCOMPARE(found, problem);
    }

    void shouldReadALimitedNumberOfCaptions_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QByteArray>("end");
        QTest::addColumn<bool>("isCutExpected");
        QTest::newRow("as many as possible") << 200 << QByteArray() << false;
        QTest::newRow("and a comment") << 200 << QByteArray("NOTE The end\n") << false;
        QTest::newRow("and an empty one")
                << 200 << QByteArray("00:02.000 --> 00:03.000\n") << false;
        QTest::newRow("one more") << 201 << QByteArray() << true;
        QTest::newRow("many more") << 1000 << QByteArray() << true;
    }

    void shouldReadALimitedNumberOfCaptions()
    {
        QFETCH(int, count);
        QFETCH(QByteArray, end);
        QFETCH(bool, isCutExpected);
        QString problem;
        bool isCut = !isCutExpected;
        const QByteArray file =
                "WEBVTT\n\n" + QByteArray("00:01.000 --> 00:02.000\nA\n\n").repeated(count) + end;
        QCOMPARE(readCaptions(file, &problem, &isCut).size(), 200);
        QCOMPARE(problem, QString());
        QCOMPARE(isCut, isCutExpected);
    }

    void shouldTakeLinearTime_data()
    {
        QTest::addColumn<QByteArray>("unit");
        for (const char *unit : { "<", "\n", "-->", "00:01.000 ", " ", "&lt;", "<a", "\r" })
            QTest::newRow(unit) << QByteArray(unit);
    }

    void shouldTakeLinearTime()
    {
        QFETCH(QByteArray, unit);
        const QByteArray file = "WEBVTT\n\n00:01.000 --> 00:02.000\nA"
                + unit.repeated(static_cast<int>(MostCaptionBytes) / static_cast<int>(unit.size()));
        QElapsedTimer timer;
        timer.start();
        QVERIFY(readCaptions(file).size() <= 200);
        QVERIFY(timer.elapsed() < 2000); // takes some milliseconds
    }

private:
    static QStringList lines(const QVector<HVCaption> &captions)
    {
        QStringList lines;
        for (const HVCaption &caption : captions)
            lines += QStringLiteral("%1-%2 %3")
                             .arg(caption.begin)
                             .arg(caption.end)
                             .arg(caption.text);
        return lines;
    }
};

HOVLETS_TEST_MAIN(tst_HVCaptions)
#include "tst_hvcaptions.moc"
