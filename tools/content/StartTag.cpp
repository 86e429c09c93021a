// SPDX-License-Identifier: Apache-2.0
#include "StartTag.h"

#include <algorithm>
#include <cstring>

namespace HovletsTool {

namespace {

/// Reads a start tag. A value may contain ">" and text that looks like an attribute.
class TagReader
{
public:
    TagReader(const QByteArray &bytes, int at)
        : m_bytes(bytes)
        , m_at(at)
    {
        skipName();
    }

    [[nodiscard]] int at() const { return m_at; }

    std::optional<AttributePlace> next()
    {
        AttributePlace place;
        skipBlanks();
        place.name = m_at;
        skipName();
        place.nameEnd = m_at;
        skipBlanks();
        if (place.name == place.nameEnd || here() != '=')
            return std::nullopt;
        ++m_at;
        skipBlanks();
        const char quote = here();
        if (quote != '"' && quote != '\'')
            return std::nullopt;
        place.valueBegin = ++m_at;
        const auto end = m_bytes.indexOf(quote, m_at);
        m_at = static_cast<int>(end < 0 ? m_bytes.size() : end + 1);
        place.valueEnd = static_cast<int>(end);
        return end < 0 ? std::nullopt : std::optional(place);
    }

private:
    [[nodiscard]] char here() const { return m_at < m_bytes.size() ? m_bytes.at(m_at) : '\0'; }

    void skipBlanks() { skipWhile(" \t\r\n", true); }
    void skipName() { skipWhile(" \t\r\n=/><", false); }

    void skipWhile(const char *signs, bool among)
    {
        while (here() != '\0' && (std::strchr(signs, here()) != nullptr) == among)
            ++m_at;
    }

    const QByteArray &m_bytes;
    int m_at;
};

} // namespace

std::optional<int> endOfSection(const QByteArray &bytes, int offset)
{
    static const struct
    {
        const char *begin;
        const char *end;
    } sections[] = { { "<!--", "-->" }, { "<![CDATA[", "]]>" }, { "<?", "?>" } };
    for (const auto &section : sections) {
        if (std::strncmp(bytes.constData() + offset, section.begin, std::strlen(section.begin))
            != 0)
            continue;
        const auto end = bytes.indexOf(section.end, offset);
        const auto length = static_cast<qsizetype>(std::strlen(section.end));
        return static_cast<int>(end < 0 ? bytes.size() : end + length - 1);
    }
    return std::nullopt;
}

std::vector<AttributePlace> attributesAt(const QByteArray &bytes, int offset)
{
    std::vector<AttributePlace> places;
    TagReader reader(bytes, offset + 1);
    while (const auto place = reader.next())
        places.push_back(*place);
    return places;
}

std::optional<AttributePlace> findAttribute(const QByteArray &bytes, int offset,
                                            const QByteArray &name)
{
    TagReader reader(bytes, offset + 1);
    while (const auto place = reader.next()) {
        if (bytes.mid(place->name, place->nameEnd - place->name) == name)
            return place;
    }
    return std::nullopt;
}

std::optional<int> findLargeTag(const QByteArray &bytes, size_t most)
{
    for (auto at = bytes.indexOf('<'); at >= 0; at = bytes.indexOf('<', at)) {
        const int offset = static_cast<int>(at);
        if (const auto end = endOfSection(bytes, offset)) {
            at = *end;
            continue;
        }
        TagReader reader(bytes, offset + 1);
        size_t attributes = 0;
        while (reader.next())
            ++attributes;
        if (attributes > most)
            return offset;
        at = reader.at();
    }
    return std::nullopt;
}

} // namespace HovletsTool
