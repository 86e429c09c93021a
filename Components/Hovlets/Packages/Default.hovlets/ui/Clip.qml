// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// The place of the entry's clip, above all other blocks. It takes part in the layout as they do:
// the width comes from outside, naturalWidth is the width it would like to have and implicitHeight
// the height at its width. Of zero height it takes no room, not even a gap.
Item {
    // Path of the clip's file.
    property string locator
    readonly property real naturalWidth: 0

    implicitHeight: 0
}
