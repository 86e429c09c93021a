// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// A thin bar, on a dark ground, that shows a value from 0 to 1. Dragging changes the value.
Item {
    id: bar

    required property Theme theme
    property real value: 0
    // For screen readers.
    property string spokenValue
    readonly property alias pressed: area.pressed

    signal grabbed()
    signal dragged(real value)
    signal released()

    Accessible.role: Accessible.ProgressBar
    Accessible.name: Content.translated(hovletView, "Position in the clip")
    Accessible.description: spokenValue

    height: Math.max(3, theme.unit)

    Rectangle {
        anchors.fill: bar
        radius: height / 2
        color: "#70ffffff"
    }
    Rectangle {
        objectName: "progressValue"
        width: Math.round(bar.width * bar.value)
        height: bar.height
        radius: height / 2
        color: "white"
    }

    MouseArea {
        id: area
        anchors { fill: bar; topMargin: -bar.theme.gap; bottomMargin: -bar.theme.gap }
        preventStealing: true
        onPressed: function(mouse) {
            bar.grabbed();
            drag(mouse.x);
        }
        onPositionChanged: function(mouse) { drag(mouse.x); }
        onReleased: bar.released()
        onCanceled: bar.released()

        function drag(x) {
            bar.dragged(bar.width > 0 ? Math.max(0, Math.min(1, x / bar.width)) : 0);
        }
    }
}
