// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// The letter i in a disc or, upside down for a warning, in a triangle.
Item {
    id: mark

    property bool isWarning: false
    property color color
    property color letterColor
    // Of lines and dots.
    readonly property int thickness: 2 * Math.max(1, Math.round(mark.width / 16))

    Rectangle {
        visible: !mark.isWarning
        anchors.fill: mark
        radius: width / 2
        color: mark.color
    }

    // The upper half of a square that is rotated by 45 degrees, and narrowed.
    Item {
        visible: mark.isWarning
        anchors.fill: mark
        clip: true

        Rectangle {
            readonly property real side: Math.SQRT2 * mark.height
            x: (mark.width - side) / 2
            y: mark.height - side / 2
            width: side
            height: side
            color: mark.color
            antialiasing: true
            transform: [
                Rotation { angle: 45; origin.x: mark.height / Math.SQRT2; origin.y: mark.height / Math.SQRT2 },
                Scale { xScale: 0.5 * mark.width / mark.height; origin.x: mark.height / Math.SQRT2 }
            ]
        }
    }

    Item {
        x: (mark.width - width) / 2
        y: mark.isWarning ? mark.height - height - Math.round(mark.height / 8) : (mark.height - height) / 2
        width: mark.thickness
        height: 2 * Math.round(0.28 * mark.height)
        rotation: mark.isWarning ? 180 : 0

        Rectangle {
            width: parent.width
            height: width
            color: mark.letterColor
        }
        Rectangle {
            readonly property int gap: Math.max(1, Math.round(mark.thickness / 2))
            width: parent.width
            y: parent.width + gap
            height: parent.height - y
            color: mark.letterColor
        }
    }
}
