// SPDX-License-Identifier: Apache-2.0
import QtQuick 2.15
import "Links.js" as Links

// The links in a text, for the keyboard and screen readers: the Tab key reaches them in reading order.
Item {
    id: links

    property Paragraph words
    readonly property Theme theme: words ? words.theme : null
    // See Links.js.
    readonly property var labels: words ? Links.labels(words.source) : []

    Repeater {
        model: links.labels

        Item {
            id: link

            required property int index
            required property string modelData
            // The parts in the lines of the text, while the link has the focus.
            property var lines: []
            // The part that comes into view with the focus.
            property rect focusArea: Qt.rect(0, 0, width, height)

            objectName: "textLink"
            width: links.width
            height: links.height
            activeFocusOnTab: true
            Keys.onSpacePressed: event => press(event)
            Keys.onReturnPressed: event => press(event)
            Keys.onEnterPressed: event => press(event)
            onActiveFocusChanged: find()
            onWidthChanged: find()
            onHeightChanged: find()

            Accessible.role: Accessible.Link
            Accessible.name: modelData
            Accessible.focusable: true
            Accessible.focused: activeFocus
            Accessible.onPressAction: follow()

            function find() {
                var found = activeFocus ? place().lines : [];
                if (found.length > 0) {
                    var last = found[found.length - 1];
                    focusArea = Qt.rect(0, found[0].y, width, last.y + last.height - found[0].y);
                }
                lines = found;
            }

            function place() {
                var theme = links.theme;
                return Links.find(links.words, index, theme.em,
                                  Math.round(theme.lineHeight * theme.ruler.implicitHeight));
            }

            // A key that is held down opens the link once.
            function press(event) {
                if (!event.isAutoRepeat)
                    follow();
            }

            function follow() {
                var target = place().target;
                if (target)
                    links.words.linkFollowed(target);
            }

            Repeater {
                model: link.lines

                Rectangle {
                    required property rect modelData
                    objectName: "linkRing"
                    x: modelData.x - 3
                    y: modelData.y - 1
                    width: modelData.width + 6
                    height: modelData.height + 2
                    radius: 3
                    color: "transparent"
                    border.width: 2
                    border.color: links.theme.accent
                }
            }
        }
    }
}
