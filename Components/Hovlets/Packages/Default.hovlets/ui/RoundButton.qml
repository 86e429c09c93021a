// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// A flat round button. Its child items draw the icon.
Rectangle {
    id: button

    required property Theme theme
    property string description
    // The colour while nothing happens.
    property color base: theme.base
    readonly property color iconColor: area.containsMouse ? theme.text : theme.secondary

    signal clicked()

    width: theme.buttonSize
    height: theme.buttonSize
    radius: theme.innerRadius
    color: area.pressed ? theme.border : area.containsMouse ? theme.hoveredSurface : base
    border.width: activeFocus ? 2 : 0
    border.color: theme.accent
    activeFocusOnTab: true
    Keys.onSpacePressed: event => press(event)
    Keys.onReturnPressed: event => press(event)
    Keys.onEnterPressed: event => press(event)

    // A key that is held down presses once.
    function press(event) {
        if (!event.isAutoRepeat)
            clicked();
    }

    Accessible.role: Accessible.Button
    Accessible.name: description
    Accessible.focusable: true
    Accessible.onPressAction: button.clicked()

    MouseArea {
        id: area
        anchors.fill: button
        hoverEnabled: true
        onClicked: button.clicked()
    }
}
