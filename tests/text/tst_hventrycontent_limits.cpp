// SPDX-License-Identifier: Apache-2.0
#include "EntryReading.h"
#include "TestMain.h"

#include <array>
#include <memory>

using namespace Hovlets;

/// Tests how much of an entry is shown.
class tst_HVEntryContentLimits : public QObject, private EntryReading
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void shouldFlattenListsThatAreNestedTooDeeply()
    {
        Element item(m_root.get());
        for (int i = 0; i < 12; ++i)
            item = item.add("ul").add("li", QString::number(i));
        const HVEntryContent content = read();
        QCOMPARE(content.blocks.size(), 1);
        QCOMPARE(content.blocks.at(0).text.text.count(text("<ul>")), 8);
        QCOMPARE(content.blocks.at(0).text.spoken, text("0\n1\n2\n3\n4\n5\n6\n7 8 9 10 11"));
    }

    void shouldCountEachLineOfCodeAsAnElement()
    {
        m_limits.shownElements = 4; // the block, twice, and two further lines
        Element(m_root.get()).add("pre", text("a\nb\nc\nd\n"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList(text("a\nb\nc") + QChar(0x2026)));
        QCOMPARE(content.limitMet, text("4 elements"));
    }

    void shouldEndAListAtTheLimitOfElements()
    {
        m_limits.shownElements = 3;
        Element list = Element(m_root.get()).add("ul");
        for (int i = 0; i < 5; ++i)
            list.add("li", QString::number(i));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content),
                 QStringList({ text("<ul><li>0</li><li>1</li></ul>"), QString(QChar(0x2026)) }));
        QCOMPARE(content.limitMet, text("3 elements"));
    }

    /// Each consists of more items than a paragraph.
    void shouldCountNotesWarningsAndCodeTwice()
    {
        const std::array<const char *, 3> tags { "note", "warning", "pre" };
        Element entry(m_root.get());
        for (int i = 0; i < m_limits.shownElements; ++i)
            entry.add(tags[i % tags.size()], text("x"));
        const HVEntryContent content = read();
        QCOMPARE(int(content.blocks.size()), m_limits.shownElements / 2 + 1); // and an ellipsis
        QCOMPARE(content.limitMet, text("300 elements"));
    }

    void shouldShowFewColumnsOfAVeryWideTable()
    {
        Element row = Element(m_root.get()).add("table").add("tr");
        for (int i = 0; i < m_limits.shownElements; ++i)
            row.add("td", text("x"));
        const HVEntryContent content = read();
        QVERIFY(textsOf(content).constFirst().count(text("<td>")) < 100);
        QCOMPARE(content.limitMet, text("300 elements"));
    }

    void shouldShowTheDescriptionsOfPicturesBeyondTheLimit()
    {
        m_limits.shownPictures = 2;
        Element entry(m_root.get());
        for (int i = 0; i < 3; ++i)
            entry.add("img").set("src", text("a.png")).set("alt", QString::number(i));
        entry.add("p", text("more"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList({ text("0"), text("1"), text("2"), text("more") }));
        QCOMPARE(content.blocks.at(2).kind, HVEntryBlock::Kind::Paragraph);
        QCOMPARE(content.limitMet, text("2 pictures"));
    }

    void shouldReadNoMoreFilesThanPicturesAreShown()
    {
        m_limits.shownPictures = 2;
        Element entry(m_root.get());
        entry.add("img").set("src", text("missing.png"));
        for (int i = 0; i < 5; ++i)
            entry.add("img").set("src", text("text.txt")).set("alt", QString::number(i));
        const HVEntryContent content = read();
        QCOMPARE(m_services.picturesRead, 2);
        QCOMPARE(textsOf(content).size(), 5);
        QCOMPARE(content.limitMet, text("2 pictures"));
    }

    void shouldEndWithAnEllipsisAtTheLimitOfElements()
    {
        m_limits.shownElements = 2;
        Element entry(m_root.get());
        for (int i = 0; i < 5; ++i)
            entry.add("p", QString::number(i));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList({ text("0"), text("1"), QString(QChar(0x2026)) }));
        QCOMPARE(content.limitMet, text("2 elements"));
    }

    void shouldEndWithAnEllipsisAtTheLimitOfCharacters()
    {
        m_limits.shownCharacters = 7;
        Element entry(m_root.get());
        entry.set("title", text("four"));
        for (int i = 0; i < 3; ++i)
            entry.add("p", text("two "));
        entry.add("img").set("src", text("a.png"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList({ text("two"), QString(QChar(0x2026)) }));
        QCOMPARE(content.limitMet, text("7 characters"));
    }

    void shouldNotTranslateTextThatIsTooLongToShow()
    {
        m_limits.shownCharacters = 10;
        Element(m_root.get()).add("p", QString(1000, QLatin1Char('x')));
        QCOMPARE(textsOf(read()), QStringList({ text("xxxxxxxxxx") + QChar(0x2026) }));
        QCOMPARE(m_services.translated, QStringList());
    }

    void shouldReadAllTextsWithinOneBudget_data()
    {
        QTest::addColumn<QString>("start");
        QTest::addColumn<QString>("piece");
        QTest::addColumn<QString>("end");
        const auto row = [](const char *start, const char *piece, const char *end) {
            QTest::addRow("%s%s%s", start, piece, end) << text(start) << text(piece) << text(end);
        };
        row("", "</b>", "");
        row("", "%(empty)s", "");
        row("<p style='", "color:red;", "'>");
        row("<p ", "a ", ">");
        row("", " ", "");
        row("<b>", " ", "");
        row("", "&#8203;", "");
        row("", "a\t", "");
    }

    /// Whether the texts are in the control file or in the translation, and show something or not.
    void shouldReadAllTextsWithinOneBudget()
    {
        QFETCH(QString, start);
        QFETCH(QString, piece);
        QFETCH(QString, end);
        m_limits.shownCharacters = 1000;
        const qint64 most = qint64 { 4 } * m_limits.shownCharacters;
        const auto written = [&](qint64 size) {
            return start + piece.repeated(int(size / piece.size())) + end;
        };
        const QString whole = written(most - 100);
        for (const bool isTranslated : { false, true }) {
            m_services = {};
            m_services.translation = isTranslated ? written(3 * most) : QString();
            Element entry(m_root.get());
            for (int i = 0; i < 200; ++i)
                entry.add("p", isTranslated ? text("x") : whole);
            const HVEntryContent content = read();
            QVERIFY2(m_services.interpolated <= most,
                     qPrintable(QString::number(m_services.interpolated)));
            qsizetype size = 0;
            for (const HVEntryBlock &block : content.blocks)
                size += block.text.text.size();
            QVERIFY2(size <= 2 * most, qPrintable(QString::number(size)));
            if (isTranslated || piece != QLatin1String(" ")) {
                QVERIFY(content.limitMet.endsWith(QLatin1String("characters"))
                        || content.limitMet == text("4000 characters with markup"));
                QVERIFY(content.blocks.constLast().text.text.contains(QChar(0x2026)));
                QVERIFY2(m_services.translated.size() <= 3,
                         qPrintable(QString::number(m_services.translated.size())));
            }
            m_root = std::make_unique<HVXmlElement>();
        }
    }

    void shouldTranslateTheTitleAndTheShortcutWithinTheBudget()
    {
        m_services.translation = text("y ").repeated(1000000);
        Element(m_root.get()).set("title", text("x")).set("shortcut", text("x"));
        const HVEntryContent content = read();
        QCOMPARE(int(content.title.text.size()), m_limits.shownCharacters + 1);
        QCOMPARE(content.shortcut.text, QString(QChar(0x2026)));
        QVERIFY(m_services.interpolated <= qint64 { 4 } * m_limits.shownCharacters);
        QCOMPARE(int(m_services.translated.size()), 1);
    }

    void shouldReadNoMoreElementsThanItShows_data()
    {
        QTest::addColumn<QString>("tag");
        for (const char *tag : { "p", "b", "link", "x" })
            QTest::newRow(tag) << text(tag);
    }

    /// Nested elements: each level counts, whether it shows anything or not.
    void shouldReadNoMoreElementsThanItShows()
    {
        QFETCH(QString, tag);
        Element level(m_root.get());
        const QByteArray name = tag.toLatin1();
        for (int depth = 0; depth < 500; ++depth) {
            for (int i = 0; i < 10; ++i)
                level.add(name.constData(), text("a")).set("href", text("a/b"));
            level = level.add(name.constData(), text("b"));
        }
        const HVEntryContent content = read();
        QVERIFY(content.blocks.size() <= m_limits.shownElements + 1);
        QCOMPARE(content.limitMet, text("300 elements"));
    }

    void shouldShowNothingWithoutAllowance()
    {
        m_limits.shownElements = m_limits.shownCharacters = m_limits.shownPictures = -1;
        Element entry(m_root.get());
        entry.set("title", text("A"));
        entry.add("p", text("B"));
        const HVEntryContent content = read();
        QCOMPARE(content.title.text, QString(QChar(0x2026)));
        QCOMPARE(textsOf(content), QStringList());
    }
};

HOVLETS_TEST_MAIN(tst_HVEntryContentLimits)
#include "tst_hventrycontent_limits.moc"
