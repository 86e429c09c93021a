// SPDX-License-Identifier: Apache-2.0
#include "HVInterpolation.h"
#include "TestMain.h"

#include <QRegExp>
#include <QtCore/QRandomGenerator>

using namespace Hovlets;

using Values = QMap<QString, QVariant>;

namespace {

/// The rule in its simplest form, which need not terminate: false after \a steps steps.
bool plainRule(const QString &text, const Values &values, int steps, QString *result)
{
    const QRegExp placeholder(QStringLiteral("\\%\\(([-_a-zA-Z0-9]+)\\)s"));
    *result = text;
    int pos = 0;
    while ((pos = placeholder.indexIn(*result, pos)) >= 0) {
        if (steps-- == 0)
            return false;
        const int length = placeholder.matchedLength();
        const QString name = placeholder.cap(1);
        const QString replacement = values.contains(name) ? values[name].toString() : QString();
        if (replacement.isNull())
            pos += length;
        else
            *result = result->left(pos) + replacement + result->mid(pos + length);
    }
    return true;
}

/// A few pieces that form placeholders, whole or broken.
QString randomText(QRandomGenerator &random)
{
    static const QStringList pieces {
        QStringLiteral("%(a)s"), QStringLiteral("%(b)s"), QStringLiteral("%(c)s"),
        QStringLiteral("%(d)s"), QStringLiteral("%("),    QStringLiteral(")s"),
        QStringLiteral("a"),     QStringLiteral("b"),     QStringLiteral("%(a"),
        QStringLiteral("b)s"),   QStringLiteral("%"),     QStringLiteral("s"),
        QStringLiteral(" "),     QStringLiteral("("),     QStringLiteral(")"),
    };
    QString text(QLatin1String(""));
    for (int left = random.bounded(5); left > 0; --left)
        text += pieces.at(random.bounded(int(pieces.size())));
    return text;
}

Values randomValues(QRandomGenerator &random)
{
    Values values;
    for (const char *name : { "a", "b", "c" }) {
        if (random.bounded(5) != 0) {
            values.insert(QLatin1String(name),
                          random.bounded(8) == 0 ? QString() : randomText(random));
        }
    }
    return values;
}

} // namespace

