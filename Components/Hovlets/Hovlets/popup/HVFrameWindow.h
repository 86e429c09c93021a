// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "HVFramePainting.h"

#include <QtGui/QBackingStore>
#include <QtGui/QWindow>

namespace Hovlets {

/*!
 * \brief The window below a popup that shows its shadow, outline and arrow.
 *
 * The popup's own window keeps the size of its content, by which it is placed and by which the
 * mouse finds it. This window is larger and takes no input. While it shows, it paints a change
 * at once, unless it is held. GUI thread only.
 */
class HVFrameWindow : public QWindow
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVFrameWindow)

public:
    HVFrameWindow();

    /// Surrounds \a popup, in global pixels, with \a look.
    void surround(const QRect &popup, const HVFrameLook &look);

    /// Holds changes back from the screen, or shows those that were held back.
    void setHeld(bool isHeld);

    /// Shows the window above all others, unless it would take input. Returns whether it shows.
    bool appear();

protected:
    void exposeEvent(QExposeEvent *event) override;

private:
    void paint();
    void flush();

    QBackingStore m_store;
    QSize m_popup;
    HVFrameLook m_look;
    bool m_isPainted = false;
    bool m_isHeld = false;
    bool m_isFlushed = true;
};

} // namespace Hovlets
