// SPDX-License-Identifier: Apache-2.0
#include "HVMarkup.h"

#include "HVMarkupTokens.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Hovlets {

namespace {

using Tag = HVMarkupTag;

// Qt's layout takes more than linear time for nested lists and elements, and deeper ones are
// useless.
constexpr size_t DeepestNesting = 32;
constexpr int DeepestList = 8;
constexpr int LongestLocator = 2048;

bool isList(Tag tag)
{
    return tag == Tag::Ol || tag == Tag::Ul;
}

/// An attribute's value with its entities and placeholders resolved.
QString resolved(const QString &written, const HVMarkupRules &rules)
{
    const QStringView value(written);
    QString result;
    for (qsizetype i = 0; i < value.size();) {
        std::optional<HVNamedToken> token;
        QString text;
        if (value[i] == QLatin1Char('&')) {
            token = readEntity(value, i);
            if (token)
                text = entityText(token->name);
        } else if (value[i] == QLatin1Char('%') && rules.fill) {
            token = readPlaceholder(value, i);
            if (token)
                text = rules.fill(value.mid(i, token->end - i).toString());
        }
        const bool isResolved = token && !text.isNull();
        result += isResolved ? text : QString(value[i]);
        i = isResolved ? token->end : i + 1;
    }
    return result;
}

/// The tags that are open, outermost first.
class OpenTags
{
public:
    bool contains(Tag tag) const { return m_counts[size_t(tag)] > 0; }
    bool isEmpty() const { return m_tags.empty(); }
    Tag innermost() const { return m_tags.back(); }

    bool hasRoomFor(Tag tag) const
    {
        return m_tags.size() < DeepestNesting
                && (!isList(tag)
                    || m_counts[size_t(Tag::Ol)] + m_counts[size_t(Tag::Ul)] < DeepestList);
    }

    /// Whether an item of the innermost list is open.
    bool isInListItem() const
    {
        const auto found = std::find_if(m_tags.crbegin(), m_tags.crend(),
                                        [](Tag tag) { return tag == Tag::Li || isList(tag); });
        return found != m_tags.crend() && *found == Tag::Li;
    }

    /// Opens an element whose style sets the given text size; 0 if it sets none.
    void open(Tag tag, int size)
    {
        m_sizes.push_back(size > 0 ? size : textSize());
        m_tags.push_back(tag);
        ++m_counts[size_t(tag)];
    }

    /// The text size in points or pixels; 0 if no style sets it.
    int textSize() const { return m_sizes.empty() ? 0 : m_sizes.back(); }

    void closeInnermost()
    {
        --m_counts[size_t(innermost())];
        m_tags.pop_back();
        m_sizes.pop_back();
    }

private:
    std::vector<Tag> m_tags;
    std::vector<int> m_sizes; // of the text in each
    std::array<int, MarkupTagCount> m_counts {};
};

/// Reads markup from start to end and writes the part that is permitted.
class Sanitizer
{
public:
    Sanitizer(QStringView text, const HVMarkupRules &rules, HVDisplayBudget &budget)
        : m_text(text)
        , m_rules(rules)
        , m_budget(budget)
        , m_writer(budget, true)
    {
    }

    HVShownText run()
    {
        while (m_at < m_text.size() && !m_writer.isCut())
            m_at = readNext();
        m_writer.endText();
        while (!m_open.isEmpty())
            closeInnermost();
        HVShownText result =
                m_writer.take(m_isRich ? HVShownText::Format::Rich : HVShownText::Format::Styled);
        result.spoken = simplifiedText(result.spoken, int(result.spoken.size()));
        return result;
    }

private:
    /// Returns the position after what it has read.
    qsizetype readNext()
    {
        const QChar c = m_text[m_at];
        if (c == QLatin1Char('<')) {
            if (const auto tag = readTag(m_text, m_at)) {
                handleTag(*tag);
                return tag->end;
            }
        } else if (c == QLatin1Char('&')) {
            if (const auto entity = readEntity(m_text, m_at)) {
                writeEntity(*entity);
                return entity->end;
            }
        } else if (c == QLatin1Char('%') && m_rules.fill) {
            if (const auto placeholder = readPlaceholder(m_text, m_at)) {
                const QStringView written = m_text.mid(m_at, placeholder->end - m_at);
                m_writer.write(m_rules.fill(written.toString()));
                return placeholder->end;
            }
        }
        const auto next = std::find_if(m_text.begin() + m_at + 1, m_text.end(), [](QChar other) {
            return other == QLatin1Char('<') || other == QLatin1Char('&')
                    || other == QLatin1Char('%');
        });
        const qsizetype end = next - m_text.begin();
        m_writer.write(m_text.mid(m_at, end - m_at));
        return end;
    }

