// SPDX-License-Identifier: Apache-2.0
#include "HVWidget.h"

#include "HVBesideControl.h"
#include "HVContext.h"
#include "HVControlPart.h"
#include "HVControlPlace.h"
#include "HVControlWatch.h"
#include "HVDismissalWatch.h"
#include "HVExpansion.h"
#include "HVPathWatch.h"
#include "HVPinning.h"
#include "HVPopupServices.h"
#include "HVSettings.h"
#include "HVShowScope.h"
#include "HVView.h"
#include "HVVisibleArea.h"

#include <QtCore/QEvent>
#include <QtCore/QPointer>
#include <QtCore/QPropertyAnimation>
#include <QtCore/QTimer>
#include <QtGui/QCursor>
#include <QtGui/QGuiApplication>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLayout>
#include <QtWidgets/QToolTip>

#include <optional>
#include <utility>

namespace Hovlets {

namespace {

constexpr qreal FadeStart = 0.1;

// Deliberate: user interfaces rely on it to show their last border line.
constexpr QSize Rim(1, 1);

/// Deletes \a view, which may be null, once its QML has ended.
void deleteWhenIdle(HVView *view)
{
    if (!view || !view->isBusy()) {
        delete view;
        return;
    }
    // Moving the widget to another window would rebuild its scene and delete the running QML.
    // Removing only the QObject parent suffices for it to outlive the popup.
    view->QObject::setParent(nullptr);
    view->whenIdle([view] { view->deleteLater(); });
}

/// The available area of the primary screen.
QRect areaWithoutControl()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

/// Moves and resizes \a window, in one step where it can be seen.
void setFixedGeometry(QWidget &window, const QRect &geometry)
{
    if (window.isVisible() && window.frameGeometry() == window.geometry()) {
        window.setMinimumSize(0, 0);
        window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        window.setGeometry(geometry);
    }
    window.setFixedSize(geometry.size());
    window.move(geometry.topLeft());
}

} // namespace

class HVWidget::Private
{
public:
    /// What the pointer was over when the content was shown.
    struct Hover
    {
        QString key;
        HVControlPart::Id part;
        std::optional<HVControlPart::Id> askedPart; // for which the host was asked last
        bool isSameControl = false; // it returned the key above
    };

    QVariant setting(contextKey key) const
    {
        return services ? services->settings().get(key) : defaultOf(key);
    }

