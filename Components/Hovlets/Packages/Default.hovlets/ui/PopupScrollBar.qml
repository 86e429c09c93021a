// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import com.zandor.hovlets.qml 1.0
import "Content.js" as Content

// The desktop's scroll bar for a Flickable, in step with it. As wide as the desktop has it.
HVScrollBar {
    id: bar

    required property Flickable flickable
    // What a click on an arrow moves by.
    property real line: 20

    // Positions are cut to hundredths: what one side takes from the other must not come back.
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

    // Not before the item has the bar's width, which would be lost.
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
