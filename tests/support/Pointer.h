// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtGui/QColor>
#include <QtGui/QImage>

/// The pointer and the keys of the X display, moved by xdotool: no event is made up.
class Pointer
{
public:
    static void moveTo(const QPoint &position);

    /// Where no window of a test lies.
    static void moveAway();
    static void click();

    /// \a key as xdotool names it, such as "shift".
    static void press(const QString &key);
    static void release(const QString &key);

private:
    static void run(const QStringList &arguments);
};

/// What a person sees at \a position of the screen.
QColor pixelOnScreen(const QPoint &position);
