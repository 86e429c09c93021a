// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QRect>

class QMouseEvent;
class QWidget;

namespace Hovlets {

/*!
 * \brief Moves and resizes the window around a view with the mouse, for desktops that do not.
 *
 * A drag ends when its button is released, even if the view does not get that event. GUI thread
 * only; owned by the view.
 */
class HVWindowDrag : public QObject
{
    Q_OBJECT
    Q_DISABLE_COPY_MOVE(HVWindowDrag)

public:
    /// \a view receives the mouse events.
    explicit HVWindowDrag(QWidget &view);

    /// Call it while a button is pressed over the view, whose window must have a native one. The
    /// window moves or, if there are any \a edges, resizes at these.
    void start(Qt::Edges edges);

    [[nodiscard]] bool isResizing() const { return m_isActive && m_edges; }

protected:
    bool eventFilter(QObject *object, QEvent *event) override;

private:
    void press(const QMouseEvent &event);
    void move(const QMouseEvent &event);
    void follow(const QPoint &pointer);

    QWidget &m_view;
    Qt::Edges m_edges;
    Qt::MouseButton m_button = Qt::NoButton; // that drags
    QPoint m_pressed; // where the mouse was when the button was pressed: global, in pixels
    QRect m_geometry; // of the window at the start
    bool m_isActive = false;
};

} // namespace Hovlets
