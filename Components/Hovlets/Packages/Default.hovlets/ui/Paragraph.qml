// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Colours.js" as Colours
import "Links.js" as Links
import "RichText.js" as RichText

// Text that wraps at its width and reports its natural width.
Text {
    id: paragraph

    required property Theme theme
    property string source
    // The plain text for screen readers.
    property string spoken: source
    // "plain", "styled" or "rich".
    property string format: "plain"
    readonly property real naturalWidth: Math.ceil(ruler.implicitWidth)

    signal linkFollowed(string locator)

    readonly property bool hasLinks: format !== "plain" && source.indexOf("<a ") >= 0
    readonly property bool hasCode: format === "rich" && RichText.hasCode(source)
    readonly property string marked: hasLinks ? Links.numbered(source) : source
    // The background if it is not the popup's.
    property var ground: null

    text: format === "rich" ? RichText.dressed(marked, theme, linkColor, LayoutMirroring.enabled) : marked
    textFormat: format === "rich" ? Text.RichText
              : format === "styled" ? Text.StyledText : Text.PlainText
    font: theme.bodyFont
    color: theme.bodyText
    linkColor: hasLinks && (ground || hasCode)
               ? Colours.readable(theme.link, theme.text, hasCode ? codeGround() : ground) : theme.link
    lineHeight: format === "rich" ? 1 : theme.lineHeight // the style sets it for rich text
    wrapMode: Text.Wrap
    // Set explicitly: mirrored layouts do not mirror the default.
    horizontalAlignment: Text.AlignLeft
    renderType: Text.NativeRendering

    Accessible.role: Accessible.StaticText
    Accessible.name: spoken

    onLinkActivated: function(link) { linkFollowed(Links.targetOf(link)); }
    onHoveredLinkChanged: {
        if (hovletView)
            hovletView.setItemCursor(paragraph, hoveredLink ? "PointingHandCursor" : "", "");
    }

    function codeGround() {
        return Colours.surface(ground || theme.base, theme.text, 0.07, color);
    }

    // Separate files, compiled when the first text with code or links needs them. Code loads its links.
    Loader {
        anchors.fill: parent
        z: -1
        source: paragraph.hasCode ? "InlineCode.qml" : paragraph.hasLinks ? "ParagraphLinks.qml" : ""
        onLoaded: item.words = paragraph
    }

    // Measures the natural width: a text's implicit width changes when it wraps, which this one
    // never does.
    Text {
        id: ruler
        visible: false
        text: paragraph.text
        textFormat: paragraph.textFormat
        font: paragraph.font
        renderType: paragraph.renderType
    }
}
