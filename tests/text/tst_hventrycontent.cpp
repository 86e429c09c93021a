// SPDX-License-Identifier: Apache-2.0
#include "HVEntryContent.h"
#include "HVXmlElement.h"
#include "TestMain.h"
#include "Text.h"

#include <array>
#include <memory>

using namespace Hovlets;

namespace {

class Services : public HVEntryServices
{
public:
    QString translate(const QString &text, const QString &context) override
    {
        translated += context + QLatin1Char('/') + text;
        return translation;
    }
    QString interpolate(const QString &text) override
    {
        interpolated += text.size();
        return QString(text).remove(QLatin1String("%(empty)s"));
    }
    QString resource(const QString &relativePath) override
    {
        return relativePath.contains(QLatin1String("missing")) ? QString() : relativePath;
    }
    bool canShowPicture(const QString &path) override
    {
        ++picturesRead;
        return path.endsWith(QLatin1String(".png"));
    }

    QString optionalResource(const QString &relativePath, const QString &) override
    {
        return relativePath.endsWith(QLatin1String(".vtt")) ? relativePath : QString();
    }

    QByteArray captionFile(const QString &) override { return captions; }

    QByteArray captions;
    QString translation; // of each text
    QStringList translated;
    qint64 interpolated = 0; // characters
    int picturesRead = 0;
};

/// A tree of elements, built from the outside in.
class Element
{
public:
    explicit Element(HVXmlElement *element)
        : m_element(element)
    {
    }

    Element add(const char *tag, const QString &content = {})
    {
        auto *child = new HVXmlElement(m_element);
        child->setTagName(QLatin1String(tag));
        child->setContent(content);
        return Element(child);
    }

    Element &set(const char *name, const QString &value)
    {
        m_element->setAttribute(QLatin1String(name), value);
        return *this;
    }

private:
    HVXmlElement *m_element;
};

QStringList textsOf(const HVEntryContent &content)
{
    QStringList texts;
    for (const HVEntryBlock &block : content.blocks)
        texts += block.text.text;
    return texts;
}

} // namespace

