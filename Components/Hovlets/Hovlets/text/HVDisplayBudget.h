// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVLimits.h"

#include <QtCore/QString>

namespace Hovlets {

/*!
 * \brief What is left of the limits on what a popup shows of one entry.
 *
 * Whoever adds to the popup takes from the budget first. Once an element or a character was refused
 * the budget is spent: no further element of the entry is read, and its last text ends with "…". A
 * refused picture leaves room for what follows it.
 */
class HVDisplayBudget
{
public:
    explicit HVDisplayBudget(const HVLimits &limits);

    /// An element of the entry, or a tag in one of its texts.
    bool takeElement();

    /// Further UTF-16 code units of text: all of them or none.
    bool takeCharacters(int count);
    bool takePicture();

    bool isSpent() const { return m_spent; }

    /// The first limit that was met, such as "300 elements"; empty when none was.
    QString limitMet() const { return m_limitMet; }

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
