// SPDX-License-Identifier: Apache-2.0
#include "HVDisplayBudget.h"

namespace Hovlets {

HVDisplayBudget::HVDisplayBudget(const HVLimits &limits)
    : m_limits(limits)
    , m_elements(limits.shownElements)
    , m_characters(limits.shownCharacters)
    , m_pictures(limits.shownPictures)
    , m_written(mostWritten(limits))
{
}

int HVDisplayBudget::mostWritten(const HVLimits &limits)
{
    constexpr int MarkupPerCharacter = 4;
    return MarkupPerCharacter * qBound(0, limits.shownCharacters, 1 << 28);
}

QString HVDisplayBudget::takeWritten(const QString &text)
{
    m_isTextCut |= text.size() > m_written;
    const QString part = text.left(int(m_written));
    m_written -= part.size();
    return part;
}

bool HVDisplayBudget::endText()
{
    if (!m_isTextCut)
        return true;
    refuse(mostWritten(m_limits), "characters with markup");
    m_spent = true;
    return false;
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
        m_characters = m_written = 0; // a shorter text that would fit must not follow
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
    refuse(limit, what);
    return false;
}

void HVDisplayBudget::refuse(qint64 limit, const char *what)
{
    if (m_limitMet.isEmpty())
        m_limitMet = QStringLiteral("%1 %2").arg(qMax<qint64>(0, limit)).arg(QLatin1String(what));
}

} // namespace Hovlets
