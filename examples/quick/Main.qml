// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Hovlets 1.0

ApplicationWindow {
    id: window

    property int copies: 1

    title: "Print"
    width: 360
    height: 240
    visible: true

    Action {
        id: printAction
        text: "Print"
        shortcut: "Ctrl+P"
        onTriggered: window.close()
    }

    ColumnLayout {
        anchors { fill: parent; margins: 12 }

        Button {
            action: printAction
            Layout.fillWidth: true
            Layout.preferredHeight: 56
            Hovlet.key: "print"
            Hovlet.shortcut: printAction.shortcut
        }

        GroupBox {
            title: "Options"
            Layout.fillWidth: true
            Hovlet.key: "options" // of everything in it without content of its own

            ColumnLayout {
                CheckBox {
                    text: "Both sides"
                    Hovlet.key: "both-sides"
                }
                SpinBox {
                    from: 1
                    value: window.copies
                    onValueModified: window.copies = value
                    Hovlet.key: "copies"
                    Hovlet.enabled: window.copies > 1
                }
            }
        }
    }
}