class tst_HVInterpolation : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void shouldFillPlaceholders_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<Values>("values");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char *name, const QString &text, const Values &values,
                            const QString &expected) {
            QTest::newRow(name) << text << values << expected;
        };
        const auto s = [](const char *text) { return QString::fromUtf8(text); };
        const Values none;

        row("a value", s("Press %(key)s now"), { { s("key"), s("F1") } }, s("Press F1 now"));
        row("no values", s("Press %(key)s now"), none, s("Press %(key)s now"));
        row("no placeholder", s("100 % (sure)"), { { s("sure"), s("x") } }, s("100 % (sure)"));
        row("an empty text", s(""), none, s(""));
        row("several", s("%(a)s%(b)s %(a)s"), { { s("a"), s("1") }, { s("b"), s("2") } },
            s("12 1"));
        row("all characters of a name", s("%(aZ-_09)s"), { { s("aZ-_09"), s("x") } }, s("x"));
        row("a space in a name", s("%(a b)s"), { { s("a b"), s("x") } }, s("%(a b)s"));
        row("a letter outside ASCII", s("%(ä)s"), { { s("ä"), s("x") } }, s("%(ä)s"));
        row("a dot in a name", s("%(a.b)s"), { { s("a.b"), s("x") } }, s("%(a.b)s"));
        row("no name", s("%()s"), { { s(""), s("x") } }, s("%()s"));
        row("a name in other case", s("%(Key)s"), { { s("key"), s("x") } }, s("%(Key)s"));
        row("a capital S", s("%(key)S"), { { s("key"), s("x") } }, s("%(key)S"));
        row("no closing", s("%(key)"), { { s("key"), s("x") } }, s("%(key)"));
        row("one inside another", s("%(%(key)s)s"), { { s("key"), s("a") }, { s("a"), s("x") } },
            s("%(a)s"));
        row("a percent sign before", s("%%(key)s"), { { s("key"), s("x") } }, s("%x"));
        row("an unknown name between", s("%(a)s%(b)s%(a)s"), { { s("b"), s("x") } },
            s("%(a)sx%(a)s"));

        row("an empty value", s("[%(a)s]"), { { s("a"), s("") } }, s("[]"));
        row("a null string", s("[%(a)s]"), { { s("a"), QString() } }, s("[%(a)s]"));
        row("an invalid value", s("[%(a)s]"), { { s("a"), QVariant() } }, s("[%(a)s]"));
        row("a list, which has no text", s("[%(a)s]"), { { s("a"), QVariantList { 1 } } },
            s("[%(a)s]"));
        row("a number", s("[%(a)s]"), { { s("a"), 1.5 } }, s("[1.5]"));
        row("a truth", s("[%(a)s]"), { { s("a"), true } }, s("[true]"));

        row("a value with a placeholder", s("%(a)s"),
            { { s("a"), s("%(b)s") }, { s("b"), s("x") } }, s("x"));
        row("a value with an unknown name", s("%(a)s%(a)s"), { { s("a"), s("<%(b)s>") } },
            s("<%(b)s><%(b)s>"));
        row("a placeholder that a value and the text make up", s("%(a)sb)s"),
            { { s("a"), s("%(") }, { s("b"), s("x") } }, s("x"));
        row("a placeholder that the text before a value begins", s("%(%(a)s)s"),
            { { s("a"), s("b") }, { s("b"), s("x") } }, s("%(b)s"));
        row("a value twice is no cycle", s("%(a)s %(a)s"),
            { { s("a"), s("%(b)s%(b)s") }, { s("b"), s("x") } }, s("xx xx"));
        row("its own name beyond its end", s("%(a)s)s"),
            { { s("a"), s("%(b") }, { s("b"), s("%(a)s!") } }, s("%(b!"));
        row("a name again behind an empty value", s("%(a)s%(a)s"), { { s("a"), s("") } }, s(""));
        row("half a surrogate pair in the text", QString(QChar(0xD800)) + s("%(a)s"),
            { { s("a"), s("x") } }, QString(QChar(0xD800)) + s("x"));

        row("a cycle of one", s("<%(a)s>"), { { s("a"), s("x%(a)sy") } }, s("<x%(a)sy>"));
        row("a value that is its own placeholder", s("%(a)s"), { { s("a"), s("%(a)s") } },
            s("%(a)s"));
        row("a cycle of two", s("%(a)s %(b)s"),
            { { s("a"), s("1%(b)s") }, { s("b"), s("2%(a)s") } }, s("12%(a)s 21%(b)s"));
        row("text behind a cycle", s("%(a)s%(b)s"), { { s("a"), s("%(a)s") }, { s("b"), s("x") } },
            s("%(a)sx"));
    }

    void shouldFillPlaceholders()
    {
        QFETCH(QString, text);
        QFETCH(Values, values);
        QTEST(interpolated(text, values), "expected");
    }

    void shouldMatchTheSimpleRuleWheneverThatTerminates()
    {
        QRandomGenerator random(20240229);
        int ended = 0;
        int endless = 0;
        for (int i = 0; i < 12000; ++i) {
            const QString text = randomText(random);
            const Values values = randomValues(random);
            QString expected;
            const bool ends = plainRule(text, values, 500, &expected);
            const QString found = interpolated(text, values);
            ++(ends ? ended : endless);
            if (ends && found != expected) {
                qDebug() << text << values;
                QCOMPARE(found, expected);
            }
            if (!ends)
                QVERIFY(found.contains(QLatin1String(")s"))); // the cycle remains visible
        }
        QVERIFY(ended > 6000);
        QVERIFY(endless > 500);
    }

    void shouldTakeTimeLinearInTheText()
    {
        // 300,000 placeholders: this would take hours if each copied the rest of the text.
        constexpr int Number = 300000;
        const QString text = QStringLiteral("%(application)s ").repeated(Number);
        const QMap<QString, QVariant> values { { QStringLiteral("application"),
                                                 QStringLiteral("%(name)s 2") },
                                               { QStringLiteral("name"), QStringLiteral("X") } };
        QCOMPARE(interpolated(text, values), QStringLiteral("X 2 ").repeated(Number));
        QCOMPARE(interpolated(text, {}), text);
    }
};

HOVLETS_TEST_MAIN(tst_HVInterpolation)
#include "tst_hvinterpolation.moc"
