// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtEndian>

#include <algorithm>
#include <string_view>

namespace Hovlets {

/*!
 * \brief Numbers at positions in the bytes of a file.
 *
 * Numbers that are not completely inside are 0: a reader of damaged files needs no check before
 * each of them. Positions are in bytes and must not be negative. The bytes are not copied and must
 * outlive the view.
 */
class HVByteView
{
public:
    HVByteView() = default;
    HVByteView(const char *data, qint64 size)
        : m_data(data)
        , m_size(size)
    {
    }
    explicit HVByteView(const QByteArray &bytes)
        : HVByteView(bytes.constData(), bytes.size())
    {
    }

    [[nodiscard]] const char *data() const { return m_data; }
    [[nodiscard]] qint64 size() const { return m_size; }

    [[nodiscard]] bool has(qint64 at, qint64 count) const { return count <= m_size - at; }
    [[nodiscard]] bool hasText(qint64 at, std::string_view text) const
    {
        const auto count = static_cast<qint64>(text.size());
        return has(at, count) && std::string_view(m_data + at, text.size()) == text;
    }

    /// The bytes from a position to the end.
    [[nodiscard]] HVByteView from(qint64 at) const
    {
        at = std::min(at, m_size);
        return { m_data + at, m_size - at };
    }

    /// The first \a count bytes, or all of them if there are fewer.
    [[nodiscard]] HVByteView left(qint64 count) const
    {
        return { m_data, std::min(count, m_size) };
    }

    [[nodiscard]] quint8 byte(qint64 at) const { return big<quint8>(at); }
    [[nodiscard]] quint16 big16(qint64 at) const { return big<quint16>(at); }
    [[nodiscard]] quint32 big32(qint64 at) const { return big<quint32>(at); }
    [[nodiscard]] quint64 big64(qint64 at) const { return big<quint64>(at); }
    [[nodiscard]] quint16 little16(qint64 at) const { return little<quint16>(at); }
    [[nodiscard]] quint32 little32(qint64 at) const { return little<quint32>(at); }

private:
    template <typename Number> Number big(qint64 at) const
    {
        return has(at, sizeof(Number)) ? qFromBigEndian<Number>(m_data + at) : Number();
    }
    template <typename Number> Number little(qint64 at) const
    {
        return has(at, sizeof(Number)) ? qFromLittleEndian<Number>(m_data + at) : Number();
    }

    const char *m_data = nullptr;
    qint64 m_size = 0;
};

} // namespace Hovlets
