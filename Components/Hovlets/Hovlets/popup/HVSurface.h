// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFramePainting.h"

#include <QtCore/QObject>

#include <memory>

class QWidget;

namespace Hovlets {

class HVFrameWindow;
class HVPopupGeometry;

/*!
 * \brief The look of a popup's window: transparent corners, shadow, outline and arrow.
 *
 * Without enable(), popups are plain rectangles. Where windows are not blended, they are rectangles
 * as well. Where programs do not place their windows, or no window lets clicks through, there are
 * neither a shadow nor an arrow, and the user interface draws the outline.
 *
 * The popup's window keeps its size and its place. GUI thread only.
 */
class HVSurface : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVSurface)

public:
    /// \a popup owns the object. \a geometry knows where the popup is, relative to its control.
    HVSurface(QWidget &popup, const HVPopupGeometry &geometry);
    ~HVSurface() override;

    /// Makes the popup's window translucent. Call before the window exists.
    void enable();

    /// Call before the popup shows content: a compositor may have started or ended.
    void refresh();

    /// Whether the corners of the popup may be transparent.
    [[nodiscard]] bool isRounded() const;

    /// Whether the object draws an outline around the popup.
    [[nodiscard]] bool isFramed() const;

    /// The popup's colours and the radius of its corners. The frame shows them when the popup moves
    /// or changes its size, or with updateFrame().
    void setLook(const HVFrameLook &look);

    /// Shows the current look around a visible popup.
    void updateFrame();

    /// The popup becomes a window of its own, without a frame of the desktop, or, if \a isPlain,
    /// one with such a frame or part of another window. Call before it does.
    void leave(bool isPlain);

    /// Follows the opacity of the popup.
    void updateOpacity();

    /// Holds changes of the frame back, or shows those that were held back. A popup that changes
    /// its size while it is visible is painted in between, for both to change at the same time.
    void setHeld(bool isHeld);

    /// Raises the popup, with its frame right below it.
    void raise();

    /// Deletes the frame, which appears no more until refresh() is called.
    void deleteFrame();

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void follow();

    QWidget &m_popup;
    const HVPopupGeometry &m_geometry;
    std::unique_ptr<HVFrameWindow> m_frame; // null until it is needed
    HVFrameLook m_look;
    bool m_isEnabled = false;
    bool m_isRounded = false;
    bool m_isFramed = false;
    bool m_isPinned = false;
};

} // namespace Hovlets
