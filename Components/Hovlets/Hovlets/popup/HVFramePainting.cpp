// SPDX-License-Identifier: Apache-2.0
#include "HVFramePainting.h"

#include <QtGui/QLinearGradient>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPen>
#include <QtGui/QPolygonF>
#include <QtGui/QRadialGradient>

#include <algorithm>

namespace Hovlets {

namespace {

constexpr int ShadowReach = 18; // px beyond the popup, without the offset
constexpr int ShadowDrop = 4; // px; light comes from above
constexpr qreal ShadowOnLight = 0.20; // opacity of the shadow below the popup
constexpr qreal ShadowOnDark = 0.45;

/// From the full shadow to none, like a blurred edge.
QGradientStops shadowStops(qreal opacity)
{
    QGradientStops stops;
    constexpr int Steps = 8;
    for (int i = 0; i <= Steps; ++i) {
        const qreal t = qreal(i) / Steps;
        const qreal left = 1 - t * t * (3 - 2 * t);
        stops.append({ t, QColor::fromRgbF(0, 0, 0, opacity * left * left) });
    }
    return stops;
}

/// Paints the shadow of a rectangle: nine patches whose gradients meet without a seam.
void paintShadow(QPainter &painter, const QRect &rectangle, int inset, int reach, qreal opacity)
{
    inset = std::min({ inset, rectangle.width() / 2, rectangle.height() / 2 });
    const QRect core = rectangle.adjusted(inset, inset, -inset, -inset);
    const int extent = inset + reach;
    const QGradientStops stops = shadowStops(opacity);
    painter.fillRect(core, stops.first().second);

    const auto edge = [&](const QRect &area, const QPointF &from, const QPointF &to) {
        QLinearGradient gradient(from, to);
        gradient.setStops(stops);
        painter.fillRect(area, gradient);
    };
    const int left = core.x();
    const int top = core.y();
    const int right = left + core.width();
    const int bottom = top + core.height();
    edge({ left - extent, top, extent, core.height() }, QPointF(left, 0),
         QPointF(left - extent, 0));
    edge({ right, top, extent, core.height() }, QPointF(right, 0), QPointF(right + extent, 0));
    edge({ left, top - extent, core.width(), extent }, QPointF(0, top), QPointF(0, top - extent));
    edge({ left, bottom, core.width(), extent }, QPointF(0, bottom), QPointF(0, bottom + extent));

    const auto corner = [&](int x, int y, const QPointF &center) {
        QRadialGradient gradient(center, extent);
        gradient.setStops(stops);
        painter.fillRect(QRect(x, y, extent, extent), gradient);
    };
    corner(left - extent, top - extent, QPointF(left, top));
    corner(right, top - extent, QPointF(right, top));
    corner(left - extent, bottom, QPointF(left, bottom));
    corner(right, bottom, QPointF(right, bottom));
}

/// The triangle of \a arrow, whose base is inside the popup.
QPolygonF triangle(const HVArrow &arrow, const QRectF &popup, qreal scale)
{
    const bool vertical = arrow.side == HVSide::Below || arrow.side == HVSide::Above;
    const qreal position = arrow.position * scale;
    const qreal reach = ArrowReach * scale;
    const qreal height = ArrowHeight * scale;
    // Along the edge, and outwards from it; the base is one pixel deeper for a seamless joint.
    const QPointF along = vertical ? QPointF(1, 0) : QPointF(0, 1);
    QPointF outwards = vertical ? QPointF(0, 1) : QPointF(1, 0);
    QPointF edge = popup.topLeft();
    if (arrow.side == HVSide::Below || arrow.side == HVSide::Right)
        outwards = -outwards;
    else
        edge = vertical ? popup.bottomLeft() : popup.topRight();
    const QPointF middle = edge + position * along;
    const QPointF base = middle - scale * outwards;
    const qreal side = reach * (height + scale) / height;
    return QPolygonF({ base - side * along, middle + height * outwards, base + side * along });
}

QPainterPath roundedRectangle(const QRectF &rectangle, qreal radius)
{
    QPainterPath path;
    path.addRoundedRect(rectangle, radius, radius);
    return path;
}

} // namespace

void paintFrame(QPainter &painter, const QRect &popup, const HVFrameLook &look, qreal scale)
{
    const auto scaled = [scale](qreal length) { return qRound(length * scale); };
    const bool isDark = look.fill.isValid() && look.fill.lightnessF() < 0.4;
    const int inset = scaled(std::max<qreal>(look.radius, ShadowReach / 2.0));
    paintShadow(painter, popup.translated(0, scaled(ShadowDrop)), inset, scaled(ShadowReach),
                isDark ? ShadowOnDark : ShadowOnLight);
    if (!look.fill.isValid())
        return;

    painter.setRenderHint(QPainter::Antialiasing);
    const int line = std::max(1, int(scale));
    const qreal radius = look.radius * scale;
    const QRectF inner(popup);
    QPolygonF arrow;
    if (look.arrow)
        arrow = triangle(*look.arrow, inner, scale);
    painter.fillPath(roundedRectangle(inner.adjusted(-line, -line, line, line), radius + line),
                     look.line);
    if (!arrow.isEmpty()) {
        painter.setPen(QPen(look.line, 2 * line, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
        painter.drawPolyline(arrow);
    }
    painter.fillPath(roundedRectangle(inner, radius), look.fill);
    painter.setPen(Qt::NoPen);
    painter.setBrush(look.fill);
    painter.drawConvexPolygon(arrow);
}

} // namespace Hovlets
