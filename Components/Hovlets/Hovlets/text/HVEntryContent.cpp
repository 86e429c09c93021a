// SPDX-License-Identifier: Apache-2.0
#include "HVEntryContent.h"

#include "HVEntryMedia.h"
#include "HVEntryTexts.h"
#include "HVMarkup.h"
#include "HVMarkupTags.h"
#include "HVRichTextParts.h"
#include "HVXmlElement.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Hovlets {

namespace {

constexpr ushort CutOff = 0x2026;

QString attribute(const HVXmlElement &element, const char *name)
{
    return element.attribute(QLatin1String(name));
}

bool isTag(const HVXmlElement &element, const char *name)
{
    return element.getTagName() == QLatin1String(name);
}

/// Whether an element of the control file marks a word in its paragraph.
bool isWord(const HVXmlElement &element)
{
    const std::optional<HVMarkupTag> tag = markupTagNamed(element.getTagName());
    return tag && marksWords(*tag) && isTag(element, markupTagName(*tag).data());
}

bool isList(const HVXmlElement &element)
{
    return isTag(element, "ul") || isTag(element, "ol");
}

/// Whether an element is shown below the text that contains it, and not as a part of it.
bool isBlock(const HVXmlElement &element)
{
    static constexpr std::array<const char *, 9> Tags { "img",     "link", "table", "pre",   "note",
                                                        "warning", "h2",   "h3",    "button" };
    return std::any_of(Tags.begin(), Tags.end(),
                       [&element](const char *tag) { return isTag(element, tag); });
}

class EntryReader
{
public:
    EntryReader(const HVXmlElement &entry, HVEntryServices &services, bool topics,
                const HVLimits &limits)
        : m_entry(entry)
        , m_texts(attribute(entry, "key"), services, topics, limits)
        , m_budget(m_texts.budget())
        , m_media(services, m_texts)
        , m_topics(topics)
    {
    }

    HVEntryContent read()
    {
        m_content.key = attribute(m_entry, "key");
        m_content.title = m_texts.plain(title());
        m_content.shortcut = m_texts.plain(attribute(m_entry, "shortcut"));
        const bool hasClip = addClip(attribute(m_entry, "clip"));
        if (!m_budget.isSpent())
            addParagraph(m_texts.simplified(m_entry.content()));
        m_texts.forEachChild(m_entry, [this](const HVXmlElement &child) {
            if (!isTag(child, "title"))
                addElement(child);
        });
        // Last, because they may be long, and the texts matter more.
        if (hasClip && !m_budget.isSpent())
            m_media.addCaptions(m_entry, m_content.blocks.first());
        if (m_budget.isSpent())
            markTheEnd();
        m_content.limitMet = m_budget.limitMet();
        return m_content;
    }

private:
    using Kind = HVEntryBlock::Kind;
    using Elements = std::vector<const HVXmlElement *>;

    QString title()
    {
        const QString title = m_texts.simplified(attribute(m_entry, "title"));
        if (!title.isEmpty())
            return title;
        const QObjectList &children = m_entry.children();
        for (const QObject *child : children) {
            const auto *element = qobject_cast<const HVXmlElement *>(child);
            const QString text =
                    element && isTag(*element, "title") ? m_texts.allText(*element) : QString();
            if (!text.isEmpty())
                return text;
        }
        return {};
    }

    void addParagraph(const QString &source, Kind kind = Kind::Paragraph, bool isMuted = false)
    {
        if (source.isEmpty())
            return;
        HVEntryBlock block;
        block.kind = kind;
        block.text = m_texts.formatted(source);
        block.isMuted = isMuted;
        m_content.blocks.append(block);
    }

    bool addClip(const QString &path)
    {
        HVEntryBlock block;
        block.kind = Kind::Clip;
        const bool isFound = m_media.findClip(path, block);
        if (isFound)
            m_content.blocks.append(block);
        return isFound;
    }

