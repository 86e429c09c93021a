// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A key: a face with a rim that is one pixel thicker at the bottom.
Rectangle {
    id: cap

    required property Theme theme
    property alias text: label.source
    property real maximumWidth: naturalWidth
    readonly property real naturalWidth: Math.max(label.naturalWidth + 2 * theme.unit,
                                                  Math.round(1.5 * theme.em))
    readonly property int rise: Math.round(0.15 * theme.em)

    width: Math.min(maximumWidth, naturalWidth)
    height: label.height + 2 * rise + 1
    radius: Math.round(0.3 * theme.em)
    color: theme.border

    Rectangle {
        anchors { fill: cap; margins: 1; bottomMargin: 2 }
        radius: cap.radius - 1
        color: cap.theme.surface
    }

    Paragraph {
        id: label
        objectName: "key"
        theme: cap.theme
        anchors { left: cap.left; right: cap.right; leftMargin: cap.theme.unit; rightMargin: cap.theme.unit }
        y: cap.rise
        font: cap.theme.keyFont
        lineHeight: 1
        horizontalAlignment: Text.AlignHCenter
        Accessible.ignored: true
    }
}
