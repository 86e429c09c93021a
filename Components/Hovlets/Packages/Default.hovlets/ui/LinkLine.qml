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

    Paragraph {
        id: label
        objectName: "link"
        theme: line.theme
        anchors.left: line.left
        width: Math.min(line.width, naturalWidth)
        // Where links have the colour of the text, only the line distinguishes them.
        font: area.containsMouse || Qt.colorEqual(color, line.theme.text) ? line.theme.linkFont
                                                                         : line.theme.bodyFont
        color: line.theme.link

        Accessible.role: Accessible.Link
        Accessible.name: source
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