    void addImage(const HVXmlElement &image)
    {
        const QString description = attribute(image, "alt");
        const QString caption = attribute(image, "caption");
        HVEntryBlock block;
        block.kind = Kind::Image;
        if (!m_media.findPicture(attribute(image, "src"), block))
            return addParagraph(m_texts.simplified(description.isEmpty() ? caption : description),
                                Kind::Paragraph, true);
        block.text = m_texts.plain(description);
        if (!m_budget.isSpent())
            block.caption = m_texts.plain(caption);
        m_content.blocks.append(block);
    }

    void addLink(const QString &locator, const QString &label, Kind kind)
    {
        if (isTopic(locator) && !m_topics)
            return;
        HVEntryBlock block;
        block.kind = kind;
        block.locator = locator;
        block.text = m_texts.plain(label);
        if (block.text.text.isEmpty())
            block.text = shownPlainText(locator, m_budget);
        m_content.blocks.append(block);
    }

    void addElement(const HVXmlElement &element)
    {
        if (m_budget.isSpent())
            return;
        const QString locator = attribute(element, "href");
        if (isTag(element, "link") && !locator.isEmpty())
            addLink(locator, m_texts.allText(element), Kind::Link);
        else if (isTag(element, "button") && !locator.isEmpty())
            addLink(locator, m_texts.allText(element), Kind::Button);
        else if (isTag(element, "img"))
            addImage(element);
        else if (isList(element))
            addList(element);
        else if (isTag(element, "table"))
            addTable(element);
        else if (isTag(element, "pre"))
            addCode(element);
        else
            addText(element, kindOf(element));
    }

    static Kind kindOf(const HVXmlElement &element)
    {
        if (isTag(element, "h2") || isTag(element, "h3"))
            return Kind::Heading;
        if (isTag(element, "note"))
            return Kind::Note;
        return isTag(element, "warning") ? Kind::Warning : Kind::Paragraph;
    }

    void addList(const HVXmlElement &list)
    {
        addParagraph(m_texts.simplified(list.content()));
        HVRichTextParts parts;
        Elements below;
        appendList(parts, list, below, 1);
        addParts(parts, below);
    }

    void appendList(HVRichTextParts &parts, const HVXmlElement &list, Elements &below, int level)
    {
        constexpr int DeepestList = 8; // as in markup
        const char *tag = isTag(list, "ol") ? "ol" : "ul";
        parts.begin(tag);
        m_texts.forEachChild(list, [&](const HVXmlElement &item) {
            Elements lists;
            parts.begin("li");
            parts.separate("\n");
            parts.append(m_texts.formatted(
                    itemText(item, below, level < DeepestList ? &lists : nullptr)));
            for (const HVXmlElement *inner : lists) {
                parts.append(m_texts.formatted(m_texts.simplified(inner->content())));
                appendList(parts, *inner, below, level + 1);
            }
            parts.end("li");
        });
        parts.end(tag);
    }

    void addTable(const HVXmlElement &table)
    {
        addParagraph(m_texts.simplified(table.content()));
        HVRichTextParts parts;
        Elements below;
        parts.begin("table");
        appendRows(parts, table, below);
        parts.end("table");
        addParts(parts, below);
    }

    void appendRows(HVRichTextParts &parts, const HVXmlElement &table, Elements &below)
    {
        m_texts.forEachChild(table, [&](const HVXmlElement &row) {
            if (isTag(row, "thead") || isTag(row, "tbody") || isTag(row, "tfoot"))
                return appendRows(parts, row, below);
            parts.begin("tr");
            parts.separate("\n");
            appendCells(parts, row, below);
            parts.end("tr");
        });
    }

