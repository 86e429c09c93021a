// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// The caption of a clip, on a dark ground that is as wide as the text.
Rectangle {
    id: caption

    required property Theme theme
    property alias text: label.text
    property real maximumWidth: 0

    visible: text !== ""
    width: Math.min(maximumWidth, Math.ceil(ruler.implicitWidth) + 2 * theme.gap)
    height: label.height + theme.unit
    radius: theme.innerRadius
    color: "#c8101010"

    Text {
        id: label
        objectName: "clipCaption"
        anchors.centerIn: caption
        width: caption.width - 2 * caption.theme.gap
        font: caption.theme.bodyFont
        color: "white"
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 3
        elide: Text.ElideRight
        textFormat: Text.PlainText
        renderType: Text.NativeRendering
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    Text {
        id: ruler
        visible: false
        text: label.text
        font: label.font
        textFormat: Text.PlainText
        renderType: label.renderType
    }
}
