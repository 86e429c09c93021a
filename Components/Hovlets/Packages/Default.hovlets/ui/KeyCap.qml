// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A key: a face with a rim that is one pixel thicker at the bottom.
Rectangle {
    id: cap

    required property Theme theme
    property alias text: label.source
    // Whether the text wraps if the key is narrower than it.
    property bool wraps: false
    readonly property int inset: theme.unit
    readonly property int rise: Math.round(0.15 * theme.em)

    width: Math.max(Math.ceil(label.implicitWidth) + 2 * inset, Math.round(1.5 * theme.em))
    height: label.height + 2 * rise + 1
    radius: theme.innerRadius
    color: theme.border

    Rectangle {
        anchors { fill: cap; margins: 1; bottomMargin: 2 }
        radius: cap.radius - 1
        color: cap.theme.surface
    }

    Text {
        id: label
        objectName: "key"
        property string source
        anchors { left: cap.left; right: cap.right; leftMargin: cap.inset; rightMargin: cap.inset }
        y: cap.rise
        text: source
        textFormat: Text.PlainText
        font: cap.theme.keyFont
        color: cap.theme.bodyText
        wrapMode: cap.wraps ? Text.Wrap : Text.NoWrap
        horizontalAlignment: Text.AlignHCenter
        renderType: Text.NativeRendering
        Accessible.ignored: true
    }
}
