// SPDX-License-Identifier: Apache-2.0
#include "HVPopupGeometry.h"

#include "HVStandIn.h"
#include "HVVisibleArea.h"
#include "HVWindowSystem.h"

#include <QtCore/QPointer>
#include <QtGui/QGuiApplication>
#include <QtGui/QRegion>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <QtQuick/QQuickWindow>
#include <QtQuickWidgets/QQuickWidget>
#include <QtWidgets/QLayout>
#include <QtWidgets/QWidget>

#include <utility>

namespace Hovlets {

namespace {

// Deliberate: user interfaces rely on it to show their last border line.
constexpr QSize Rim(1, 1);

/// The available area of the primary screen; null if it is unknown.
QRect areaWithoutControl()
{
    if (!programsPlaceWindows())
        return {};
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->availableGeometry() : QRect();
}

/// What the frame adds to the size of \a window.
QSize frameMargins(const QWidget &window)
{
    // A window that was never shown has a frame smaller than itself on Qt 5.
    return (window.frameGeometry().size() - window.size()).expandedTo({ 0, 0 });
}

/*!
 * \brief Makes an X server forget the picture in a window that moves.
 *
 * The server moves a window with its picture, so the old content would be visible in the new place
 * until the next frame is drawn. A window without a shape has no picture to move. Nothing is drawn
 * over the new place before that frame.
 */
class WithoutPicture
{
    Q_DISABLE_COPY_MOVE(WithoutPicture)

public:
    explicit WithoutPicture(QWindow *window)
        : m_window(QGuiApplication::platformName() == QLatin1String("xcb") ? window : nullptr)
    {
        if (m_window)
            m_window->setMask(QRect(-1, -1, 1, 1)); // outside; an empty region means no mask
    }

