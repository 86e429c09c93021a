// SPDX-License-Identifier: Apache-2.0
#include "HVEntryScan.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <numeric>
#include <optional>
#include <string_view>

namespace Hovlets {

namespace {

using Bytes = std::string_view;

constexpr Bytes EntryTag = "<hovlet";

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
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
    while (!text.empty() && isSpace(text[0]))
        text.remove_prefix(1);
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
    const Bytes value = declaration.substr(at, 16);
    const auto size = qsizetype(value.size());
    return qstrnicmp(value.data(), size, "encoding=\"UTF-8\"") == 0
            || qstrnicmp(value.data(), size, "encoding='UTF-8'") == 0;
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

/*!
 * The key in the start tag of an entry, or no value if only a parser can determine it. \a text
 * starts with the attributes.
 *
 * Without the attribute, the key is empty; of several, the parser uses the first.
 */
std::optional<Bytes> keyInTag(Bytes text)
{
    constexpr int MostAttributes = 10000;

    for (int attributes = 0; attributes <= MostAttributes; ++attributes) {
        skipSpace(text);
        if (text.empty())
            return std::nullopt;
        if (text[0] == '>' || text[0] == '/')
            return Bytes();

        const auto nameEnd = std::find_if(text.begin(), text.end(), endsName);
        const Bytes name = text.substr(0, static_cast<size_t>(nameEnd - text.begin()));
        text.remove_prefix(name.size());
        skipSpace(text);
        if (name.empty() || text.empty() || text[0] != '=')
            return std::nullopt;
        text.remove_prefix(1);
        skipSpace(text);
        if (text.empty() || (text[0] != '"' && text[0] != '\''))
            return std::nullopt;
        const char quote = text[0];
        text.remove_prefix(1);
        // No value contains "<". Tags therefore never overlap, and the whole search remains linear.
        const auto end = std::find_if(text.begin(), text.end(),
                                      [quote](char c) { return c == quote || c == '<'; });
        if (end == text.end() || *end == '<')
            return std::nullopt;
        const Bytes value = text.substr(0, static_cast<size_t>(end - text.begin()));
        if (name == "key")
            return value.find('&') == Bytes::npos ? std::optional<Bytes>(value) : std::nullopt;
        text.remove_prefix(value.size() + 1);
    }
    return std::nullopt;
}

/*!
 * Calls \a visit for the key of each entry in order, and stops when it returns true. Entries with
 * keys that only a parser can determine have no value.
 *
 * \return whether it stopped, or only a parser can find the entries
 */
template <typename Visit> bool anyKey(Bytes text, Visit visit)
{
    if (!hasPlainProlog(text))
        return true;
    int roots = 0;
    while (skipPast(text, EntryTag)) {
        if (text.empty())
            return false;
        // A root inside the root counts as an entry with any key.
        if (text[0] == 's' && ++roots > 1)
            return true;
        if (!isSpace(text[0]) && text[0] != '>' && text[0] != '/')
            continue;
        const std::optional<Bytes> key = keyInTag(text);
        if (visit(key))
            return true;
    }
    return false;
}

Bytes bytesOf(const QByteArray &array)
{
    return { array.constData(), static_cast<size_t>(array.size()) };
}

quint32 hashOf(Bytes key)
{
    return static_cast<quint32>(std::hash<Bytes>()(key));
}

/// For a million hashes, this takes a tenth of the time of std::sort, which users would notice.
void sortByDigits(std::vector<quint32> &hashes)
{
    constexpr int DigitBits = 11;
    constexpr quint32 Digits = 1 << DigitBits;

    constexpr size_t Few = 10000;
    if (hashes.size() < Few) {
        std::sort(hashes.begin(), hashes.end());
        return;
    }
    std::vector<quint32> sorted(hashes.size());
    for (int shift = 0; shift < 32; shift += DigitBits) {
        const auto digit = [shift](quint32 hash) { return (hash >> shift) % Digits; };
        std::array<size_t, Digits + 1> starts {}; // of each digit in the sorted hashes
        for (const quint32 hash : hashes)
            ++starts[digit(hash) + 1];
        std::partial_sum(starts.begin(), starts.end(), starts.begin());
        for (const quint32 hash : hashes)
            sorted[starts[digit(hash)]++] = hash;
        hashes.swap(sorted);
    }
}

/// Broken UTF-8 is read as U+FFFD. Therefore a key with that character may match any such bytes.
/// A key that UTF-8 cannot represent changes when it is converted.
bool isPlain(const QString &key, const QByteArray &utf8)
{
    return !key.contains(QChar::ReplacementCharacter) && QString::fromUtf8(utf8) == key;
}

} // namespace

HVEntryScan::HVEntryScan(const QString &key)
    : m_key(key.toUtf8())
    , m_plainKey(isPlain(key, m_key))
    , m_hash(hashOf(bytesOf(m_key)))
{
}

bool HVEntryScan::isPlainFile(const QByteArray &file) const
{
    return m_plainKey && hasPlainProlog(bytesOf(file));
}

bool HVEntryScan::mayHold(const QByteArray &file) const
{
    const Bytes wanted = bytesOf(m_key);
    return !m_plainKey || anyKey(bytesOf(file), [wanted](const std::optional<Bytes> &key) {
        return !key || *key == wanted;
    });
}

HVEntryKeys::HVEntryKeys(const QByteArray &file)
{
    bool isInDoubt = false;
    const bool isStopped = anyKey(bytesOf(file), [&](const std::optional<Bytes> &key) {
        if (key)
            insert(hashOf(*key));
        isInDoubt |= !key;
        return m_hasTooMany;
    });
    m_isComplete = !isStopped && !isInDoubt;
    sort();
}

void HVEntryKeys::insert(quint32 hash)
{
    // As many as fit into a file of 64 MB. With more keys, each look-up searches the file.
    constexpr size_t MostKeys = 4000000;

    m_hasTooMany |= m_hashes.size() == MostKeys;
    if (!m_hasTooMany)
        m_hashes.push_back(hash);
}

void HVEntryKeys::sort()
{
    sortByDigits(m_hashes);
    m_hashes.erase(std::unique(m_hashes.begin(), m_hashes.end()), m_hashes.end());
    m_hashes.shrink_to_fit();
}

void HVEntryKeys::add(const QString &key)
{
    insert(hashOf(bytesOf(key.toUtf8())));
}

void HVEntryKeys::complete()
{
    m_isComplete = !m_hasTooMany;
    sort();
}

void HVEntryKeys::clear()
{
    m_isComplete = true;
    m_hashes.clear();
}

bool HVEntryKeys::mayHold(const HVEntryScan &key) const
{
    return !m_isComplete || !key.m_plainKey
            || std::binary_search(m_hashes.begin(), m_hashes.end(), key.m_hash);
}

} // namespace Hovlets
