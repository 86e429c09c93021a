// SPDX-License-Identifier: Apache-2.0
#include "HVWidgetPrivate.h"

#include <QtGui/QCursor>

// When the popup appears and disappears: fades, the countdown, and the safe region.

namespace Hovlets {

void HVWidget::showAnimated()
{
    if (isVisible()) {
        d->geometry.setVisible(true); // withdraws a hide that waits until the popup has shown
        endFadeOut();
        return;
    }
    // Wayland treats a window as a tooltip only if it belongs to another window.
    if (isWindow())
        create();
    d->geometry.attach();
    const int duration = d->fadeDuration(HVKeyShowFadeDuration);
    if (duration <= 0) {
        setWindowOpacity(1.0);
        show();
        return;
    }
    d->fade->prepareToFadeIn();
    const QPointer<HVWidget> self(this);
    show();
    if (!self || !isVisible())
        return; // the host hid it
    contentResized();
    d->fade->fadeIn(duration);
}

void HVWidget::hideAnimated()
{
    if (d->geometry.isAppearingAgain())
        return hide();
    if (!isVisible() || d->fade->isRunning())
        return;
    d->hovered->finish();
    const int duration = d->fadeDuration(HVKeyHideFadeDuration);
    if (duration <= 0) {
        hideAnimationFinished();
        return;
    }
    d->fade->fadeOut(duration);
    d->hideTimer->stop();
}

void HVWidget::hideAnimationFinished()
{
    if (d->view)
        d->view->resetState();
    hide();
}

/// Keeps a popup that was fading out. A fade-in continues, because it ends at full opacity anyway.
void HVWidget::endFadeOut()
{
    if (!d->fade->isFadingOut())
        return;
    d->fade->makeOpaque();
    if (!d->pinned)
        startWatching();
    checkMousePosition(QCursor::pos());
}

/// Whoever hides or shows a popup that is appearing in another place decides.
void HVWidget::setVisible(bool visible)
{
    if (d->geometry.isAppearingAgain()) {
        d->geometry.stopAppearingAgain();
        if (!visible && !isVisible())
            endShow(); // its hide event did not
    }
    // A popup that is pinned while it shows becomes another window, which cannot wait.
    if (d->pinned)
        QWidget::setVisible(visible);
    else
        d->geometry.setVisible(visible);
}

void HVWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (d->geometry.isAppearingAgain())
        return;
    if (!isSafe(QCursor::pos()))
        setTimer();
    reposition();
}

void HVWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    if (!d->geometry.isAppearingAgain())
        endShow();
}

/// Fades and countdowns of a show must not affect the next one.
void HVWidget::endShow()
{
    d->fade->stop();
    d->hideTimer->stop();
    d->hovered->stopWatching();
    d->levelKeyWatch->stop();
}

void HVWidget::setTimer()
{
    d->hideTimer->stop();
    if (d->pinned || (d->view && d->view->stayOpen()))
        return;
    constexpr float Longest = 1e9F; // ms, 11 days; fits into an int
    const float delay = d->setting(HVKeyHideDelay).toFloat();
    if (delay > 0)
        d->hideTimer->start(static_cast<int>(qMin(delay, Longest)));
}

void HVWidget::checkMousePosition(const QPoint &pos)
{
    const QPointer<HVWidget> self(this);
    const bool isNear = isSafe(pos);
    if (!self)
        return;
    d->hovered->setMouseIsNear(isNear);
    if (isNear)
        d->hideTimer->stop();
    else if (!d->hideTimer->isActive())
        setTimer();
}

bool HVWidget::isSafe(const QPoint &pos) const
{
    const QPointer<const HVWidget> self(this);
    if (d->hovered->isNear(pos) || !self)
        return true;
    const QSize margin = d->setting(HVKeySafeMargin).toSize();
    return QRect(mapToGlobal(QPoint(0, 0)), frameGeometry().size())
            .adjusted(-margin.width(), -margin.height(), margin.width(), margin.height())
            .contains(pos);
}

} // namespace Hovlets
