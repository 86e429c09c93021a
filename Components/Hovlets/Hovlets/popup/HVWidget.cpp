// SPDX-License-Identifier: Apache-2.0
#include "HVWidget.h"

#include "HVContext.h"
#include "HVHoveredControl.h"
#include "HVPaintNow.h"
#include "HVPinning.h"
#include "HVPopupFade.h"
#include "HVPopupGeometry.h"
#include "HVPopupServices.h"
#include "HVShowScope.h"
#include "HVView.h"
#include "HVWindowSystem.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QTimer>
#include <QtGui/QCursor>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QWindow>
#include <QtWidgets/QToolTip>

#include <utility>

namespace Hovlets {

class HVWidget::Private
{
public:
    Private(HVWidget &popup, HVPopupServices *services, QWidget *reference)
        : services(services)
        , fade(new HVPopupFade(popup))
        , hideTimer(new QTimer(&popup))
        , hovered(new HVHoveredControl(popup, services, reference))
        , geometry(popup)
    {
        geometry.setControl(reference);
        hideTimer->setSingleShot(true);
    }

    QVariant setting(contextKey key) const { return settingOf(services, key); }

    int fadeDuration(contextKey key) const
    {
        return windowsHaveOpacity() ? setting(key).toInt() : 0;
    }

    QPointer<HVPopupServices> services; // null after the manager is destroyed
    QPointer<HVView> view;

    // Children of the popup
    HVPopupFade *fade;
    QTimer *hideTimer;
    HVHoveredControl *hovered;

    HVPopupGeometry geometry;
    bool isChanging = false; // the view loads content, whose size is final when it returns
    bool pinned = false;
    bool retired = false;
};

HVWidget::HVWidget(HVManager *manager, QWidget *parent, QWidget *referenceWidget)
    : QWidget(parent)
    , d(std::make_unique<Private>(*this, popupServicesOf(manager), referenceWidget))
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    if (!d->setting(HVKeyPopupIsWindow).toBool())
        setWindowFlags(Qt::ToolTip);
    connect(d->fade, &HVPopupFade::fadedOut, this, &HVWidget::hideAnimationFinished);
    connect(d->hideTimer, &QTimer::timeout, this, &HVWidget::hideAnimated);
    connect(d->hovered, &HVHoveredControl::ended, this, &HVWidget::hide);
    connect(d->hovered, &HVHoveredControl::pointerIsAt, this, &HVWidget::checkMousePosition);
    connect(d->hovered, &HVHoveredControl::expansionDue, this, [this] {
        if (d->view)
            d->view->expand();
    });
    connect(d->hovered, &HVHoveredControl::inTheWay, this, [this] {
        if (!d->view || !d->view->stayOpen())
            hide();
    });
}

HVWidget::~HVWidget()
{
    setView(nullptr);
}

void HVWidget::setView(HVView *view)
{
    if (view == d->view)
        return;
    // Replace the member first: events of the view being destroyed must not find it.
    HVView *old = d->view;
    d->view = view;
    if (old)
        old->deleteWhenIdle();
    if (!view)
        return;
    connect(view, &HVView::reservedChanged, this, &HVWidget::contentReservedChanged);
    connect(view, &HVView::contentSizeChanged, this, &HVWidget::contentResized);
    view->installEventFilter(this);
    view->move(0, 0);
}

HVView *HVWidget::view() const
{
    return d->view;
}

HVManager *HVWidget::manager() const
{
    return d->services ? d->services->manager() : nullptr;
}

QWidget *HVWidget::referenceWidget() const
{
    return d->hovered->widget();
}

void HVWidget::showWithContent(QObject *reference, const QPoint &pos, HVXmlElement *content,
                               const QString &rootPath)
{
    if (!content || !d->view)
        return;
    const HVShowScope showing;
    const bool isWidget = reference && reference->isWidgetType();
    if (!turnTo(isWidget ? static_cast<QWidget *>(reference) : nullptr) || !load(content, rootPath))
        return;
    if (d->pinned)
        return showAnimated(); // its QML has pinned it meanwhile
    place(pos);
    paintNow(*this); // the next turn of the event loop would show the old content in the new place
    // A countdown that started meanwhile must not hide the popup of this control.
    if (isVisible() && isSafe(QCursor::pos())) // no hover is set, so the host is not asked
        d->hideTimer->stop();
    d->hovered->startWatching();
    showAnimated();
}

