// SPDX-License-Identifier: Apache-2.0
#include "HVTranslationCheck.h"
#include "TestMain.h"
#include "TranslationFile.h"

#include <QtCore/QTranslator>
#include <QtCore/QtEndian>

using namespace Hovlets;

namespace {

const QString damaged = QStringLiteral("damaged");
const QString tooManyContexts = QStringLiteral("more than 1000 contexts with the same hash");
const QString tooManyParts = QStringLiteral("more than 20000 parts of messages with the same hash");

QByteArray goodFile(bool withContexts = false)
{
    return translationFile({ { "Menu", "Open", QStringLiteral("\u00d6ffnen") },
                             { "Menu", "Close", QStringLiteral("Schlie\u00dfen") },
                             { "Dialog", "Open", QStringLiteral("Offen") },
                             { "Dialog", "", QString() } },
                           withContexts);
}

QByteArray number(quint32 value)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(value, bytes.data());
    return bytes;
}

QByteArray section(char tag, const QByteArray &bytes)
{
    return tag + number(static_cast<quint32>(bytes.size())) + bytes;
}

QByteArray file(const QByteArray &sections)
{
    return goodFile().left(16) + sections;
}

/// A file with one message, which the hash of "a" finds.
QByteArray fileOf(const QByteArray &message, quint32 offset = 0)
{
    return file(section(0x42, number('a') + number(offset)) + section(0x69, message));
}

QString translated(const QByteArray &bytes, const char *context, const char *text)
{
    QTranslator translator;
    if (!translator.load(reinterpret_cast<const uchar *>(bytes.constData()), int(bytes.size())))
        return QStringLiteral("not loaded");
    return translator.translate(context, text);
}

} // namespace

