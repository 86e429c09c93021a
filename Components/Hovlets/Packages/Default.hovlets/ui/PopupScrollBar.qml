// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// The desktop's scroll bar for a Flickable, synchronised with it and as wide as usual.
HVScrollBar {
    id: bar

    required property Flickable flickable
    // The distance that a click on an arrow scrolls.
    property real line: 20

    // Set while one side takes its position from the other. Positions are truncated to hundredths,
    // so the value that comes back differs and must not be applied.
    property bool inStep: false

    Accessible.role: Accessible.ScrollBar
    Accessible.name: Content.translated(hovletView, "Scroll")

    start: 0
    end: Math.max(0, flickable.contentHeight - flickable.height)
    pageStep: flickable.height
    singleStep: line
    width: scrollBarWidth

    onWidthChanged: resize()
    onHeightChanged: resize()
    onEndChanged: follow()
    onPositionChanged: {
        if (inStep)
            return;
        inStep = true;
        flickable.contentY = position;
        inStep = false;
    }
    Component.onCompleted: {
        resize();
        follow();
    }

    // Waits until the item has the bar's width; resizing earlier would lose it.
    function resize() {
        if (width > 0 && height > 0)
            updateDimensions();
    }

    function follow() {
        if (inStep)
            return;
        inStep = true;
        setPositionExternal(flickable.contentY);
        inStep = false;
    }

    Connections {
        target: bar.flickable
        function onContentYChanged() { bar.follow(); }
    }
}
