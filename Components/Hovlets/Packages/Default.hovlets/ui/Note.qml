// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// A note or a warning: a bar at the side, a label, and the text.
Item {
    id: note

    required property Theme theme
    // The content to show; see Content.js.
    required property var content
    readonly property bool isWarning: content.kind === "warning"
    readonly property int indentation: bar.width + theme.gap
    readonly property real naturalWidth: indentation + Math.max(label.naturalWidth, words.naturalWidth)

    signal linkFollowed(string locator)

    objectName: content.kind
    implicitHeight: words.y + words.height

    Rectangle {
        id: bar
        // The side where lines begin.
        x: note.LayoutMirroring.enabled ? note.width - width : 0
        width: Math.max(2, Math.round(note.theme.em / 5))
        height: parent.height
        radius: width / 2
        color: note.isWarning ? note.theme.text : note.theme.link
    }
    Paragraph {
        id: label
        x: note.LayoutMirroring.enabled ? 0 : note.indentation
        width: note.width - note.indentation
        theme: note.theme
        font: note.theme.headingFont
        source: Content.translated(hovletView, note.isWarning ? "Warning" : "Note")
    }
    Paragraph {
        id: words
        x: label.x
        y: label.height
        width: label.width
        theme: note.theme
        source: note.content.text
        spoken: note.content.spoken
        format: note.content.format
        onLinkFollowed: function(locator) { note.linkFollowed(locator); }
    }
}
