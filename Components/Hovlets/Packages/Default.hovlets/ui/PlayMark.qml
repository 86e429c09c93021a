// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A triangle on a disc, visible on any picture.
Rectangle {
    id: mark

    height: width
    radius: width / 2
    color: "#a0000000"

    // The right half of a square that is rotated by 45 degrees.
    Item {
        x: Math.round(0.38 * mark.width)
        y: Math.round((mark.height - height) / 2)
        width: Math.round(0.26 * mark.width)
        height: 2 * width
        clip: true

        Rectangle {
            readonly property real side: parent.height / Math.SQRT2
            x: -side / 2
            y: (parent.height - side) / 2
            width: side
            height: side
            rotation: 45
            color: "white"
            antialiasing: true
        }
    }
}
