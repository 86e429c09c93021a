// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// What lies over a clip while somebody uses it: a mark for playing or pausing, the position, and the
// time. Its colours do not depend on the theme, because the clip may have any.
Rectangle {
    id: controls

    required property Theme theme
    property bool playing: false
    property alias value: bar.value
    // In seconds.
    property real time: 0
    property real duration: 0
    readonly property alias pressed: bar.pressed

    signal grabbed()
    signal dragged(real value)
    signal released()

    readonly property int total: Math.max(1, Math.round(duration))
    readonly property int elapsed: Math.min(total, Math.round(time))
    readonly property bool showsTime: duration > 0 && width >= 12 * theme.em

    implicitHeight: Math.round(1.9 * theme.em)
    radius: theme.innerRadius
    color: "#c8101010"

    // Times run from left to right in every language.
    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true

    function clock(seconds) {
        var rest = seconds % 60;
        return Math.floor(seconds / 60) + (rest < 10 ? ":0" : ":") + rest;
    }

    PlayIcon {
        id: icon
        x: controls.theme.gap
        anchors.verticalCenter: controls.verticalCenter
        width: 2 * Math.round(0.4 * controls.theme.em)
        playing: controls.playing
        color: "white"
    }

    ProgressBar {
        id: bar
        objectName: "progressBar"
        theme: controls.theme
        anchors {
            left: icon.right
            leftMargin: controls.theme.gap
            right: label.left
            rightMargin: controls.showsTime ? controls.theme.gap : 0
            verticalCenter: controls.verticalCenter
        }
        spokenValue: label.text
        onGrabbed: controls.grabbed()
        onDragged: function(value) { controls.dragged(value); }
        onReleased: controls.released()
    }

    Text {
        id: label
        objectName: "clipTime"
        anchors {
            right: controls.right
            rightMargin: controls.theme.gap
            verticalCenter: controls.verticalCenter
        }
        // The elapsed time is never wider than the total, so the bar keeps its length.
        width: controls.showsTime ? Math.ceil(ruler.implicitWidth) : 0
        visible: controls.showsTime
        text: controls.duration > 0
              ? controls.clock(controls.elapsed) + " / " + controls.clock(controls.total) : ""
        font: controls.theme.keyFont
        color: "white"
        horizontalAlignment: Text.AlignRight
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }

    // As wide as the label becomes, whatever digits it shows.
    Text {
        id: ruler
        visible: false
        text: (controls.clock(controls.total) + " / " + controls.clock(controls.total))
              .replace(/\d/g, "0")
        font: label.font
        textFormat: Text.PlainText
        renderType: label.renderType
    }
}
