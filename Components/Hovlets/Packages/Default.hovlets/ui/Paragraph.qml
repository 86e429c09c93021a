// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// Text that wraps at its width and tells how wide it would like to be.
Text {
    id: paragraph

    required property Theme theme
    property string source
    // Its plain words.
    property string spoken: source
    // "plain", "styled" or "rich".
    property string format: "plain"
    readonly property real naturalWidth: Math.ceil(ruler.implicitWidth)

    signal linkFollowed(string locator)

    readonly property string style:
        "<style>a { color: " + theme.link + "; text-decoration: underline; }"
        + " code, kbd, samp, tt { font-family: monospace; }"
        + " p { margin-top: 0px; margin-bottom: " + theme.smallGap + "px; }"
        + " ul, ol { margin-top: " + theme.smallGap + "px; margin-bottom: 0px;"
        + " -qt-list-indent: 0; margin-left: " + 2 * theme.em + "px; }</style>"

    text: format === "rich" ? style + source : source
    textFormat: format === "rich" ? Text.RichText
              : format === "styled" ? Text.StyledText : Text.PlainText
    font: theme.bodyFont
    color: theme.text
    linkColor: theme.link
    wrapMode: Text.Wrap
    // Explicit, so that a mirrored layout mirrors it.
    horizontalAlignment: Text.AlignLeft
    renderType: Text.NativeRendering

    Accessible.role: Accessible.StaticText
    Accessible.name: spoken

    onLinkActivated: function(link) { linkFollowed(link); }
    onHoveredLinkChanged: {
        if (hovletView)
            hovletView.setItemCursor(paragraph, hoveredLink ? "PointingHandCursor" : "", "");
    }

    // A text that is given a width tells another implicit one while it wraps.
    Text {
        id: ruler
        visible: false
        text: paragraph.text
        textFormat: paragraph.textFormat
        font: paragraph.font
        renderType: paragraph.renderType
    }
}
