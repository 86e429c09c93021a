// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>

#include <array>

namespace Hovlets {

/*!
 * \brief Whether a pointer that has left its control is on its way to the popup.
 *
 * Between the control and its popup lie other controls. Crossing one takes the popup away only when
 * the pointer rests there for the dwell: it stays within a few pixels, as a hand at rest does, and
 * comes no closer to the popup. A pointer that headed for the popup before it rested is given 40 ms
 * more. Over nothing at all, the popup stays as long as the pointer is between the control and the
 * popup, however long it rests.
 *
 * Points and times go in, a verdict comes out: there is no clock, window or event here. Points are
 * global, in pixels, times in ms from any origin. A move takes well below a microsecond.
 */
class HVSafePath
{
public:
    /// What the pointer is over.
    enum class Over {
        /// The control that the popup describes.
        Origin,
        /// The popup, with the margin in which the mouse counts as over it.
        Popup,
        /// A control that would show something else: a popup or a tooltip of its own.
        Other,
        /// Neither.
        Nothing
    };

    enum class Verdict {
        /// The popup stays.
        Keep,
        /// The popup stays; ask again at deadline().
        Wait,
        /// What is under the pointer takes over.
        Change
    };

    /*!
     * A popup is on screen: \a popup, for the control (or its part) \a origin. \a dwell is the
     * rest, in ms, that another control needs; with 0 or less it takes over at once.
     */
    void begin(const QRect &origin, const QRect &popup, int dwell);

    /*!
     * The pointer has moved to \a position and is \a over something. \a control tells other
     * controls apart and is any number that is the same for the same control or part.
     */
    Verdict pointerMoved(const QPoint &position, qint64 time, Over over, quint64 control = 0);

    /// The verdict at \a time, the pointer having stayed where it was.
    Verdict verdictAt(qint64 time) const;

    /// When a verdict of Wait becomes Change unless the pointer moves.
    qint64 deadline() const;

private:
    struct Sample
    {
        QPoint position;
        qint64 time = 0;
        double distance = 0; // to the popup
    };

    const Sample &sample(size_t stepsBack) const;
    size_t oldestSample() const;
    size_t beginningOfRest() const;
    bool isBetween(const QPoint &position) const;
    bool wasHeadingForPopup(size_t stepsBack) const;

    QRect m_origin;
    QRect m_popup;
    int m_dwell = 0;

    std::array<Sample, 64> m_samples; // the latest since the pointer left, a ring
    size_t m_count = 0; // of all of them
    Over m_over = Over::Origin;
    quint64 m_control = 0;
    bool m_isBetween = true;
    qint64 m_entered = 0; // when the pointer came over the control
    qint64 m_since = 0; // when the dwell began
    int m_grace = 0; // ms beyond the dwell
    qint64 m_now = 0;
};

} // namespace Hovlets
