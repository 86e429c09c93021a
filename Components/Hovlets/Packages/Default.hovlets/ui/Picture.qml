// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import com.zandor.hovlets.qml 1.0

// A picture at its natural size, or scaled down to the available width.
Item {
    id: picture

    property alias source: image.source
    property string description
    readonly property real naturalWidth: image.implicitWidth

    implicitHeight: image.height

    HVPicture {
        id: image
        objectName: "image"
        anchors.left: picture.left
        width: Math.min(picture.width, implicitWidth)
        height: implicitWidth > 0 ? Math.round(implicitHeight * width / implicitWidth) : 0

        Accessible.role: Accessible.Graphic
        Accessible.name: picture.description
    }
}
