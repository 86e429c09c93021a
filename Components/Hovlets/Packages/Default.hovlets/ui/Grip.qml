// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// An area by which the user drags something. A click alone drags nothing: a window manager that learns of
// the press after the release would let the window follow the mouse until the next click.
MouseArea {
    id: grip

    property point pressedAt
    property bool isDragging: false
    readonly property int leastDistance: 3

    signal dragStarted()

    onPressed: function(mouse) {
        pressedAt = Qt.point(mouse.x, mouse.y);
        isDragging = false;
    }
    onPositionChanged: function(mouse) {
        if (isDragging || !pressed || Math.max(Math.abs(mouse.x - pressedAt.x),
                                               Math.abs(mouse.y - pressedAt.y)) < leastDistance)
            return;
        isDragging = true;
        dragStarted();
    }
}
