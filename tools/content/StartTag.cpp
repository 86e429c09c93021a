// SPDX-License-Identifier: Apache-2.0
#include "StartTag.h"

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
    }

    int at() const { return m_at; }
    char here() const { return m_at < m_bytes.size() ? m_bytes.at(m_at) : '\0'; }

    void skip(int count) { m_at += count; }

    void skipBlanks() { skipWhile(" \t\r\n", true); }

    QByteArray name()
    {
        const int begin = m_at;
        skipWhile(" \t\r\n=/>", false);
        return m_bytes.mid(begin, m_at - begin);
    }

    bool skipTo(char sign)
    {
        const auto found = m_bytes.indexOf(sign, m_at);
        m_at = static_cast<int>(found < 0 ? m_bytes.size() : found);
        return found >= 0;
    }

private:
    void skipWhile(const char *signs, bool among)
    {
        while (here() != '\0' && (std::strchr(signs, here()) != nullptr) == among)
            ++m_at;
    }

    const QByteArray &m_bytes;
    int m_at;
};

} // namespace

std::optional<AttributePlace> findAttribute(const QByteArray &bytes, int offset,
                                            const QByteArray &name)
{
    TagReader reader(bytes, offset + 1);
    reader.name();
    for (;;) {
        reader.skipBlanks();
        AttributePlace place;
        place.name = reader.at();
        const QByteArray found = reader.name();
        reader.skipBlanks();
        if (found.isEmpty() || reader.here() != '=')
            return std::nullopt;
        reader.skip(1);
        reader.skipBlanks();
        const char quote = reader.here();
        reader.skip(1);
        place.valueBegin = reader.at();
        if ((quote != '"' && quote != '\'') || !reader.skipTo(quote))
            return std::nullopt;
        place.valueEnd = reader.at();
        if (found == name)
            return place;
        reader.skip(1);
    }
}

} // namespace HovletsTool
