// SPDX-License-Identifier: Apache-2.0
#include "HVFrameWindow.h"

#include "HVWindowSystem.h"

#include <QtGui/QPainter>
#include <QtGui/QSurfaceFormat>

namespace Hovlets {

HVFrameWindow::HVFrameWindow()
    : m_store(this)
{
    // On X11, tooltips get the second and third flag anyway. Without them here, Qt would make a new
    // native window at the first show, which takes input.
    setFlags(Qt::ToolTip | Qt::WindowStaysOnTopHint | Qt::X11BypassWindowManagerHint
             | Qt::FramelessWindowHint | Qt::WindowTransparentForInput
             | Qt::WindowDoesNotAcceptFocus | Qt::NoDropShadowWindowHint);
    QSurfaceFormat format = requestedFormat();
    format.setAlphaBufferSize(8);
    setFormat(format);
}

void HVFrameWindow::surround(const QRect &popup, const HVFrameLook &look)
{
    const QRect geometry = popup.adjusted(-FrameMargin, -FrameMargin, FrameMargin, FrameMargin);
    if (m_isPainted && geometry.size() == size() && look == m_look) {
        setPosition(geometry.topLeft());
        return;
    }
    m_popup = popup.size();
    m_look = look;
    setGeometry(geometry);
    if (isExposed())
        paint();
}

void HVFrameWindow::setHeld(bool isHeld)
{
    m_isHeld = isHeld;
    if (isExposed())
        flush();
}

bool HVFrameWindow::appear()
{
    if (isVisible())
        return true;
    // A window that took input for a moment would take the pointer from the control below it.
    create();
    if (!passInputThrough(*this))
        return false;
    keepPictureInPlace(*this);
    show();
    raise();
    return true;
}

void HVFrameWindow::exposeEvent(QExposeEvent *event)
{
    Q_UNUSED(event)
    if (isExposed())
        paint();
}

void HVFrameWindow::paint()
{
    const QRect all({}, size());
    m_store.resize(all.size());
    m_store.beginPaint(all);
    {
        QPainter painter(m_store.paintDevice());
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(all, Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        const qreal scale = painter.device()->devicePixelRatioF();
        painter.scale(1 / scale, 1 / scale);
        const auto scaled = [scale](int length) { return qRound(length * scale); };
        const QRect popup(scaled(FrameMargin), scaled(FrameMargin), scaled(m_popup.width()),
                          scaled(m_popup.height()));
        paintFrame(painter, popup, m_look, scale);
    }
    m_store.endPaint();
    m_isPainted = true;
    m_isFlushed = false;
    flush();
}

void HVFrameWindow::flush()
{
    if (m_isHeld || m_isFlushed)
        return;
    m_isFlushed = true;
    m_store.flush(QRect({}, size()));
}

} // namespace Hovlets