    void appendCells(HVRichTextParts &parts, const HVXmlElement &row, Elements &below)
    {
        // A table this wide breaks its words into letters, which takes long to lay out.
        constexpr int WidestRow = 20;
        constexpr int CostBeyond = 4;
        int cells = 0;
        m_texts.forEachChild(row, [&](const HVXmlElement &cell) {
            for (int i = 1; cells >= WidestRow && i < CostBeyond; ++i)
                m_budget.takeElement();
            const char *tag = isTag(cell, "th") ? "th" : "td";
            parts.begin(tag);
            parts.separate(cells++ == 0 ? "" : ", ");
            const HVShownText text = m_texts.formatted(itemText(cell, below, nullptr));
            parts.append(text);
            // Counts twice: a table is laid out for its columns first, and then again.
            m_budget.takeCharacters(static_cast<int>(text.spoken.size()));
            parts.end(tag);
        });
    }

    /// The text of a list item or a table cell. Adds the elements in it that are shown below the
    /// list to \a below, and lists in it to \a lists unless that is null.
    QString itemText(const HVXmlElement &item, Elements &below, Elements *lists)
    {
        QString text;
        m_texts.append(text, item.content());
        m_texts.forEachChild(item, [&](const HVXmlElement &child) {
            if (lists && isList(child)) {
                lists->push_back(&child);
            } else if (isBlock(child)) {
                below.push_back(&child);
            } else {
                m_texts.append(text, QStringLiteral(" "));
                m_texts.appendAllText(text, child);
            }
        });
        return m_texts.simplified(text);
    }

    void addParts(HVRichTextParts &parts, const Elements &below)
    {
        HVEntryBlock block;
        block.kind = Kind::Part;
        block.text = parts.take();
        if (!block.text.spoken.isEmpty())
            m_content.blocks.append(block);
        for (const HVXmlElement *element : below)
            addElement(*element);
    }

    /// Code is not translated, and keeps its spaces and lines.
    void addCode(const HVXmlElement &element)
    {
        m_budget.takeElement(); // counts twice: its lines are measured and laid out
        HVEntryBlock block;
        block.kind = Kind::Code;
        block.text = m_texts.code(element.content());
        if (!block.text.text.isEmpty())
            m_content.blocks.append(block);
        m_texts.forEachChild(element, [this](const HVXmlElement &child) { addElement(child); });
    }

    /// Elements in a paragraph do not act as markup, because their place in the text is unknown
    /// here. Words follow the text; anything larger becomes a block of its own.
    void addText(const HVXmlElement &element, Kind kind)
    {
        // Counts twice: the label is laid out, too.
        if (kind == Kind::Note || kind == Kind::Warning)
            m_budget.takeElement();
        QString text;
        m_texts.append(text, element.content());
        Elements blocks;
        m_texts.forEachChild(element, [&](const HVXmlElement &child) {
            if (!isWord(child)) {
                blocks.push_back(&child);
                return;
            }
            m_texts.append(text, QStringLiteral(" "));
            m_texts.appendAllText(text, child);
        });
        addParagraph(m_texts.simplified(text), kind);
        for (const HVXmlElement *block : blocks)
            addElement(*block);
    }

    /// Shows that content was cut, unless the last text already ends with an ellipsis.
    void markTheEnd()
    {
        const bool isMarked = m_content.title.isCut || m_content.shortcut.isCut
                || (!m_content.blocks.isEmpty()
                    && (m_content.blocks.constLast().text.isCut
                        || m_content.blocks.constLast().caption.isCut));
        if (isMarked)
            return;
        HVEntryBlock block;
        block.text.text = QChar(CutOff);
        block.text.spoken = block.text.text;
        block.text.isCut = true;
        block.isMuted = true;
        m_content.blocks.append(block);
    }

    const HVXmlElement &m_entry;
    HVEntryTexts m_texts;
    HVDisplayBudget &m_budget;
    HVEntryMedia m_media;
    const bool m_topics;
    HVEntryContent m_content;
};

} // namespace

HVEntryContent readEntry(const HVXmlElement &entry, HVEntryServices &services, bool topics,
                         const HVLimits &limits)
{
    return EntryReader(entry, services, topics, limits).read();
}

} // namespace Hovlets
