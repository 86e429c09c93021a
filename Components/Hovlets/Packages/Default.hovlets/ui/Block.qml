// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// One block of the body, below the previous one.
Item {
    id: block

    required property Theme theme
    // The content to show; see Content.js.
    required property var content
    required property Block previous

    readonly property real lowerEdge: y + height - cellPadding
    // The greatest natural width of this block and all previous ones.
    readonly property real widest: Math.max(previous ? previous.widest : 0,
                                            loader.item ? loader.item.naturalWidth : 0)

    // Space below the last line of a text, which the end of the body does not need.
    readonly property real leading: height > 0 && (content.kind === "paragraph" || content.kind === "link")
                                    ? theme.leading : 0

    // Between the outermost rows and the edges of a table, where there is nothing to keep apart.
    readonly property int cellPadding: content.kind === "paragraph" && height > 0
                                       && content.text.lastIndexOf("<table>", 0) === 0
                                       ? Math.round(theme.smallGap / 2) : 0

    signal linkFollowed(string locator)

    // Not a Column: positioners lay out in the next frame, after the popup has got its size. On a whole pixel,
    // because lines below letters are.
    y: Math.round(previous ? previous.lowerEdge + (height > 0 && previous.lowerEdge > 0 ? distance() : 0) : 0)
       - cellPadding
    height: loader.height

    function distance() {
        var linksOnly = content.kind === "link" && previous.content.kind === "link";
        if (linksOnly)
            return Math.ceil(theme.smallGap / 2);
        // A heading is closer to what it introduces than to what it follows.
        if (previous.content.kind === "heading")
            return Math.ceil(theme.smallGap / 2);
        if (content.kind === "heading")
            return theme.gap + Math.ceil(theme.smallGap / 2);
        // A box is as far from the letters above as from those below.
        var isBox = ["button", "clip", "code", "image", "note", "warning"].indexOf(content.kind) >= 0;
        return isBox ? theme.gap - previous.leading : theme.gap;
    }

    // Most entries have only headings and paragraphs. The other kinds are compiled for the first block that
    // needs them, so the first popup shows sooner.
    Loader {
        id: loader
        width: block.width
        Component.onCompleted: {
            switch (block.content.kind) {
            case "link": return withSource("LinkLine.qml");
            case "button": return withSource("ActionButton.qml");
            case "code": return withSource("CodeLines.qml");
            case "image": return withContent("Picture.qml");
            case "clip": return withContent("Clip.qml");
            case "note":
            case "warning": return withContent("Note.qml");
            case "heading": return sourceComponent = heading;
            default: return sourceComponent = paragraph;
            }
        }
        onLoaded: {
            if (item.linkFollowed)
                item.linkFollowed.connect(block.linkFollowed);
            else if (item.clicked)
                item.clicked.connect(function() { block.linkFollowed(block.content.locator); });
        }

        function withSource(file) {
            setSource(file, { theme: block.theme, source: block.content.text });
        }

        function withContent(file) {
            setSource(file, { theme: block.theme, content: block.content });
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
            color: block.content.muted ? theme.secondary : theme.bodyText
        }
    }
    Component {
        id: heading
        Paragraph {
            objectName: "heading"
            theme: block.theme
            color: block.theme.text
            font: block.theme.headingFont
            source: block.content.text
            spoken: block.content.spoken
            format: block.content.format
            Accessible.role: Accessible.Heading
        }
    }
}
