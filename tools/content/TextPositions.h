// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>

#include <vector>

namespace HovletsTool {

/// A place in a file. Lines and columns start at 1; columns count UTF-16 code units.
struct Position
{
    int line = 1;
    int column = 1;
};

/// Finds lines and columns in a text, in a time that does not depend on its size.
class TextPositions
{
public:
    /// \param text in UTF-8
    explicit TextPositions(const QByteArray &text);

    [[nodiscard]] Position at(int offset) const;

private:
    QByteArray m_text;
    std::vector<Position> m_marks; // one every few hundred bytes
};

} // namespace HovletsTool
