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
    // The key that shows more, which the last line names; empty if there is none.
    property string hintKey
    // The opacity of what a simple popup did not show.
    property real newOpacity: 1

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

    // So many units of length are a whole number of pixels. A popup that covers only parts of the pixels
    // at its edges loses lines on its way to the screen. 1 where no small number will do.
    readonly property int step: [1, 2, 3, 4].find(function(units) {
        var pixels = units * Screen.devicePixelRatio;
        return Math.abs(pixels - Math.round(pixels)) < 0.001;
    }) || 1

    // Unless a header stays beside the button, it has a column of its own. The scroll bar lies in the padding.
    readonly property bool scrolls: fullHeight > maximumHeight
    // Constant in a popup whose width the user determines: the width of the text depends on it.
    readonly property int gutter: isUserSized ? theme.smallGap
        : wholeAbove(Math.max(hasButton && !(hasHeader && (headerStays || !scrolls)) ? buttonSpace : 0,
                              scrolls ? theme.smallGap : 0))

    readonly property int margins: 2 * theme.padding
    // Whoever draws popups without a screen sets it.
    property size screenSize: Qt.size(Math.min(Screen.width, Screen.desktopAvailableWidth),
                                      Math.min(Screen.height, Screen.desktopAvailableHeight))
    readonly property int maximumHeight: isUserSized ? userSize.height : screenSize.height > 0
        ? wholeAbove(Math.max(margins + theme.buttonSize, wholeBelow(share * screenSize.height)))
        : wholeBelow(100 * theme.em)
    // Of the screen's height. What fits into a popup also fits below the title bar once it is pinned.
    readonly property real share: hasBar ? 0.75 : 0.6
    readonly property int maximumWidth: screenSize.width > 0
        ? Math.min(26 * theme.em, Math.round(0.9 * screenSize.width) - buttonSpace) : 26 * theme.em
    readonly property int naturalWidth: margins
        + Math.ceil(Math.max(7 * theme.em,
                             header.naturalWidth + headerButtonSpace,
                             body.naturalWidth,
                             bar.item ? bar.item.naturalWidth - margins : 0,
                             reason.item ? reason.item.naturalWidth : 0,
                             hint.item ? hint.item.naturalWidth : 0))
    readonly property int contentWidth: isUserSized ? userSize.width - margins - gutter
        : Math.min(wholeAbove(naturalWidth), wholeBelow(maximumWidth)) - margins
    readonly property int reasonHeight:
        !reason.item ? 0 : Math.ceil(reason.implicitHeight) + (body.implicitHeight > 0 ? theme.gap : 0)
    readonly property int textHeight: reasonHeight + Math.ceil(body.implicitHeight)
    readonly property int aboveHint: textHeight > 0 && hintKey ? textHeight + theme.gap : textHeight
    readonly property int bodyHeight: aboveHint + (hint.item ? Math.ceil(hint.implicitHeight) : 0)
    readonly property int betweenHeaderAndBody: header.height > 0 && bodyHeight > 0
                                                ? header.isTall || !header.title ? theme.gap
                                                                                  : Math.round(1.5 * theme.unit)
                                                : 0
    readonly property int headerHeight: Math.ceil(header.height) + betweenHeaderAndBody
    // Whether the title bar has all there is to show.
    readonly property bool isBarOnly: hasBar && !isUserSized && headerHeight + bodyHeight === 0
    readonly property int fullHeight: barHeight + (isBarOnly ? 0 : headerHeight + bodyHeight + margins)
    // The header stays in view unless it would take most of the popup.
    readonly property bool headerStays: headerHeight + theme.padding < 0.4 * maximumHeight
    // Below the title bar. Leaves room for frames and focus rings around the first block.
    readonly property int upperEdge: headerStays ? theme.padding + headerHeight - 3 : 1

    LayoutMirroring.enabled: Qt.application.layoutDirection === Qt.RightToLeft
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.ToolTip
    Accessible.name: title
    Accessible.description: Content.spokenContent(content, hovletReader.disabledReason, blocks,
                                                  hint.item ? hint.item.spoken : "")

    width: contentWidth + margins + gutter
    height: isUserSized ? userSize.height
        : Math.min(wholeAbove(Math.max(fullHeight, hasButton ? theme.buttonSize + 2 * buttonMargin : 0)),
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
        height: Math.max(0, frame.height - 1 - y)
        contentWidth: width
        contentHeight: Math.max(0, frame.fullHeight - 1 - y)
        boundsBehavior: Flickable.StopAtBounds
        interactive: frame.scrolls
        clip: frame.scrolls

        LazyPart {
            id: reason
            file: "DisabledReason.qml"
            needed: hovletReader.disabledReason !== ""
            properties: ({ theme: frame.theme })
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding + frame.headerHeight - frame.upperEdge
            width: frame.contentWidth
            onLoaded: item.source = Qt.binding(function() { return hovletReader.disabledReason; })
        }

        Body {
            id: body
            objectName: "body"
            theme: frame.theme
            blocks: frame.blocks
            newOpacity: frame.newOpacity
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding + frame.headerHeight - frame.upperEdge + frame.reasonHeight
            width: frame.contentWidth
            height: implicitHeight
            onLinkFollowed: function(locator) {
                if (hovletView)
                    hovletView.openExternalResource(locator);
            }
        }

        LazyPart {
            id: hint
            file: "MoreHint.qml"
            needed: frame.hintKey !== ""
            properties: ({ theme: frame.theme })
            anchors { left: parent.left; leftMargin: frame.theme.padding - 1 }
            y: frame.theme.padding + frame.headerHeight - frame.upperEdge + frame.aboveHint
            width: frame.contentWidth
            onLoaded: item.key = Qt.binding(function() { return frame.hintKey; })
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
            // In the simple popup as well, so the title does not move when the button appears.
            minimumHeight: frame.pinnable && !frame.hasButton
                           ? 0 : frame.theme.buttonSize - frame.theme.smallGap
            title: hovletWindow.titleBar === "" ? frame.title : "" // which the title bar shows
            titleColor: frame.showsKey ? theme.secondary : theme.text
            shortcut: bar.item && bar.item.showsShortcut ? "" : frame.content.shortcut
        }
    }

    LazyPart {
        file: "ScrollMarks.qml"
        needed: frame.scrolls
        properties: ({ theme: frame.theme, content: flickable })
        anchors.fill: frame
        onLoaded: {
            item.cornerRadius = Qt.binding(function() { return frame.cornerRadius; });
            item.upperEdge = Qt.binding(function() {
                return buttonLoader.active ? buttonLoader.y + buttonLoader.height : 0;
            });
        }
    }

    Loader {
        id: buttonLoader
        active: frame.hasButton
        opacity: frame.newOpacity
        anchors { right: frame.right; rightMargin: Math.round(frame.theme.padding / 2) }
        y: frame.buttonMargin
        sourceComponent: WindowButton {
            theme: frame.theme
        }
    }

    // The title bar leaves its edges free, apart from the button.
    LazyPart {
        file: "ResizeEdges.qml"
        needed: frame.hasBar
        anchors.fill: parent
    }

    LazyPart {
        id: bar
        file: "TitleBar.qml"
        needed: frame.hasBar
        properties: ({ theme: frame.theme })
        x: 1
        y: 1
        width: frame.width - 1
        height: implicitHeight - 1
        onLoaded: {
            item.objectName = "titleBar";
            item.cornerRadius = Qt.binding(function() { return Math.max(0, frame.cornerRadius - 1); });
            item.isAlone = Qt.binding(function() { return frame.isBarOnly; });
            item.title = Qt.binding(function() { return frame.title; });
            item.shortcut = Qt.binding(function() { return frame.content.shortcut; });
            item.maximumWidth = Qt.binding(function() {
                return frame.isUserSized ? frame.userSize.width : frame.maximumWidth;
            });
            item.closed.connect(function() { hovletView.close(); });
        }
    }

    focus: true
    Keys.onEscapePressed: function(event) {
        event.accepted = hovletView ? hovletView.reserved : false;
        if (event.accepted)
            hovletView.close();
    }
    // Keys that what has the focus does not use.
    Keys.onPressed: function(event) {
        var isPlain = (event.modifiers & ~Qt.KeypadModifier) === Qt.NoModifier;
        var target = scrolls && isPlain ? scrollTarget(event.key) : -1;
        event.accepted = target >= 0;
        if (event.accepted)
            scrollTo(target);
    }

    // The next length that is a whole number of pixels.
    function wholeAbove(length) {
        return Math.ceil(length / step) * step;
    }

    function wholeBelow(length) {
        return step > 1 ? Math.floor(length / step) * step : Math.round(length);
    }

    // Where the key scrolls to; -1 for other keys.
    function scrollTarget(key) {
        var line = 3 * theme.em;
        switch (key) {
        case Qt.Key_Up: return Math.max(0, flickable.contentY - line);
        case Qt.Key_Down: return flickable.contentY + line;
        case Qt.Key_PageUp: return Math.max(0, flickable.contentY - Math.max(line, flickable.height - line));
        case Qt.Key_PageDown: return flickable.contentY + Math.max(line, flickable.height - line);
        case Qt.Key_Home: return 0;
        case Qt.Key_End: return flickable.contentHeight;
        }
        return -1;
    }

    function scrollTo(y) {
        flickable.contentY = Math.max(0, Math.min(y, flickable.contentHeight - flickable.height));
    }

    NumberAnimation {
        id: appearance
        target: frame
        property: "newOpacity"
        from: 0.2 // a first frame that stays for long does not look empty
        to: 1
        duration: 150
    }

    // What gets the focus comes into view.
    readonly property Item focusedItem: Window.activeFocusItem
    onFocusedItemChanged: Qt.callLater(showFocus)

    function showFocus() {
        var item = focusedItem;
        var above = item;
        while (above && above !== flickable.contentItem)
            above = above.parent;
        if (!above || !scrolls)
            return;
        var area = item.focusArea || Qt.rect(0, 0, item.width, item.height);
        var top = item.mapToItem(flickable.contentItem, 0, area.y).y - theme.smallGap;
        var bottom = top + area.height + 2 * theme.smallGap;
        var wanted = Math.min(top, Math.max(flickable.contentY, bottom - flickable.height));
        scrollTo(Math.round(wanted));
    }

    // Every show starts at the top.
    onContentChanged: flickable.contentY = 0

    // Only the opacity changes over time. The popup has its final size and place.
    Component.onCompleted: {
        if (hovletWindow.expanding && !Content.motionIsReduced(hovletView))
            appearance.start();
    }
}
