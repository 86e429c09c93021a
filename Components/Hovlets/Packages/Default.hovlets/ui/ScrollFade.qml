// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15

// Shows that there is more text above or below.
Rectangle {
    required property Theme theme
    required property bool isUpper
    readonly property color clearBase: Qt.rgba(theme.base.r, theme.base.g, theme.base.b, 0)

    height: 2 * theme.unit
    gradient: Gradient {
        GradientStop { position: 0; color: isUpper ? theme.base : clearBase }
        GradientStop { position: 1; color: isUpper ? clearBase : theme.base }
    }
}
