// SPDX-License-Identifier: Apache-2.0
#include "HVFrameRelease.h"

#include "HVVideoComponent.h"
#include "HVVideoController.h"
#include "HVView.h"

#include <QtCore/QEvent>

namespace Hovlets {

HVFrameRelease::HVFrameRelease(HVVideoComponent *item, HVVideoController *controller)
    : QObject(item)
    , m_controller(controller)
{
    m_delay.setSingleShot(true);
    connect(&m_delay, &QTimer::timeout, this, &HVFrameRelease::release);
    connect(item, &QQuickItem::windowChanged, this, &HVFrameRelease::watch);
    watch(item->window());
}

/// The window itself is never on screen; the view that paints it is.
void HVFrameRelease::watch(QQuickWindow *window)
{
    if (m_view)
        m_view->removeEventFilter(this);
    const QList<HVView *> views = HVView::viewsOf(window);
    m_view = views.isEmpty() ? nullptr : views.constFirst();
    if (m_view)
        m_view->installEventFilter(this);
    m_delay.stop();
}

bool HVFrameRelease::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show)
        m_delay.stop();
    else if (event->type() == QEvent::Hide && m_view && m_view->clipReleaseDelay() > 0)
        m_delay.start(m_view->clipReleaseDelay());
    return QObject::eventFilter(watched, event);
}

void HVFrameRelease::release()
{
    if (m_controller && !m_controller->releaseFrames())
        m_delay.start();
}

} // namespace Hovlets
