// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// The title and the shortcut: side by side if there is room, else the shortcut below.
Item {
    id: header

    required property Theme theme
    property alias title: titleText.source
    property alias titleColor: titleText.color
    property alias shortcut: keys.source
    // The height of a button next to it.
    property real minimumHeight: 0

    readonly property bool isEmpty: !title && !shortcut
    readonly property real naturalWidth: titleText.naturalWidth + between
                                         + (shortcut ? keys.naturalWidth : 0)
    readonly property real between: title && shortcut ? theme.gap : 0
    readonly property bool beside: naturalWidth <= width
    // Whether the shortcut is below the title.
    readonly property bool isTall: title && shortcut && !beside
    readonly property real firstLine: Math.max(minimumHeight, shortcut ? badge.height : 0,
                                               titleMetrics.height)

    implicitHeight: {
        if (isEmpty)
            return 0;
        var bottom = title ? titleText.y + titleText.height : 0;
        return Math.ceil(Math.max(minimumHeight, bottom, shortcut ? badge.y + badge.height : 0));
    }

    FontMetrics {
        id: titleMetrics
        font: titleText.font
    }

    Paragraph {
        id: titleText
        objectName: "title"
        theme: header.theme
        visible: source !== ""
        anchors.left: header.left
        y: Math.max(0, Math.round((header.firstLine - titleMetrics.height) / 2))
        width: Math.min(header.width, naturalWidth)
        font: theme.titleFont
        lineHeight: 1.1
    }

    Item {
        id: badge
        objectName: "badge"
        visible: keys.source !== ""
        width: keys.width
        height: keys.height
        anchors.left: header.left
        anchors.leftMargin: header.beside ? titleText.width + header.between : 0
        y: header.beside || !header.title
           ? Math.round((header.firstLine - height) / 2)
           : titleText.y + titleText.height + header.theme.smallGap

        ShortcutKeys {
            id: keys
            objectName: "shortcut"
            theme: header.theme
            maximumWidth: header.width
        }
    }
}
