// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>

#include <array>

namespace Hovlets {

/*!
 * \brief Decides whether a pointer that has left its control is on its way to the popup.
 *
 * Other controls lie between the control and its popup. Crossing one hides the popup only if the
 * pointer rests there for the dwell time: it stays within a few pixels, like a resting hand, and
 * comes no closer to the popup. A pointer that was heading for the popup gets 40 ms more. Where
 * there is no control, the popup stays as long as the pointer is between the control and the popup,
 * even at rest.
 *
 * Does not use clocks, windows or events. Points are global, in pixels; times are in ms from any
 * origin. A move takes well below a microsecond.
 */
class HVSafePath
{
public:
    /// What the pointer is over.
    enum class Over {
        /// The control that the popup describes.
        Origin,
        /// The popup and the margin around it in which the mouse counts as over it.
        Popup,
        /// A control that would show something else: another popup or a tooltip.
        Other,
        /// Neither.
        Nothing
    };

    enum class Verdict {
        /// The popup stays.
        Keep,
        /// The popup stays; ask again at deadline().
        Wait,
        /// The control under the pointer takes over.
        Change
    };

    /*!
     * Call when a popup is visible: \a popup, for the control (or its part) \a origin. \a dwell is
     * the time in ms that the pointer must rest on another control; with 0 or less, that takes over
     * immediately.
     */
    void begin(const QRect &origin, const QRect &popup, int dwell);

    /*!
     * Call when the pointer has moved to \a position, \a over something. \a control identifies
     * other controls: any number that is the same for the same control or part.
     */
    Verdict pointerMoved(const QPoint &position, qint64 time, Over over, quint64 control = 0);

    /// The verdict at \a time if the pointer has not moved.
    [[nodiscard]] Verdict verdictAt(qint64 time) const;

    /// Whether \a position lies between the control and the popup, or close to either.
    [[nodiscard]] bool isBetween(const QPoint &position) const;

    /// When a verdict of Wait becomes Change if the pointer does not move.
    [[nodiscard]] qint64 deadline() const;

private:
    struct Sample
    {
        QPoint position;
        qint64 time = 0;
        double distance = 0; // to the popup
    };

    [[nodiscard]] const Sample &sample(size_t stepsBack) const;
    [[nodiscard]] size_t oldestSample() const;
    [[nodiscard]] size_t beginningOfRest() const;
    [[nodiscard]] bool wasHeadingForPopup(size_t stepsBack) const;

    QRect m_origin;
    QRect m_popup;
    int m_dwell = 0;

    std::array<Sample, 64> m_samples; // ring buffer of the latest samples since the pointer left
    size_t m_count = 0; // of all samples, including overwritten ones
    Over m_over = Over::Origin;
    quint64 m_control = 0;
    bool m_isBetween = true;
    qint64 m_entered = 0; // when the pointer entered the control
    qint64 m_since = 0; // when the dwell began
    int m_grace = 0; // ms beyond the dwell
    qint64 m_now = 0;
};

} // namespace Hovlets
