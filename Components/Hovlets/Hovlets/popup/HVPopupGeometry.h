// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVBesideControl.h"
#include "HVControlPlace.h"

#include <QtCore/QPoint>
#include <QtCore/QPointer>
#include <QtCore/QRect>
#include <QtCore/QSize>

#include <optional>

class QQuickWidget;
class QScreen;
class QWidget;

namespace Hovlets {

/*!
 * \brief The size and place of a popup.
 *
 * The popup has the size of its view and a rim of one pixel. It goes to the requested point,
 * shifted onto the screen, or beside its control, and always by its full size: when the size
 * changes, it is placed again from the same request. A popup that the user has moved stays where it
 * is, as far as the screen allows.
 *
 * Where programs do not place their windows, the window system places the popup once, when it
 * appears. There, a popup that moves or grows disappears for a moment.
 *
 * A popup that is docked in a window of its own gives that window its size. In any other window, it
 * only takes its size.
 *
 * Points are global, in pixels. GUI thread only.
 */
class HVPopupGeometry
{
    Q_DISABLE_COPY_MOVE(HVPopupGeometry)

public:
    /// \a popup owns the object. Its view is not part of a layout.
    explicit HVPopupGeometry(QWidget &popup);

    /// The window that the popup may move, resize and close; null if it is docked in another
    /// window.
    [[nodiscard]] QWidget *window() const;

    /// Keeps the popup on the screen of \a control, or on the primary screen if it is null.
    void setControl(const QWidget *control);

    /*!
     * Puts the popup's scene, in \a view, on the screen of the control, or on that at \a position.
     *
     * User interfaces limit their size to the screen, so call it before they get their content.
     */
    void useScreen(const QQuickWidget &view, std::optional<QPoint> position = {}) const;

    /// Ties the popup to the window of its control, and puts it on the screen of the control. Call
    /// it when the popup's window exists, and before that is shown.
    void attach();

    /// Whether the popup disappears and appears now only to get its new place.
    [[nodiscard]] bool isAppearingAgain() const;

    /// Leaves the popup hidden, or where it is, because somebody hid or showed it meanwhile.
    void stopAppearingAgain();

    /// Shows or hides the popup. If the host hides it while it handles its Show event, the popup is
    /// hidden after that event; otherwise Qt would still show the native window.
    void setVisible(bool visible);

    /// Requests a place for new content: \a position or, if it is set, the place \a beside the
    /// control.
    void request(const QPoint &position, std::optional<HVBesideControl> beside);

    /// Leaves the place to the user, and keeps the popup on the screen where the user moves it.
    void leaveToUser();

    /// Whether the place of the last request is also right for \a control now. Always true for
    /// null.
    [[nodiscard]] bool isRightFor(const QWidget *control) const;

    /// Moves the popup to the requested place, with the size for a view of size \a view.
    void place(const QSize &view);

    /// Moves the popup to \a position, or as near to it as the screen there allows, with the size
    /// for a view of size \a view.
    void placeAt(const QPoint &position, const QSize &view);

    /// Gives the popup the size for a view of size \a view, and the place for that size.
    void resize(const QSize &view);

    /// Shifts the window onto the screen.
    void moveOntoScreen();

    /// \a geometry, shifted into the available area of the screen. \a shifted is as for
    /// shiftedInto().
    [[nodiscard]] QRect visible(const QRect &geometry, bool *shifted = nullptr) const;

    /// The arrow of a popup that is beside its control, at the distance \a corner or more from its
    /// corners.
    [[nodiscard]] std::optional<HVArrow> arrow(int corner) const;

private:
    [[nodiscard]] QScreen *screenAt(const QPoint &position) const;
    void takeSize(QWidget *window, const QSize &view);
    [[nodiscard]] QSize sizeOf(const QWidget &window, const QSize &view) const;
    /// What a window shows after it has moved and before it is painted.
    enum class Picture {
        /// That of other content, which must not appear in the new place.
        IsOld,
        /// What it showed before. Content that becomes larger begins with it.
        Stays
    };
    void moveToPlace(QWidget &window, const QSize &size, const QSize &visibleSize, Picture picture);
    [[nodiscard]] bool mustAppearAgain(const QWidget &window, const QRect &geometry) const;
    void appearAt(const QRect &geometry);

    QWidget &m_popup;
    QPointer<const QWidget> m_control;
    bool m_isLeftToUser = false;
    std::optional<QPoint> m_requested;
    std::optional<HVBesideControl> m_beside; // takes precedence over the requested point
    HVControlPlace m_controlPlace; // at the time of the request
    QPoint m_placed; // the resulting position
    bool m_isAppearingAgain = false;
    bool m_isShowing = false;
    bool m_hidesWhenShown = false;
};

} // namespace Hovlets