/// Tests which parts of an entry are shown, and how much of them.
class tst_HVEntryContent : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_root = std::make_unique<HVXmlElement>();
        m_root->setAttribute(text("key"), text("k"));
        m_limits = {};
        m_services = {};
    }

    void shouldShowBlocksInTheirOrder()
    {
        Element entry(m_root.get());
        entry.set("clip", text("a.mp4")).set("shortcut", text(" F1 "));
        m_root->setContent(text("own\n"));
        entry.add("title", text(" The  title "));
        entry.add("p", text("one"));
        entry.add("img").set("src", text("a.png")).set("alt", text("two"));
        entry.add("link", text("three")).set("href", text("a/b"));
        const HVEntryContent content = read();
        QCOMPARE(content.key, text("k"));
        QCOMPARE(content.title.text, text("The title"));
        QCOMPARE(content.shortcut.text, text("F1"));
        QCOMPARE(textsOf(content),
                 QStringList({ {}, text("own"), text("one"), text("two"), text("three") }));
        const QVector<HVEntryBlock::Kind> kinds {
            HVEntryBlock::Kind::Clip, HVEntryBlock::Kind::Paragraph, HVEntryBlock::Kind::Paragraph,
            HVEntryBlock::Kind::Image, HVEntryBlock::Kind::Link
        };
        for (int i = 0; i < kinds.size(); ++i)
            QCOMPARE(content.blocks.at(i).kind, kinds.at(i));
        QVERIFY(content.limitMet.isEmpty());
        QVERIFY(m_services.translated.contains(text("k/The title")));
    }

    void shouldShowButtonsThatTheHostCanServe()
    {
        Element entry(m_root.get());
        entry.add("button", text(" Reset  it ")).set("href", text("app:reset"));
        entry.add("button", text("topic")).set("href", text("Topic"));
        entry.add("button", text("without a link"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList({ text("Reset it"), text("without a link") }));
        QCOMPARE(content.blocks.at(0).kind, HVEntryBlock::Kind::Button);
        QCOMPARE(content.blocks.at(0).locator, text("app:reset"));
        QCOMPARE(content.blocks.at(1).kind, HVEntryBlock::Kind::Paragraph);
    }

    void shouldReadCaptionsLast()
    {
        Element entry(m_root.get());
        entry.set("clip", text("a.mp4")).set("captions", text("a.vtt"));
        entry.add("p", QString(40, QLatin1Char('x')));
        m_services.captions = "WEBVTT\n\n00:00.000 --> 00:01.000\none\n\n"
                              "00:01.000 --> 00:02.000\ntwo\n";
        HVEntryContent content = read();
        QCOMPARE(content.blocks.first().captions.size(), 2);
        QCOMPARE(content.blocks.first().captions.at(1).text, text("two"));
        QCOMPARE(content.blocks.first().text.spoken, text("one\ntwo"));
        QVERIFY(m_services.translated.contains(text("k/two")));

        m_limits.shownCharacters = 44; // the texts, and one caption
        content = read();
        QCOMPARE(content.blocks.at(1).text.text.size(), 40);
        QCOMPARE(content.blocks.first().captions.size(), 1);
        QCOMPARE(content.limitMet, text("44 characters"));
    }

    void shouldShowTheCaptionsAfterAnEmptyOne()
    {
        Element(m_root.get()).set("clip", text("a.mp4"));
        m_services.captions = "WEBVTT\n\n00:00.000 --> 00:01.000\n%(empty)s\n\n"
                              "00:01.000 --> 00:02.000\ntwo\n";
        const HVEntryContent content = read();
        QCOMPARE(content.blocks.first().captions.size(), 1);
        QCOMPARE(content.blocks.first().captions.first().text, text("two"));
        QCOMPARE(content.blocks.first().text.spoken, text("two"));
    }

    void shouldShowListsWithTheirItems()
    {
        Element list = Element(m_root.get()).add("ol");
        list.add("li", text("a & b"));
        Element item = list.add("li", text("<i>c</i>"));
        item.add("ul").add("li", text("d"));
        item.add("img").set("src", text("a.png")).set("alt", text("e"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content),
                 QStringList(
                         { text("<ol><li>a &amp; b</li><li><i>c</i><ul><li>d</li></ul></li></ol>"),
                           text("e") }));
        QCOMPARE(content.blocks.at(0).kind, HVEntryBlock::Kind::Part);
        QCOMPARE(content.blocks.at(0).text.spoken, text("a & b\nc\nd"));
        QCOMPARE(content.blocks.at(0).text.format, HVShownText::Format::Rich);
        QVERIFY(m_services.translated.contains(text("k/a & b")));
        QVERIFY(m_services.translated.contains(text("k/d")));
    }

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

    void shouldShowTables()
    {
        Element table = Element(m_root.get()).add("table");
        Element head = table.add("tr");
        head.add("th", text("a"));
        head.add("th", text("b"));
        table.add("tr").add("td", text("<c"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content),
                 QStringList(text(
                         "<table><tr><th>a</th><th>b</th></tr><tr><td>&lt;c</td></tr></table>")));
        QCOMPARE(content.blocks.at(0).text.spoken, text("a, b\n<c"));
    }

    void shouldShowTextBesideItemsAndRows()
    {
        Element list = Element(m_root.get()).add("ul", text("a"));
        list.add("li", text("b")).add("ol", text("c")).add("li", text("d"));
        Element table = Element(m_root.get()).add("table", text("e"));
        table.add("tbody").add("tr").add("td", text("f"));
        QCOMPARE(textsOf(read()),
                 QStringList({ text("a"), text("<ul><li>bc<ol><li>d</li></ol></li></ul>"),
                               text("e"), text("<table><tr><td>f</td></tr></table>") }));
    }

    void shouldKeepTheLinesOfCode()
    {
        Element(m_root.get()).add("pre", text("\n    if (a <  b)\n\n    \tc();\n  "));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList(text("if (a <  b)\n\n    c();")));
        QCOMPARE(content.blocks.at(0).kind, HVEntryBlock::Kind::Code);
        QCOMPARE(content.blocks.at(0).text.format, HVShownText::Format::Plain);
        QVERIFY(m_services.translated.isEmpty());
    }

    void shouldCountEachLineOfCodeAsAnElement()
    {
        m_limits.shownElements = 4; // the block, twice, and two further lines
        Element(m_root.get()).add("pre", text("a\nb\nc\nd\n"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList(text("a\nb\nc") + QChar(0x2026)));
        QCOMPARE(content.limitMet, text("4 elements"));
    }

    void shouldShowHeadingsNotesAndWarnings()
    {
        Element entry(m_root.get());
        entry.add("h2", text("a"));
        entry.add("note", text("b")).add("p", text("c"));
        entry.add("warning", text("d"));
        const HVEntryContent content = read();
        QCOMPARE(textsOf(content), QStringList({ text("a"), text("b"), text("c"), text("d") }));
        const QVector<HVEntryBlock::Kind> kinds { HVEntryBlock::Kind::Heading,
                                                  HVEntryBlock::Kind::Note,
                                                  HVEntryBlock::Kind::Paragraph,
                                                  HVEntryBlock::Kind::Warning };
        for (int i = 0; i < kinds.size(); ++i)
            QCOMPARE(content.blocks.at(i).kind, kinds.at(i));
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

    void shouldShowTheDescriptionOfAFileThatIsNotAPicture()
    {
        Element entry(m_root.get());
        for (const char *file : { "missing.png", "text.txt", "" })
            entry.add("img").set("src", text(file)).set("alt", text("A picture"));
        const HVEntryContent content = read();
        QCOMPARE(int(content.blocks.size()), 3);
        for (const HVEntryBlock &block : content.blocks) {
            QCOMPARE(block.kind, HVEntryBlock::Kind::Paragraph);
            QCOMPARE(block.text.text, text("A picture"));
            QVERIFY(block.isMuted);
        }
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

    void shouldSimplifyWhiteSpaceOfTranslations()
    {
        m_services.translation = text(" \ta\t \nb\n");
        Element entry(m_root.get());
        entry.set("title", text("x"));
        entry.add("p", text("x"));
        const HVEntryContent content = read();
        QCOMPARE(content.title.text, text("a b"));
        QCOMPARE(textsOf(content), QStringList({ text("a b") }));
        m_services.translation = text(" \n ");
        QCOMPARE(textsOf(read()), QStringList({ text("x") }));
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

private:
    HVEntryContent read() { return readEntry(*m_root, m_services, false, m_limits); }

    std::unique_ptr<HVXmlElement> m_root;
    HVLimits m_limits;
    Services m_services;
};

HOVLETS_TEST_MAIN(tst_HVEntryContent)

#include "tst_hventrycontent.moc"