void HVWidget::prepare(HVXmlElement *content, const QString &rootPath)
{
    const HVShowScope showing;
    if (d->view && !isVisible())
        load(content, rootPath);
}

void HVWidget::createWindow()
{
    create();
}

void HVWidget::setHoverPosition(const QPoint &position)
{
    d->hovered->setPointer(position);
}

/// Has the view show \a content. Returns whether it still does when the host's code has run, which
/// may show other content, or close or delete the popup.
bool HVWidget::load(HVXmlElement *content, const QString &rootPath)
{
    const QPointer<HVWidget> self(this);
    d->isChanging = true;
    d->view->showContent(content, rootPath);
    if (!self)
        return false;
    d->isChanging = false;
    return !d->retired && d->view && d->view->content() == content;
}

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

/// Moves the popup to \a pos or beside its control, as the settings ask.
void HVWidget::place(const QPoint &pos)
{
    d->geometry.request(pos, d->hovered->beside());
    d->geometry.place(d->view->size());
}

void HVWidget::showPinned(const QPoint &position, QWidget *window, HVXmlElement *content,
                          const QString &rootPath)
{
    const HVShowScope showing;
    hide();
    d->hovered->release(window);
    d->geometry.setControl(window);
    d->geometry.leaveToUser();
    if (!useScreenAt(position) || !load(content, rootPath))
        return;
    d->geometry.placeAt(position, d->view->size());
    d->view->setReserved(true);
}

QPoint HVWidget::placeOfWindow() const
{
    const QWidget *own = d->geometry.window();
    return own ? own->pos() : mapToGlobal(QPoint());
}

void HVWidget::setHover(const QString &key, const QPoint &position)
{
    d->hovered->setKey(key, position);
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
    place(pos);
    d->hideTimer->stop();
    d->hovered->startWatching();
    raise();
}

void HVWidget::retire()
{
    d->retired = true;
    if (!d->view) {
        deleteLater();
        return;
    }
    d->view->whenIdle([self = QPointer<HVWidget>(this)] {
        if (self)
            self->deleteLater();
    });
}

void HVWidget::showAnimated()
{
    if (isVisible()) {
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
    show();
    contentResized();
    d->fade->fadeIn(duration);
}

void HVWidget::hideAnimated()
{
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
        d->hovered->startWatching();
    checkMousePosition(QCursor::pos());
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
    if (d->geometry.isAppearingAgain())
        return;
    // Fades and countdowns of this show must not affect the next one.
    d->fade->stop();
    d->hideTimer->stop();
    d->hovered->stopWatching();
}

/// Paints the rim beside the view as the user interface requests, or like a tooltip, even if
/// windows have another colour.
void HVWidget::paintEvent(QPaintEvent *event)
{
    QColor color = d->view ? d->view->rimColor() : QColor();
    if (!color.isValid())
        color = QToolTip::palette().color(QPalette::Active, QPalette::ToolTipBase);
    QPainter(this).fillRect(event->rect(), color);
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
    if (d->view && !d->isChanging)
        d->geometry.resize(d->view->size());
}

void HVWidget::contentReservedChanged()
{
    QWidget *container = nullptr;
    if (!d->view || !d->view->reserved() || !d->services
        || !d->services->reservePopup(this, container))
        return;
    d->fade->makeOpaque();
    d->pinned = true;
    d->hovered->release(d->hovered->widget());
    d->geometry.leaveToUser();
    d->hideTimer->stop();
    const auto type = d->setting(HVKeyPinnedInTaskbar).toBool() ? Qt::Window : Qt::Tool;
    if (container)
        dockPopup(*this, *container, type);
    else
        makeWindow(*this, type);
}

/// Makes hovletView.close() close the window around the view. Closing only the view would leave an
/// empty frame.
bool HVWidget::eventFilter(QObject *object, QEvent *event)
{
    // Compares the type first, because a view that is being deleted is no longer an HVView.
    if (event->type() != QEvent::Close || object != d->view)
        return QWidget::eventFilter(object, event);
    event->ignore();
    QWidget *own = d->geometry.window();
    (own ? own : this)->close();
    return true;
}

} // namespace Hovlets
