// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// The title bar of a pinned popup whose window has none: a mark that it is pinned, the title, the shortcut
// if there is room for all of it, and a button that closes the popup. The user moves the window by it.
Item {
    id: bar

    required property Theme theme
    property alias title: label.text
    property string shortcut
    // The greatest width of the popup.
    property real maximumWidth: 0
    property int cornerRadius: 0
    // Whether nothing is below.
    property bool isAlone: false
    // Of the popup, which is a pixel wider than the bar.
    readonly property real naturalWidth: widthOfTitle + (showsShortcut ? widthOfShortcut : 0) + 1
    readonly property bool showsShortcut: shortcut !== "" && widthOfTitle + widthOfShortcut < maximumWidth
    readonly property int widthOfTitle: start + Math.ceil(label.implicitWidth) + theme.gap + close.width
                                        + theme.smallGap
    readonly property int widthOfShortcut: keys.naturalWidth + (title ? theme.gap : 0)
    // Where the title begins.
    readonly property int start: theme.padding - 1 + iconSize + theme.gap
    readonly property int iconSize: 2 * Math.round(0.4 * theme.em)

    signal closed()

    implicitHeight: theme.buttonSize + 3

    Accessible.role: Accessible.TitleBar
    Accessible.name: title
    Accessible.description: Content.translated(hovletView, "Pinned")

    Rectangle {
        id: surface
        width: bar.width
        height: bar.height
        radius: bar.cornerRadius
        color: bar.theme.surface
    }
    // The corners below are square, unless they are those of the popup.
    Rectangle {
        visible: !bar.isAlone
        y: bar.height - height
        width: bar.width
        height: bar.cornerRadius
        color: bar.theme.surface
    }

    Grip {
        objectName: "titleBarArea"
        anchors.fill: parent
        anchors.margins: 4 // by the edges, the user resizes the window
        anchors.bottomMargin: 0
        onDragStarted: hovletWindow.startMove()
    }

    PinIcon {
        objectName: "pinned"
        anchors.left: parent.left
        anchors.leftMargin: bar.theme.padding - 1
        y: Math.round((bar.height - height) / 2)
        width: bar.iconSize
        height: bar.iconSize
        color: bar.theme.accent
    }
    Text {
        id: label
        objectName: "barTitle"
        x: bar.LayoutMirroring.enabled ? bar.width - bar.start - width : bar.start
        y: Math.round((bar.height - height) / 2)
        width: Math.max(0, Math.min(Math.ceil(implicitWidth),
                                    bar.width + 1 + Math.ceil(implicitWidth) - bar.naturalWidth))
        textFormat: Text.PlainText
        font: bar.theme.headingFont
        color: bar.theme.text
        elide: Text.ElideRight
        maximumLineCount: 1
        horizontalAlignment: bar.LayoutMirroring.enabled ? Text.AlignRight : Text.AlignLeft
        LayoutMirroring.enabled: false
        renderType: Text.NativeRendering
        Accessible.ignored: true // the bar has this name
    }

    ShortcutKeys {
        id: keys
        objectName: "barShortcut"
        visible: bar.showsShortcut
        theme: bar.theme
        source: bar.shortcut
        x: bar.LayoutMirroring.enabled ? label.x - bar.widthOfShortcut
                                       : label.x + label.width + bar.widthOfShortcut - width
        y: Math.round((bar.height - height) / 2)
    }

    RoundButton {
        id: close
        objectName: "close"
        theme: bar.theme
        anchors { right: parent.right; rightMargin: 1 }
        y: 1
        base: bar.theme.surface
        description: Content.translated(hovletView, "Close")
        onClicked: bar.closed()

        CloseIcon {
            anchors.centerIn: parent
            width: bar.iconSize + 2
            height: width
            color: close.iconColor
        }
    }
}
