// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtWidgets/QWidget>

class QScreen;

namespace Hovlets {

/*!
 * The screen that shows the centre of \a control, or the primary screen for null.
 *
 * Most of the control's window may be on another screen. Where programs do not place their windows,
 * the result is the screen of the window.
 */
QScreen *screenFor(const QWidget *control);

/// The available area of the screen for \a control. Null if it is unknown: where programs do not
/// place their windows, only a window that fills the screen shows where the screen ends.
QRect availableAreaFor(const QWidget &control);

/*!
 * \brief Where a control was when a popup was placed for it.
 *
 * Points are global, in pixels. GUI thread only.
 */
class HVControlPlace
{
public:
    /// A place without a control, which remains valid.
    HVControlPlace() = default;
    explicit HVControlPlace(const QWidget &control);

    /*!
     * Whether a popup at this place is also right for \a control now.
     *
     * It is not if \a control is in another window, or if the control, its window or the screen has
     * moved. Another control of the same window may share the popup.
     */
    [[nodiscard]] bool isRightFor(const QWidget &control) const;

private:
    QPointer<const QWidget> m_control;
    QPointer<const QWidget> m_window;
    QPoint m_origin; // of the control
    QPoint m_windowOrigin;
    QRect m_area; // of the screen
};

} // namespace Hovlets
