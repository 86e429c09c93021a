// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// Lines of code, on a ground of their own. Lines that are too long wrap.
Rectangle {
    id: block

    required property Theme theme
    property string source
    // Tighter than in other texts, to keep lines together.
    readonly property real lineHeight: Math.max(1, 0.92 * theme.lineHeight)
    // What the last line leaves free.
    readonly property int below: Math.floor((lineHeight - 1) * ruler.implicitHeight / Math.max(1, ruler.lineCount))
    readonly property real naturalWidth: Math.ceil(ruler.implicitWidth) + 2 * theme.gap

    objectName: "code"
    implicitHeight: lines.height - below + 2 * lines.y
    color: theme.surface
    radius: theme.innerRadius

    Accessible.role: Accessible.StaticText
    Accessible.name: source

    Text {
        id: lines
        x: block.theme.gap
        y: Math.round(1.5 * block.theme.unit)
        width: block.width - 2 * block.theme.gap
        text: block.source
        textFormat: Text.PlainText
        font: block.theme.codeFont
        color: block.theme.text
        lineHeight: block.lineHeight
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
