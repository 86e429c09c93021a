// SPDX-License-Identifier: Apache-2.0
#include "HVXmlSource.h"

#include "HVXmlBudget.h"

namespace Hovlets {

namespace {

constexpr quint64 lastCharacters(const char *text)
{
    quint64 characters = 0;
    for (; *text; ++text)
        characters = characters << 16 | static_cast<unsigned char>(*text);
    return characters;
}

constexpr quint64 Last2 = 0xffffffff;
constexpr quint64 Last3 = 0xffffffffffff;

/// The character of a reference such as "&#x1f600;" if it takes two UTF-16 units, else 0.
char32_t supplementaryCharacter(QStringView reference)
{
    if (!reference.startsWith(QLatin1String("&#")) || !reference.endsWith(QLatin1Char(';')))
        return 0;
    QString number = reference.mid(2, reference.size() - 3).toString();
    const bool isHex = number.startsWith(QLatin1Char('x'));
    if (isHex)
        number.remove(0, 1);
    if (number.contains(QLatin1Char('x'))) // Qt parses "0x1f600" as a number
        return 0;
    const uint code = number.toUInt(nullptr, isHex ? 16 : 10);
    return code > 0xffff && code <= 0x10ffff ? code : 0;
}

bool belongsToReference(QChar c)
{
    const ushort code = c.unicode();
    return (code >= '0' && code <= '9') || (code >= 'a' && code <= 'f')
            || (code >= 'A' && code <= 'F') || code == 'x' || code == '#';
}

} // namespace

HVXmlSource::HVXmlSource(QXmlInputSource &document, HVXmlBudget &budget)
    : m_document(document)
    , m_budget(budget)
{
}

QChar HVXmlSource::next()
{
    if (m_ended)
        return QXmlInputSource::EndOfDocument;
    QChar c;
    if (m_next < m_ahead.size()) {
        c = m_ahead.at(m_next++);
    } else {
        c = m_document.next();
        if (c == QLatin1Char('&') && m_section == Section::Text)
            c = readReference();
    }
    trackSection(c);
    m_ended = !m_budget.read(c);
    return m_ended ? QChar(QXmlInputSource::EndOfDocument) : c;
}

void HVXmlSource::trackSection(QChar c)
{
    m_recent = m_recent << 16 | c.unicode();
    const Section before = m_section;
    switch (m_section) {
    case Section::Text:
        if (m_recent == lastCharacters("<!--"))
            m_section = Section::Comment;
        else if ((m_recent & Last3) == lastCharacters("<!["))
            m_section = Section::CData;
        else if ((m_recent & Last2) == lastCharacters("<?"))
            m_section = Section::Instruction;
        break;
    case Section::Comment:
        if ((m_recent & Last3) == lastCharacters("-->"))
            m_section = Section::Text;
        break;
    case Section::CData:
        if ((m_recent & Last3) == lastCharacters("]]>"))
            m_section = Section::Text;
        break;
    case Section::Instruction:
        if ((m_recent & Last2) == lastCharacters("?>"))
            m_section = Section::Text;
        break;
    }
    if (m_section != before)
        m_recent = 0; // "<!-->" does not end the comment that it begins
}

/// Continues after an "&", and returns the first character to deliver.
QChar HVXmlSource::readReference()
{
    constexpr int Longest = 64; // the reader handles numbers with more leading zeros

    m_ahead = QLatin1Char('&');
    m_next = 0;
    QChar c;
    do {
        c = m_document.next();
        m_ahead += c;
    } while (belongsToReference(c) && m_ahead.size() < Longest);
    if (const char32_t code = supplementaryCharacter(m_ahead))
        m_ahead = QString::fromUcs4(&code, 1);
    return m_ahead.at(m_next++);
}

} // namespace Hovlets
