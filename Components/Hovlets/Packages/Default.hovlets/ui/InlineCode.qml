// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "InlineCode.js" as InlineCode

// The grounds of code within a text, because rich text draws only square ones.
Item {
    id: grounds

    property Paragraph words
    readonly property Theme theme: words ? words.theme : null
    property var places: []
    // What the places are for.
    property var layout: []

    function find() {
        var current = [copy.text, copy.width, copy.contentWidth, copy.contentHeight];
        var isKnown = current.every(function(value, i) { return value === layout[i]; });
        if (!words || copy.width <= 0 || isKnown)
            return;
        layout = current;
        places = InlineCode.find(copy, words.text, Math.max(2, Math.round(edge.implicitWidth)));
    }

    // Lays out the same text, because only an editor tells where its characters are.
    TextEdit {
        id: copy
        visible: false
        readOnly: true
        activeFocusOnPress: false
        width: grounds.words ? grounds.words.width : 0
        text: grounds.words ? grounds.words.text : ""
        font: edge.font
        textFormat: TextEdit.RichText
        wrapMode: TextEdit.Wrap
        horizontalAlignment: TextEdit.AlignLeft // see Paragraph.qml
        renderType: TextEdit.NativeRendering
        Accessible.ignored: true
        onWidthChanged: grounds.find()
        onTextChanged: grounds.find()
        onContentSizeChanged: grounds.find()
    }

    Text {
        id: edge
        visible: false
        text: InlineCode.NO_BREAK_SPACE
        textFormat: Text.PlainText
        font: grounds.words ? grounds.words.font : Qt.application.font
        renderType: Text.NativeRendering
    }

    Repeater {
        model: grounds.places

        Rectangle {
            required property rect modelData
            // Those of adjacent lines do not touch.
            readonly property int inset: grounds.theme.leading < 2 ? 1 : 0

            objectName: "codeGround"
            x: modelData.x
            y: modelData.y + inset
            width: modelData.width
            height: modelData.height - 2 * inset
            radius: grounds.theme.smallRadius
            color: grounds.words.codeGround()
        }
    }

    Loader {
        anchors.fill: parent
        source: grounds.words && grounds.words.hasLinks ? "ParagraphLinks.qml" : ""
        onLoaded: item.words = grounds.words
    }
}
