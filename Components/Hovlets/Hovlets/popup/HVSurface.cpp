// SPDX-License-Identifier: Apache-2.0
#include "HVSurface.h"

#include "HVFrameWindow.h"
#include "HVPopupGeometry.h"
#include "HVWindowSystem.h"

#include <QtCore/QEvent>
#include <QtGui/QWindow>
#include <QtWidgets/QApplication>

namespace Hovlets {

namespace {

bool endIsArranged = false; // with the current application

/// A host may keep popups beyond the application, but no window can be deleted then.
void deleteFrames()
{
    endIsArranged = false;
    const QWidgetList widgets = QApplication::allWidgets();
    for (const QWidget *widget : widgets) {
        if (auto *surface = widget->findChild<HVSurface *>({}, Qt::FindDirectChildrenOnly))
            surface->deleteFrame();
    }
}

void deleteFramesAtEnd()
{
    if (!endIsArranged)
        qAddPostRoutine(&deleteFrames);
    endIsArranged = true;
}

} // namespace

HVSurface::HVSurface(QWidget &popup, const HVPopupGeometry &geometry)
    : QObject(&popup)
    , m_popup(popup)
    , m_geometry(geometry)
{
}

HVSurface::~HVSurface() = default;

void HVSurface::enable()
{
    m_isEnabled = true;
    m_popup.setAttribute(Qt::WA_TranslucentBackground);
    m_popup.installEventFilter(this);
}

void HVSurface::refresh()
{
    m_isRounded = m_isEnabled && m_popup.isWindow() && windowsAreBlended();
    m_isFramed =
            m_isRounded && !m_isPinned && programsPlaceWindows() && windowsCanPassInputThrough();
    if (!m_isFramed && m_frame)
        m_frame->hide();
}

bool HVSurface::isRounded() const
{
    return m_isRounded;
}

bool HVSurface::isFramed() const
{
    return m_isFramed;
}

void HVSurface::setLook(const HVFrameLook &look)
{
    m_look = look;
}

void HVSurface::updateFrame()
{
    if (m_isFramed && m_popup.isVisible())
        follow();
}

void HVSurface::leave(bool isPlain)
{
    m_isPinned = true;
    if (isPlain) {
        m_isEnabled = false;
        m_popup.setAttribute(Qt::WA_TranslucentBackground, false);
        m_popup.setAttribute(Qt::WA_NoSystemBackground, false);
    }
    refresh();
    m_frame.reset();
}

void HVSurface::deleteFrame()
{
    m_isFramed = false;
    m_frame.reset();
}

void HVSurface::raise()
{
    if (m_frame && m_frame->isVisible())
        m_frame->raise();
    m_popup.raise();
}

void HVSurface::setHeld(bool isHeld)
{
    if (m_frame)
        m_frame->setHeld(isHeld);
}

void HVSurface::updateOpacity()
{
    if (m_frame)
        m_frame->setOpacity(m_popup.windowOpacity());
}

bool HVSurface::eventFilter(QObject *object, QEvent *event)
{
    if (object != &m_popup)
        return false;
    switch (event->type()) {
    case QEvent::Show: // the popup is raised once it shows
        if (m_isFramed)
            follow();
        break;
    case QEvent::Move:
    case QEvent::Resize:
        if (m_isFramed && m_popup.isVisible())
            follow();
        break;
    case QEvent::Hide:
        if (m_frame)
            m_frame->hide();
        break;
    default:
        break;
    }
    return false;
}

/// Puts the frame around the popup, and shows it.
void HVSurface::follow()
{
    if (!m_frame) {
        m_frame = std::make_unique<HVFrameWindow>();
        deleteFramesAtEnd();
    }
    HVFrameLook look = m_look;
    if (look.fill.isValid())
        look.arrow = m_geometry.arrow(qRound(look.radius));
    m_frame->setTransientParent(m_popup.windowHandle());
    if (m_popup.windowHandle())
        m_frame->setScreen(m_popup.windowHandle()->screen()); // whose scale is that of the geometry
    m_frame->surround(m_popup.geometry(), look);
    updateOpacity();
    m_isFramed = m_frame->appear();
}

} // namespace Hovlets
