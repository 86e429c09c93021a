// SPDX-License-Identifier: Apache-2.0
#include "HVPlainXml.h"

#include <QtCore/QByteArray>

#include <algorithm>
#include <array>
#include <cctype>

namespace Hovlets {

namespace {

using Bytes = HVPlainXml::Bytes;

bool isXmlSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isReferenceDigit(char c, bool isHexadecimal)
{
    const auto byte = static_cast<uchar>(c);
    return isHexadecimal ? std::isxdigit(byte) : std::isdigit(byte);
}

// Files of many megabytes are read byte by byte while a user waits: tables answer faster than
// comparisons.
using Table = std::array<bool, 256>;

constexpr bool beginsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

/// The bytes that continue a name.
constexpr Table NameBytes = [] {
    Table bytes {};
    for (size_t c = 0; c < 0x80; ++c) {
        const char byte = static_cast<char>(c);
        bytes[c] = beginsName(byte) || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
    }
    return bytes;
}();

/// Printable ASCII and white space, except for the characters that mean something in a text.
constexpr Table OrdinaryBytes = [] {
    Table bytes {};
    for (size_t c = ' '; c < 0x7f; ++c)
        bytes[c] = c != '<' && c != '&' && c != '"' && c != '\'' && c != ']';
    for (const uchar c : { '\t', '\r', '\n' })
        bytes[c] = true;
    return bytes;
}();

bool has(const Table &table, char c)
{
    return table[static_cast<uchar>(c)];
}

/// The length of the character that begins with a byte beyond ASCII; 0 if in doubt.
size_t lengthOfCharacter(Bytes text)
{
    const auto byte = [&](size_t at) {
        return at < text.size() ? static_cast<uchar>(text[at]) : 0;
    };
    const auto continues = [&](size_t at) { return (byte(at) & 0xc0) == 0x80; };
    const uchar first = byte(0);
    if (first >= 0xc2 && first <= 0xdf && continues(1))
        return 2;
    // Neither surrogates, nor U+FEFF, nor the end of U+FFxx, which the reader takes for an end.
    if (first >= 0xe0 && first <= 0xef && continues(1) && continues(2)) {
        const int code = (first & 0xf) << 12 | (byte(1) & 0x3f) << 6 | (byte(2) & 0x3f);
        const bool isPlain = code >= 0x800 && (code < 0xd800 || code > 0xdfff) && code != 0xfeff
                && code < 0xfffe;
        return isPlain ? 3 : 0;
    }
    if (first >= 0xf1 && first <= 0xf3 && continues(1) && continues(2) && continues(3))
        return 4;
    return first == 0xf0 && byte(1) >= 0x90 && continues(1) && continues(2) && continues(3) ? 4 : 0;
}

constexpr int MostAttributes = 10000; // of one element
constexpr size_t TextStep = 65536; // bytes of text between checks

/// The name that \a text begins with; empty if none.
Bytes nameOf(Bytes text)
{
    size_t length = !text.empty() && beginsName(text[0]) ? 1 : 0;
    while (length > 0 && length < text.size() && has(NameBytes, text[length]))
        ++length;
    return text.substr(0, length);
}

bool beginsInstruction(Bytes text)
{
    const Bytes name = nameOf(text);
    const bool isReserved = name.size() >= 3 && qstrnicmp(name.data(), 3, "xml", 3) == 0;
    return !name.empty() && !isReserved && name.size() < text.size()
            && isXmlSpace(text[name.size()]);
}

} // namespace

HVPlainXml::HVPlainXml(Bytes text)
    : m_rest(text)
    , m_stop(text.data() + text.size())
{
}

// The inline functions run for every tag.

inline bool HVPlainXml::startsWith(Bytes prefix) const
{
    return m_rest.substr(0, prefix.size()) == prefix;
}

inline bool HVPlainXml::skipSpace()
{
    const size_t before = m_rest.size();
    while (!m_rest.empty() && isXmlSpace(m_rest[0]))
        m_rest.remove_prefix(1);
    return m_rest.size() < before;
}

inline bool HVPlainXml::take(char c)
{
    if (m_rest.empty() || m_rest[0] != c)
        return false;
    m_rest.remove_prefix(1);
    return true;
}

inline HVPlainXml::Bytes HVPlainXml::takeName()
{
    const Bytes name = nameOf(m_rest);
    m_rest.remove_prefix(name.size());
    return name;
}

/// Whether the next \a length bytes end before the place to stop at.
inline bool HVPlainXml::mayRead(size_t length)
{
    m_isStopped = m_rest.data() + length > m_stop;
    return !m_isStopped;
}

bool HVPlainXml::skipPast(Bytes mark)
{
    const size_t at = m_rest.find(mark);
    if (at == Bytes::npos)
        return false;
    m_rest.remove_prefix(at + mark.size());
    return true;
}

bool HVPlainXml::skipDeclaration()
{
    constexpr Bytes ByteOrderMark = "\xEF\xBB\xBF";
    if (startsWith(ByteOrderMark))
        m_rest.remove_prefix(ByteOrderMark.size());
    return !startsWith("<?xml") || skipPast("?>");
}

bool HVPlainXml::skipOutsideRoot()
{
    while (true) {
        skipSpace();
        if (!startsWith("<!") && !startsWith("<?"))
            return true;
        if (!skipSection(false))
            return false;
    }
}

HVPlainXml::Construct HVPlainXml::next() const
{
    if (startsWith("</"))
        return Construct::EndTag;
    return startsWith("<!") || startsWith("<?") ? Construct::Section : Construct::StartTag;
}

bool HVPlainXml::readStartTag(Tag &tag)
{
    if (!take('<'))
        return false;
    tag.name = takeName();
    if (tag.name.empty())
        return false;
    for (int attributes = 0; attributes <= MostAttributes; ++attributes) {
        const bool spaced = skipSpace();
        tag.isClosed = take('/');
        if (take('>'))
            return true;
        if (tag.isClosed || !spaced || !readAttribute(tag))
            return false;
    }
    return false;
}

bool HVPlainXml::readAttribute(Tag &tag)
{
    const Bytes name = takeName();
    if (name.empty())
        return false;
    skipSpace();
    if (!take('='))
        return false;
    skipSpace();
    const char quote = m_rest.empty() ? '\0' : m_rest[0];
    if ((quote != '"' && quote != '\'') || !take(quote))
        return false;
    const char *const value = m_rest.data();
    if (!skipCharacters(quote))
        return false;
    if (name == "key" && ++tag.keys == 1)
        tag.key = Bytes(value, static_cast<size_t>(m_rest.data() - value));
    m_rest.remove_prefix(1);
    return true;
}

bool HVPlainXml::readEndTag(Bytes name)
{
    m_rest.remove_prefix(2);
    if (!startsWith(name))
        return false;
    m_rest.remove_prefix(name.size());
    skipSpace(); // a longer name continues instead
    return take('>');
}

bool HVPlainXml::skipSection(bool isInRoot)
{
    if (startsWith("<!--")) {
        // Two hyphens end a comment, and those of its start are not part of its end.
        if (startsWith("<!-->") || startsWith("<!---"))
            return false;
        return skipBetween("<!--", "--") && take('>');
    }
    if (startsWith("<?"))
        return beginsInstruction(m_rest.substr(2)) && skipBetween("<?", "?>");
    return isInRoot && startsWith("<![CDATA[") && skipBetween("<![CDATA[", "]]>");
}

/// Skips characters and references up to \a end, which stays.
bool HVPlainXml::skipCharacters(char end)
{
    while (true) {
        const Bytes step = m_rest.substr(0, TextStep);
        const auto found = std::find_if_not(step.begin(), step.end(),
                                            [](char c) { return has(OrdinaryBytes, c); });
        const auto at = static_cast<size_t>(found - step.begin());
        m_rest.remove_prefix(at);
        if (m_rest.empty() || (at > 0 && !mayRead(0)))
            return false;
        if (at == TextStep)
            continue;
        const char c = m_rest[0];
        if (c == end)
            return true;
        if (c == '&') {
            if (!skipReference())
                return false;
        } else if (static_cast<uchar>(c) >= 0x80) {
            const size_t length = lengthOfCharacter(m_rest);
            if (length == 0)
                return false;
            m_rest.remove_prefix(length);
        } else if (c == '"' || c == '\'' || (c == ']' && !startsWith("]]>"))) {
            m_rest.remove_prefix(1);
        } else {
            return false;
        }
    }
}

bool HVPlainXml::skipReference()
{
    for (const Bytes known :
         { Bytes("&amp;"), Bytes("&lt;"), Bytes("&gt;"), Bytes("&quot;"), Bytes("&apos;") }) {
        if (startsWith(known)) {
            m_rest.remove_prefix(known.size());
            return true;
        }
    }
    if (!startsWith("&#"))
        return false;
    m_rest.remove_prefix(2);
    // A number of at most four digits, decimal or hexadecimal and below the surrogates, names
    // a character that the reader can represent.
    const bool isHexadecimal = take('x');
    size_t digits = 0;
    while (digits < m_rest.size() && isReferenceDigit(m_rest[digits], isHexadecimal))
        ++digits;
    const bool isPlain = digits >= 2 && digits <= 4 && m_rest[0] != '0'
            && (digits < 4 || !isHexadecimal || Bytes("dDeEfF").find(m_rest[0]) == Bytes::npos);
    m_rest.remove_prefix(digits);
    return isPlain && take(';');
}

/// Skips \a start, any characters, and the next \a end, whose first byte ends the characters.
bool HVPlainXml::skipBetween(Bytes start, Bytes end)
{
    m_rest.remove_prefix(start.size());
    const char *const begin = m_rest.data();
    const size_t length = m_rest.find(end);
    if (length == Bytes::npos || !mayRead(length))
        return false;
    const Bytes after = m_rest.substr(length + end.size());
    for (m_rest = Bytes(begin, length); !m_rest.empty();) {
        const auto c = static_cast<uchar>(m_rest[0]);
        const bool isPlain = OrdinaryBytes[c] || (c > ' ' && c < 0x7f);
        const size_t size = isPlain ? 1 : c < 0x80 ? 0 : lengthOfCharacter(m_rest);
        if (size == 0)
            return false;
        m_rest.remove_prefix(size);
    }
    m_rest = after;
    return true;
}

} // namespace Hovlets
