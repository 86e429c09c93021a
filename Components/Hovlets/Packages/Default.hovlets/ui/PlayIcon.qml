// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A triangle, or two bars while the clip plays.
Item {
    id: icon

    property bool playing: false
    property color color

    height: width

    Rectangle {
        visible: icon.playing
        x: Math.round(0.2 * icon.width)
        width: Math.max(2, Math.round(0.22 * icon.width))
        height: icon.height
        color: icon.color
    }
    Rectangle {
        visible: icon.playing
        x: Math.round(0.6 * icon.width)
        width: Math.max(2, Math.round(0.22 * icon.width))
        height: icon.height
        color: icon.color
    }

    // The right half of a square that is rotated by 45 degrees.
    Item {
        objectName: "playMark"
        visible: !icon.playing
        x: Math.round(0.25 * icon.width)
        width: Math.ceil(icon.height / 2)
        height: icon.height
        clip: true

        Rectangle {
            readonly property real side: parent.height / Math.SQRT2
            x: -side / 2
            y: (parent.height - side) / 2
            width: side
            height: side
            rotation: 45
            color: icon.color
            antialiasing: true
        }
    }
}