class tst_HVTranslationCheck : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFindNothingWrongWithCompleteFiles_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray message = "\x03" + number(2) + QByteArray("\0b", 2) + "\x06" + number(1)
                + "a\x07" + number(0) + "\x08" + number(0) + "\x01";
        QTest::newRow("several texts") << goodFile();
        QTest::newRow("a table of contexts") << goodFile(true);
        QTest::newRow("no section") << file({});
        QTest::newRow("one text") << fileOf(message);
        QTest::newRow("unknown sections") << file(section(0x12, "x") + section(0x13, "y"));
        QTest::newRow("bytes after it") << goodFile() + QByteArray(4, '\xff');
        QTest::newRow("an end, followed by bytes") << goodFile() + QByteArray(99, '\0');
        QTest::newRow("untranslated plural forms")
                << fileOf("\x03" + number(0xffffffff) + "\x06" + number(1) + "a\x01");
        QTest::newRow("an obsolete part") << fileOf("\x05" + number(1234) + message);
    }

    void shouldFindNothingWrongWithCompleteFiles()
    {
        QFETCH(QByteArray, bytes);
        QCOMPARE(translationProblem(bytes), QString());
        translated(bytes, "Menu", "Open");
        translated(bytes, "", "a");
    }

    void shouldAcceptTheFilesOfTheseTests()
    {
        for (bool withContexts : { false, true }) {
            const QByteArray bytes = goodFile(withContexts);
            QCOMPARE(translated(bytes, "Menu", "Open"), QStringLiteral("\u00d6ffnen"));
            QCOMPARE(translated(bytes, "Dialog", "Open"), QStringLiteral("Offen"));
            QCOMPARE(translated(bytes, "Menu", "Close"), QStringLiteral("Schlie\u00dfen"));
            QCOMPARE(translated(bytes, "Other", "Close"), QString());
        }
    }

    void shouldReportMistakes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("problem");
        const QString other = QStringLiteral("not a translation file");
        QTest::newRow("empty") << QByteArray() << other;
        QTest::newRow("too short") << goodFile().left(15) << other;
        QTest::newRow("text") << QByteArray("<?xml version=\"1.0\"?>") << other;
        QTest::newRow("other files") << file(section(char(0x96), number(2) + QByteArray("\0a", 2)))
                                     << QStringLiteral("it includes other files");
        QTest::newRow("cut") << goodFile().left(goodFile().size() - 1) << damaged;
        QTest::newRow("a section beyond the end") << file("\x69" + number(7) + "short") << damaged;
        QTest::newRow("a huge section") << file("\x69" + number(0xffffffff) + "short") << damaged;
        QTest::newRow("half a hash")
                << file(section(0x42, number(1) + number(0) + "half") + section(0x69, "\x01"))
                << damaged;
        QTest::newRow("a text beyond the end") << fileOf("\x01", 1) << damaged;
        QTest::newRow("a text far beyond the end") << fileOf("\x01", 0xfffffff0) << damaged;
        QTest::newRow("no texts") << file(section(0x42, number('a') + number(0))) << damaged;
        QTest::newRow("a text without an end")
                << fileOf("\x03" + number(2) + QByteArray("\0b", 2)) << damaged;
        QTest::newRow("a translation beyond the end")
                << fileOf("\x03" + number(3) + "b\x01") << damaged;
        QTest::newRow("a negative length")
                << fileOf("\x03" + number(0xfffffffe) + "bb\x01") << damaged;
        QTest::newRow("a length without its end") << fileOf(QByteArray("\x06\0\0", 3)) << damaged;
        QTest::newRow("an unknown part") << fileOf("\x0a" + number(0) + "\x01") << damaged;
        QTest::newRow("texts in each other")
                << file(section(0x42, number('a') + number(0) + number('b') + number(5))
                        + section(0x69, "\x06" + number(1) + "\x01\x01"))
                << damaged;
        QTest::newRow("no bucket") << file(section(0x2f, QByteArray("\0\0", 2))) << damaged;
        QTest::newRow("half a table") << file(section(0x2f, QByteArray("\0", 1))) << damaged;
        QTest::newRow("a table beyond the end")
                << file(section(0x2f, QByteArray("\0\x02\0\x01", 4))) << damaged;
        QTest::newRow("names beyond the end")
                << file(section(0x2f, QByteArray("\0\x01\0\x01", 4))) << damaged;
        QTest::newRow("names without an end")
                << file(section(0x2f, QByteArray("\0\x01\0\x01\0\0\x04Menu", 11))) << damaged;
    }

    void shouldReportMistakes()
    {
        QFETCH(QByteArray, bytes);
        QTEST(translationProblem(bytes), "problem");
    }

    void shouldCompleteAListOfContextsWithoutAnEnd()
    {
        const QByteArray good = goodFile();
        const QByteArray names = "\x04Menu\x06"
                                 "Dialog";
        const QByteArray bytes = good + section(0x2f, QByteArray("\0\x01\0\x01\0\0", 6) + names)
                + section(0x12, QByteArray(300, '\xff'));
        QCOMPARE(translationProblem(bytes), damaged);
        const QByteArray completed = completedTranslation(bytes);
        QCOMPARE(translationProblem(completed), QString());
        QCOMPARE(translated(completed, "Menu", "Open"), QStringLiteral("\u00d6ffnen"));
        QCOMPARE(translated(completed, "Other", "Open"), QString());

        QCOMPARE(completedTranslation(good), good);
        QCOMPARE(completedTranslation({}), QByteArray());
        QCOMPARE(completedTranslation("\x2f\x2f"), QByteArray("\x2f\x2f"));
    }

    void shouldLetNothingThroughThatHarmsATranslator_data()
    {
        QTest::addColumn<QByteArray>("good");
        QTest::newRow("texts") << goodFile();
        QTest::newRow("texts and contexts") << goodFile(true);
    }

    /// Sets each byte to other values in turn, and translates with every file that passes.
    void shouldLetNothingThroughThatHarmsATranslator()
    {
        QFETCH(QByteArray, good);
        int passed = 0;
        int refused = 0;
        for (int at = 16; at < good.size(); ++at) {
            for (int value : { 0x00, 0x01, 0x02, 0x03, 0x07, 0x10, 0x2f, 0x42, 0x69, 0x7f, 0x80,
                               0x88, 0x96, 0xfe, 0xff }) {
                QByteArray bytes = good;
                bytes[at] = static_cast<char>(value);
                bytes = completedTranslation(bytes);
                if (!translationProblem(bytes).isNull()) {
                    ++refused;
                    continue;
                }
                ++passed;
                for (const char *text : { "Open", "Close", "", "other" }) {
                    translated(bytes, "Menu", text);
                    translated(bytes, "", text);
                }
            }
        }
        QVERIFY(passed > 100);
        QVERIFY(refused > 100);
    }

    /// QTranslator searches a bucket for the context of every text, name by name.
    void shouldLimitTheNamesInABucket()
    {
        const auto chain = [](int names) {
            return file(section(0x2f,
                                QByteArray("\0\x02\0\x01\0\x02\0\0", 8)
                                        + QByteArray("\1a").repeated(names) + '\0'));
        };
        QCOMPARE(translationProblem(chain(999)), QString());
        QCOMPARE(translationProblem(chain(1001)), tooManyContexts);
        // The second bucket leads to the first name, and the first one to names before it.
        const QByteArray shared =
                QByteArray("\0\x02\0\x02\0\x01\0\0", 8) + QByteArray("\1a").repeated(1001) + '\0';
        QCOMPARE(translationProblem(file(section(0x2f, shared))), tooManyContexts);
    }

    /// QTranslator compares a text with all messages of its hash, part by part.
    void shouldLimitThePartsOfMessagesOfOneHash()
    {
        const auto messages = [](int count, int parts, bool haveOneHash) {
            const QByteArray message =
                    ("\x05" + number(0)).repeated(parts - 1) + '\x01'; // the end is a part, too
            QByteArray hashes;
            for (int i = 0; i < count; ++i)
                hashes += number(haveOneHash ? 'a' : quint32(i))
                        + number(quint32(message.size() * i));
            return file(section(0x42, hashes) + section(0x69, message.repeated(count)));
        };
        QCOMPARE(translationProblem(messages(4000, 5, true)), QString());
        QCOMPARE(translationProblem(messages(4001, 5, true)), tooManyParts);
        QCOMPARE(translationProblem(messages(1, 20000, true)), QString());
        QCOMPARE(translationProblem(messages(1, 20001, true)), tooManyParts);
        QCOMPARE(translationProblem(messages(2, 20000, false)), QString());
        // The same message several times.
        const QByteArray hashes = (number('a') + number(0)).repeated(20000);
        QCOMPARE(translationProblem(file(section(0x42, hashes) + section(0x69, "\x01"))),
                 QString());
        QCOMPARE(translationProblem(
                         file(section(0x42, hashes) + section(0x69, "\x05" + number(0) + "\x01"))),
                 tooManyParts);
    }

    void shouldTakeTimeLinearInTheFile()
    {
        // A million nested texts, and 65,535 buckets that share names.
        QByteArray hashes;
        QByteArray texts;
        for (quint32 i = 0; i < 300000; ++i) {
            hashes += number(i) + number(5 * i);
            texts += "\x06" + number(0);
        }
        QCOMPARE(translationProblem(file(section(0x42, hashes) + section(0x69, texts + "\x01"))),
                 tooManyParts);

        QByteArray table("\xff\xff");
        for (int i = 0; i < 65535; ++i)
            table += char(i >> 9) + QByteArray(1, char(i >> 1));
        QCOMPARE(translationProblem(file(section(0x2f, table + QByteArray(200000, '\0')))),
                 QString());
    }
};

HOVLETS_TEST_MAIN(tst_HVTranslationCheck)
#include "tst_hvtranslationcheck.moc"
