// SPDX-License-Identifier: Apache-2.0
#include "HVEntryScan.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace Hovlets {

namespace {

using Bytes = std::string_view;

constexpr Bytes Space = " \t\r\n";
constexpr Bytes EntryTag = "<hovlet";

bool isSpace(char c)
{
    return Space.find(c) != Bytes::npos;
}

bool endsName(char c)
{
    return isSpace(c) || c == '=' || c == '/' || c == '>' || c == '"' || c == '\'';
}

bool startsWith(Bytes text, Bytes prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

void skipSpace(Bytes &text)
{
    text.remove_prefix(std::min(text.find_first_not_of(Space), text.size()));
}

/// Drops \a text up to the end of \a mark; returns false if there is none.
bool skipPast(Bytes &text, Bytes mark)
{
    const size_t at = text.find(mark);
    if (at == Bytes::npos)
        return false;
    text.remove_prefix(at + mark.size());
    return true;
}

/// Whether an XML declaration unambiguously says UTF-8, or leaves that default.
bool declaresUtf8(Bytes declaration)
{
    const size_t at = declaration.find("encoding");
    if (at == Bytes::npos)
        return true;
    if (declaration.rfind("encoding") != at)
        return false;
    const Bytes value = declaration.substr(at);
    return qstrnicmp(value.data(), "encoding=\"UTF-8\"", 16) == 0
            || qstrnicmp(value.data(), "encoding='UTF-8'", 16) == 0;
}

/// Whether the file is plain UTF-8 up to its root element, without a document type declaration.
bool hasPlainProlog(Bytes text)
{
    if (startsWith(text, "\xEF\xBB\xBF"))
        text.remove_prefix(3);
    if (startsWith(text, "<?xml")) {
        const Bytes declaration = text.substr(0, text.find("?>"));
        if (!declaresUtf8(declaration) || !skipPast(text, "?>"))
            return false;
    }
    while (true) {
        skipSpace(text);
        if (startsWith(text, "<!--")) {
            if (!skipPast(text, "-->"))
                return false;
        } else if (startsWith(text, "<?")) {
            if (!skipPast(text, "?>"))
                return false;
        } else {
            // In another encoding, no letter follows the "<" of the root.
            return text.size() > 1 && text[0] == '<' && std::isalpha(static_cast<uchar>(text[1]));
        }
    }
}

/// Whether the value means exactly its bytes, and they are not \a key.
bool differs(Bytes value, Bytes key)
{
    return value != key && value.find('&') == Bytes::npos;
}

/*!
 * Whether the start tag of an entry has \a key, or may have it. \a text starts with its attributes.
 *
 * Without the attribute, the key is empty; of several, the parser uses the first.
 */
bool tagMayCarry(Bytes text, Bytes key)
{
    while (true) {
        skipSpace(text);
        if (text.empty())
            return true;
        if (text[0] == '>' || text[0] == '/')
            return key.empty();

        const auto nameEnd = std::find_if(text.begin(), text.end(), endsName);
        const Bytes name = text.substr(0, static_cast<size_t>(nameEnd - text.begin()));
        text.remove_prefix(name.size());
        skipSpace(text);
        if (name.empty() || text.empty() || text[0] != '=')
            return true;
        text.remove_prefix(1);
        skipSpace(text);
        if (text.empty() || (text[0] != '"' && text[0] != '\''))
            return true;
        const char quote = text[0];
        text.remove_prefix(1);
        // No value contains "<". Tags therefore never overlap, and the whole search remains linear.
        const char ends[] = { quote, '<' };
        const size_t end = text.find_first_of(Bytes(ends, sizeof ends));
        if (end == Bytes::npos || text[end] == '<')
            return true;
        if (name == "key")
            return !differs(text.substr(0, end), key);
        text.remove_prefix(end + 1);
    }
}

} // namespace

HVEntryScan::HVEntryScan(const QString &key)
    : m_key(key.toUtf8())
    // Broken UTF-8 is read as U+FFFD. Therefore a key with that character may match any such bytes.
    // A key that UTF-8 cannot represent changes when it is converted.
    , m_plainKey(!key.contains(QChar::ReplacementCharacter) && QString::fromUtf8(m_key) == key)
{
}

bool HVEntryScan::mayHold(const QByteArray &file) const
{
    const Bytes text(file.constData(), static_cast<size_t>(file.size()));
    const Bytes key(m_key.constData(), static_cast<size_t>(m_key.size()));
    if (!m_plainKey || !hasPlainProlog(text))
        return true;

    int roots = 0;
    for (Bytes rest = text; skipPast(rest, EntryTag);) {
        if (rest.empty())
            return false;
        // A root inside the root counts as an entry with any key.
        if (rest[0] == 's' && ++roots > 1)
            return true;
        if ((isSpace(rest[0]) || rest[0] == '>' || rest[0] == '/') && tagMayCarry(rest, key))
            return true;
    }
    return false;
}

} // namespace Hovlets
