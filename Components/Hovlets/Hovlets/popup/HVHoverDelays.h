// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QtGlobal>

#include <optional>

namespace Hovlets {

/*!
 * \brief When the popup shows, and when the simple one becomes the full one.
 *
 * It reads no clock: every call passes the time, in ms from any origin. The owner runs one
 * timer for deadline() and calls timeReached() when that has come.
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
     * \a show is the rest that a popup takes to show, \a expand how long the pointer stays with the
     * simple popup before the full one; both in ms. A \a show of 0 or less means the desktop's own
     * moment, an \a expand of 0 or less never.
     */
    void setDelays(int show, int expand);

    /*!
     * The desktop's moment for a tooltip has come, for a pointer that rests since \a restSince.
     * Answers Show unless the delay is longer than that.
     */
    Action toolTipDue(qint64 now, qint64 restSince);

    /// The pointer moved: a popup that is not on screen yet waits for the next rest.
    void pointerMoved();

    /// A popup is on screen, with content of its own that replaced what was there.
    void popupShown(qint64 now, bool isSimple);
    void popupHidden();

    /// The pointer is neither over the control nor near the popup any more, or it is again.
    void pointerLeft();
    void pointerReturned(qint64 now);

    /// When to call timeReached(); none while nothing waits.
    std::optional<qint64> deadline() const;

    /// What is due at \a now; it is answered once.
    Action timeReached(qint64 now);

private:
    Action m_next = Action::Nothing;
    std::optional<qint64> m_deadline; // of m_next; none while the pointer is away
    int m_show = 0;
    int m_expand = 0;
};

} // namespace Hovlets
