// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Keys.js" as Keys

// A shortcut as keys, with a gap between the combinations of a sequence. Keys are in the order in which
// they are pressed, from left to right in all languages. A shortcut that is too wide is one key,
// whose text wraps.
Item {
    id: shortcut

    required property Theme theme
    property string source
    property real maximumWidth: naturalWidth
    readonly property font font: theme.keyFont
    readonly property bool fits: caps.naturalWidth <= maximumWidth
    readonly property real naturalWidth: caps.naturalWidth

    width: fits ? caps.naturalWidth : whole.width
    height: fits ? caps.height : whole.height

    LayoutMirroring.enabled: false
    LayoutMirroring.childrenInherit: true
    Accessible.role: Accessible.StaticText
    Accessible.name: source

    // Not a Row: positioners lay out in the next frame, after the popup has got its size.
    Item {
        id: caps

        // Reads the model because its change signal comes after the items exist.
        readonly property Item last: repeater.model && repeater.count > 0
                                     ? repeater.itemAt(repeater.count - 1) : null
        readonly property real naturalWidth: last ? last.x + last.width : 0

        visible: shortcut.fits
        height: last ? last.height : 0

        Repeater {
            id: repeater
            model: Keys.caps(shortcut.source, Qt.platform.os === "osx")

            KeyCap {
                required property int index
                required property var modelData
                readonly property Item previous: index > 0 ? repeater.itemAt(index - 1) : null

                theme: shortcut.theme
                text: modelData.text
                x: !previous ? 0 : previous.x + previous.width
                               + (modelData.begins ? 2 * theme.unit : Math.ceil(theme.unit / 2))
            }
        }
    }

    Loader {
        id: whole
        active: !shortcut.fits
        sourceComponent: KeyCap {
            theme: shortcut.theme
            text: shortcut.source
            wraps: true
            width: Math.min(shortcut.maximumWidth,
                            Math.ceil(metrics.advanceWidth(text)) + 2 * inset + 1)

            FontMetrics {
                id: metrics
                font: shortcut.font
            }
        }
    }
}
