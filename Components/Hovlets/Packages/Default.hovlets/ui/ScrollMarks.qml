// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// What a scrolled popup shows above its content: the scroll bar, and fades where content is hidden.
Item {
    id: marks

    required property Theme theme
    required property Flickable content
    // Radius of the popup's corners.
    property int cornerRadius: 0
    // The scroll bar begins below.
    property int upperEdge: 0

    ScrollFade {
        theme: marks.theme
        isUpper: true
        anchors { left: marks.left; leftMargin: 1 + marks.cornerRadius }
        y: marks.content.y
        width: marks.width - 1 - marks.cornerRadius - scrollBar.width
        visible: !marks.content.atYBeginning
    }
    ScrollFade {
        theme: marks.theme
        isUpper: false
        anchors { left: marks.left; leftMargin: 1 + marks.cornerRadius }
        y: marks.height - 1 - height
        width: marks.width - 1 - marks.cornerRadius - scrollBar.width
        visible: !marks.content.atYEnd
    }
    PopupScrollBar {
        id: scrollBar
        objectName: "scrollBar"
        theme: marks.theme
        flickable: marks.content
        anchors { right: marks.right; rightMargin: 1 }
        y: Math.max(marks.content.y, marks.upperEdge)
        height: marks.height - 1 - y - theme.smallGap
    }
}
