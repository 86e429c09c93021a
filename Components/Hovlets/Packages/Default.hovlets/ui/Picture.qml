// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import com.zandor.hovlets.qml 1.0

// A picture at its natural size, or scaled down to the available width. If it cannot be decoded, its
// description replaces it.
Item {
    id: picture

    required property Theme theme
    property alias source: image.source
    property string description
    readonly property real naturalWidth: image.implicitWidth

    // Never less than the room that the popup has reserved.
    implicitHeight: Math.max(image.height, replacement.visible ? replacement.height : 0)

    HVPicture {
        id: image
        objectName: "image"
        anchors.left: picture.left
        width: Math.min(picture.width, implicitWidth)
        height: implicitWidth > 0 ? Math.round(implicitHeight * width / implicitWidth) : 0

        Accessible.role: Accessible.Graphic
        Accessible.name: picture.description
    }

    Paragraph {
        id: replacement
        objectName: "replacement"
        visible: image.failed
        width: picture.width
        theme: picture.theme
        source: visible ? picture.description : ""
        color: theme.secondary
        Accessible.ignored: true
    }
}
