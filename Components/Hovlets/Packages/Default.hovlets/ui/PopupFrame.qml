// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Window 2.15
import "Content.js" as Content

// A popup that is as large as its content within limits. Taller content scrolls below the header. All
// sizes are final once the content is set, because they determine the popup's position before the
// first frame.
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

    // The button has a column of its own if the text scrolls or there is no title. The scroll bar is
    // in the padding.
    readonly property bool scrolls: fullHeight > maximumHeight
    readonly property int gutter: Math.max(pinnable && (scrolls || !hasHeader) ? buttonSpace : 0,
                                           scrolls ? theme.smallGap : 0)

    readonly property int margins: 2 * theme.padding
    // Whoever draws popups without a screen sets it.
    property size screenSize: Qt.size(Math.min(Screen.width, Screen.desktopAvailableWidth),
                                      Math.min(Screen.height, Screen.desktopAvailableHeight))
    readonly property int maximumHeight: screenSize.height > 0
        ? Math.max(margins + theme.buttonSize, Math.round(0.6 * screenSize.height)) : 100 * theme.em
    readonly property int maximumWidth: screenSize.width > 0
        ? Math.min(26 * theme.em, Math.round(0.9 * screenSize.width) - buttonSpace) : 26 * theme.em
    readonly property int contentWidth:
        Math.max(Math.min(7 * theme.em, maximumWidth - margins),
                 Math.min(Math.ceil(Math.max(header.naturalWidth + headerButtonSpace,
                                             body.naturalWidth)),
                          maximumWidth - margins))
    readonly property int betweenHeaderAndBody: header.height > 0 && body.implicitHeight > 0
                                                ? Math.round(1.5 * theme.unit) : 0
    readonly property int headerHeight: Math.ceil(header.height) + betweenHeaderAndBody
    readonly property int fullHeight: headerHeight + Math.ceil(body.implicitHeight) + margins
    // The header stays in view unless it would take most of the popup.
    readonly property bool headerStays: headerHeight + theme.padding < 0.4 * maximumHeight
    readonly property int upperEdge: headerStays ? theme.padding + headerHeight : 1

    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.ToolTip
    Accessible.name: header.title
    Accessible.description: Content.spokenContent(content, blocks)

    width: contentWidth + margins + gutter
    height: Math.min(Math.max(fullHeight, pinnable ? theme.buttonSize + 2 * buttonMargin : 0),
                     maximumHeight)
    color: theme.base

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
        anchors { left: frame.left; right: frame.right; leftMargin: 1; rightMargin: 1 }
        y: frame.upperEdge
        height: frame.height - 1 - y
        contentWidth: width
        contentHeight: frame.fullHeight - 1 - frame.upperEdge
        boundsBehavior: Flickable.StopAtBounds
        interactive: frame.scrolls
        clip: frame.scrolls

        Body {
            id: body
            objectName: "body"
            theme: frame.theme
            blocks: frame.blocks
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding + frame.headerHeight - frame.upperEdge
            width: frame.contentWidth
            height: implicitHeight
            onLinkFollowed: function(locator) {
                if (hovletView)
                    hovletView.openExternalResource(locator);
            }
        }
    }

    Item {
        objectName: "headerArea"
        anchors { left: frame.left; right: frame.right; leftMargin: 1; rightMargin: 1 }
        y: 1
        height: (frame.headerStays ? frame.upperEdge : frame.height - 1) - y
        clip: frame.scrolls && !frame.headerStays

        Header {
            id: header
            objectName: "header"
            theme: frame.theme
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding - 1 - (frame.headerStays ? 0 : flickable.contentY)
            width: frame.contentWidth - frame.headerButtonSpace
            height: implicitHeight
            minimumHeight: frame.pinnable ? frame.theme.buttonSize - frame.theme.smallGap : 0
            title: frame.content.title || (frame.showsKey ? frame.content.key : "")
            titleColor: frame.showsKey ? theme.secondary : theme.text
            shortcut: frame.content.shortcut
        }
    }

    ScrollFade {
        theme: frame.theme
        isUpper: true
        anchors { left: frame.left; leftMargin: 1 }
        y: frame.upperEdge
        width: frame.width - 1 - scrollBar.width
        visible: frame.scrolls && !flickable.atYBeginning
    }
    ScrollFade {
        theme: frame.theme
        isUpper: false
        anchors { left: frame.left; leftMargin: 1 }
        y: frame.height - 1 - height
        width: frame.width - 1 - scrollBar.width
        visible: frame.scrolls && !flickable.atYEnd
    }

    PopupScrollBar {
        id: scrollBar
        objectName: "scrollBar"
        theme: frame.theme
        flickable: flickable
        visible: frame.scrolls
        anchors { right: frame.right; rightMargin: 1 }
        y: Math.max(flickable.y, buttonLoader.active ? buttonLoader.y + buttonLoader.height : 0)
        height: frame.height - 1 - y - theme.smallGap
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

    focus: true
    Keys.onEscapePressed: function(event) {
        event.accepted = hovletView ? hovletView.reserved : false;
        if (event.accepted)
            hovletView.close();
    }

    // Every show starts at the top.
    onContentChanged: flickable.contentY = 0
}
