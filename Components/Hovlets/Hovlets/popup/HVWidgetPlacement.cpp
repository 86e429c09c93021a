// SPDX-License-Identifier: Apache-2.0
#include "HVWidgetPrivate.h"

#include "HVViewWindow.h"

#include <QtGui/QResizeEvent>

#include <utility>

// Where the popup is: the screen, the place beside the control, and the size.

namespace Hovlets {

namespace {

constexpr QSize SmallestPinned(160, 80); // px
constexpr QSize RimOfPinned(1, 1); // as that of other popups

} // namespace

/// Makes \a control, which may be null, the one that the next content describes. Returns false if
/// the host's code has closed or deleted the popup.
bool HVWidget::turnTo(QWidget *control)
{
    d->hovered->set(control);
    d->geometry.setControl(control);
    return useScreenAt({});
}

/// Lets the user interface see the screen of the control, or that at \a position, on which its next
/// content appears. Returns false if the user interface, in response, has had the host close or
/// delete the popup.
bool HVWidget::useScreenAt(const std::optional<QPoint> &position)
{
    const QPointer<HVWidget> self(this);
    // The content on screen keeps its size until it is replaced.
    const bool wasChanging = std::exchange(d->isChanging, true);
    d->geometry.useScreen(*d->view, position);
    if (!self)
        return false;
    d->isChanging = wasChanging;
    return !d->retired && d->view;
}

/// Moves the popup to \a pos or beside its control, as the settings ask. Returns false if the
/// host's code has hidden or deleted the popup meanwhile.
bool HVWidget::place(const QPoint &pos)
{
    const QPointer<HVWidget> self(this);
    const bool wasHidden = isHidden();
    d->geometry.request(pos, d->hovered->beside());
    d->geometry.place(d->view->size());
    return self && d->view && (wasHidden || !isHidden());
}

QPoint HVWidget::placeOfWindow() const
{
    const QWidget *own = d->geometry.window();
    if (own && own->windowHandle() && own->windowFlags().testFlag(Qt::FramelessWindowHint))
        return positionOf(*own->windowHandle());
    return own ? own->pos() : mapToGlobal(QPoint());
}

bool HVWidget::isPlacedFor(const QWidget *control) const
{
    return d->geometry.isRightFor(control);
}

void HVWidget::placeFor(QWidget *control, const QPoint &pos)
{
    if (!d->view)
        return;
    if (!turnTo(control))
        return;
    const QPointer<HVWidget> self(this);
    d->view->setDisabledReason(d->hovered->disabledReason());
    if (!self || !d->view || !place(pos)) // the user interface may have had the popup deleted
        return;
    d->hideTimer->stop();
    startWatching();
    d->surface->raise();
}

QRect HVWidget::findVisibleGeometry(QRect geometry, bool *move) const
{
    return d->geometry.visible(geometry, move);
}

void HVWidget::reposition()
{
    d->geometry.moveOntoScreen();
}

void HVWidget::contentResized()
{
    if (!d->view || d->isChanging)
        return;
    if (!isResizable())
        return d->geometry.resize(d->view->size());
    const QSize size = d->view->size() + RimOfPinned;
    setMinimumSize(SmallestPinned.boundedTo(size));
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    resize(size);
    reposition();
}

/// Whether the user can resize the popup, because it draws its own frame.
bool HVWidget::isResizable() const
{
    return d->pinned && isWindow() && d->view
            && d->view->viewWindow().titleBar() == HVViewWindow::TitleBar::Own;
}

/// The user interface takes the size that the user or the desktop gives the window.
void HVWidget::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    const QSize view = event->size() - RimOfPinned;
    if (!isResizable() || view == d->view->size())
        return;
    HVViewWindow &window = d->view->viewWindow();
    // Other changes of the size follow the content.
    if (!event->spontaneous() && !window.isResizingItself())
        return;
    // A window manager may report a window of one pixel before it has shown it.
    if (event->size() != event->size().expandedTo(minimumSize()))
        return;
    window.windowResized(view);
    if (d->view)
        d->view->resize(view);
}

} // namespace Hovlets
