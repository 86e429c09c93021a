// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A drawing pin, stuck in from the top right.
Item {
    id: icon

    property color color
    readonly property real unit: width / 16

    rotation: 45

    Rectangle {
        x: 4.5 * icon.unit; y: 0
        width: 7 * icon.unit; height: 2 * icon.unit
        radius: icon.unit / 2
        color: icon.color
        antialiasing: true
    }
    Rectangle {
        x: 5.5 * icon.unit; y: 1.5 * icon.unit
        width: 5 * icon.unit; height: 5.5 * icon.unit
        color: icon.color
        antialiasing: true
    }
    Rectangle {
        x: 3 * icon.unit; y: 6.5 * icon.unit
        width: 10 * icon.unit; height: 2.4 * icon.unit
        radius: icon.unit
        color: icon.color
        antialiasing: true
    }
    Rectangle {
        x: 7.3 * icon.unit; y: 8.5 * icon.unit
        width: 1.4 * icon.unit; height: 7 * icon.unit
        color: icon.color
        antialiasing: true
    }
}
