// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A picture at its own size, or scaled down to the width that there is.
Item {
    id: picture

    property alias source: image.source
    property string description
    readonly property real naturalWidth: image.implicitWidth

    implicitHeight: image.height

    Image {
        id: image
        objectName: "image"
        anchors.left: picture.left
        width: Math.min(picture.width, implicitWidth)
        height: implicitWidth > 0 ? Math.round(implicitHeight * width / implicitWidth) : 0
        // Content is read anew at each show; so are its pictures.
        cache: false
        mipmap: true
        // A picture is no text: right-to-left layout moves it and leaves it as it is.
        mirror: false

        Accessible.role: Accessible.Graphic
        Accessible.name: picture.description
    }
}
