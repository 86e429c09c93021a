// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// Shows which part of the text is in view, between trackTop and trackBottom.
Rectangle {
    required property Theme theme
    required property Flickable flickable
    property real trackTop: 0
    property real trackBottom: 0

    readonly property real track: trackBottom - trackTop

    width: Math.max(3, Math.round(0.25 * theme.em))
    height: Math.max(width, track * flickable.visibleArea.heightRatio)
    y: trackTop + (track - height) * position()
    radius: width / 2
    color: theme.secondary
    opacity: flickable.moving ? 1 : 0.6

    // From 0, at the top, to 1.
    function position() {
        var hidden = flickable.contentHeight - flickable.height;
        return hidden > 0 ? Math.max(0, Math.min(1, flickable.contentY / hidden)) : 0;
    }
}
