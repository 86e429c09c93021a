// SPDX-License-Identifier: Apache-2.0
#include "HVEntryCut.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string_view>
#include <vector>

namespace Hovlets {

namespace {

using Bytes = std::string_view;

Bytes viewOf(const QByteArray &array)
{
    return { array.constData(), static_cast<size_t>(array.size()) };
}

bool isXmlSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool isReferenceDigit(char c, bool isHexadecimal)
{
    const auto byte = static_cast<uchar>(c);
    return isHexadecimal ? std::isxdigit(byte) : std::isdigit(byte);
}

bool beginsName(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}

bool continuesName(char c)
{
    return beginsName(c) || (c >= '0' && c <= '9') || c == '-' || c == '.';
}

/// Printable ASCII and white space, except for the characters that mean something in a text.
const std::array<bool, 256> &ordinary()
{
    static const std::array<bool, 256> table = [] {
        std::array<bool, 256> bytes {};
        for (int c = ' '; c < 0x7f; ++c)
            bytes[size_t(c)] = c != '<' && c != '&' && c != '"' && c != '\'' && c != ']';
        for (const uchar c : { '\t', '\r', '\n' })
            bytes[c] = true;
        return bytes;
    }();
    return table;
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

/// Reads a file from its start. Each function returns false if the file is in doubt, or if the
/// state says otherwise.
class Reader
{
public:
    Reader(Bytes file, Bytes key, size_t depth, size_t most)
        : m_rest(file)
        , m_file(file)
        , m_kept(file.data())
        , m_key(key)
        , m_depth(depth)
        , m_most(most)
    {
    }

    /// Lists the keys of all entries instead of leaving entries out.
    Reader(Bytes file, size_t depth, QStringList &keys)
        : Reader(file, {}, depth, file.size())
    {
        m_keys = &keys;
    }

    bool readDocument()
    {
        if (startsWith("\xEF\xBB\xBF"))
            m_rest.remove_prefix(3);
        if (startsWith("<?xml") && !skipPast("?>"))
            return false;
        return readAround() && readElement() && readAround() && m_rest.empty();
    }

    HVEntryCut result(bool isRead)
    {
        if (!isRead)
            return { m_state, {}, m_rest.data() - m_file.data() };
        keepUpTo(m_rest.data());
        return { HVEntryCut::Done, m_remaining, 0 };
    }

private:
    bool stop(HVEntryCut::State state)
    {
        m_state = state;
        return false;
    }

    /// Whether no more would be left than allowed if the next \a length bytes are kept.
    bool mayKeep(size_t length)
    {
        const auto kept = static_cast<size_t>(m_remaining.size() + (m_rest.data() - m_kept));
        return m_isLeftOut || kept + length <= m_most || stop(HVEntryCut::TooLarge);
    }

    bool startsWith(Bytes prefix) const { return m_rest.substr(0, prefix.size()) == prefix; }

    bool skipPast(Bytes mark)
    {
        const size_t at = m_rest.find(mark);
        if (at == Bytes::npos)
            return false;
        m_rest.remove_prefix(at + mark.size());
        return true;
    }

    bool skipSpace()
    {
        const size_t before = m_rest.size();
        while (!m_rest.empty() && isXmlSpace(m_rest[0]))
            m_rest.remove_prefix(1);
        return m_rest.size() < before;
    }

    bool take(char c)
    {
        if (m_rest.empty() || m_rest[0] != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }

    Bytes takeName()
    {
        size_t length = !m_rest.empty() && beginsName(m_rest[0]) ? 1 : 0;
        while (length > 0 && length < m_rest.size() && continuesName(m_rest[length]))
            ++length;
        const Bytes name = m_rest.substr(0, length);
        m_rest.remove_prefix(length);
        return name;
    }

    /// Skips characters up to one of \a ends, which is ASCII and stays.
    bool skipCharacters(Bytes ends, bool references)
    {
        const std::array<bool, 256> &isOrdinary = ordinary();
        while (true) {
            const size_t end = std::min(m_rest.size(), TextStep);
            size_t at = 0;
            while (at < end && isOrdinary[static_cast<uchar>(m_rest[at])])
                ++at;
            m_rest.remove_prefix(at);
            if (m_rest.empty() || (at > 0 && !mayKeep(0)))
                return false;
            if (at == TextStep)
                continue;
            const char c = m_rest[0];
            if (ends.find(c) != Bytes::npos)
                return true;
            if (c == '&' && references) {
                if (!skipReference())
                    return false;
            } else if (static_cast<uchar>(c) >= 0x80) {
                const size_t length = lengthOfCharacter(m_rest);
                if (length == 0)
                    return false;
                m_rest.remove_prefix(length);
            } else if (c == '"' || c == '\'' || (c == ']' && !startsWith("]]>"))
                       || (!references && (c == '&' || c == '<'))) {
                m_rest.remove_prefix(1);
            } else {
                return false;
            }
        }
    }

    bool skipReference()
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
    bool skipSection(Bytes start, Bytes end)
    {
        m_rest.remove_prefix(start.size());
        const char *const begin = m_rest.data();
        const size_t length = m_rest.find(end);
        if (length == Bytes::npos || !mayKeep(length))
            return false;
        const Bytes after = m_rest.substr(length + end.size());
        const std::array<bool, 256> &isOrdinary = ordinary();
        for (m_rest = Bytes(begin, length); !m_rest.empty();) {
            const auto c = static_cast<uchar>(m_rest[0]);
            const bool isPlain = isOrdinary[c] || (c > ' ' && c < 0x7f);
            const size_t size = isPlain ? 1 : c < 0x80 ? 0 : lengthOfCharacter(m_rest);
            if (size == 0)
                return false;
            m_rest.remove_prefix(size);
        }
        m_rest = after;
        return true;
    }

    /// Reads a comment, an instruction or a CDATA section.
    bool readSection(bool isInRoot)
    {
        if (startsWith("<!--")) {
            // Two hyphens end a comment, and those of its start are not part of its end.
            if (startsWith("<!-->") || startsWith("<!---"))
                return false;
            return skipSection("<!--", "--") && take('>');
        }
        if (startsWith("<?")) {
            Reader target(m_rest.substr(2), {}, 0, 0);
            const Bytes name = target.takeName();
            const bool isReserved = name.size() >= 3 && qstrnicmp(name.data(), "xml", 3) == 0;
            const bool ends = !target.m_rest.empty() && isXmlSpace(target.m_rest[0]);
            return !name.empty() && !isReserved && ends && skipSection("<?", "?>");
        }
        return isInRoot && startsWith("<![CDATA[") && skipSection("<![CDATA[", "]]>");
    }

    /// Reads what may precede and follow the root.
    bool readAround()
    {
        while (true) {
            skipSpace();
            if (!startsWith("<!") && !startsWith("<?"))
                return true;
            if (!readSection(false))
                return false;
        }
    }

    struct Tag
    {
        Bytes name;
        Bytes key;
        int keys = 0; // the attributes with that name
        bool isClosed = false;
    };

    bool readStartTag(Tag &tag)
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
            const Bytes name = tag.isClosed || !spaced ? Bytes() : takeName();
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
            if (!skipCharacters(Bytes(&quote, 1), true))
                return false;
            if (name == "key" && ++tag.keys == 1)
                tag.key = Bytes(value, static_cast<size_t>(m_rest.data() - value));
            m_rest.remove_prefix(1);
        }
        return false;
    }

    /// Reads the root and everything below it.
    bool readElement()
    {
        std::vector<Bytes> open;
        do {
            if (!open.empty() && !skipCharacters("<", true))
                return false;
            const char *const start = m_rest.data();
            if (startsWith("</")) {
                m_rest.remove_prefix(2);
                if (open.empty() || takeName() != open.back())
                    return false;
                skipSpace();
                if (!take('>'))
                    return false;
                open.pop_back();
                if (open.size() == 1)
                    endEntry();
            } else if (startsWith("<!") || startsWith("<?")) {
                if (!readSection(true))
                    return false;
            } else {
                Tag tag;
                if (!readStartTag(tag) || open.size() >= m_depth)
                    return false;
                if (open.empty() ? tag.name != "hovlets" : tag.name == "hovlets")
                    return false;
                if (open.size() == 1 && !(m_keys ? noteKey(tag) : beginEntry(tag, start)))
                    return false;
                if (!tag.isClosed)
                    open.push_back(tag.name);
                else if (open.size() == 1)
                    endEntry();
            }
        } while (!open.empty());
        return true;
    }

    bool noteKey(const Tag &tag)
    {
        if (tag.name != "hovlet" || tag.keys == 0)
            return true;
        // Only the parser knows what such keys mean.
        if (tag.keys > 1 || hasDoubtfulKey(tag))
            return false;
        m_keys->append(QString::fromUtf8(tag.key.data(), static_cast<int>(tag.key.size())));
        return true;
    }

    static bool hasDoubtfulKey(const Tag &tag)
    {
        return tag.key.find_first_of("&\t\r\n") != Bytes::npos;
    }

    bool beginEntry(const Tag &tag, const char *start)
    {
        const bool isEntry = tag.name == "hovlet";
        const bool isExact = isEntry && tag.key == m_key;
        const bool isWanted = isExact || (isEntry && hasDoubtfulKey(tag));
        if (isExact && ++m_wanted > 1 && m_file.size() > m_most)
            return stop(HVEntryCut::Ambiguous);
        // A file with two entries for the key serves neither; a third makes no difference.
        m_isLeftOut = !isWanted || (isExact && m_wanted > 2);
        if (!m_isLeftOut)
            return true;
        keepUpTo(start);
        // The texts before and after must not join to form something else, such as "]]>" or a
        // line end.
        if (start[-1] != '>' && start[-1] != '\n' && start[-1] != ' ')
            m_remaining += "<?x ?>";
        return true;
    }

    void endEntry()
    {
        if (m_isLeftOut)
            m_kept = m_rest.data();
        m_isLeftOut = false;
    }

    void keepUpTo(const char *end)
    {
        m_remaining.append(m_kept, static_cast<int>(end - m_kept));
        m_kept = end;
    }

    Bytes m_rest;
    Bytes m_file;
    const char *m_kept; // start of what is kept and not yet in m_remaining
    Bytes m_key;
    size_t m_depth;
    size_t m_most; // bytes that may be left
    HVEntryCut::State m_state = HVEntryCut::InDoubt;
    QStringList *m_keys = nullptr;
    int m_wanted = 0;
    bool m_isLeftOut = false; // the entry that is being read
    QByteArray m_remaining;
};

} // namespace

HVEntryCut withoutOtherEntries(const QByteArray &file, const QString &key, int depth, qint64 most)
{
    const QByteArray utf8 = key.toUtf8();
    Reader reader(viewOf(file), viewOf(utf8), static_cast<size_t>(qMax(0, depth)),
                  static_cast<size_t>(qMax<qint64>(0, most)));
    const bool isRead = reader.readDocument();
    return reader.result(isRead);
}

std::optional<QStringList> keysOfEntries(const QByteArray &file, int depth)
{
    QStringList keys;
    Reader reader(viewOf(file), static_cast<size_t>(qMax(0, depth)), keys);
    return reader.readDocument() ? std::optional<QStringList>(keys) : std::nullopt;
}

} // namespace Hovlets
