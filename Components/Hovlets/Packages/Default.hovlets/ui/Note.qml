// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// A note or a warning: a mark, a label and the text, on a tinted surface.
Rectangle {
    id: note

    required property Theme theme
    // The content to show; see Content.js.
    required property var content
    readonly property bool isWarning: content.kind === "warning"
    readonly property int indentation: 2 * theme.gap + mark.width
    readonly property real naturalWidth: indentation + Math.max(label.naturalWidth, words.naturalWidth)
                                         + theme.gap

    signal linkFollowed(string locator)

    objectName: content.kind
    implicitHeight: words.y + words.height - theme.leading + label.y
    radius: theme.innerRadius
    color: isWarning ? theme.warningSurface : theme.noteSurface

    NoteMark {
        id: mark
        objectName: "noteMark"
        // The side where lines begin.
        x: note.LayoutMirroring.enabled ? note.width - width - note.theme.gap : note.theme.gap
        y: label.y + Math.round((label.height - note.theme.leading - height) / 2)
        width: 2 * Math.round(0.58 * note.theme.em)
        height: width
        isWarning: note.isWarning
        color: note.isWarning ? note.theme.warningMark : note.theme.noteMark
        letterColor: note.color
    }
    Paragraph {
        id: label
        x: note.LayoutMirroring.enabled ? note.theme.gap : note.indentation
        y: Math.round(1.5 * note.theme.unit)
        width: note.width - note.indentation - note.theme.gap
        theme: note.theme
        font: note.theme.headingFont
        source: Content.translated(hovletView, note.isWarning ? "Warning" : "Note")
    }
    Paragraph {
        id: words
        objectName: "noteText"
        x: label.x
        y: Math.round(label.y + label.height)
        width: label.width
        theme: note.theme
        ground: note.color
        source: note.content.text
        spoken: note.content.spoken
        format: note.content.format
        onLinkFollowed: function(locator) { note.linkFollowed(locator); }
    }
}
