// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

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

    readonly property string style:
        "<style>a { color: " + theme.link + "; text-decoration: underline; }"
        + " div, p, li { line-height: " + Math.round(100 * theme.lineHeight) + "%; }"
        + " code, kbd, samp, tt { font-family: monospace; }"
        + " th, td { padding: " + Math.round(theme.smallGap / 2) + "px " + theme.smallGap + "px; }"
        + " th { text-align: left; }"
        + " p { margin-top: 0px; margin-bottom: " + theme.smallGap + "px; }"
        + " ul, ol { margin-top: " + theme.smallGap + "px; margin-bottom: 0px;"
        + " -qt-list-indent: 0; margin-left: " + 2 * theme.em + "px; }</style>"

    text: format === "rich" ? style + "<div>" + source + "</div>" : source
    textFormat: format === "rich" ? Text.RichText
              : format === "styled" ? Text.StyledText : Text.PlainText
    font: theme.bodyFont
    color: theme.text
    linkColor: theme.link
    lineHeight: format === "rich" ? 1 : theme.lineHeight // the style sets it for rich text
    wrapMode: Text.Wrap
    // Set explicitly: mirrored layouts do not mirror the default.
    horizontalAlignment: Text.AlignLeft
    renderType: Text.NativeRendering

    Accessible.role: Accessible.StaticText
    Accessible.name: spoken

    onLinkActivated: function(link) { linkFollowed(link); }
    onHoveredLinkChanged: {
        if (hovletView)
            hovletView.setItemCursor(paragraph, hoveredLink ? "PointingHandCursor" : "", "");
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
