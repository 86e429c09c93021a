// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// Lines of code, on a ground of their own. Lines that are too long wrap.
Rectangle {
    id: block

    required property Theme theme
    property string source
    readonly property real naturalWidth: Math.ceil(ruler.implicitWidth) + 2 * theme.smallGap

    objectName: "code"
    implicitHeight: lines.y + lines.height + theme.smallGap
    color: theme.surface
    radius: theme.smallGap / 2

    Accessible.role: Accessible.StaticText
    Accessible.name: source

    Text {
        id: lines
        x: block.theme.smallGap
        y: block.theme.smallGap
        width: block.width - 2 * block.theme.smallGap
        text: block.source
        textFormat: Text.PlainText
        font: block.theme.codeFont
        color: block.theme.text
        wrapMode: Text.Wrap
        // Code is written from left to right in every language.
        horizontalAlignment: Text.AlignLeft
        LayoutMirroring.enabled: false
        renderType: Text.NativeRendering
    }

    // See Paragraph.qml.
    Text {
        id: ruler
        visible: false
        text: block.source
        textFormat: Text.PlainText
        font: block.theme.codeFont
        renderType: lines.renderType
    }
}
