// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "Tool.h"

#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtWidgets/QWidget>

class Document;

/*!
 * \brief Shows a drawing at any scale, and draws on its current layer with the mouse.
 *
 * A stroke is a preview while the button is held, and a step of the history once it is released.
 */
class Canvas : public QWidget
{
    Q_OBJECT

public:
    Canvas(Document *document, QWidget *parent = nullptr);

    QColor color() const { return m_color; }
    int penWidth() const { return m_penWidth; }

    /// Screen pixels per pixel of the drawing.
    qreal zoom() const { return m_zoom; }

    void setTool(Tool tool, const QString &name);
    void setColor(const QColor &color);

    /// Width of strokes in pixels of the drawing.
    void setPenWidth(int width) { m_penWidth = width; }
    void setZoom(qreal zoom);

    QSize sizeHint() const override;

    /// The visible area of what was drawn last, in global pixels; empty before the first stroke.
    QRect lastDrawn() const;

Q_SIGNALS:
    void zoomChanged(qreal zoom);

    /// Emitted when the mouse is over \a position of the drawing.
    void hovered(const QPoint &position);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QPoint toDrawing(const QPoint &position) const;
    void documentChanged();
    void fillAt(const QPoint &position);
    void extendStroke(const QPoint &to, bool regular);

    Document *m_document;
    Tool m_tool = Tool::Pen;
    QString m_toolName;
    QColor m_color = Qt::black;
    int m_penWidth = 4;
    qreal m_zoom = 1.0;

    bool m_drawing = false;
    QPoint m_from; // start of the stroke or of its last piece
    QImage m_stroke; // the layer including the stroke so far
    QRect m_drawn; // the last stroke, in pixels of the drawing
};
