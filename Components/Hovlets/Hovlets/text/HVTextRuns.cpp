// SPDX-License-Identifier: Apache-2.0
#include "HVTextRuns.h"

namespace Hovlets {

bool HVTextRuns::beginsAt(uint character)
{
    bool begins = false;
    const QChar::Script script = QChar::script(character);
    if (script > QChar::Script_Common) { // others take the script of the text before them
        begins = m_script > QChar::Script_Common && m_script != script;
        m_script = script;
    }
    const Direction direction = directionOf(character);
    if (direction != Direction::None) {
        begins |= m_direction != Direction::None && m_direction != direction;
        m_direction = direction;
    }
    if (direction == Direction::Left || direction == Direction::Right)
        m_strong = direction;
    return begins;
}

/// None for a character that takes the direction of the text before it.
HVTextRuns::Direction HVTextRuns::directionOf(uint character) const
{
    switch (QChar::direction(character)) {
    case QChar::DirL:
        return Direction::Left;
    case QChar::DirR:
    case QChar::DirAL:
        return Direction::Right;
    case QChar::DirAN:
        return Direction::Number;
    case QChar::DirEN:
        return m_strong == Direction::Left ? Direction::Left : Direction::Number;
    case QChar::DirNSM:
    case QChar::DirBN:
        return Direction::None;
    default:
        // Between numbers in a text from right to left, spaces and signs are a run of their own.
        return m_strong != Direction::Left && m_direction == Direction::Number ? Direction::Right
                                                                               : Direction::None;
    }
}

} // namespace Hovlets
