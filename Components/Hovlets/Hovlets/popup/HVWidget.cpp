// SPDX-License-Identifier: Apache-2.0
#include "HVWidgetPrivate.h"

#include "HVPaintNow.h"
#include "HVPinning.h"
#include "HVShowScope.h"
#include "HVViewWindow.h"

#include <QtCore/QEvent>
#include <QtCore/QtMath>
#include <QtGui/QCursor>
#include <QtGui/QPaintEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QToolTip>

namespace Hovlets {

namespace {

/// A user interface with square corners draws its own outline.
HVFrameLook lookOf(const HVView &view)
{
    const qreal radius = view.cornerRadius();
    return radius > 0 ? HVFrameLook { radius, view.fillColor(), view.rimColor(), {} }
                      : HVFrameLook();
}

} // namespace

HVWidget::HVWidget(HVManager *manager, QWidget *parent, QWidget *referenceWidget)
    : QWidget(parent)
    , d(std::make_unique<Private>(*this, popupServicesOf(manager), referenceWidget))
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    if (!d->setting(HVKeyPopupIsWindow).toBool())
        setWindowFlags(Qt::ToolTip);
    if (d->setting(HVKeySurface).toBool() && windowType() == Qt::ToolTip)
        d->surface->enable();
    connect(d->fade, &HVPopupFade::opacityChanged, d->surface, &HVSurface::updateOpacity);
    connect(d->fade, &HVPopupFade::fadedOut, this, &HVWidget::hideAnimationFinished);
    connect(d->hideTimer, &QTimer::timeout, this, &HVWidget::hideAnimated);
    connect(d->hovered, &HVHoveredControl::ended, this, &HVWidget::hide);
    connect(d->hovered, &HVHoveredControl::pointerIsAt, this, &HVWidget::checkMousePosition);
    connect(d->hovered, &HVHoveredControl::disabledReasonChanged, this, [this] {
        if (d->view)
            d->view->setDisabledReason(d->hovered->disabledReason());
    });
    connect(d->hovered, &HVHoveredControl::expansionDue, this, &HVWidget::expand);
    connect(d->levelKeyWatch, &HVLevelKeyWatch::pressed, this, &HVWidget::showNextLevel);
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
    connect(view, &HVView::lookChanged, this, &HVWidget::takeLook);
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
    const QPointer<HVWidget> self(this);
    const bool isWidget = reference && reference->isWidgetType();
    d->levelKey = readLevelKey();
    if (!turnTo(isWidget ? static_cast<QWidget *>(reference) : nullptr) || !load(content, rootPath))
        return;
    if (d->pinned)
        return showAnimated(); // its QML has pinned it meanwhile
    if (!place(pos))
        return;
    paintNow(*this); // the next turn of the event loop would show the old content in the new place
    if (!self || d->retired || !d->view || d->view->content() != content)
        return;
    if (d->pinned)
        return showAnimated();
    // A countdown that started meanwhile must not hide the popup of this control.
    if (isVisible() && isSafe(QCursor::pos())) // no hover is set, so the host is not asked
        d->hideTimer->stop();
    startWatching();
    showAnimated();
}

void HVWidget::prepare(HVXmlElement *content, const QString &rootPath)
{
    const HVShowScope showing;
    if (!d->view || isVisible())
        return;
    d->levelKey = readLevelKey();
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
    d->surface->refresh();
    d->view->setSurface(d->surface->isRounded(), d->surface->isFramed());
    if (!self || !d->view)
        return false; // the user interface has responded
    d->view->setDisabledReason(d->hovered->disabledReason());
    if (self && d->view)
        d->view->viewWindow().setLevelKey(d->levelKey.name());
    if (!self || !d->view)
        return false;
    d->view->showContent(content, rootPath);
    if (!self)
        return false;
    d->isChanging = false;
    takeLook();
    return !d->retired && d->view && d->view->content() == content;
}

/// Draws what surrounds the view in the colours of its user interface.
void HVWidget::takeLook()
{
    if (!d->view)
        return;
    d->surface->setLook(lookOf(*d->view));
    if (d->isChanging)
        return; // the frame waits for the new size
    d->surface->updateFrame();
    update();
}

