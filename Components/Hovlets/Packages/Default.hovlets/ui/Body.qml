// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// The blocks of an entry, stacked vertically.
Item {
    id: body

    required property Theme theme
    property alias blocks: repeater.model
    // The opacity of all blocks except the one that users have read in the simple popup.
    property real newOpacity: 1
    readonly property int firstParagraph: {
        for (var i = 0; blocks && i < blocks.length; ++i) {
            if (blocks[i].kind === "paragraph")
                return i;
        }
        return -1;
    }
    readonly property real naturalWidth: last ? last.widest : 0

    signal linkFollowed(string locator)

    // Reads the model because its change signal comes after the items exist.
    readonly property Item last: repeater.model && repeater.count > 0
                                 ? repeater.itemAt(repeater.count - 1) : null

    implicitHeight: last ? Math.max(0, last.lowerEdge - last.leading) : 0

    Repeater {
        id: repeater

        Block {
            required property int index
            required property var modelData

            width: body.width
            theme: body.theme
            content: modelData
            opacity: index === body.firstParagraph ? 1 : body.newOpacity
            previous: index > 0 ? repeater.itemAt(index - 1) : null
            onLinkFollowed: function(locator) { body.linkFollowed(locator); }
        }
    }
}