    ~WithoutPicture()
    {
        if (m_window)
            m_window->setMask(QRegion());
    }

private:
    QPointer<QWindow> m_window;
};

/// Moves and resizes \a window, in one step where it can be seen. Without \a keepsPicture, it shows
/// nothing until it is painted.
void setFixedGeometry(QWidget &window, const QRect &geometry, bool keepsPicture)
{
    if (window.isVisible() && window.frameGeometry() == window.geometry()) {
        window.setMinimumSize(0, 0);
        window.setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
        const bool moves = window.pos() != geometry.topLeft();
        // Content that grows upwards would otherwise appear further up before it is painted.
        if (moves && keepsPicture && window.windowHandle())
            keepPictureInPlace(*window.windowHandle());
        const WithoutPicture moving(moves && !keepsPicture ? window.windowHandle() : nullptr);
        window.setGeometry(geometry);
    }
    window.setFixedSize(geometry.size());
    window.move(geometry.topLeft());
}

} // namespace

HVPopupGeometry::HVPopupGeometry(QWidget &popup)
    : m_popup(popup)
{
}

QWidget *HVPopupGeometry::window() const
{
    if (m_popup.isWindow())
        return &m_popup;
    QWidget *container = m_popup.parentWidget();
    return container->isWindow() ? container : nullptr;
}

void HVPopupGeometry::setControl(const QWidget *control)
{
    m_control = control;
}

void HVPopupGeometry::request(const QPoint &position, std::optional<HVBesideControl> beside)
{
    m_isLeftToUser = false;
    m_requested = position;
    m_beside = std::move(beside);
    m_controlPlace = m_control ? HVControlPlace(*m_control) : HVControlPlace();
}

void HVPopupGeometry::leaveToUser()
{
    m_isLeftToUser = true;
    m_requested.reset();
    m_beside.reset();
}

void HVPopupGeometry::useScreen(const QQuickWidget &view, std::optional<QPoint> position) const
{
    QScreen *const screen = position ? screenAt(*position) : screenFor(m_control);
    view.quickWindow()->setScreen(screen);
}

void HVPopupGeometry::attach()
{
    QWindow *own = m_popup.isWindow() ? m_popup.windowHandle() : nullptr;
    if (!own)
        return;
    own->setTransientParent(m_control ? windowShowing(*m_control) : nullptr);
    own->setScreen(screenFor(m_control));
}

bool HVPopupGeometry::isAppearingAgain() const
{
    return m_isAppearingAgain;
}

void HVPopupGeometry::stopAppearingAgain()
{
    m_isAppearingAgain = false;
}

void HVPopupGeometry::setVisible(bool visible)
{
    if (m_isShowing) {
        m_hidesWhenShown = !visible;
        return;
    }
    const QPointer<QWidget> popup(&m_popup);
    m_isShowing = visible;
    popup->QWidget::setVisible(visible);
    if (!popup)
        return;
    m_isShowing = false;
    if (std::exchange(m_hidesWhenShown, false))
        popup->QWidget::setVisible(false);
}

bool HVPopupGeometry::isRightFor(const QWidget *control) const
{
    return !control || m_controlPlace.isRightFor(*control);
}

void HVPopupGeometry::place(const QSize &view)
{
    QWidget *const window = this->window();
    takeSize(window, view);
    if (!window)
        return;
    const QSize size = sizeOf(*window, view);
    moveToPlace(*window, size, size + frameMargins(*window), Picture::IsOld);
}

void HVPopupGeometry::placeAt(const QPoint &position, const QSize &view)
{
    m_popup.setFixedSize(view + Rim);
    if (!programsPlaceWindows())
        return;
    const QScreen *screen = screenAt(position);
    const QRect geometry(position, m_popup.size());
    m_popup.move(screen ? shiftedInto(geometry, screen->availableGeometry()).topLeft() : position);
}

void HVPopupGeometry::resize(const QSize &view)
{
    QWidget *const window = this->window();
    takeSize(window, view);
    if (!window)
        return;
    const QSize size = sizeOf(*window, view);
    if (m_requested && window->pos() == m_placed) {
        if (window->size() != size)
            moveToPlace(*window, size, size - Rim, Picture::Stays);
        return;
    }
    window->setFixedSize(size);
    const QRect client = window->geometry();
    const QRect frame = window->frameGeometry();
    bool shifted = false;
    const QRect geometry = visible(QRect(frame.topLeft(), size - Rim), &shifted);
    if (shifted)
        window->move(geometry.left(), geometry.top() - (client.top() - frame.top()));
}

void HVPopupGeometry::moveOntoScreen()
{
    QWidget *const window = this->window();
    // Without room for it beside the control, a popup leaves the screen rather than cover the
    // cursor.
    if (!window || (m_beside && window->pos() == m_placed))
        return;
    bool shifted = false;
    const QRect geometry = visible(window->frameGeometry(), &shifted);
    if (shifted)
        window->move(geometry.topLeft());
}

QRect HVPopupGeometry::visible(const QRect &geometry, bool *shifted) const
{
    const QWidget *const place = m_isLeftToUser ? &m_popup : m_control.data();
    const QRect area = place ? availableAreaFor(*place) : areaWithoutControl();
    return shiftedInto(geometry, area.isNull() ? geometry : area, shifted);
}

std::optional<HVArrow> HVPopupGeometry::arrow(int corner) const
{
    const QWidget *const window = this->window();
    if (!m_beside || !window || window->pos() != m_placed)
        return std::nullopt;
    return m_beside->arrow(corner);
}

/// The screen at \a position, or that of the control if there is none.
QScreen *HVPopupGeometry::screenAt(const QPoint &position) const
{
    QScreen *const screen = QGuiApplication::screenAt(position);
    return screen ? screen : screenFor(m_control);
}

/// Resizes a docked popup. Another one is the window, which is resized when it moves.
void HVPopupGeometry::takeSize(QWidget *window, const QSize &view)
{
    if (window != &m_popup)
        m_popup.setFixedSize(view + Rim);
}

/// The size of \a window around a view of size \a view.
QSize HVPopupGeometry::sizeOf(const QWidget &window, const QSize &view) const
{
    const bool hasMargins = &window != &m_popup && window.layout();
    return view.grownBy(hasMargins ? window.layout()->contentsMargins() : QMargins()) + Rim;
}

/// Moves \a window to the requested place, where \a visibleSize of it is on the screen.
void HVPopupGeometry::moveToPlace(QWidget &window, const QSize &size, const QSize &visibleSize,
                                  Picture picture)
{
    m_placed = m_beside ? m_beside->cornerFor(size + frameMargins(window))
                        : visible(QRect(m_requested.value_or(m_placed), visibleSize)).topLeft();
    const QRect geometry(m_placed, size);
    if (mustAppearAgain(window, geometry))
        appearAt(geometry);
    else
        setFixedGeometry(window, geometry, picture == Picture::Stays);
}

/// Whether the window system would leave a popup in the place that it got for its old size and
/// position.
bool HVPopupGeometry::mustAppearAgain(const QWidget &window, const QRect &geometry) const
{
    if (programsPlaceWindows() || window.windowType() != Qt::ToolTip || !window.isVisible())
        return false;
    const bool grows = window.size().expandedTo(geometry.size()) != window.size();
    return grows || window.pos() != geometry.topLeft();
}

/// Does not call the popup's own setVisible(): with that, others keep the popup from appearing
/// again.
void HVPopupGeometry::appearAt(const QRect &geometry)
{
    const QPointer<QWidget> popup(&m_popup); // hiding and showing run code of the host
    m_isAppearingAgain = true;
    popup->QWidget::setVisible(false);
    if (!popup || !m_isAppearingAgain)
        return;
    setFixedGeometry(*popup, geometry, false);
    attach();
    setVisible(true);
    if (popup)
        m_isAppearingAgain = false;
}

} // namespace Hovlets
