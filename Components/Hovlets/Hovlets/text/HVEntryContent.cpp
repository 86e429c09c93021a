// SPDX-License-Identifier: Apache-2.0
#include "HVEntryContent.h"

#include "HVMarkup.h"
#include "HVMarkupTags.h"
#include "HVXmlElement.h"

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

class EntryReader
{
public:
    EntryReader(const HVXmlElement &entry, HVEntryServices &services, bool topics,
                const HVLimits &limits)
        : m_entry(entry)
        , m_services(services)
        , m_key(attribute(entry, "key"))
        , m_longestText(HVDisplayBudget::mostWritten(limits))
        , m_budget(limits)
    {
        m_rules.topics = topics;
        m_rules.fill = [&services](const QString &text) { return services.interpolate(text); };
    }

    HVEntryContent read()
    {
        m_content.key = m_key;
        m_content.title = plain(title());
        m_content.shortcut = plain(attribute(m_entry, "shortcut"));
        addClip(attribute(m_entry, "clip"));
        if (!m_budget.isSpent())
            addParagraph(simplified(m_entry.content()));
        forEachChild(m_entry, [this](const HVXmlElement &child) {
            if (!isTag(child, "title"))
                addElement(child);
        });
        if (m_budget.isSpent())
            markTheEnd();
        m_content.limitMet = m_budget.limitMet();
        return m_content;
    }

private:
    /// Calls \a visit for the direct children until the budget is spent.
    template <typename Visit> void forEachChild(const HVXmlElement &element, Visit visit)
    {
        const QObjectList &children = element.children();
        for (const QObject *child : children) {
            const auto *childElement = qobject_cast<const HVXmlElement *>(child);
            if (!childElement)
                continue;
            if (!m_budget.takeElement())
                return;
            visit(*childElement);
        }
    }

    QString simplified(const QString &text) const { return simplifiedText(text, m_longestText); }

    /// The text of an element and its descendants, with white space simplified.
    QString allText(const HVXmlElement &element)
    {
        QString text;
        appendAllText(text, element);
        return simplified(text);
    }

    void appendAllText(QString &text, const HVXmlElement &element)
    {
        appendSimplified(text, element.content(), m_longestText);
        forEachChild(element, [&](const HVXmlElement &child) {
            appendSimplified(text, QStringLiteral(" "), m_longestText);
            appendAllText(text, child);
        });
    }

    QString title()
    {
        const QString title = simplified(attribute(m_entry, "title"));
        if (!title.isEmpty())
            return title;
        const QObjectList &children = m_entry.children();
        for (const QObject *child : children) {
            const auto *element = qobject_cast<const HVXmlElement *>(child);
            const QString text =
                    element && isTag(*element, "title") ? allText(*element) : QString();
            if (!text.isEmpty())
                return text;
        }
        return {};
    }

    /// The part of a text, or of its translation, that the budget contains. A text too long to be
    /// shown whole is not translated.
    QString taken(const QString &source)
    {
        if (source.size() <= m_longestText && m_budget.hasWritten()) {
            const QString translation = m_services.translate(source, m_key);
            const QString text = simplified(m_budget.takeWritten(translation));
            if (!text.isEmpty())
                return text;
        }
        return m_budget.takeWritten(source);
    }

    HVShownText plain(const QString &text)
    {
        const QString source = simplified(text);
        if (source.isEmpty())
            return {};
        return shownPlainText(m_services.interpolate(taken(source)), m_budget);
    }

    HVShownText formatted(const QString &source)
    {
        const QString text = taken(source);
        return isMarkup(text) ? shownMarkup(text, m_rules, m_budget)
                              : shownPlainText(m_services.interpolate(text), m_budget);
    }

    void addParagraph(const QString &source, bool isMuted = false)
    {
        if (source.isEmpty())
            return;
        HVEntryBlock block;
        block.text = formatted(source);
        block.isMuted = isMuted;
        m_content.blocks.append(block);
    }

    void addClip(const QString &path)
    {
        if (path.isEmpty() || m_services.resource(path).isEmpty())
            return;
        HVEntryBlock block;
        block.kind = HVEntryBlock::Kind::Clip;
        block.resource = path;
        m_content.blocks.append(block);
    }

    void addImage(const QString &path, const QString &description)
    {
        HVEntryBlock block;
        block.kind = HVEntryBlock::Kind::Image;
        block.resource = path.isEmpty() ? QString() : m_services.resource(path);
        // Counted first, because finding that a file contains no picture takes time, too.
        const bool isShown = !block.resource.isEmpty() && m_budget.takePicture()
                && m_services.canShowPicture(block.resource);
        if (!isShown)
            return addParagraph(simplified(description), true);
        block.text = plain(description);
        m_content.blocks.append(block);
    }

    void addLink(const QString &locator, const QString &label)
    {
        if (isTopic(locator) && !m_rules.topics)
            return;
        HVEntryBlock block;
        block.kind = HVEntryBlock::Kind::Link;
        block.locator = locator;
        block.text = plain(label);
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
            addLink(locator, allText(element));
        else if (isTag(element, "img"))
            addImage(attribute(element, "src"), attribute(element, "alt"));
        else
            addText(element);
    }

    /// Elements in a paragraph do not act as markup, because their place in the text is unknown
    /// here. Words follow the text; anything larger becomes a block of its own.
    void addText(const HVXmlElement &element)
    {
        QString text;
        appendSimplified(text, element.content(), m_longestText);
        std::vector<const HVXmlElement *> blocks;
        forEachChild(element, [&](const HVXmlElement &child) {
            if (!isWord(child)) {
                blocks.push_back(&child);
                return;
            }
            appendSimplified(text, QStringLiteral(" "), m_longestText);
            appendAllText(text, child);
        });
        addParagraph(simplified(text));
        for (const HVXmlElement *block : blocks)
            addElement(*block);
    }

    /// Shows that content was cut, unless the last text already ends with an ellipsis.
    void markTheEnd()
    {
        const bool isMarked = m_content.title.isCut || m_content.shortcut.isCut
                || (!m_content.blocks.isEmpty() && m_content.blocks.constLast().text.isCut);
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
    HVEntryServices &m_services;
    const QString m_key;
    const int m_longestText;
    HVMarkupRules m_rules;
    HVDisplayBudget m_budget;
    HVEntryContent m_content;
};

} // namespace

HVEntryContent readEntry(const HVXmlElement &entry, HVEntryServices &services, bool topics,
                         const HVLimits &limits)
{
    return EntryReader(entry, services, topics, limits).read();
}

} // namespace Hovlets
