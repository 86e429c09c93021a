// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLimits.h"

#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief The remainder of the limits on what a popup shows of one entry.
 *
 * Take from the budget before you add to the popup. Once an element or a character is refused, the
 * budget is spent: no further elements of the entry are read, and its last text ends with "…". A
 * refused picture leaves room for what follows.
 */
class HVDisplayBudget
{
public:
    explicit HVDisplayBudget(const HVLimits &limits);

    /// An element of the entry, or a tag in one of its texts.
    bool takeElement();

    /// Takes \a count UTF-16 code units of text: all of them or none.
    bool takeCharacters(int count);
    bool takePicture();

    [[nodiscard]] bool isSpent() const { return m_spent; }

    /// The first limit that was met, such as "300 elements"; empty if none was.
    [[nodiscard]] QString limitMet() const { return m_limitMet; }

private:
    bool take(qint64 &left, int count, qint64 limit, const char *what);

    HVLimits m_limits;
    qint64 m_elements;
    qint64 m_characters;
    qint64 m_pictures;
    bool m_spent = false;
    QString m_limitMet;
};

} // namespace Hovlets
