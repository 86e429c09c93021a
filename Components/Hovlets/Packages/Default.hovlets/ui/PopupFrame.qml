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

    // A pinned popup can do without the desktop's title bar.
    readonly property bool drawsTitleBar: pinnable
    readonly property bool hasBar: hovletWindow.titleBar === "own"
    readonly property int barHeight: hasBar ? bar.implicitHeight : 0
    // The user's size of a pinned popup; empty if the content determines it.
    readonly property size userSize: hasBar ? hovletWindow.userSize : Qt.size(0, 0)
    readonly property bool isUserSized: userSize.width > 0
    // Both kinds of title bars have a button.
    readonly property bool hasButton: pinnable && hovletWindow.titleBar === ""
    readonly property string title: content.title || (showsKey ? content.key : "")

    readonly property Theme theme: Theme {}
    // Outline, background and corners of the popup, whose last pixels to the right and below are
    // beyond this item.
    readonly property color rimColor: theme.border
    readonly property color fillColor: theme.base
    readonly property int cornerRadius: hovletTheme.rounded ? theme.cornerRadius : 0

    // An entry without texts shows its key, which at least says what the popup is about.
    readonly property bool showsKey: !content.title && !content.shortcut && blocks.length === 0
    readonly property bool hasHeader: !header.isEmpty
    readonly property int buttonSpace: hasButton ? theme.buttonSize + theme.smallGap : 0
    readonly property int buttonMargin: Math.round(theme.padding - theme.smallGap / 2)
    readonly property int headerButtonSpace: hasHeader ? buttonSpace : 0

    // The button has a column of its own if the text scrolls or there is no title. The scroll bar is
    // in the padding.
    readonly property bool scrolls: fullHeight > maximumHeight
    // Constant in a popup whose width the user determines: the width of the text depends on it.
    readonly property int gutter: isUserSized ? theme.smallGap
        : Math.max(hasButton && (scrolls || !hasHeader) ? buttonSpace : 0,
                   scrolls ? theme.smallGap : 0)

    readonly property int margins: 2 * theme.padding
    // Whoever draws popups without a screen sets it.
    property size screenSize: Qt.size(Math.min(Screen.width, Screen.desktopAvailableWidth),
                                      Math.min(Screen.height, Screen.desktopAvailableHeight))
    readonly property int maximumHeight: isUserSized ? userSize.height : screenSize.height > 0
        ? Math.max(margins + theme.buttonSize, Math.round(0.6 * screenSize.height)) : 100 * theme.em
    readonly property int maximumWidth: screenSize.width > 0
        ? Math.min(26 * theme.em, Math.round(0.9 * screenSize.width) - buttonSpace) : 26 * theme.em
    readonly property int contentWidth: isUserSized ? userSize.width - margins - gutter :
        Math.max(Math.min(7 * theme.em, maximumWidth - margins),
                 Math.min(Math.ceil(Math.max(header.naturalWidth + headerButtonSpace,
                                             body.naturalWidth,
                                             hasBar ? bar.naturalWidth - margins : 0,
                                             reason.visible ? reason.naturalWidth : 0)),
                          maximumWidth - margins))
    readonly property int reasonHeight:
        !reason.visible ? 0 : Math.ceil(reason.implicitHeight) + (body.implicitHeight > 0 ? theme.gap : 0)
    readonly property int bodyHeight: reasonHeight + Math.ceil(body.implicitHeight)
    readonly property int betweenHeaderAndBody: header.height > 0 && bodyHeight > 0
                                                ? Math.round(1.5 * theme.unit) : 0
    readonly property int headerHeight: Math.ceil(header.height) + betweenHeaderAndBody
    readonly property int fullHeight: barHeight + headerHeight + bodyHeight + margins
    // The header stays in view unless it would take most of the popup.
    readonly property bool headerStays: headerHeight + theme.padding < 0.4 * maximumHeight
    // Below the title bar.
    readonly property int upperEdge: headerStays ? theme.padding + headerHeight : 1

    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.ToolTip
    Accessible.name: title
    Accessible.description: Content.spokenContent(content, reason.source, blocks)

    width: contentWidth + margins + gutter
    height: isUserSized ? userSize.height
        : Math.min(Math.max(fullHeight, hasButton ? theme.buttonSize + 2 * buttonMargin : 0),
                   maximumHeight)
    color: cornerRadius > 0 ? "transparent" : theme.base

    // The popup is one pixel larger than the root item. Its right and bottom lines are there.
    Rectangle {
        objectName: "border"
        width: frame.width + 1
        height: frame.height + 1
        radius: frame.cornerRadius
        color: radius > 0 ? frame.theme.base : "transparent"
        border.width: hovletTheme.framed ? 0 : 1
        border.color: frame.theme.border
    }

    Flickable {
        id: flickable
        objectName: "flickable"
        anchors { left: frame.left; right: frame.right; leftMargin: 1; rightMargin: 1 }
        y: frame.barHeight + frame.upperEdge
        height: frame.height - 1 - y
        contentWidth: width
        contentHeight: frame.fullHeight - 1 - y
        boundsBehavior: Flickable.StopAtBounds
        interactive: frame.scrolls
        clip: frame.scrolls

        DisabledReason {
            id: reason
            theme: frame.theme
            source: hovletReader.disabledReason
            visible: source !== ""
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding + frame.headerHeight - frame.upperEdge
            width: frame.contentWidth
            height: implicitHeight
        }

        Body {
            id: body
            objectName: "body"
            theme: frame.theme
            blocks: frame.blocks
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding + frame.headerHeight - frame.upperEdge + frame.reasonHeight
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
        y: frame.barHeight + 1
        height: (frame.headerStays ? frame.barHeight + frame.upperEdge : frame.height - 1) - y
        clip: frame.scrolls && !frame.headerStays

        Header {
            id: header
            objectName: "header"
            theme: frame.theme
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding - 1 - (frame.headerStays ? 0 : flickable.contentY)
            width: frame.contentWidth - frame.headerButtonSpace
            height: implicitHeight
            minimumHeight: frame.hasButton ? frame.theme.buttonSize - frame.theme.smallGap : 0
            title: hovletWindow.titleBar === "" ? frame.title : "" // which the title bar shows
            titleColor: frame.showsKey ? theme.secondary : theme.text
            shortcut: frame.content.shortcut
        }
    }

    ScrollFade {
        theme: frame.theme
        isUpper: true
        anchors { left: frame.left; leftMargin: 1 + frame.cornerRadius }
        y: flickable.y
        width: frame.width - 1 - frame.cornerRadius - scrollBar.width
        visible: frame.scrolls && !flickable.atYBeginning
    }
    ScrollFade {
        theme: frame.theme
        isUpper: false
        anchors { left: frame.left; leftMargin: 1 + frame.cornerRadius }
        y: frame.height - 1 - height
        width: frame.width - 1 - frame.cornerRadius - scrollBar.width
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
        active: frame.hasButton
        anchors { right: frame.right; rightMargin: Math.round(frame.theme.padding / 2) }
        y: frame.buttonMargin
        sourceComponent: WindowButton {
            theme: frame.theme
        }
    }

    // The title bar leaves its edges free, apart from the button.
    Loader {
        active: frame.hasBar
        anchors.fill: parent
        sourceComponent: ResizeEdges {}
    }

    TitleBar {
        id: bar
        objectName: "titleBar"
        theme: frame.theme
        visible: frame.hasBar
        x: 1
        y: 1
        width: frame.width - 1
        height: implicitHeight - 1
        cornerRadius: Math.max(0, frame.cornerRadius - 1)
        title: frame.title
        onClosed: hovletView.close()
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
