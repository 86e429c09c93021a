// SPDX-License-Identifier: Apache-2.0
#include "HVPinnedState.h"
#include "TestMain.h"

#include <QtTest/QtTest>

#include <limits>
#include <random>

using namespace Hovlets;

Q_DECLARE_METATYPE(Hovlets::HVPinnedState)

namespace {

QVector<HVPinnedState> somePopups()
{
    return { { QStringLiteral("pen"), QStringLiteral("de_DE"), { 120, 340 }, true },
             { QStringLiteral("größe/筆"), QStringLiteral("en_US"), { -1400, 30 }, false },
             { QString::fromUtf8(""), QString::fromUtf8(""), { 0, 0 }, false } };
}

} // namespace

class tst_HVPinnedState : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldReturnWhatItWasGiven_data()
    {
        QTest::addColumn<QVector<HVPinnedState>>("popups");
        QTest::newRow("none") << QVector<HVPinnedState>();
        QTest::newRow("three") << somePopups();
        const int most = std::numeric_limits<int>::max();
        const int least = std::numeric_limits<int>::min();
        QTest::newRow("far away") << QVector<HVPinnedState> {
            { QStringLiteral("a"), QString::fromUtf8(""), { most, least }, false }
        };
        QTest::newRow("the longest key") << QVector<HVPinnedState> {
            { QString(MaximumPinnedStateText, QLatin1Char('k')), QStringLiteral("C"), {}, true }
        };
        QTest::newRow("invalid text") << QVector<HVPinnedState> {
            { QString(QChar(0xfeff)) + QChar(0xd800) + QChar(0), QStringLiteral("C"), {}, true }
        };
        QTest::newRow("the most popups")
                << QVector<HVPinnedState>(MaximumPinnedStates, somePopups().constFirst());
    }

    void shouldReturnWhatItWasGiven()
    {
        QFETCH(QVector<HVPinnedState>, popups);
        const auto decoded = decodePinnedStates(encodePinnedStates(popups));
        QVERIFY(decoded.has_value());
        QCOMPARE(*decoded, popups);
    }

    void shouldReturnTheSizesThatUsersGaveToPopups()
    {
        QVector<HVPinnedState> popups = somePopups();
        const QByteArray withoutSizes = encodePinnedStates(popups);
        popups[1].size = { 400, 300 };
        const QByteArray bytes = encodePinnedStates(popups);
        QCOMPARE(bytes.size(), withoutSizes.size() + popups.size() * 8);
        const auto decoded = decodePinnedStates(bytes);
        QVERIFY(decoded.has_value());
        QCOMPARE(*decoded, popups);
        for (int length = 0; length < bytes.size(); ++length)
            QVERIFY(!decodePinnedStates(bytes.left(length)));
    }

    void shouldRefuseImpossibleSizes_data()
    {
        QTest::addColumn<QSize>("size");
        QTest::newRow("too wide") << QSize(40000, 300);
        QTest::newRow("too high") << QSize(300, 40000);
    }

    void shouldRefuseImpossibleSizes()
    {
        QFETCH(QSize, size);
        QVector<HVPinnedState> popups = somePopups();
        popups[0].size = size;
        QVERIFY(!decodePinnedStates(encodePinnedStates(popups)));
    }

    void shouldReadTheBytesOfTheFirstVersion()
    {
        // Hosts have saved states like this one, so it must never change.
        const QByteArray bytes = QByteArray::fromHex("48565050"
                                                     "0001"
                                                     "0001"
                                                     "000300700065006e"
                                                     "000500640065005f00440045"
                                                     "00000078"
                                                     "00000154"
                                                     "01"
                                                     "96c9d56f");
        const QVector<HVPinnedState> popups { somePopups().constFirst() };
        QCOMPARE(encodePinnedStates(popups).toHex(), bytes.toHex());
        const auto decoded = decodePinnedStates(bytes);
        QVERIFY(decoded.has_value());
        QCOMPARE(*decoded, popups);
    }

    void shouldOmitPopupsWithLongTextsOrBeyondTheMaximum()
    {
        QVector<HVPinnedState> popups = somePopups();
        popups.insert(1, { QString(MaximumPinnedStateText + 1, QLatin1Char('k')), {}, {}, false });
        popups.insert(1, { {}, QString(MaximumPinnedStateText + 1, QChar(0xe4)), {}, false });
        QCOMPARE(*decodePinnedStates(encodePinnedStates(popups)), somePopups());

        popups.fill(somePopups().constFirst(), MaximumPinnedStates + 7);
        QCOMPARE(decodePinnedStates(encodePinnedStates(popups))->size(), MaximumPinnedStates);
    }

    void shouldRefuseBytesThatAreCutOffOrExtended()
    {
        const QByteArray bytes = encodePinnedStates(somePopups());
        for (int length = 0; length < bytes.size(); ++length)
            QVERIFY2(!decodePinnedStates(bytes.left(length)), qPrintable(QString::number(length)));
        QVERIFY(!decodePinnedStates(bytes + '\0'));
        QVERIFY(!decodePinnedStates(bytes + bytes));
    }

    void shouldRefuseAnyAlteredByte()
    {
        const QByteArray bytes = encodePinnedStates(somePopups());
        for (int i = 0; i < bytes.size(); ++i) {
            for (int bit = 0; bit < 8; ++bit) {
                QByteArray altered = bytes;
                altered[i] = static_cast<char>(altered.at(i) ^ (1 << bit));
                QVERIFY2(!decodePinnedStates(altered), qPrintable(QString::number(i)));
            }
        }
    }

    void shouldRefuseOtherBytes_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("text") << QByteArray("<?xml version=\"1.0\"?><state/>");
        QTest::newRow("zeros") << QByteArray(1000, '\0');
        QTest::newRow("ones") << QByteArray(1000, '\xff');
        QTest::newRow("the state of a window")
                << QByteArray::fromHex("01d9d0cb00030000000000000000000000000063000000630000");
        QTest::newRow("as many popups as can be said")
                << QByteArray::fromHex("485650500001ffff0000000000000000");
        QTest::newRow("a longer key than there are bytes")
                << QByteArray::fromHex("4856505000010001ffff6161");
    }

    void shouldRefuseOtherBytes()
    {
        QFETCH(QByteArray, bytes);
        QVERIFY(!decodePinnedStates(bytes));
    }

    void shouldSurviveRandomBytes()
    {
        std::mt19937 random(7);
        const QByteArray whole = encodePinnedStates(somePopups());
        for (int i = 0; i < 20000; ++i) {
            QByteArray bytes = whole;
            for (int changes = static_cast<int>(random() % 8); changes >= 0; --changes)
                bytes[static_cast<int>(random() % unsigned(bytes.size()))] = char(random());
            bytes.truncate(static_cast<int>(random() % unsigned(bytes.size() + 1)));
            const auto decoded = decodePinnedStates(bytes);
            QVERIFY(!decoded || bytes == whole);
        }
    }
};

HOVLETS_TEST_MAIN(tst_HVPinnedState)
#include "tst_hvpinnedstate.moc"
