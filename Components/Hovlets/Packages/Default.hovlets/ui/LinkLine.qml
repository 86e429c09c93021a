// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A link on its own line.
Item {
    id: line

    required property Theme theme
    property alias source: label.source
    readonly property alias naturalWidth: label.naturalWidth

    signal clicked()

    implicitHeight: label.height
    activeFocusOnTab: true
    Keys.onSpacePressed: event => press(event)
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    // A key that is held down opens the link once.
    function press(event) {
        if (!event.isAutoRepeat)
            clicked();
    }

    Rectangle {
        objectName: "focusRing"
        // As far from the letters above as below.
        anchors { fill: label; margins: -3; bottomMargin: line.theme.leading - 3 }
        visible: line.activeFocus
        radius: 3
        color: "transparent"
        border.width: 2
        border.color: line.theme.accent
    }

    Paragraph {
        id: label
        objectName: "link"
        theme: line.theme
        anchors.left: line.left
        width: Math.min(line.width, naturalWidth)
        // Where links have the colour of the text, only the line distinguishes them.
        font: area.containsMouse || line.activeFocus || Qt.colorEqual(color, line.theme.text) ? line.theme.linkFont
                                                                         : line.theme.bodyFont
        color: line.theme.link

        Accessible.role: Accessible.Link
        Accessible.name: source
        Accessible.focusable: true
        Accessible.focused: line.activeFocus
        Accessible.onPressAction: line.clicked()
    }

    MouseArea {
        id: area
        anchors.fill: label
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: line.clicked()
    }
}
