// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <optional>

namespace Hovlets {

/*!
 * \brief Decides when the popup shows, and when the simple popup becomes the full one.
 *
 * It reads no clock: every call passes the time, in ms from any origin. The owner runs one timer
 * for deadline() and then calls timeReached().
 */
class HVHoverDelays
{
public:
    enum class Action {
        Nothing,
        /// Show the popup for the control on which the pointer rests.
        Show,
        /// Turn the simple popup into the full one.
        Expand
    };

    /*!
     * \a show is how long the pointer must rest before a popup shows, \a expand how long it must
     * stay at the simple popup before that becomes the full one. Both are in ms. A \a show of 0 or
     * less selects the desktop's delay. With an \a expand of 0 or less, the popup stays simple.
     */
    void setDelays(int show, int expand);

    /*!
     * Call when the desktop would show a tooltip for a pointer that has rested since \a restSince.
     * Returns Show unless the delay is longer.
     */
    Action toolTipDue(qint64 now, qint64 restSince);

    /// Call when the pointer has moved: a popup that is not visible yet waits for the next rest.
    void pointerMoved();

    /// Call when a popup shows new content.
    void popupShown(qint64 now, bool isSimple);
    void popupHidden();

    /// Call when the pointer leaves the control and the popup's surroundings, or returns to them.
    void pointerLeft();
    void pointerReturned(qint64 now);

    /// When to call timeReached(); no value if nothing is pending.
    [[nodiscard]] std::optional<qint64> deadline() const;

    /// Returns what is due at \a now, but only once.
    Action timeReached(qint64 now);

private:
    Action m_next = Action::Nothing;
    std::optional<qint64> m_deadline; // of m_next; no value while the pointer is away
    int m_show = 0;
    int m_expand = 0;
};

} // namespace Hovlets