    QPointer<HVView> view;
    QPointer<QWidget> referenceWidget;
    QPropertyAnimation *opacityAnimation = nullptr; // child
    QTimer *hideTimer = nullptr; // child
    QPointer<HVPopupServices> services; // null after the manager is destroyed
    bool pinned = false;
    bool retired = false;
    HVControlWatch *control = nullptr; // child; watches the reference widget of a hover popup
    HVDismissalWatch *dismissal = nullptr; // child; runs while a hover popup is up
    HVPathWatch *path = nullptr; // child; runs while a hover popup is up
    HVExpansion *expansion = nullptr; // child; runs while a simple hover popup is up
    std::optional<QPoint> hoverPosition; // for the next content
    QPoint pointed; // where the mouse was when the content came
    bool isChanging = false; // the view loads content, whose size is final when it returns
    std::optional<QPoint> wanted; // requested position; none once the user has moved it
    QPoint placed; // the resulting position
    HVControlPlace controlPlace; // at that time
    std::optional<Hover> hover;
    std::optional<HVBesideControl> beside; // takes precedence over the requested position
};

HVWidget::HVWidget(HVManager *manager, QWidget *parent, QWidget *referenceWidget)
    : QWidget(parent)
    , d(std::make_unique<Private>())
{
    d->services = popupServicesOf(manager);
    d->referenceWidget = referenceWidget;
    d->opacityAnimation = new QPropertyAnimation(this, "windowOpacity", this);
    d->hideTimer = new QTimer(this);
    d->hideTimer->setSingleShot(true);
    setAttribute(Qt::WA_ShowWithoutActivating);
    if (!d->setting(HVKeyPopupIsWindow).toBool())
        setWindowFlags(Qt::ToolTip);
    connect(d->hideTimer, &QTimer::timeout, this, &HVWidget::hideAnimated);
    d->control = new HVControlWatch(*this);
    connect(d->control, &HVControlWatch::controlGone, this, &HVWidget::hide);
    connect(d->control, &HVControlWatch::pointerLeft, this, [this] {
        if (isVisible())
            checkMousePosition(QCursor::pos());
    });
    d->dismissal = new HVDismissalWatch(*this);
    connect(d->dismissal, &HVDismissalWatch::dismissed, this, &HVWidget::hide);
    d->path = new HVPathWatch(*this);
    connect(d->path, &HVPathWatch::pointerIsAt, this, &HVWidget::checkMousePosition);
    d->expansion = new HVExpansion(this);
    connect(d->expansion, &HVExpansion::due, this, &HVWidget::expand);
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
    deleteWhenIdle(old);
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
    return d->referenceWidget;
}

void HVWidget::showWithContent(QObject *reference, const QPoint &pos, HVXmlElement *content,
                               const QString &rootPath)
{
    if (!content || !d->view)
        return;
    const HVShowScope showing;
    const QPointer<HVWidget> self(this);
    setReferenceWidget(reference && reference->isWidgetType() ? static_cast<QWidget *>(reference)
                                                              : nullptr);
    d->pointed = std::exchange(d->hoverPosition, {}).value_or(QCursor::pos());
    d->isChanging = true;
    d->view->showContent(content, rootPath);
    if (!self)
        return;
    d->isChanging = false;
    if (d->retired || !d->view || d->view->content() != content)
        return; // the host's code has shown something else or closed the popup
    if (d->pinned)
        return showAnimated(); // its QML has pinned it meanwhile
    d->wanted = pos;
    d->controlPlace = d->referenceWidget ? HVControlPlace(*d->referenceWidget) : HVControlPlace();
    aimAtControl();
    fitToView(Place::Wanted);
    // In this turn of the event loop: in the next one, the old content would have been visible at
    // the new position.
    repaint();
    // A countdown that started meanwhile must not hide the popup of this control.
    if (isVisible() && isSafe(QCursor::pos())) // no hover is set, so the host is not asked
        d->hideTimer->stop();
    watchHover();
    showAnimated();
}

void HVWidget::setHoverPosition(const QPoint &position)
{
    d->hoverPosition = position;
}

/// Decides whether the new content goes beside its control.
void HVWidget::aimAtControl()
{
    d->beside.reset();
    if (d->referenceWidget && d->setting(HVKeyPlacement).toInt() == HVPlaceBesideControl)
        d->beside.emplace(*d->referenceWidget, d->pointed,
                          d->setting(HVKeyKeepClear).value<QRegion>());
}

/// Starts what runs only while a hover popup is up.
void HVWidget::watchHover()
{
    d->dismissal->start(d->setting(HVKeyDismissOnKey).toInt(), d->referenceWidget);
    if (d->referenceWidget && d->setting(HVKeySafePath).toBool())
        d->path->start(*d->referenceWidget, d->pointed, d->setting(HVKeySafePathDwell).toInt());
    else
        d->path->stop();
    if (d->setting(HVKeySimpleMode).toBool())
        d->expansion->start(d->setting(HVKeyExpandDelay).toInt());
    else
        d->expansion->stop();
}

void HVWidget::unwatchHover()
{
    d->dismissal->stop();
    d->path->stop();
    d->expansion->stop();
}

/// Shows the full user interface in place of the simple one, in one frame.
void HVWidget::expand()
{
    if (d->view)
        d->view->expand();
}

void HVWidget::showPinned(const QPoint &position, QWidget *window, HVXmlElement *content,
                          const QString &rootPath)
{
    const HVShowScope showing;
    const QPointer<HVWidget> self(this);
    hide();
    d->hover.reset();
    d->referenceWidget = window;
    d->wanted.reset();
    d->beside.reset();
    d->isChanging = true;
    d->view->showContent(content, rootPath);
    if (!self)
        return;
    d->isChanging = false;
    if (d->retired || !d->view || d->view->content() != content)
        return; // the host's code has shown something else or closed the popup
    setFixedSize(d->view->size() + Rim);
    const QScreen *screen = QGuiApplication::screenAt(position);
    if (!screen)
        screen = window ? window->screen() : QGuiApplication::primaryScreen();
    const QRect geometry(position, size());
    move(screen ? shiftedInto(geometry, screen->availableGeometry()).topLeft() : position);
    d->view->setReserved(true);
}

QPoint HVWidget::placeOfWindow() const
{
    const QWidget *own = ownWindow();
    return own ? own->pos() : mapToGlobal(QPoint());
}

void HVWidget::setReferenceWidget(QWidget *control)
{
    d->referenceWidget = control;
    d->control->watch(control);
    d->hover.reset();
}

void HVWidget::setHover(const QString &key, const QPoint &position)
{
    d->hover.reset();
    if (!d->referenceWidget)
        return;
    d->hover = Private::Hover { key, controlPartAt(*d->referenceWidget, position).id, {}, false };
}

bool HVWidget::isPlacedFor(const QWidget *control) const
{
    return !control || d->controlPlace.isRightFor(*control);
}

void HVWidget::placeFor(QWidget *control, const QPoint &pos)
{
    if (!d->view)
        return;
    setReferenceWidget(control);
    d->pointed = std::exchange(d->hoverPosition, {}).value_or(QCursor::pos());
    d->controlPlace = HVControlPlace(*control);
    d->wanted = pos;
    aimAtControl();
    fitToView(Place::Wanted);
    d->hideTimer->stop();
    watchHover();
    raise();
}

void HVWidget::retire()
{
    d->retired = true;
    const auto end = [self = QPointer<HVWidget>(this)] {
        if (self)
            self->deleteLater();
    };
    if (d->view)
        d->view->whenIdle(end);
    else
        end();
}

void HVWidget::showAnimated()
{
    if (isVisible()) {
        endFadeOut();
        return;
    }
    // Wayland treats a window as a tooltip only if it belongs to another window.
    if (isWindow()) {
        create();
        windowHandle()->setTransientParent(
                d->referenceWidget ? d->referenceWidget->window()->windowHandle() : nullptr);
    }
    const int duration = d->setting(HVKeyShowFadeDuration).toInt();
    if (duration <= 0) {
        setWindowOpacity(1.0);
        show();
        return;
    }
    setWindowOpacity(FadeStart);
    show();
    contentResized();
    d->opacityAnimation->setDuration(duration);
    d->opacityAnimation->setStartValue(FadeStart);
    d->opacityAnimation->setEndValue(1.0);
    d->opacityAnimation->start(QAbstractAnimation::KeepWhenStopped);
}

void HVWidget::hideAnimated()
{
    if (!isVisible() || d->opacityAnimation->state() != QAbstractAnimation::Stopped)
        return;
    d->path->finish();
    const int duration = d->setting(HVKeyHideFadeDuration).toInt();
    if (duration <= 0) {
        hideAnimationFinished();
        return;
    }
    d->opacityAnimation->setDuration(duration);
    d->opacityAnimation->setStartValue(windowOpacity());
    d->opacityAnimation->setEndValue(0.0);
    connect(d->opacityAnimation, &QPropertyAnimation::finished, this,
            &HVWidget::hideAnimationFinished);
    d->opacityAnimation->start(QAbstractAnimation::KeepWhenStopped);
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
    const bool fadesOut = d->opacityAnimation->state() != QAbstractAnimation::Stopped
            && qFuzzyIsNull(d->opacityAnimation->endValue().toReal());
    if (!fadesOut)
        return;
    disconnect(d->opacityAnimation, &QPropertyAnimation::finished, this,
               &HVWidget::hideAnimationFinished);
    d->opacityAnimation->stop();
    setWindowOpacity(1.0);
    if (!d->pinned)
        watchHover();
    checkMousePosition(QCursor::pos());
}

void HVWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!isSafe(QCursor::pos()))
        setTimer();
    reposition();
}