void HVWidget::showPinned(const QPoint &position, QWidget *window, HVXmlElement *content,
                          const QString &rootPath)
{
    const HVShowScope showing;
    hide();
    d->hovered->release(window);
    d->geometry.setControl(window);
    d->geometry.leaveToUser();
    d->levelKey = HVLevelKey();
    if (!useScreenAt(position) || !load(content, rootPath))
        return;
    d->geometry.placeAt(position, d->view->size());
    d->view->setReserved(true);
}

void HVWidget::setHover(const QString &key, const QPoint &position)
{
    d->hovered->setKey(key, position);
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

/// Paints the rim beside the view as the user interface requests, or like a tooltip, even if
/// windows have another colour.
void HVWidget::paintEvent(QPaintEvent *event)
{
    if (d->surface->isRounded() && d->view && paintInterior(event->rect()))
        return;
    if (d->surface->isRounded() && d->view && d->view->cornerRadius() > 0)
        return paintRoundedRim();
    d->paintedRadius = 0;
    QColor color = d->view ? d->view->rimColor() : QColor();
    if (!color.isValid())
        color = QToolTip::palette().color(QPalette::Active, QPalette::ToolTipBase);
    QPainter(this).fillRect(event->rect(), color);
}

/// Paints \a area below the view, if it is away from the rim and from the corners. While a clip
/// plays, each frame requires it.
bool HVWidget::paintInterior(const QRect &area)
{
    const int border = qCeil(d->paintedRadius);
    if (border <= 0 || !rect().adjusted(border, border, -border, -border).contains(area))
        return false;
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(area, d->paintedFill);
    return true;
}

/// Continues the rounded rectangle that the user interface draws in the view, whose last pixels are
/// in the rim.
void HVWidget::paintRoundedRim()
{
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(rect(), Qt::transparent);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.setPen(Qt::NoPen);
    const qreal radius = d->view->cornerRadius();
    const QColor fill = d->view->fillColor();
    if (!d->surface->isFramed()) {
        painter.setBrush(d->view->rimColor());
        painter.drawRoundedRect(QRectF(rect()), radius, radius);
    }
    const qreal line = d->surface->isFramed() ? 0 : 1;
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(rect()).adjusted(line, line, -line, -line), radius - line,
                            radius - line);
    d->paintedRadius = fill.alpha() == 255 ? radius : 0; // a translucent one shows the outline
    d->paintedFill = fill;
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
    d->levelKeyWatch->stop();
    d->geometry.leaveToUser();
    d->hideTimer->stop();
    if (!decideOnTitleBar(container))
        return;
    const auto type = d->setting(HVKeyPinnedInTaskbar).toBool() ? Qt::Window : Qt::Tool;
    if (container)
        dockPopup(*this, *container, type);
    else
        makeWindow(*this, type);
}

/// Decides who draws the title bar of a popup that goes into \a container, or, if that is null,
/// becomes a window. Returns false if the user interface, in response, has had the host delete the
/// popup or its view.
bool HVWidget::decideOnTitleBar(const QWidget *container)
{
    const QPointer<HVWidget> self(this);
    const QPointer<HVView> view(d->view);
    using TitleBar = HVViewWindow::TitleBar;
    const bool isWanted = d->setting(HVKeyOwnTitleBar).toBool();
    const bool isOwn = isWanted && !container && view->drawsTitleBar();
    const bool isDesktops = isWanted && !isOwn && (!container || container->isWindow());
    d->surface->leave(!isOwn);
    view->setSurface(d->surface->isRounded(), d->surface->isFramed());
    if (view && !isOwn)
        view->viewWindow().setUserSize({});
    if (view)
        view->viewWindow().setTitleBar(isOwn                ? TitleBar::Own
                                               : isDesktops ? TitleBar::Desktop
                                                            : TitleBar::None);
    if (self && view && isOwn)
        contentResized();
    return self && view;
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
