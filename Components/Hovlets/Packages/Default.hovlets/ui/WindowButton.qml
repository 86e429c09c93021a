// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// Pins the popup, or closes a pinned one.
Item {
    id: button

    required property Theme theme
    readonly property bool pinned: hovletView ? hovletView.reserved : false
    readonly property int iconSize: Math.round(0.85 * theme.em)

    width: theme.buttonSize
    height: theme.buttonSize

    RoundButton {
        id: pin
        objectName: "pin"
        theme: button.theme
        visible: !button.pinned
        description: Content.translated(hovletView, "Keep open")
        onClicked: hovletView.reserved = true

        PinIcon {
            anchors.centerIn: parent
            width: button.iconSize
            height: button.iconSize
            color: pin.iconColor
        }
    }

    RoundButton {
        id: close
        objectName: "close"
        theme: button.theme
        visible: button.pinned
        description: Content.translated(hovletView, "Close")
        onClicked: hovletView.close()

        CloseIcon {
            anchors.centerIn: parent
            width: button.iconSize
            height: button.iconSize
            color: close.iconColor
        }
    }
}
