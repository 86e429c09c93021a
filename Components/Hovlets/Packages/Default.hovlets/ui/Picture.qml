// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import com.zandor.hovlets.qml 1.0

// A picture at its natural size, or scaled down to the available width, with its caption below. If it
// cannot be decoded, its description replaces it.
Item {
    id: picture

    required property Theme theme
    // The content to show; see Content.js.
    required property var content
    readonly property bool dark: theme.dark && content.darkSource !== ""
    // Pixels of the file for each unit of length.
    readonly property int density: dark ? content.darkDensity : content.density
    readonly property real naturalWidth: Math.max(image.implicitWidth / density, label.naturalWidth)

    // Never less than the room that the popup has reserved.
    implicitHeight: Math.max(image.height, replacement.visible ? replacement.height : 0)
                    + (label.visible ? theme.smallGap + label.height : 0)

    HVPicture {
        id: image
        objectName: "image"
        source: picture.dark ? picture.content.darkSource : picture.content.source
        anchors.left: picture.left
        width: Math.min(picture.width, implicitWidth / picture.density)
        height: implicitWidth > 0 ? Math.round(implicitHeight * width / implicitWidth) : 0

        Accessible.role: Accessible.Graphic
        Accessible.name: picture.content.text
    }

    Paragraph {
        id: replacement
        objectName: "replacement"
        visible: image.failed
        width: picture.width
        theme: picture.theme
        source: visible ? picture.content.text : ""
        color: theme.secondary
        Accessible.ignored: true
    }

    Paragraph {
        id: label
        objectName: "caption"
        visible: source !== ""
        y: picture.implicitHeight - height
        width: picture.width
        theme: picture.theme
        font: theme.keyFont
        source: picture.content.caption
        color: theme.secondary
    }
}
