// SPDX-License-Identifier: Apache-2.0
#include "HVControlPlace.h"

#include "HVStandIn.h"
#include "HVWindowSystem.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>

namespace Hovlets {

namespace {

/// The screen's available area as far as the window of \a control shows where it is.
QRect areaOfWindow(const QWidget &control)
{
    return isInScreenFillingWindow(control) ? control.window()->geometry() : QRect();
}

} // namespace

QScreen *screenFor(const QWidget *control)
{
    if (!control)
        return QGuiApplication::primaryScreen();
    QScreen *const ofWindow = screenShowing(*control);
    if (!ofWindow || !programsPlaceWindows())
        return ofWindow;
    const QPoint center = control->mapToGlobal(control->rect().center());
    QScreen *const atCenter = ofWindow->virtualSiblingAt(center);
    return atCenter ? atCenter : ofWindow;
}

QRect availableAreaFor(const QWidget &control)
{
    if (!programsPlaceWindows())
        return areaOfWindow(control);
    const QScreen *screen = screenFor(&control);
    return screen ? screen->availableGeometry() : QRect();
}

HVControlPlace::HVControlPlace(const QWidget &control)
    : m_control(&control)
    , m_window(control.window())
    , m_origin(control.mapToGlobal(QPoint()))
    , m_windowOrigin(m_window->mapToGlobal(QPoint()))
    , m_area(availableAreaFor(control))
{
}

bool HVControlPlace::isRightFor(const QWidget &control) const
{
    if (!m_window)
        return true;
    if (control.window() != m_window || m_window->mapToGlobal(QPoint()) != m_windowOrigin)
        return false;
    if (&control != m_control)
        return true;
    return control.mapToGlobal(QPoint()) == m_origin && availableAreaFor(control) == m_area;
}

} // namespace Hovlets
