// SPDX-License-Identifier: Apache-2.0
#include "Icon.h"

#include <QtCore/QHash>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>
#include <QtGui/QPixmap>

namespace {

constexpr int Size = 24;
constexpr int Scale = 2; // for dense screens
const QColor Accent(0x3d, 0xae, 0xe9);

using Draw = void (*)(QPainter &);

void pen(QPainter &p)
{
    p.drawPolygon(QPolygonF({ { 4, 20 }, { 5.5, 15 }, { 16, 4.5 }, { 19.5, 8 }, { 9, 18.5 } }));
    p.drawLine(QPointF(13.5, 7), QPointF(17, 10.5));
}

void line(QPainter &p)
{
    p.drawLine(5, 19, 19, 5);
}

void rectangle(QPainter &p)
{
    p.drawRect(4, 6, 16, 12);
}

void ellipse(QPainter &p)
{
    p.drawEllipse(3, 6, 18, 12);
}

void fill(QPainter &p)
{
    p.drawPolygon(QPolygonF({ { 4, 12 }, { 11, 5 }, { 18, 12 }, { 11, 19 } }));
    p.drawLine(11, 5, 8, 2);
    p.setPen(Qt::NoPen);
    p.setBrush(Accent);
    p.drawPolygon(QPolygonF({ { 5, 12.5 }, { 17, 12.5 }, { 11, 18.3 } }));
    p.drawEllipse(QRectF(18, 14, 4, 6));
}

void eraser(QPainter &p)
{
    p.drawPolygon(QPolygonF({ { 3.5, 14 }, { 12, 5 }, { 19, 11 }, { 10.5, 20 }, { 8, 20 } }));
    p.drawLine(QPointF(8, 9.5), QPointF(15, 15.5));
    p.drawLine(10, 20, 20, 20);
}

void arrowBack(QPainter &p)
{
    QPainterPath path({ 6, 9 });
    path.cubicTo(20, 5, 22, 18, 11, 19);
    p.drawPath(path);
    p.drawPolyline(QPolygonF({ { 10, 4.5 }, { 5, 9 }, { 10, 13 } }));
}

void undo(QPainter &p)
{
    arrowBack(p);
}

void redo(QPainter &p)
{
    p.translate(Size, 0);
    p.scale(-1, 1);
    arrowBack(p);
}

void open(QPainter &p)
{
    p.drawPolyline(QPolygonF({ { 4, 19 }, { 4, 5 }, { 10, 5 }, { 12, 8 }, { 18, 8 }, { 18, 11 } }));
    p.drawPolygon(QPolygonF({ { 4, 19 }, { 7, 11 }, { 21, 11 }, { 18, 19 } }));
}

void save(QPainter &p)
{
    p.drawPolygon(QPolygonF({ { 4, 4 }, { 17, 4 }, { 20, 7 }, { 20, 20 }, { 4, 20 } }));
    p.drawRect(8, 4, 7, 5);
    p.drawRect(7, 13, 10, 7);
}

void clear(QPainter &p)
{
    p.drawRect(4, 4, 16, 16);
    p.drawLine(9, 9, 15, 15);
    p.drawLine(15, 9, 9, 15);
}

void lens(QPainter &p)
{
    p.drawEllipse(4, 4, 12, 12);
    p.drawLine(15, 15, 20, 20);
    p.drawLine(7, 10, 13, 10);
}

void zoomIn(QPainter &p)
{
    lens(p);
    p.drawLine(10, 7, 10, 13);
}

void zoomOut(QPainter &p)
{
    lens(p);
}

void settings(QPainter &p)
{
    for (int y : { 6, 12, 18 })
        p.drawLine(4, y, 20, y);
    p.setBrush(Accent);
    p.drawEllipse(13, 4, 4, 4);
    p.drawEllipse(6, 10, 4, 4);
    p.drawEllipse(15, 16, 4, 4);
}

Draw drawerOf(const QString &name)
{
    static const QHash<QString, Draw> drawers {
        { QStringLiteral("pen"), pen },
        { QStringLiteral("line"), line },
        { QStringLiteral("rectangle"), rectangle },
        { QStringLiteral("ellipse"), ellipse },
        { QStringLiteral("fill"), fill },
        { QStringLiteral("eraser"), eraser },
        { QStringLiteral("undo"), undo },
        { QStringLiteral("redo"), redo },
        { QStringLiteral("open"), open },
        { QStringLiteral("save"), save },
        { QStringLiteral("clear"), clear },
        { QStringLiteral("zoomIn"), zoomIn },
        { QStringLiteral("zoomOut"), zoomOut },
        { QStringLiteral("settings"), settings },
    };
    return drawers.value(name);
}

} // namespace

QIcon drawIcon(const QString &name, const QColor &color)
{
    const Draw draw = drawerOf(name);
    if (!draw)
        return {};
    QPixmap pixmap(Size * Scale, Size * Scale);
    pixmap.setDevicePixelRatio(Scale);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw(painter);
    return QIcon(pixmap);
}
