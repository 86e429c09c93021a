// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Content.js" as Content

// The key that shows the full popup, within the words that say so. What is too wide is one text,
// which wraps.
Item {
    id: hint

    required property Theme theme
    property string key

    // "%1" is the key. A translation that lacks it has the key at its end.
    readonly property string sentence: Content.translated(hovletView, "%1 for more")
    readonly property var parts: sentence.indexOf("%1") >= 0 ? sentence.split("%1") : [sentence + " ", ""]
    readonly property string spoken: key ? parts.join(key).trim() : ""
    readonly property real naturalWidth: before.space + caps.naturalWidth + after.space
                                         + Math.ceil(after.naturalWidth)
    readonly property bool fits: naturalWidth <= width

    objectName: "hint"
    implicitHeight: fits ? Math.max(caps.height, before.height) : whole.height

    Accessible.role: Accessible.StaticText
    Accessible.name: spoken

    Paragraph {
        id: before
        readonly property real space: source ? Math.ceil(naturalWidth) + hint.theme.smallGap : 0
        theme: hint.theme
        visible: hint.fits
        anchors.left: hint.left
        y: Math.round((hint.implicitHeight - height) / 2)
        width: naturalWidth
        source: hint.parts[0].trim()
        color: hint.theme.secondary
        font: hint.theme.keyFont
        lineHeight: 1
        Accessible.ignored: true
    }
    ShortcutKeys {
        id: caps
        theme: hint.theme
        visible: hint.fits
        anchors { left: hint.left; leftMargin: before.space }
        y: Math.round((hint.implicitHeight - height) / 2)
        source: hint.key
        Accessible.ignored: true
    }
    Paragraph {
        id: after
        readonly property real space: source ? hint.theme.smallGap : 0
        theme: hint.theme
        visible: hint.fits
        anchors { left: hint.left; leftMargin: before.space + caps.naturalWidth + space }
        y: Math.round((hint.implicitHeight - height) / 2)
        width: naturalWidth
        source: hint.parts.slice(1).join(hint.key).trim()
        color: hint.theme.secondary
        font: hint.theme.keyFont
        lineHeight: 1
        Accessible.ignored: true
    }

    Paragraph {
        id: whole
        theme: hint.theme
        visible: !hint.fits
        width: hint.width
        source: hint.fits ? "" : hint.spoken
        color: hint.theme.secondary
        font: hint.theme.keyFont
        lineHeight: 1
        Accessible.ignored: true
    }
}
