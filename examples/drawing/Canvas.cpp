// SPDX-License-Identifier: Apache-2.0
#include "Canvas.h"

#include "Document.h"
#include "FloodFill.h"

#include <QtGui/QMouseEvent>
#include <QtGui/QPainter>

#include <cmath>
#include <cstdlib>
#include <utility>

namespace {

constexpr qreal SmallestZoom = 0.25;
constexpr qreal LargestZoom = 8.0;
constexpr qreal WheelZoom = 1.25;

/// The end point that makes a shape from \a from as high as it is wide.
QPoint regularEnd(const QPoint &from, const QPoint &to)
{
    const QPoint span = to - from;
    const int side = qMax(std::abs(span.x()), std::abs(span.y()));
    return from + QPoint(span.x() < 0 ? -side : side, span.y() < 0 ? -side : side);
}

/// The end point that gives a line from \a from an angle in multiples of 45 degrees.
QPoint straightEnd(const QPoint &from, const QPoint &to)
{
    const QPoint span = to - from;
    if (std::abs(span.x()) > 2 * std::abs(span.y()))
        return { to.x(), from.y() };
    if (std::abs(span.y()) > 2 * std::abs(span.x()))
        return { from.x(), to.y() };
    return regularEnd(from, to);
}

} // namespace

Canvas::Canvas(Document *document, QWidget *parent)
    : QWidget(parent)
    , m_document(document)
{
    setObjectName(QStringLiteral("canvas"));
    setMouseTracking(true);
    setCursor(Qt::CrossCursor);
    connect(document, &Document::painted, this, &Canvas::documentChanged);
    documentChanged();
}

void Canvas::setTool(Tool tool, const QString &name)
{
    m_tool = tool;
    m_toolName = name;
}

void Canvas::setColor(const QColor &color)
{
    m_color = color;
}

void Canvas::setZoom(qreal zoom)
{
    const qreal bounded = qBound(SmallestZoom, zoom, LargestZoom);
    if (qFuzzyCompare(bounded, m_zoom))
        return;
    m_zoom = bounded;
    documentChanged();
    Q_EMIT zoomChanged(m_zoom);
}

QSize Canvas::sizeHint() const
{
    return (QSizeF(m_document->size()) * m_zoom).toSize();
}

void Canvas::documentChanged()
{
    setFixedSize(sizeHint());
    update();
}

QRect Canvas::lastDrawn() const
{
    const QRectF drawn(QPointF(m_drawn.topLeft()) * m_zoom, QSizeF(m_drawn.size()) * m_zoom);
    const QRect visible = drawn.toAlignedRect() & visibleRegion().boundingRect();
    return { mapToGlobal(visible.topLeft()), visible.size() };
}

QPoint Canvas::toDrawing(const QPoint &position) const
{
    return { int(std::floor(position.x() / m_zoom)), int(std::floor(position.y() / m_zoom)) };
}

void Canvas::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    // The pattern shows through where the drawing is transparent.
    painter.fillRect(rect(), Qt::white);
    painter.fillRect(rect(), QBrush(Qt::lightGray, Qt::Dense6Pattern));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_zoom < 1.0);
    painter.scale(m_zoom, m_zoom);
    m_document->paint(painter);
}

void Canvas::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint position = toDrawing(event->pos());
    if (m_tool == Tool::Fill) {
        fillAt(position);
        return;
    }
    m_drawing = true;
    m_from = position;
    m_drawn = {};
    m_stroke = m_document->currentLayer().image;
    extendStroke(position, event->modifiers() & Qt::ShiftModifier);
}

void Canvas::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = toDrawing(event->pos());
    if (m_drawing)
        extendStroke(position, event->modifiers() & Qt::ShiftModifier);
    Q_EMIT hovered(position);
}

void Canvas::mouseReleaseEvent(QMouseEvent *event)
{
    if (!m_drawing || event->button() != Qt::LeftButton)
        return;
    m_drawing = false;
    const QImage result = std::exchange(m_stroke, QImage());
    m_document->setImage(result, m_toolName);
}

void Canvas::wheelEvent(QWheelEvent *event)
{
    if (!(event->modifiers() & Qt::ControlModifier)) {
        event->ignore(); // scrolls
        return;
    }
    setZoom(event->angleDelta().y() > 0 ? m_zoom * WheelZoom : m_zoom / WheelZoom);
}

void Canvas::fillAt(const QPoint &position)
{
    QImage image = m_document->currentLayer().image;
    if (floodFill(image, position, m_color))
        m_document->setImage(image, m_toolName);
}

/// Extends a free stroke; redraws a shape from the point where the drag began.
void Canvas::extendStroke(const QPoint &to, bool regular)
{
    const bool free = m_tool == Tool::Pen || m_tool == Tool::Eraser;
    if (!free)
        m_stroke = m_document->currentLayer().image;
    const int margin = m_penWidth;
    const QRect piece = QRect(m_from, to).normalized().adjusted(-margin, -margin, margin, margin);
    m_drawn = free ? m_drawn | piece : piece;

    QPainter painter(&m_stroke);
    painter.setRenderHint(QPainter::Antialiasing, m_tool != Tool::Rectangle);
    QPen pen(m_color, m_penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
    if (m_tool == Tool::Eraser) {
        pen.setColor(Qt::white);
        if (m_document->current() > 0)
            painter.setCompositionMode(QPainter::CompositionMode_Clear);
    }
    painter.setPen(pen);
    switch (m_tool) {
    case Tool::Line:
        painter.drawLine(m_from, regular ? straightEnd(m_from, to) : to);
        break;
    case Tool::Rectangle:
        painter.drawRect(QRect(m_from, regular ? regularEnd(m_from, to) : to).normalized());
        break;
    case Tool::Ellipse:
        painter.drawEllipse(QRect(m_from, regular ? regularEnd(m_from, to) : to).normalized());
        break;
    default:
        painter.drawLine(m_from, to);
        m_from = to;
        break;
    }
    painter.end();
    m_document->preview(m_stroke);
}
