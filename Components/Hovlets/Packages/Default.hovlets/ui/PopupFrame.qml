// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Window 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// A popup that looks like the desktop's tooltips, as large as its content within limits. Taller
// content scrolls. All sizes are final once the content is set, because they determine the popup's
// position before the first frame.
Rectangle {
    id: frame

    // See Content.js.
    property var content
    property var blocks: []
    property bool pinnable: false

    readonly property Theme theme: Theme {}
    // The colour of the popup's pixels to the right and below.
    readonly property color rimColor: theme.border

    // An entry without texts shows its key, which at least says what the popup is about.
    readonly property bool showsKey: !content.title && !content.shortcut && blocks.length === 0
    readonly property bool hasHeader: !header.isEmpty
    readonly property int buttonSpace: pinnable ? theme.buttonSize + theme.smallGap : 0
    readonly property int buttonMargin: Math.round(theme.padding - theme.smallGap / 2)
    readonly property int headerButtonSpace: hasHeader ? buttonSpace : 0

    // The button has a column of its own if the text scrolls or there is no title.
    readonly property bool scrolls: fullHeight > maximumHeight
    readonly property int gutter: Math.max(pinnable && (scrolls || !hasHeader) ? buttonSpace : 0,
                                           scrolls ? scrollBar.width + theme.smallGap : 0)

    readonly property int margins: 2 * theme.padding
    readonly property int maximumHeight: {
        var available = Math.min(Screen.height, Screen.desktopAvailableHeight);
        return available > 0 ? Math.max(margins + theme.buttonSize, Math.round(0.6 * available))
                             : 100 * theme.em;
    }
    readonly property int maximumWidth: {
        var available = Math.min(Screen.width, Screen.desktopAvailableWidth);
        return available > 0 ? Math.min(26 * theme.em, Math.round(0.9 * available) - buttonSpace)
                             : 26 * theme.em;
    }
    readonly property int contentWidth:
        Math.max(Math.min(7 * theme.em, maximumWidth - margins),
                 Math.min(Math.ceil(Math.max(header.naturalWidth + headerButtonSpace,
                                             body.naturalWidth)),
                          maximumWidth - margins))
    readonly property int fullHeight: Math.ceil(column.height) + margins

    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.ToolTip
    Accessible.name: header.title
    Accessible.description: Content.spokenContent(content, blocks)

    width: contentWidth + margins + gutter
    height: Math.min(Math.max(fullHeight, pinnable ? theme.buttonSize + 2 * buttonMargin : 0),
                     maximumHeight)
    color: theme.base

    // The desktop's own tooltip. Its black outline would be invisible on a dark background, so it
    // lies just outside, and an outline in the theme's colour is drawn on top.
    HVStyledRectangle {
        objectName: "background"
        readonly property color base: frame.theme.base

        x: -1
        y: -1
        width: frame.width + 1
        height: frame.height + 1
        toolTipStyle: true
        onBaseChanged: update()
    }
    // The popup is one pixel larger than the root item. Its right and bottom lines are there.
    Rectangle {
        objectName: "border"
        width: frame.width + 1
        height: frame.height + 1
        color: "transparent"
        border.color: frame.theme.border
    }

    Flickable {
        id: flickable
        objectName: "flickable"
        anchors { fill: frame; margins: 1 }
        contentWidth: width
        contentHeight: frame.fullHeight - 2
        boundsBehavior: Flickable.StopAtBounds
        interactive: frame.scrolls
        clip: frame.scrolls

        Item {
            id: column
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding - 1
            width: frame.contentWidth
            height: body.y + body.height

            Header {
                id: header
                objectName: "header"
                theme: frame.theme
                anchors.left: column.left
                width: column.width - frame.headerButtonSpace
                height: implicitHeight
                minimumHeight: frame.pinnable ? frame.theme.buttonSize - frame.theme.smallGap : 0
                title: frame.content.title || (frame.showsKey ? frame.content.key : "")
                titleColor: frame.showsKey ? theme.secondary : theme.text
                shortcut: frame.content.shortcut
            }

            Body {
                id: body
                objectName: "body"
                theme: frame.theme
                blocks: frame.blocks
                anchors.left: column.left
                y: header.height > 0 && implicitHeight > 0 ? header.height + frame.theme.smallGap
                                                           : header.height
                width: column.width
                height: implicitHeight
                onLinkFollowed: function(locator) {
                    if (hovletView)
                        hovletView.openExternalResource(locator);
                }
            }
        }
    }

    PopupScrollBar {
        id: scrollBar
        objectName: "scrollBar"
        readonly property int upperEdge: frame.pinnable ? buttonLoader.y + buttonLoader.height : 1

        flickable: flickable
        line: 1.5 * frame.theme.em
        visible: frame.scrolls
        anchors { right: frame.right; rightMargin: 1 }
        y: upperEdge
        height: frame.height - 1 - upperEdge
    }

    Loader {
        id: buttonLoader
        active: frame.pinnable
        anchors { right: frame.right; rightMargin: Math.round(frame.theme.padding / 2) }
        y: frame.buttonMargin
        sourceComponent: WindowButton {
            theme: frame.theme
        }
    }

    // Every show starts at the top.
    onContentChanged: flickable.contentY = 0
}
