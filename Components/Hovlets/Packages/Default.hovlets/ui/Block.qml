// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// One block of the body, below the previous one.
Item {
    id: block

    required property Theme theme
    // The content to show; see Content.js.
    required property var content
    required property Block previous

    readonly property real lowerEdge: y + height
    // The greatest natural width of this block and all previous ones.
    readonly property real widest: Math.max(previous ? previous.widest : 0,
                                            loader.item ? loader.item.naturalWidth : 0)

    // Space below the last line of a text, which the end of the body does not need.
    readonly property real leading: height > 0 && (content.kind === "paragraph" || content.kind === "link")
                                    ? theme.leading : 0

    signal linkFollowed(string locator)

    // Not a Column: positioners lay out in the next frame, after the popup has got its size.
    y: previous ? previous.lowerEdge + (height > 0 && previous.lowerEdge > 0 ? distance() : 0) : 0
    height: loader.height

    function distance() {
        var linksOnly = content.kind === "link" && previous.content.kind === "link";
        return linksOnly ? Math.ceil(theme.smallGap / 2) : theme.gap;
    }

    Loader {
        id: loader
        width: block.width
        sourceComponent: {
            switch (block.content.kind) {
            case "link": return link;
            case "button": return button;
            case "image": return image;
            case "clip": return clip;
            case "heading": return heading;
            case "code": return code;
            case "note":
            case "warning": return note;
            default: return paragraph;
            }
        }
    }

    Component {
        id: paragraph
        Paragraph {
            objectName: "paragraph"
            theme: block.theme
            source: block.content.text
            spoken: block.content.spoken
            format: block.content.format
            color: block.content.muted ? theme.secondary : theme.text
            onLinkFollowed: function(locator) { block.linkFollowed(locator); }
        }
    }
    Component {
        id: heading
        Paragraph {
            objectName: "heading"
            theme: block.theme
            font: block.theme.headingFont
            source: block.content.text
            spoken: block.content.spoken
            format: block.content.format
            Accessible.role: Accessible.Heading
            onLinkFollowed: function(locator) { block.linkFollowed(locator); }
        }
    }
    Component {
        id: code
        CodeLines {
            theme: block.theme
            source: block.content.text
        }
    }
    Component {
        id: note
        Note {
            theme: block.theme
            content: block.content
            onLinkFollowed: function(locator) { block.linkFollowed(locator); }
        }
    }
    Component {
        id: link
        LinkLine {
            theme: block.theme
            source: block.content.text
            onClicked: block.linkFollowed(block.content.locator)
        }
    }
    Component {
        id: button
        ActionButton {
            theme: block.theme
            source: block.content.text
            onClicked: block.linkFollowed(block.content.locator)
        }
    }
    Component {
        id: image
        Picture {
            theme: block.theme
            content: block.content
        }
    }
    Component {
        id: clip
        Clip {
            theme: block.theme
            content: block.content
        }
    }
}
