// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>

class QPropertyAnimation;
class QWidget;

namespace Hovlets {

/*!
 * \brief Fades a popup in and out by the opacity of its window.
 *
 * It shows and hides nothing. GUI thread only.
 */
class HVPopupFade : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVPopupFade)

public:
    /// \a popup owns the fade and its animation.
    explicit HVPopupFade(QWidget &popup);

    [[nodiscard]] bool isRunning() const;
    [[nodiscard]] bool isFadingOut() const;

    /// Makes the popup nearly transparent, so that fadeIn() starts there.
    void prepareToFadeIn();

    /// Fades from nearly transparent to opaque within \a duration, in ms.
    void fadeIn(int duration);

    /// Fades from the current opacity to transparent within \a duration, in ms.
    void fadeOut(int duration);

    /// Stops at the current opacity.
    void stop();

    /// Stops, and makes the popup opaque.
    void makeOpaque();

Q_SIGNALS:
    /// Emitted when a fade-out has ended and was not stopped.
    void fadedOut();

    /// Emitted when the fade has changed the opacity of the popup.
    void opacityChanged();

private:
    void run(qreal from, qreal to, int duration);

    QWidget &m_popup;
    QPropertyAnimation *m_animation; // child of the popup
};

} // namespace Hovlets
