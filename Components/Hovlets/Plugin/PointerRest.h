// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QPoint>
#include <QtCore/QTimer>

class QWidget;

namespace Hovlets {

/*!
 * \brief Tells where the mouse rests, in active and in inactive windows, and while a menu is open.
 *
 * It asks for the position instead of watching events: an open menu gets all of them. GUI thread
 * only.
 */
class PointerRest : public QObject
{
    Q_OBJECT

public:
    explicit PointerRest(QObject *parent = nullptr);

Q_SIGNALS:
    /// The mouse has come to rest at the global \a position on \a widget.
    void rested(QWidget *widget, const QPoint &position);

private:
    void look();

    QTimer m_timer;
    QPoint m_position;
    int m_looks = 0; // at the same position
};

} // namespace Hovlets
