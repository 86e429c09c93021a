// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// Why the control is disabled, as given by the host: a text on a surface of its own.
Rectangle {
    id: box

    required property Theme theme
    property alias source: words.source
    readonly property real naturalWidth: words.naturalWidth + 2 * theme.gap

    implicitHeight: words.height - theme.leading + 2 * theme.smallGap
    radius: theme.innerRadius
    color: theme.surface

    Paragraph {
        id: words
        objectName: "disabledReason"
        theme: box.theme
        x: box.theme.gap
        y: box.theme.smallGap
        width: box.width - 2 * box.theme.gap
    }
}
