// SPDX-License-Identifier: Apache-2.0
#include "TextPositions.h"

#include <algorithm>

namespace HovletsTool {

namespace {

constexpr int Stride = 512; // bytes

int utf16Units(char byte)
{
    const auto value = static_cast<unsigned char>(byte);
    if ((value & 0xc0) == 0x80) // continues a character
        return 0;
    return value >= 0xf0 ? 2 : 1;
}

Position after(Position position, const QByteArray &text, int begin, int end)
{
    for (int i = begin; i < end; ++i) {
        if (text.at(i) == '\n')
            position = { position.line + 1, 1 };
        else
            position.column += utf16Units(text.at(i));
    }
    return position;
}

} // namespace

TextPositions::TextPositions(const QByteArray &text)
    : m_text(text)
{
    const int size = static_cast<int>(m_text.size());
    m_marks.reserve(static_cast<size_t>(size) / Stride + 1);
    Position position;
    if (m_text.startsWith("\xef\xbb\xbf")) // the byte-order mark takes no column
        position.column = 0;
    for (int begin = 0; begin <= size; begin += Stride) {
        m_marks.push_back(position);
        position = after(position, m_text, begin, std::min(begin + Stride, size));
    }
}

Position TextPositions::at(int offset) const
{
    const int end = std::clamp(offset, 0, static_cast<int>(m_text.size()));
    const auto mark = static_cast<size_t>(end / Stride);
    const Position position = after(m_marks[mark], m_text, static_cast<int>(mark) * Stride, end);
    return { position.line, std::max(1, position.column) };
}

} // namespace HovletsTool
