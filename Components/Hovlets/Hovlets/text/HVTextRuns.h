// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QChar>

namespace Hovlets {

/*!
 * \brief Finds where a text item begins to reshape a text.
 *
 * A text item splits a text into runs of one script and one direction, and shapes and places each
 * of them separately. That takes as long as dozens of letters.
 */
class HVTextRuns
{
public:
    /// Whether the next character of the text begins a run after the first one.
    bool beginsAt(uint character);

    /// The following text is in another paragraph.
    void endParagraph() { m_strong = Direction::None; }

private:
    enum class Direction { None, Left, Right, Number };

    [[nodiscard]] Direction directionOf(uint character) const;

    QChar::Script m_script = QChar::Script_Common;
    Direction m_direction = Direction::None;
    Direction m_strong = Direction::None; // of the last letter in the paragraph
};

} // namespace Hovlets
