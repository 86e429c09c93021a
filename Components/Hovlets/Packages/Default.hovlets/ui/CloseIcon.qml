// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A cross.
Item {
    id: icon

    property color color

    Repeater {
        model: [45, -45]

        Rectangle {
            required property int modelData

            x: (icon.width - width) / 2
            y: (icon.height - height) / 2
            width: icon.width
            height: Math.max(1, icon.width / 11)
            radius: height / 2
            rotation: modelData
            color: icon.color
            antialiasing: true
        }
    }
}
