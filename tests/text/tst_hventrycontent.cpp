// SPDX-License-Identifier: Apache-2.0
#include "EntryReading.h"
#include "TestMain.h"

using namespace Hovlets;

/// Tests which parts of an entry are shown.
class tst_HVEntryContent : public QObject, private EntryReading
{
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

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
};

HOVLETS_TEST_MAIN(tst_HVEntryContent)

#include "tst_hventrycontent.moc"
