// SPDX-License-Identifier: Apache-2.0
#include "HVScrollBarComponent.h"

#include "HVQtCompat.h"

#include <QtGui/QHoverEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QScrollBar>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double Scale = 100.0;

/// Truncates. QML may assign anything: values out of range are clamped, and NaN becomes 0.
int hundredths(float value)
{
    using Limits = std::numeric_limits<int>;
    const double scaled = value * Scale;
    if (std::isnan(scaled))
        return 0;
    return static_cast<int>(std::clamp<double>(scaled, Limits::min(), Limits::max()));
}

float fromHundredths(int value)
{
    return static_cast<float>(value / Scale);
}

} // namespace

HVScrollBarComponent::HVScrollBarComponent(QQuickItem *parent)
    : QQuickPaintedItem(parent)
    , m_scrollBar(std::make_unique<QScrollBar>())
{
    m_scrollBar->setAttribute(Qt::WA_DontShowOnScreen);
    // Showing an ordinary window closes the menu or list that is open. Showing a tooltip does not.
    m_scrollBar->setWindowFlag(Qt::ToolTip);
    m_scrollBar->setAttribute(Qt::WA_QuitOnClose, false); // it must not keep the host running
    m_scrollBar->setAttribute(Qt::WA_Hover);
    m_scrollBar->installEventFilter(this);
    setAcceptedMouseButtons(Qt::LeftButton | Qt::MiddleButton);
    setAcceptHoverEvents(true);
    connect(m_scrollBar.get(), &QScrollBar::valueChanged, this,
            &HVScrollBarComponent::scrollBarPositionChanged);
    connect(m_scrollBar.get(), &QScrollBar::valueChanged, this, [this] { update(); });
    connect(m_scrollBar.get(), &QScrollBar::rangeChanged, this, [this] { update(); });
    m_scrollBar->show();
}

HVScrollBarComponent::~HVScrollBarComponent() = default;

float HVScrollBarComponent::start() const
{
    return fromHundredths(m_scrollBar->minimum());
}

void HVScrollBarComponent::setStart(float value)
{
    m_scrollBar->setMinimum(hundredths(value));
    Q_EMIT startChanged();
}

float HVScrollBarComponent::end() const
{
    return fromHundredths(m_scrollBar->maximum());
}

void HVScrollBarComponent::setEnd(float value)
{
    m_scrollBar->setMaximum(hundredths(value));
    Q_EMIT endChanged();
}

float HVScrollBarComponent::position() const
{
    return fromHundredths(m_scrollBar->value());
}

void HVScrollBarComponent::setPosition(float value)
{
    setPositionExternal(value);
    Q_EMIT positionChanged();
}

void HVScrollBarComponent::setPositionExternal(float value)
{
    m_scrollBar->setValue(hundredths(value));
}

bool HVScrollBarComponent::orientHorizontal() const
{
    return m_scrollBar->orientation() == Qt::Horizontal;
}

void HVScrollBarComponent::setOrientHorizontal(bool horizontal)
{
    m_scrollBar->setOrientation(horizontal ? Qt::Horizontal : Qt::Vertical);
    Q_EMIT orientHorizontalChanged();
    update();
}

float HVScrollBarComponent::scrollBarWidth() const
{
    return static_cast<float>(orientHorizontal() ? m_scrollBar->height() : m_scrollBar->width());
}

float HVScrollBarComponent::pageStep() const
{
    return fromHundredths(m_scrollBar->pageStep());
}

void HVScrollBarComponent::setPageStep(float value)
{
    m_scrollBar->setPageStep(hundredths(value));
    Q_EMIT pageStepChanged();
}

float HVScrollBarComponent::singleStep() const
{
    return fromHundredths(m_scrollBar->singleStep());
}

void HVScrollBarComponent::setSingleStep(float value)
{
    m_scrollBar->setSingleStep(hundredths(value));
    Q_EMIT singleStepChanged();
}

void HVScrollBarComponent::updateDimensions()
{
    m_scrollBar->setFixedSize(static_cast<int>(width()), static_cast<int>(height()));
    update();
}

void HVScrollBarComponent::scrollBarPositionChanged(int value)
{
    Q_UNUSED(value)
    Q_EMIT positionChanged();
}

void HVScrollBarComponent::paint(QPainter *painter)
{
    m_scrollBar->render(painter, QPoint(), QRegion(),
                        QWidget::DrawWindowBackground | QWidget::DrawChildren);
}

void HVScrollBarComponent::itemChange(ItemChange change, const ItemChangeData &value)
{
    if (m_scrollBar && change == ItemVisibleHasChanged)
        m_scrollBar->setVisible(value.boolValue);
    if (m_scrollBar && change == ItemOpacityHasChanged)
        m_scrollBar->setWindowOpacity(value.realValue);
    QQuickPaintedItem::itemChange(change, value);
}

bool HVScrollBarComponent::eventFilter(QObject *object, QEvent *event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::StyleChange || type == QEvent::PaletteChange
        || type == QEvent::UpdateRequest)
        update();
    return QQuickPaintedItem::eventFilter(object, event);
}

/// Delivers the event directly. If it went through the application, it would count as a click
/// outside the popup, because the scroll bar is not a child of it.
void HVScrollBarComponent::hand(QEvent &event)
{
    m_scrollBar->event(&event);
    update();
}

void HVScrollBarComponent::handMouse(const QMouseEvent &event)
{
    QMouseEvent handed = Hovlets::mouseEventLike(event);
    hand(handed);
}

void HVScrollBarComponent::mousePressEvent(QMouseEvent *event)
{
    setKeepMouseGrab(true); // a list around the item must not take over the drag
    handMouse(*event);
}

void HVScrollBarComponent::mouseMoveEvent(QMouseEvent *event)
{
    handMouse(*event);
}

void HVScrollBarComponent::mouseReleaseEvent(QMouseEvent *event)
{
    setKeepMouseGrab(false);
    handMouse(*event);
}

/// If the popup hides while a button is pressed, no release follows, and the bar would continue to
/// scroll. A second release has no effect.
void HVScrollBarComponent::mouseUngrabEvent()
{
    setKeepMouseGrab(false);
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), QPointF(), QPointF(), Qt::LeftButton,
                        Qt::NoButton, Qt::NoModifier);
    hand(release);
}

void HVScrollBarComponent::wheelEvent(QWheelEvent *event)
{
    QWheelEvent handed(event->position(), event->globalPosition(), event->pixelDelta(),
                       event->angleDelta(), event->buttons(), event->modifiers(), event->phase(),
                       event->inverted());
    hand(handed);
    event->setAccepted(handed.isAccepted());
}

void HVScrollBarComponent::hoverEnterEvent(QHoverEvent *event)
{
    m_scrollBar->setAttribute(Qt::WA_UnderMouse); // styles use it to paint the hovered state
    QHoverEvent handed = Hovlets::hoverEventLike(QEvent::HoverEnter, *event);
    hand(handed);
}

void HVScrollBarComponent::hoverMoveEvent(QHoverEvent *event)
{
    QHoverEvent handed = Hovlets::hoverEventLike(QEvent::HoverMove, *event);
    hand(handed);
}

void HVScrollBarComponent::hoverLeaveEvent(QHoverEvent *event)
{
    m_scrollBar->setAttribute(Qt::WA_UnderMouse, false);
    QHoverEvent handed = Hovlets::hoverEventLike(QEvent::HoverLeave, *event);
    hand(handed);
}