void HVWidget::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    disconnect(d->opacityAnimation, &QPropertyAnimation::finished, this,
               &HVWidget::hideAnimationFinished);
    // Fades and countdowns of this show must not affect the next one.
    d->opacityAnimation->stop();
    d->hideTimer->stop();
    unwatchHover();
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
    d->expansion->setMouseIsNear(isNear);
    if (isNear)
        d->hideTimer->stop();
    else if (!d->hideTimer->isActive())
        setTimer();
}

bool HVWidget::isOverControl(const QPoint &pos) const
{
    if (!d->referenceWidget || QApplication::widgetAt(pos) != d->referenceWidget)
        return false;
    if (!d->hover || !d->services)
        return true;
    const HVControlPart::Id part = controlPartAt(*d->referenceWidget, pos).id;
    if (part == d->hover->part)
        return true;
    if (d->hover->askedPart != part) {
        const QPointer<const HVWidget> self(this);
        d->hover->askedPart = part; // first: the host may run an event loop
        d->hover->isSameControl = false;
        const QString key = d->services->keyFor(d->referenceWidget);
        if (!self || !d->hover)
            return false;
        if (d->hover->askedPart == part)
            d->hover->isSameControl = key == d->hover->key;
    }
    return d->hover->isSameControl;
}

bool HVWidget::isSafe(const QPoint &pos) const
{
    const QPointer<const HVWidget> self(this);
    if (isOverControl(pos) || !self)
        return true;
    if (d->path->isBetween(pos))
        return true;
    const QSize margin = d->setting(HVKeySafeMargin).toSize();
    return QRect(mapToGlobal(QPoint(0, 0)), frameGeometry().size())
            .adjusted(-margin.width(), -margin.height(), margin.width(), margin.height())
            .contains(pos);
}

