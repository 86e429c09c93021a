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

    /*!
     * The most UTF-16 code units of texts as they are written, with markup and placeholders: four
     * times what may be shown. Longer texts are cut there before anything else is done with them.
     */
    [[nodiscard]] static int mostWritten(const HVLimits &limits);

    /// Takes a text as it is written. Returns the part that may be read; see endText().
    QString takeWritten(const QString &text);

    /// Whether texts may still be read.
    [[nodiscard]] bool hasWritten() const { return m_written > 0; }

    /// Call it after the part from takeWritten() is added. Returns false if that was not all; the
    /// budget is then spent.
    bool endText();

    /// Takes \a count UTF-16 code units of shown text: all of them or none.
    bool takeCharacters(int count);
    bool takePicture();

    [[nodiscard]] bool isSpent() const { return m_spent; }

    /// The first limit that was met, such as "300 elements"; empty if none was.
    [[nodiscard]] QString limitMet() const { return m_limitMet; }

private:
    void refuse(qint64 limit, const char *what);
    bool take(qint64 &left, int count, qint64 limit, const char *what);

    HVLimits m_limits;
    qint64 m_elements;
    qint64 m_characters;
    qint64 m_pictures;
    qint64 m_written;
    bool m_isTextCut = false; // takeWritten() has returned only a part
    bool m_spent = false;
    QString m_limitMet;
};

} // namespace Hovlets