    /// Leaves unknown entities to RichText, which knows all of HTML's.
    void writeEntity(const HVNamedToken &entity)
    {
        const QString text = entityText(entity.name);
        if (!text.isNull()) {
            m_writer.write(text);
            return;
        }
        m_isRich = true;
        m_writer.writeEntity(entity.name);
    }

    void handleTag(HVTagToken token)
    {
        if (token.tag == Tag::Em) // equivalent, and StyledText also supports it on Qt 5
            token.tag = Tag::I;
        if (token.isEnd)
            close(token.tag);
        else if (!m_budget.takeElement())
            m_writer.cut();
        else
            handleStart(token);
    }

    void handleStart(const HVTagToken &token)
    {
        closeImplied(token.tag);
        QString attributes = harmlessAttributes(token.tag, token.attributes);
        if (token.tag == Tag::A) {
            const QString locator =
                    resolved(markupAttribute(token.attributes, QLatin1String("href")), m_rules);
            if (locator.isEmpty() || locator.size() > LongestLocator
                || (isTopic(locator) && !m_rules.topics))
                return;
            attributes = QStringLiteral(" href=\"%1\"").arg(locator.toHtmlEscaped());
        }
        if (!m_open.hasRoomFor(token.tag))
            return;
        // StyledText does not resolve entities in attributes.
        m_isRich |= !isStyledTextTag(token.tag) || attributes.contains(QLatin1Char('&'));
        m_writer.writeMarkup(QLatin1Char('<') + markupTagName(token.tag) + attributes
                             + QLatin1Char('>'));
        if (!marksWords(token.tag))
            m_writer.endWord();
        if (token.tag == Tag::Br)
            return;
        m_open.open(token.tag, token.tag == Tag::A ? 0 : styledTextSize(attributes)); // no address
        if (token.isEmpty)
            closeInnermost();
        updateCost();
    }

    /// Closes the elements that HTML implicitly closes before \a tag.
    void closeImplied(Tag tag)
    {
        if (tag == Tag::A)
            close(Tag::A);
        else if (tag == Tag::P || isList(tag))
            close(Tag::P);
        else if (tag == Tag::Li && m_open.isInListItem())
            close(Tag::Li);
    }

    /// Closes the innermost element of this kind, if any, and everything in it.
    void close(Tag tag)
    {
        for (bool isDone = !m_open.contains(tag); !isDone;) {
            isDone = m_open.innermost() == tag;
            closeInnermost();
        }
    }

    void closeInnermost()
    {
        const Tag tag = m_open.innermost();
        m_open.closeInnermost();
        m_writer.writeMarkup(QLatin1String("</") + markupTagName(tag) + QLatin1Char('>'));
        if (!marksWords(tag))
            m_writer.endWord();
        updateCost();
    }

    /// Drawing a letter takes time in proportion to its area.
    void updateCost()
    {
        constexpr int Large = 24; // points or pixels
        constexpr int LargeCost = 4;
        m_writer.setCost(m_open.textSize() > Large ? LargeCost : 1);
    }

    QStringView m_text;
    const HVMarkupRules &m_rules;
    HVDisplayBudget &m_budget;
    HVShownTextWriter m_writer;
    OpenTags m_open;
    qsizetype m_at = 0;
    bool m_isRich = false;
};

} // namespace

bool isMarkup(const QString &text)
{
    const QStringView view(text);
    for (qsizetype i = 0; i < view.size(); ++i) {
        if (view[i] == QLatin1Char('<') && readTag(view, i))
            return true;
        if (view[i] != QLatin1Char('&'))
            continue;
        const auto entity = readEntity(view, i);
        if (entity && !entityText(entity->name).isNull())
            return true;
    }
    return false;
}

HVShownText shownMarkup(const QString &text, const HVMarkupRules &rules, HVDisplayBudget &budget)
{
    return Sanitizer(text, rules, budget).run();
}

bool isTopic(const QString &locator)
{
    if (locator.contains(QLatin1Char('/')))
        return false;
    const auto colon = locator.indexOf(QLatin1Char(':'));
    const auto isSchemeCharacter = [](QChar c) {
        return (c.unicode() < 0x80 && c.isLetterOrNumber()) || c == QLatin1Char('-')
                || c == QLatin1Char('+') || c == QLatin1Char('.');
    };
    return colon <= 0 || locator.front().unicode() >= 0x80 || !locator.front().isLetter()
            || !std::all_of(locator.cbegin(), locator.cbegin() + colon, isSchemeCharacter);
}

} // namespace Hovlets
