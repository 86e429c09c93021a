// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// A slim scroll bar for a Flickable. Its handle grows under the mouse. A click beside the handle scrolls
// by a page.
Item {
    id: bar

    required property Flickable flickable
    required property Theme theme
    readonly property real end: Math.max(0, flickable.contentHeight - flickable.height)
    readonly property real position: flickable.contentY
    readonly property real pageStep: flickable.height

    Accessible.role: Accessible.ScrollBar
    Accessible.name: Content.translated(hovletView, "Scroll")

    width: Math.max(8, theme.padding)

    function scrollTo(y) {
        flickable.contentY = Math.max(0, Math.min(end, y));
    }

    Rectangle {
        id: handle
        objectName: "scrollHandle"

        readonly property real room: bar.height - height
        readonly property bool grown: area.containsMouse || area.pressed

        anchors { right: parent.right; rightMargin: Math.round((bar.width - width) / 2) }
        y: bar.end > 0 ? room * bar.position / bar.end : 0
        width: grown ? Math.max(6, bar.theme.gap) : Math.max(3, bar.theme.unit)
        height: Math.max(2 * bar.theme.em, bar.height * bar.pageStep
                                           / Math.max(1, bar.flickable.contentHeight))
        radius: width / 2
        color: grown ? bar.theme.secondary : bar.theme.mark
    }

    MouseArea {
        id: area
        anchors.fill: bar
        hoverEnabled: true
        preventStealing: true

        // Where the handle was grabbed; negative while it is not.
        property real grabbedAt: -1

        onPressed: function(mouse) {
            var inside = mouse.y - handle.y;
            grabbedAt = inside >= 0 && inside <= handle.height ? inside : -1;
            if (grabbedAt < 0)
                bar.scrollTo(bar.position + (inside < 0 ? -1 : 1) * bar.pageStep);
        }
        onPositionChanged: function(mouse) {
            if (grabbedAt >= 0 && handle.room > 0)
                bar.scrollTo((mouse.y - grabbedAt) / handle.room * bar.end);
        }
        onReleased: grabbedAt = -1
        onCanceled: grabbedAt = -1
    }
}
