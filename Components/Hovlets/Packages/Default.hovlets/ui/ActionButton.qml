// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A button with a label, on its own line. It can be reached and pressed by keyboard.
Item {
    id: button

    required property Theme theme
    property alias source: label.source
    readonly property real naturalWidth: label.naturalWidth + 2 * theme.padding

    signal clicked()

    objectName: "button"
    implicitHeight: face.height
    activeFocusOnTab: true
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)
    Keys.onSpacePressed: event => press(event)

    // A key that is held down presses once.
    function press(event) {
        if (!event.isAutoRepeat)
            clicked();
    }

    Accessible.role: Accessible.Button
    Accessible.name: source
    Accessible.focusable: true
    Accessible.onPressAction: clicked()

    Rectangle {
        id: face
        objectName: "buttonFace"
        anchors.left: button.left
        width: Math.min(button.width, button.naturalWidth)
        height: label.height + 2 * button.theme.unit
        radius: button.theme.innerRadius
        color: area.pressed || area.containsMouse ? button.theme.hoveredSurface
                                                  : button.theme.surface
        border {
            width: button.activeFocus ? 2 : 1
            color: button.activeFocus ? button.theme.accent
                 : area.pressed ? button.theme.mark : button.theme.border
        }

        Paragraph {
            id: label
            theme: button.theme
            x: button.theme.padding
            y: button.theme.unit
            width: face.width - 2 * button.theme.padding
            lineHeight: 1
            horizontalAlignment: Text.AlignHCenter
            Accessible.ignored: true
        }

        MouseArea {
            id: area
            anchors.fill: face
            hoverEnabled: true
            onClicked: button.clicked()
        }
    }
}
