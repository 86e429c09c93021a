// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// Pins the popup, or closes a pinned one.
Item {
    id: button

    required property Theme theme
    readonly property bool pinned: hovletView ? hovletView.reserved : false
    readonly property int iconSize: 2 * Math.round(0.42 * theme.em)
    readonly property string key: hovletWindow.levelKey

    width: theme.buttonSize
    height: theme.buttonSize

    RoundButton {
        id: pin
        objectName: "pin"
        theme: button.theme
        visible: !button.pinned
        description: button.key
                     ? Content.translated(hovletView, "Keep open (%1)").split("%1").join(button.key)
                     : Content.translated(hovletView, "Keep open")
        onClicked: hovletView.reserved = true

        PinIcon {
            anchors.centerIn: parent
            width: button.iconSize
            height: button.iconSize
            color: pin.iconColor
        }
    }

    Loader {
        active: button.pinned
        sourceComponent: RoundButton {
            id: close
            objectName: "close"
            theme: button.theme
            description: Content.translated(hovletView, "Close")
            onClicked: hovletView.close()

            CloseIcon {
                anchors.centerIn: parent
                width: button.iconSize + 2
                height: width
                color: close.iconColor
            }
        }
    }
}
