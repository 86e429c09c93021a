// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QImage>

/// The pointer and the keys of the X display. xdotool moves them, so the events are real.
class Pointer
{
public:
    static void moveTo(const QPoint &position);

    /// Moves the pointer to where tests have no windows.
    static void moveAway();
    static void click();

    /*!
     * Makes a Wayland display on an X display agree with that on where the pointer is.
     *
     * It follows the moves of the X pointer from its own position, which is wrong if it has missed
     * a move at the start. Both stop at the edges.
     */
    static void agree();

    /// Holds the left button down until letGo().
    static void hold();
    static void letGo();

    /// Turns the wheel by one notch towards the user.
    static void turnWheel();

    /// Presses \a key, named as in xdotool: "shift", for example.
    static void press(const QString &key);
    static void release(const QString &key);

private:
    static void run(const QStringList &arguments);
};

/// The colour on screen at \a position.
QColor pixelOnScreen(const QPoint &position);
