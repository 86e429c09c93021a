// SPDX-License-Identifier: Apache-2.0
#include "HVDisplayBudget.h"

namespace Hovlets {

HVDisplayBudget::HVDisplayBudget(const HVLimits &limits)
    : m_limits(limits)
    , m_elements(limits.shownElements)
    , m_characters(limits.shownCharacters)
    , m_pictures(limits.shownPictures)
{
}

bool HVDisplayBudget::takeElement()
{
    const bool taken = !m_spent && take(m_elements, 1, m_limits.shownElements, "elements");
    m_spent |= !taken;
    return taken;
}

bool HVDisplayBudget::takeCharacters(int count)
{
    const bool taken = take(m_characters, count, m_limits.shownCharacters, "characters");
    if (!taken)
        m_characters = 0; // a shorter text that would fit must not follow
    m_spent |= !taken;
    return taken;
}

bool HVDisplayBudget::takePicture()
{
    return take(m_pictures, 1, m_limits.shownPictures, "pictures");
}

bool HVDisplayBudget::take(qint64 &left, int count, qint64 limit, const char *what)
{
    if (left >= count) {
        left -= count;
        return true;
    }
    if (m_limitMet.isEmpty())
        m_limitMet = QStringLiteral("%1 %2").arg(qMax<qint64>(0, limit)).arg(QLatin1String(what));
    return false;
}

} // namespace Hovlets
