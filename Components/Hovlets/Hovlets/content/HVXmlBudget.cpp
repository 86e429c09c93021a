// SPDX-License-Identifier: Apache-2.0
#include "HVXmlBudget.h"

#include <QtCore/QStringView>

#include <algorithm>

namespace Hovlets {

namespace {

/// Whether a content model may continue after \a c. Any other character ends it, and the recursion.
bool continuesContentModel(QChar c)
{
    switch (c.unicode()) {
    case '<':
    case '>':
    case '&':
    case '%':
    case ';':
    case '"':
    case '\'':
    case '#': // only "(#PCDATA", which does not nest
    case '!':
    case '=':
    case '/':
    case '[':
    case ']':
        return false;
    default:
        return true;
    }
}

/// The number of open parentheses after the character, if \a open were open before it.
int openAfter(QChar c, int open)
{
    if (c == QLatin1Char('('))
        return open + 1;
    if (c == QLatin1Char(')'))
        return std::max(0, open - 1);
    return continuesContentModel(c) ? open : 0;
}

int mostOpenParentheses(QStringView text)
{
    int open = 0;
    int most = 0;
    for (const QChar c : text) {
        open = openAfter(c, open);
        most = std::max(most, open);
    }
    return most;
}

} // namespace

HVXmlBudget::HVXmlBudget(const HVLimits &limits)
    : m_limits(limits)
{
}

bool HVXmlBudget::fail(const QString &reason)
{
    if (m_failure.isNull())
        m_failure = reason;
    return false;
}

void HVXmlBudget::setInDocumentType(bool inside)
{
    m_inDocumentType = inside;
    m_parentheses = 0;
}

bool HVXmlBudget::read(QChar c)
{
    if (c == QLatin1Char('=')) {
        m_followsEquals = true;
    } else if (m_followsEquals && !c.isSpace()) {
        m_followsEquals = false;
        if ((c == QLatin1Char('"') || c == QLatin1Char('\'')) && !readAttribute())
            return false;
    }
    if (!m_inDocumentType)
        return true;
    if (c == QLatin1Char('('))
        return openParentheses(1);
    m_parentheses = openAfter(c, m_parentheses);
    return true;
}

/// The reader reports the attributes of an element only after it has stored all of them.
bool HVXmlBudget::readAttribute()
{
    if (++m_attributes <= m_limits.builtElements)
        return true;
    return fail(QStringLiteral("more than %1 attributes").arg(m_limits.builtElements));
}

bool HVXmlBudget::openParentheses(int number)
{
    m_parentheses += number;
    if (m_parentheses <= m_limits.contentModelDepth)
        return true;
    return fail(QStringLiteral("content models nest deeper than %1 levels")
                        .arg(m_limits.contentModelDepth));
}

bool HVXmlBudget::declareEntity(const QString &name, const QString &value)
{
    constexpr int SearchSpeed = 16; // the reader searches that much faster than it reads

    const bool isParameter = name.startsWith(QLatin1Char('%'));
    const qint64 quotes = value.count(QLatin1Char('"')) + value.count(QLatin1Char('\''));
    const Entity entity { value.size() + 5 * quotes, mostOpenParentheses(value) };
    m_entities.insert(isParameter ? name.mid(1) : name, entity);

    // At the next declaration, the reader searches the value for the names of all entities, and
    // removes each reference from a copy of it.
    m_entityNames += name.size();
    const qint64 passes = m_entities.size() + value.count(QLatin1Char('&'));
    m_entityCharacters += entity.length + m_entities.size()
            + (value.size() * passes + m_entityNames) / SearchSpeed;
    if (m_entityCharacters <= m_limits.entityCharacters)
        return true;
    return fail(QStringLiteral("its entities add more than %1 characters")
                        .arg(m_limits.entityCharacters));
}

bool HVXmlBudget::expandEntity(const QString &name)
{
    const Entity entity = m_entities.value(name);
    if (++m_entityReferences > m_limits.entityReferences) {
        return fail(QStringLiteral("more than %1 references to entities")
                            .arg(m_limits.entityReferences));
    }
    m_entityCharacters += entity.length;
    if (m_entityCharacters > m_limits.entityCharacters) {
        return fail(QStringLiteral("its entities add more than %1 characters")
                            .arg(m_limits.entityCharacters));
    }
    return !m_inDocumentType || openParentheses(entity.openParentheses);
}

bool HVXmlBudget::openElement(int depth)
{
    m_attributes = 0;
    if (depth <= m_limits.nestingDepth)
        return true;
    return fail(QStringLiteral("elements nest deeper than %1 levels").arg(m_limits.nestingDepth));
}

bool HVXmlBudget::buildElement()
{
    if (++m_built <= m_limits.builtElements)
        return true;
    return fail(QStringLiteral("more than %1 elements").arg(m_limits.builtElements));
}

bool HVXmlBudget::deliver(qint64 characters)
{
    m_delivered += characters;
    if (m_delivered <= m_limits.parsedCharacters)
        return true;
    return fail(QStringLiteral("more than %1 characters of text").arg(m_limits.parsedCharacters));
}

} // namespace Hovlets