QRect HVWidget::findVisibleGeometry(QRect geometry, bool *move) const
{
    // A pinned popup is where the user has put it.
    const QWidget *place = d->pinned ? this : d->referenceWidget.data();
    const QRect area = place ? availableAreaFor(*place) : areaWithoutControl();
    return shiftedInto(geometry, area.isNull() ? geometry : area, move);
}

void HVWidget::reposition()
{
    QWidget *own = ownWindow();
    // Without room for it beside the control, a popup leaves the screen rather than cover the
    // cursor.
    if (!own || (d->beside && own->pos() == d->placed))
        return;
    bool shifted = false;
    const QRect geometry = findVisibleGeometry(own->frameGeometry(), &shifted);
    if (shifted)
        own->move(geometry.topLeft());
}

/// The window that the popup may move, resize and close; null if it is docked in another window.
QWidget *HVWidget::ownWindow() const
{
    if (isWindow())
        return const_cast<HVWidget *>(this);
    return parentWidget()->isWindow() ? parentWidget() : nullptr;
}

void HVWidget::contentResized()
{
    if (!d->view || d->isChanging)
        return;
    const QWidget *own = ownWindow();
    const bool isPlaced = own && d->wanted && own->pos() == d->placed;
    fitToView(isPlaced ? Place::WantedButTheRim : Place::Nearest);
}

/// Takes the size of the view and, unless docked, a place on the screen for that size.
void HVWidget::fitToView(Place place)
{
    const QSize size = d->view->size();
    QWidget *own = ownWindow();
    if (own != this)
        setFixedSize(size + Rim);
    if (!own)
        return;
    QSize ownSize = size;
    if (own != this) {
        const QMargins margins = own->layout() ? own->layout()->contentsMargins() : QMargins();
        ownSize = size.grownBy(margins);
    }
    if (place == Place::Nearest) {
        own->setFixedSize(ownSize + Rim);
        moveOntoScreen(*own, ownSize);
        return;
    }
    if (place == Place::WantedButTheRim && own->size() == ownSize + Rim)
        return;
    // A window that was never shown has a frame smaller than itself on Qt 5.
    const QSize margins = (own->frameGeometry().size() - own->size()).expandedTo({ 0, 0 });
    const QSize visible = place == Place::Wanted ? ownSize + Rim + margins : ownSize;
    d->placed = d->beside ? d->beside->cornerFor(ownSize + Rim + margins)
                          : findVisibleGeometry(QRect(*d->wanted, visible)).topLeft();
    setFixedGeometry(*own, QRect(d->placed, ownSize + Rim));
}

void HVWidget::moveOntoScreen(QWidget &own, const QSize &size)
{
    const QRect client = own.geometry();
    const QRect frame = own.frameGeometry();
    bool shifted = false;
    const QRect visible = findVisibleGeometry(QRect(frame.topLeft(), size), &shifted);
    if (shifted)
        own.move(visible.left(), visible.top() - (client.top() - frame.top()));
}

void HVWidget::contentReservedChanged()
{
    QWidget *container = nullptr;
    if (!d->view || !d->view->reserved() || !d->services
        || !d->services->reservePopup(this, container))
        return;
    d->opacityAnimation->stop();
    setWindowOpacity(1.0);
    d->pinned = true;
    d->control->watch(nullptr);
    unwatchHover();
    d->wanted.reset();
    d->beside.reset();
    d->hover.reset();
    d->hideTimer->stop();
    setAttribute(Qt::WA_DeleteOnClose, !container); // it may be closed before it moves
    // Moving a view to another window may rebuild its scene. That must not delete the item whose
    // handler is pinning the popup.
    const auto move = [this, position = pos(), target = QPointer<QWidget>(container)] {
        if (target)
            return dockPopup(*this, *target, position);
        setAttribute(Qt::WA_DeleteOnClose); // also if the host's window was destroyed meanwhile
        makeToolWindow(*this, position);
    };
    if (d->view->isReservedByQml())
        QMetaObject::invokeMethod(this, move, Qt::QueuedConnection);
    else
        move();
}

/// Makes hovletView.close() close the window around the view. Closing only the view would leave an
/// empty frame.
bool HVWidget::eventFilter(QObject *object, QEvent *event)
{
    // Compares the type first, because a view that is being deleted is no longer an HVView.
    if (event->type() != QEvent::Close || object != d->view)
        return QWidget::eventFilter(object, event);
    event->ignore();
    QWidget *own = ownWindow();
    (own ? own : this)->close();
    return true;
}

} // namespace Hovlets
