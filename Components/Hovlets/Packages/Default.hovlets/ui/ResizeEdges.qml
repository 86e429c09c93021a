// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// The edges and corners of a window without a frame, by which the user resizes it.
Item {
    id: edges

    readonly property int thickness: 4
    readonly property int corner: 10

    Repeater {
        // Edges first, so that the corners are above them.
        model: [Qt.TopEdge, Qt.LeftEdge, Qt.RightEdge, Qt.BottomEdge,
                Qt.TopEdge | Qt.LeftEdge, Qt.TopEdge | Qt.RightEdge,
                Qt.BottomEdge | Qt.LeftEdge, Qt.BottomEdge | Qt.RightEdge]

        Grip {
            required property int modelData
            readonly property bool atTop: modelData & Qt.TopEdge
            readonly property bool atLeft: modelData & Qt.LeftEdge
            readonly property bool atRight: modelData & Qt.RightEdge
            readonly property bool atBottom: modelData & Qt.BottomEdge
            readonly property bool vertical: atTop || atBottom
            readonly property bool horizontal: atLeft || atRight
            readonly property int size: vertical && horizontal ? edges.corner : edges.thickness

            x: atRight ? edges.width - width : 0
            y: atBottom ? edges.height - height : 0
            width: horizontal ? size : edges.width
            height: vertical ? size : edges.height
            cursorShape: !vertical ? Qt.SizeHorCursor
                       : !horizontal ? Qt.SizeVerCursor
                       : atTop === atLeft ? Qt.SizeFDiagCursor : Qt.SizeBDiagCursor
            onDragStarted: hovletWindow.startResize(modelData)
        }
    }
}
